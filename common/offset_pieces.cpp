// Moving single segments sideways and joining two of them.

#include "common/detail/offset_pieces.h"

#include <algorithm>
#include <cmath>

namespace calcora::detail {

namespace {

/// Bulges below are straight where a figure is moved sideways.
constexpr double kStraightForOffset = 1e-6;
/// Units: moved ends this close are one point, lines this close one line.
constexpr double kEndsCoincide = 1e-6;
/// Units: a piece that is not longer, or an arc whose radius is not larger, has vanished.
constexpr double kVanished = 1e-9;
/// Sine of the angle between two directions up to which they are parallel.
constexpr double kParallelDirections = 1e-6;
/// Multiple of the distance by which a piece is carried on past its end, beyond what has vanished.
constexpr double kFarthestJoint = 10.0;
/// Sine of the angle between two directions up to which one line may be the other's continuation.
constexpr double kRunsOn = 0.05;
/// Cosine of the angle between two directions from which lines run against each other.
constexpr double kAgainst = -0.9;
/// Share of their distances by which two intersections must differ for one to be nearer.
constexpr double kEquallyNear = 1e-9;
/// Drawing units: directions from a centre to ends this close together say little.
constexpr double kShortHalfChord = 1e-6;
/// Share of the radius: near the diameter one rounding step of the half chord moves the bulge by
/// 1e-8, and the sweep tells it better.
constexpr double kLongHalfChord = 0.95;

bool areParallel(const Point2DF& u, const Point2DF& v)
{
    return std::fabs(cross(u, v)) <= kParallelDirections;
}

/// The turn about the arc's centre from a to b, in (-pi, pi], positive in the arc's sense.
double turnAlong(const MovedPiece& arc, const Point2DF& a, const Point2DF& b)
{
    const double turn = turnOf(a - arc.centre, b - arc.centre);
    return arc.clockwise ? -turn : turn;
}

/// Positive when b lies ahead of a on the piece's carrier.
double ahead(const MovedPiece& piece, const Point2DF& a, const Point2DF& b)
{
    return piece.isArc ? turnAlong(piece, a, b) : dot(b - a, piece.along);
}

/// Of the whole piece and of its segment.
double bulgeOf(const MovedPiece& piece)
{
    if (!piece.isArc) return 0.0;
    return std::tan(piece.sweep / (piece.clockwise ? -4 : 4));
}

struct Intersections {
    int count = 0;
    Point2DF first, second;
};

Intersections lineWithCircle(const MovedPiece& line, const MovedPiece& arc)
{
    const Point2DF toCentre = arc.centre - line.start;
    const double apart = std::fabs(cross(line.along, toCentre));
    const double gap = (arc.radius - apart) * (arc.radius + apart);
    if (!(gap >= 0)) return {};
    const Point2DF foot = line.start + dot(line.along, toCentre) * line.along;
    const Point2DF halfChord = std::sqrt(gap) * line.along;
    return {2, foot - halfChord, foot + halfChord};
}

/// The one of two intersections at which the two go over into each other. Equally near ones are
/// those of a cusp, where the carriers meet on the inner side only.
Point2DF chosenOne(const Intersections& found, const MovedPiece& before, const MovedPiece& after,
                   bool areNeighbours)
{
    const auto cutsBefore = [&](const Point2DF& p) { return ahead(before, p, before.end) >= 0; };
    const auto cutsBoth = [&](const Point2DF& p) {
        return cutsBefore(p) && ahead(after, after.start, p) >= 0;
    };
    if (!areNeighbours && cutsBoth(found.first) != cutsBoth(found.second))
        return cutsBoth(found.first) ? found.first : found.second;
    const Point2DF vertex = areNeighbours ? before.to : midpoint(before.end, after.start);
    const double toFirst = pointDistSquared(found.first, vertex);
    const double toSecond = pointDistSquared(found.second, vertex);
    if (std::fabs(toFirst - toSecond) > kEquallyNear * (toFirst + toSecond))
        return toFirst < toSecond ? found.first : found.second;
    return cutsBefore(found.first) ? found.first : found.second;
}

}  // namespace

Point2DF directionAt(const MovedPiece& piece, const Point2DF& at)
{
    if (!piece.isArc) return piece.along;
    const Point2DF fromCentre = at - piece.centre;
    const Point2DF outwards = (1 / length(fromCentre)) * fromCentre;
    return piece.clockwise ? leftNormal(-1.0 * outwards) : leftNormal(outwards);
}

double turnOf(const Point2DF& from, const Point2DF& to)
{
    return std::atan2(cross(from, to), dot(from, to));
}

bool turnsBack(const Point2DF& arriving, const Point2DF& leaving)
{
    return areParallel(arriving, leaving) && dot(arriving, leaving) < 0;
}

bool runAgainst(const MovedPiece& before, const MovedPiece& after)
{
    return !before.isArc && !after.isArc && dot(before.along, after.along) < kAgainst;
}

SidewiseMove::SidewiseMove(IcommonFunc& geometry, double distance)
    : geometry_(geometry), distance_(distance), unit_(std::max(1.0, std::fabs(distance)))
{
}

MovedPiece SidewiseMove::move(const Point2DF& from, const Point2DF& to, double bulge) const
{
    MovedPiece piece;
    piece.from = from;
    piece.to = to;
    piece.isArc = std::fabs(bulge) >= kStraightForOffset;
    if (!piece.isArc) {
        piece.length = length(to - from);
        piece.along = (1 / piece.length) * (to - from);
        geometry_.parallelSegment(from, to, piece.start, piece.end, distance_);
        return piece;
    }
    double radius = 0.0;
    geometry_.bulgeArcCenter(from, to, bulge, piece.centre, &radius);
    const double growth = bulge > 0 ? -distance_ : distance_;
    piece.clockwise = bulge < 0;
    piece.sweep = 4 * std::atan(std::fabs(bulge));
    piece.length = radius * piece.sweep;
    piece.radius = radius + growth;
    piece.start = from + (growth / radius) * (from - piece.centre);
    piece.end = to + (growth / radius) * (to - piece.centre);
    return piece;
}

// Where the figure turns straight back both ways are half circles; the one ahead of the vertex
// leads round the tip.
MovedPiece SidewiseMove::connect(const MovedPiece& before, const MovedPiece& after) const
{
    MovedPiece arc;
    arc.from = arc.to = arc.centre = before.to;
    arc.start = before.end;
    arc.end = after.start;
    arc.isArc = true;
    arc.radius = std::fabs(distance_);
    const double turn = turnOf(arc.start - arc.centre, arc.end - arc.centre);
    const bool isTip = turnsBack(directionAt(before, before.to), directionAt(after, after.from));
    arc.clockwise = isTip ? distance_ > 0 : turn < 0;
    arc.sweep = isTip ? kPi : std::fabs(turn);
    arc.length = arc.radius * arc.sweep;
    return arc;
}

MovedPiece SidewiseMove::lead(const MovedPiece& before, const MovedPiece& after) const
{
    MovedPiece line;
    line.from = line.start = before.end;
    line.to = line.end = after.start;
    line.length = length(line.end - line.start);
    line.along = (1 / line.length) * (line.end - line.start);
    return line;
}

// Pieces without a joint hardly ever cross, so the ends and the middle tell about all of it.
bool SidewiseMove::isWithinReach(const MovedPiece& piece, const MovedPiece& other) const
{
    const double reach = std::fabs(distance_) + kEndsCoincide * unit_;
    const auto isNear = [&](const Point2DF& p) {
        return geometry_.pointBulgeSegmentDistSquared(p, other.from, other.to, bulgeOf(other)) <=
               reach * reach;
    };
    const Point2DF middle = geometry_.arcMidPoint(piece.start, piece.end, bulgeOf(piece));
    return isNear(piece.start) && isNear(middle) && isNear(piece.end);
}

bool SidewiseMove::isThere(double length) const
{
    return length > kVanished * unit_;
}

bool SidewiseMove::endsCoincide(const MovedPiece& before, const MovedPiece& after) const
{
    return length(after.start - before.end) <= kEndsCoincide * unit_;
}

bool SidewiseMove::isOuterCorner(const MovedPiece& before, const MovedPiece& after) const
{
    const Point2DF arriving = directionAt(before, before.to);
    const Point2DF leaving = directionAt(after, after.from);
    return turnsBack(arriving, leaving) || cross(arriving, leaving) * distance_ < 0;
}

bool SidewiseMove::haveCollided(const MovedPiece& before, const MovedPiece& after,
                                const Between& between) const
{
    if (between.areNeighbours || before.isArc || after.isArc) return false;
    const double inwards = distance_ > 0 ? between.turn : -between.turn;
    return inwards >= kPi || turnsBack(before.along, after.along);
}

std::optional<Point2DF> SidewiseMove::joint(const MovedPiece& before, const MovedPiece& after,
                                            const Between& between) const
{
    if (haveCollided(before, after, between)) return std::nullopt;
    if (endsCoincide(before, after)) return midpoint(before.end, after.start);
    const auto found = carriersMeet(before, after, between.areNeighbours);
    if (!found || between.areNeighbours) return found;
    const bool prolongsBefore = ahead(before, before.end, *found) > 0;
    const bool prolongsAfter = ahead(after, *found, after.start) > 0;
    const double farthest = kFarthestJoint * std::fabs(distance_);
    if ((prolongsBefore && length(*found - before.end) > farthest) ||
        (prolongsAfter && length(*found - after.start) > farthest))
        return std::nullopt;
    // Across a gap, lines that turn away from their parallels are both prolonged or do not meet;
    // those that run on, but for the accuracy of the drawing, meet anywhere.
    if (before.isArc || after.isArc || areParallel(before.along, after.along)) return found;
    const Point2DF gap = after.start - before.end;
    if (!(dot(gap, before.along) > 0 && dot(gap, after.along) > 0)) return found;
    const double turn = cross(before.along, after.along);
    const bool isCut = turn * distance_ < 0 && !(prolongsBefore && prolongsAfter);
    return isCut || std::fabs(turn) < kRunsOn ? std::nullopt : found;
}

std::optional<Point2DF> SidewiseMove::carriersMeet(const MovedPiece& before,
                                                   const MovedPiece& after,
                                                   bool areNeighbours) const
{
    if (!before.isArc && !after.isArc) return linesMeet(before, after);
    Intersections found;
    if (before.isArc && after.isArc) {
        found.count = geometry_.intersectCircles(before.centre, before.radius, after.centre,
                                                 after.radius, found.first, found.second);
        if (found.count < 0) return sameCircleMeets(before, after);
    } else {
        found = before.isArc ? lineWithCircle(after, before) : lineWithCircle(before, after);
    }
    if (found.count == 0) return std::nullopt;
    return chosenOne(found, before, after, areNeighbours);
}

std::optional<Point2DF> SidewiseMove::linesMeet(const MovedPiece& before,
                                                const MovedPiece& after) const
{
    const Point2DF between = after.start - before.end;
    if (!areParallel(before.along, after.along)) {
        const double reach = cross(between, after.along) / cross(before.along, after.along);
        return before.end + reach * before.along;
    }
    // Two parts of one line meet half-way.
    const bool isOneLine = dot(before.along, after.along) > 0 &&
                           std::fabs(cross(before.along, between)) <= kEndsCoincide * unit_;
    if (!isOneLine) return std::nullopt;
    return midpoint(before.end, after.start);
}

// Half-way between their ends.
std::optional<Point2DF> SidewiseMove::sameCircleMeets(const MovedPiece& before,
                                                      const MovedPiece& after) const
{
    const Point2DF outwards = midpoint(before.end, after.start) - before.centre;
    const double reach = length(outwards);
    if (!isThere(reach) || before.clockwise != after.clockwise) return std::nullopt;
    return before.centre + (before.radius / reach) * outwards;
}

double SidewiseMove::sweepBetween(const MovedPiece& arc, const Point2DF& start,
                                  const Point2DF& end) const
{
    return arc.sweep - turnAlong(arc, arc.start, start) - turnAlong(arc, end, arc.end);
}

double SidewiseMove::lengthBetween(const MovedPiece& piece, const Point2DF& start,
                                   const Point2DF& end) const
{
    return piece.isArc ? piece.radius * sweepBetween(piece, start, end)
                       : dot(end - start, piece.along);
}

double SidewiseMove::bulgeBetween(const MovedPiece& piece, const Point2DF& start,
                                  const Point2DF& end) const
{
    if (!piece.isArc) return 0.0;
    const double halfChord = length(end - start) / 2;
    if (kShortHalfChord < halfChord && halfChord < kLongHalfChord * piece.radius)
        return geometry_.bulgeFromRadius(piece.centre, start, end, piece.radius, piece.clockwise);
    const double bulge = std::tan(sweepBetween(piece, start, end) / 4);
    return piece.clockwise ? -bulge : bulge;
}

}  // namespace calcora::detail
