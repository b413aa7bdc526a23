// Where a point lies: inside a polygon, a ring with arcs or a region, on its boundary, or outside.
//
// A crossing count along the ray from the point towards +x, after a test of the boundary. Rings
// are moved so that the point is the origin, which changes no comparison of heights.

#include <algorithm>

#include "common/commonFunc.h"
#include "common/detail/bulges.h"
#include "common/detail/plain_functions.h"
#include "common/detail/ring_pieces.h"
#include "common/detail/vec.h"
#include "common/detail/vertex_boxes.h"

namespace detail = calcora::detail;

namespace {

using tav::Point2DF;

enum Location : int { kInside = -1, kOnBoundary = 0, kOutside = 1, kTooFewVertices = -2 };

/// Square drawing units: an edge shorter than the root of this has no boundary of its own.
constexpr double kShortEdgeSquared = 1e-8;
/// Drawing units: a point farther from a segment than this is not on it. isPointOnSegment()
constexpr double kClearOfSegment = 2e-4;
/// Drawing units: a point nearer to an arc's circle is on it.
constexpr double kOnArc = 1e-6;
/// Share of an arc by which a point on it may lie beyond its ends.
constexpr double kArcEndSlack = 1e-6;
/// Drawing units: play in x when a point is compared with the ends of an arc piece.
constexpr double kPieceSlack = 1e-6;

constexpr Point2DF kOrigin;

/// Whether exactly one end of the edge lies above the origin.
bool straddlesRay(const Point2DF& a, const Point2DF& b)
{
    return (a.y() > 0) != (b.y() > 0);
}

/// Whether the ray from the origin towards +x crosses the straight edge between a and b.
bool rayCrossesEdge(const Point2DF& a, const Point2DF& b)
{
    return straddlesRay(a, b) && 0 < (b.x() - a.x()) * -a.y() / (b.y() - a.y()) + a.x();
}

/// A crossing count along a ring.
struct RingCount {
    bool inside = false;
    bool onBoundary = false;
};

/// Counts the edges from vertex `first` on to vertex `last` at once; false where they come too near
/// to p for that. A stretch to the right of p is crossed an odd number of times when its ends lie on
/// both sides of the ray, any other clear stretch is not crossed.
bool countClearStretch(const Point2DF* vertex, int first, int last, const Point2DF& p,
                       RingCount& count)
{
    const detail::VertexBox box = detail::boxOf(vertex, first, last);
    if (!(detail::computedDistanceAtLeast(box, p) > kClearOfSegment)) return false;
    const bool isToTheRight = box.gapTo(p).y() == 0 && box.low.x() > p.x();
    if (isToTheRight && straddlesRay(vertex[first] - p, vertex[last] - p))
        count.inside = !count.inside;
    return true;
}

/// Counts the edge from `from` to `to` of a ring around the origin.
template <class Functions>
void countEdge(Functions& functions, const Point2DF& from, const Point2DF& to, RingCount& count)
{
    // A short edge is no boundary, but it closes the ring: left out of the count, it would turn
    // inside and outside round for all points level with it.
    const bool isShort = functions.pointDistSquared(to, from) < kShortEdgeSquared;
    if (!isShort && functions.isPointOnSegment(kOrigin, to, from)) count.onBoundary = true;
    if (rayCrossesEdge(to, from)) count.inside = !count.inside;
}

/// Whether the ray from the origin towards +x crosses a piece that rises or falls throughout.
bool rayCrossesArc(const detail::RingPiece& piece)
{
    if (!straddlesRay(piece.from, piece.to)) return false;
    const auto [left, right] = std::minmax({piece.from.x(), piece.to.x()});
    if (0 > right + kPieceSlack) return false;
    if (0 < left + kPieceSlack) return true;
    const double distance = detail::length(piece.circle.centre);
    const double middle = (piece.from.x() + piece.to.x()) / 2;
    if (middle > piece.circle.centre.x()) return distance < piece.circle.radius;
    return distance > piece.circle.radius;
}

/// Whether p lies on the arc from a to b of the circle.
bool isOnArc(IcommonFunc& geometry, const Point2DF& p, const Point2DF& a, const Point2DF& b,
             bool clockwise, const detail::Circle& circle)
{
    const double distance = std::sqrt(geometry.pointDistSquared(p, circle.centre));
    if (!(std::fabs(distance - circle.radius) <= kOnArc)) return false;
    const double fraction = geometry.arcSweepFraction(p, circle.centre, a, b, clockwise);
    return -kArcEndSlack <= fraction && fraction <= 1.000001;
}

/// The region's rings in order: a hole decides at once, an outer ring by a point inside it, unless
/// a later hole says otherwise. `locate(i)` is the point's place in ring i.
template <class Locate>
int locateInRings(IcommonFunc& geometry, const IcommonFunc::PointLists& rings, Locate&& locate)
{
    bool inside = false;
    for (int i = 0; i < rings.size(); ++i) {
        const bool isOuter = geometry.isClockwiseRing(rings[i]);
        if (isOuter && inside) continue;
        const int code = locate(i);
        if (code == kOnBoundary) return kOnBoundary;
        if (code != kInside) continue;
        if (!isOuter) return kOutside;
        inside = true;
    }
    return inside ? kInside : kOutside;
}

}  // namespace

