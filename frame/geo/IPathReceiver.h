#pragma once

#include "geo/IPath.h"

namespace geo {

/// Takes the pieces that an operation cuts a path into. A receiver that keeps its pieces in the
/// order received is created as any object, by the name "IPathReceiver".
class IPathReceiver : public tav::InterfaceOf<IPathReceiver> {
public:
    static constexpr const char* kInterfaceName = "IPathReceiver";

    /// Slot 6. Number of pieces received so far.
    virtual int pieceCount() = 0;
    /// Slot 7. Receives one piece; the receiver keeps a reference of its own if it wants it. An
    /// empty reference is not kept.
    virtual void addPiece(const PathRef& piece) = 0;
    /// Slot 8. Piece `index` in the order received; empty outside 0 .. pieceCount() - 1 and where a
    /// receiver keeps none.
    virtual PathRef pieceAt(int index)
    {
        static_cast<void>(index);
        return {};
    }
};

}  // namespace geo
