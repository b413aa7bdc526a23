// The segments of a figure moved sideways, one by one, and how two of them are joined.
#pragma once

#include <optional>

#include "calcora/IcommonFunc.h"
#include "common/detail/primitives.h"

namespace calcora::detail {

/// A segment of the figure and its parallel: a line, or an arc about the same centre. Or an arc that
/// connects two of them, about the vertex between them, which is both its `from` and its `to`.
struct MovedPiece {
    Point2DF from, to;    ///< the segment's own ends
    double length = 0.0;  ///< of the segment before the move, of a connecting arc as it is
    Point2DF start, end;  ///< of the parallel, before it is joined
    Point2DF along;       ///< unit vector of a line
    bool isArc = false;
    bool clockwise = false;
    Point2DF centre;
    double radius = 0.0;  ///< of the parallel arc; not positive when there is none
    double sweep = 0.0;   ///< of an arc, without sign
};

/// What lies between two pieces that are to be joined.
struct Between {
    bool areNeighbours = true;  ///< false when pieces between the two have vanished
    double turn = 0.0;          ///< of the figure from one to the other, whole turns included
};

/// Unit vector along the piece at a point of it.
Point2DF directionAt(const MovedPiece& piece, const Point2DF& at);

/// The turn from one direction to another, in (-pi, pi].
double turnOf(const Point2DF& from, const Point2DF& to);

/// Whether unit vectors point against each other, within an angle of 1e-6.
bool turnsBack(const Point2DF& arriving, const Point2DF& leaving);

/// Whether both are lines that run nearly against each other, as the sides of a strip do.
bool runAgainst(const MovedPiece& before, const MovedPiece& after);

/// The move of a figure's segments by a distance, to the left when it is positive.
class SidewiseMove {
public:
    SidewiseMove(IcommonFunc& geometry, double distance);

    MovedPiece move(const Point2DF& from, const Point2DF& to, double bulge) const;

    /// The arc about the vertex between two neighbours, from the end of one to the start of the
    /// other, the shorter way round.
    MovedPiece connect(const MovedPiece& before, const MovedPiece& after) const;

    /// The straight way from the end of one piece to the start of another.
    MovedPiece lead(const MovedPiece& before, const MovedPiece& after) const;

    /// Whether all of a parallel lies nearer than the distance to the segment of another, with which
    /// it has no joint.
    bool isWithinReach(const MovedPiece& piece, const MovedPiece& other) const;

    /// Whether a piece of that length, or an arc of that radius, is there at all.
    bool isThere(double length) const;

    /// Whether the moved ends at the joint of two pieces are one point.
    bool endsCoincide(const MovedPiece& before, const MovedPiece& after) const;

    /// Whether the corner between two neighbours turns away from their parallels, so that these
    /// leave a gap. Turning straight back does, on either side.
    bool isOuterCorner(const MovedPiece& before, const MovedPiece& after) const;

    /// Where one piece goes over into the next, if there is such a point.
    ///
    /// Ends that coincide are looked at first: lines in line, arcs of one circle and tangential
    /// neighbours have no intersection that rounding leaves alone. Then come the carriers, lines
    /// and whole circles. Of two intersections neighbours take the one nearer to their vertex,
    /// others the one that cuts both short; these are not carried on to far intersections, which
    /// nearly parallel lines have.
    std::optional<Point2DF> joint(const MovedPiece& before, const MovedPiece& after,
                                  const Between& between) const;

    /// Whether two lines are the sides of a strip that the distance has used up: the figure turns
    /// round between them, towards their parallels, and nothing of that is left.
    bool haveCollided(const MovedPiece& before, const MovedPiece& after,
                      const Between& between) const;

    /// What is left of an arc's sweep when it runs between these points instead of its own ends:
    /// the sweep less the turns at both ends, so that an arc which would run backwards comes out
    /// negative and not as nearly a full turn.
    double sweepBetween(const MovedPiece& arc, const Point2DF& start, const Point2DF& end) const;

    /// Length between these points on the piece's carrier, negative against its direction.
    double lengthBetween(const MovedPiece& piece, const Point2DF& start, const Point2DF& end) const;

    double bulgeBetween(const MovedPiece& piece, const Point2DF& start, const Point2DF& end) const;

private:
    std::optional<Point2DF> carriersMeet(const MovedPiece& before, const MovedPiece& after,
                                         bool areNeighbours) const;
    std::optional<Point2DF> linesMeet(const MovedPiece& before, const MovedPiece& after) const;
    std::optional<Point2DF> sameCircleMeets(const MovedPiece& before,
                                            const MovedPiece& after) const;

    IcommonFunc& geometry_;
    double distance_;
    double unit_;  ///< the larger of 1 and |distance|: what small lengths are measured in
};

}  // namespace calcora::detail