bool commonFunc::isPointOnSegment(const Point2DF& p, const Point2DF& a, const Point2DF& b)
{
    return detail::isPointOnSegment(p, a, b);
}

bool commonFunc::isPointOnBulgeSegment(const Point2DF& p, const Point2DF& a, const Point2DF& b,
                                       double bulge, Point2DF& centre, double* radius)
{
    if (!(std::fabs(bulge) >= detail::kStraightInRing)) return isPointOnSegment(p, a, b);
    const Point2DF chord = b - a;
    detail::Circle circle;
    bulgeArcCenter(kOrigin, chord, bulge, circle.centre, &circle.radius);
    const bool isOn = isOnArc(*this, p - a, kOrigin, chord, bulge < 0, circle);
    centre = a + circle.centre;
    if (radius) *radius = circle.radius;
    return isOn;
}

int commonFunc::pointInPolygon(const Points& ring, const Point2DF& p)
{
    const int n = ring.size();
    if (n < 3) return kTooFewVertices;
    const Point2DF* vertex = ring.constData();
    return detail::withFunctionsOf(*this, [&](auto& functions) {
        RingCount count;
        countEdge(functions, vertex[n - 1] - p, vertex[0] - p, count);
        for (int first = 0; first + 1 < n && !count.onBoundary;) {
            const int last = std::min(first + detail::kEdgesInBox, n - 1);
            const bool isCounted =
                functions.kIsPlain && countClearStretch(vertex, first, last, p, count);
            for (int i = first; !isCounted && i < last; ++i)
                countEdge(functions, vertex[i] - p, vertex[i + 1] - p, count);
            first = last;
        }
        if (count.onBoundary) return kOnBoundary;
        return count.inside ? kInside : kOutside;
    });
}

int commonFunc::pointInBulgePolygon(const Points& ring, const Values& bulges, const Point2DF& p)
{
    if (ring.size() < 2) return kTooFewVertices;
    if (bulges.isEmpty()) return pointInPolygon(ring, p);
    bool inside = false;
    for (const detail::RingPiece& piece : detail::cutRingAtArcExtremes(*this, ring, bulges, p)) {
        const auto& [from, to, bulge, circle] = piece;
        const bool isShort = pointDistSquared(to, from) < kShortEdgeSquared;
        const bool isArc = !isShort && std::fabs(bulge) >= detail::kStraightInRing;
        if (isArc) {
            if (isOnArc(*this, kOrigin, from, to, bulge < 0, circle)) return kOnBoundary;
        } else if (!isShort && isPointOnSegment(kOrigin, to, from)) {
            return kOnBoundary;
        }
        if (isArc ? rayCrossesArc(piece) : rayCrossesEdge(to, from)) inside = !inside;
    }
    return inside ? kInside : kOutside;
}

int commonFunc::pointInRegion(const PointLists& rings, const Point2DF& p)
{
    return locateInRings(*this, rings, [&](int i) { return pointInPolygon(rings[i], p); });
}

int commonFunc::pointInBulgeRegion(const PointLists& rings, const ValueLists& bulgeLists,
                                   const Point2DF& p)
{
    return locateInRings(*this, rings, [&](int i) {
        const bool hasArcs = i < bulgeLists.size() && !bulgeLists[i].isEmpty();
        return hasArcs ? pointInBulgePolygon(rings[i], bulgeLists[i], p)
                       : pointInPolygon(rings[i], p);
    });
}
