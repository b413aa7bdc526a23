// The segments of a figure moved sideways, one by one, and how two of them are joined.
#pragma once

#include <optional>

#include "calcora/IcommonFunc.h"
#include "common/detail/primitives.h"

namespace calcora::detail {

/// A segment of the figure and its parallel: a line, or an arc about the same centre.
struct MovedPiece {
    Point2DF from, to;    ///< the segment's own ends
    double length = 0.0;  ///< of the segment, before the move
    Point2DF start, end;  ///< of the parallel, before it is joined
    Point2DF along;       ///< unit vector of a line
    bool isArc = false;
    bool clockwise = false;
    Point2DF centre;
    double radius = 0.0;     ///< of the parallel arc; not positive when there is none
    double sweep = 0.0;      ///< of an arc, without sign
    bool keepsEnds = false;  ///< an arc that is not to be lengthened by its joins
};

/// How one moved piece goes over into the next.
struct Join {
    enum class Kind {
        kFree,   ///< not at all: the end of an open figure
        kPoint,  ///< both end at `point`
        kArc,    ///< both keep their ends; an arc of `bulge` about the vertex connects them
        kNone    ///< impossible: one of the two has to go
    };
    Kind kind = Kind::kFree;
    Point2DF point;
    double bulge = 0.0;
};

/// The move of a figure's segments by a distance, to the left when it is positive.
class SidewiseMove {
public:
    SidewiseMove(IcommonFunc& geometry, double distance);

    MovedPiece move(const Point2DF& from, const Point2DF& to, double bulge) const;

    /// Ends that coincide are joined there; that is looked at first, since lines in line, arcs of
    /// one circle and tangential neighbours have no intersection that rounding leaves alone. Then
    /// come the carriers, lines and whole circles: of two intersections the one nearer to the
    /// vertex. Where they do not meet, neighbours on the outer side of their corner get a
    /// connecting arc; on its inner side one of them lies wholly within reach of the other.
    /// `areNeighbours` is false when pieces between the two have vanished.
    Join join(const MovedPiece& before, const MovedPiece& after, bool areNeighbours) const;

    /// Whether a piece of that length, or an arc of that radius, is there at all.
    bool isThere(double length) const;

    /// What is left of an arc's sweep when it runs between these points instead of its own ends:
    /// the sweep less the turns at both ends, so that an arc which would run backwards comes out
    /// negative and not as nearly a full turn.
    double sweepBetween(const MovedPiece& arc, const Point2DF& start, const Point2DF& end) const;

    /// Length between these points on the piece's carrier, negative against its direction.
    double lengthBetween(const MovedPiece& piece, const Point2DF& start, const Point2DF& end) const;

    double bulgeBetween(const MovedPiece& piece, const Point2DF& start, const Point2DF& end) const;

private:
    std::optional<Point2DF> carriersMeet(const MovedPiece& before, const MovedPiece& after,
                                         const Point2DF& vertex) const;
    std::optional<Point2DF> linesMeet(const MovedPiece& before, const MovedPiece& after) const;
    std::optional<Point2DF> circlesMeet(const MovedPiece& before, const MovedPiece& after,
                                        const Point2DF& vertex) const;
    bool isOuterCorner(const MovedPiece& before, const MovedPiece& after) const;
    double connectingBulge(const MovedPiece& before, const MovedPiece& after) const;
    double arcBulge(const Point2DF& centre, const Point2DF& start, const Point2DF& end,
                    double radius, bool clockwise, double sweep) const;

    IcommonFunc& geometry_;
    double distance_;
    double unit_;  ///< the larger of 1 and |distance|: what small lengths are measured in
};

}  // namespace calcora::detail
