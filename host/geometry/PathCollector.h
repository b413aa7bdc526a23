// A receiver that keeps the pieces it is given.
#pragma once

#include "geo/IPathReceiver.h"
#include "tavrel/List.h"
#include "tavrel/PlainObject.h"

namespace tavrel_geometry {

class PathCollector : public tav::PlainObject<PathCollector, geo::IPathReceiver> {
public:
    static constexpr const char* kClassName = "PathCollector";

    int pieceCount() override { return pieces_.size(); }
    void addPiece(const geo::PathRef& piece) override
    {
        if (piece) pieces_.append(piece);
    }
    geo::PathRef pieceAt(int index) override
    {
        return 0 <= index && index < pieces_.size() ? pieces_.at(index) : geo::PathRef();
    }

private:
    tav::List<geo::PathRef> pieces_;
};

}  // namespace tavrel_geometry
