#pragma once

#include "geo/IPath.h"

namespace geo
{

/// Takes the pieces that an operation cuts a path into.
class IPathReceiver : public tav::InterfaceOf<IPathReceiver>
{
public:
    static constexpr const char* kInterfaceName = "IPathReceiver";

    /// Slot 6. Number of pieces received so far.
    virtual int pieceCount() = 0;
    /// Slot 7. Receives one piece; the receiver keeps a reference of its own if it wants it.
    virtual void addPiece(const PathRef& piece) = 0;
};

}  // namespace geo
