// The graph of the loop builder: nodes, half-edges, and the point-in-polygon test.
#include "datageo/autob/CAutoLoop.h"

#include <cmath>
#include <utility>

#include "common/detail/primitives.h"
#include "tavrel/NormalObject.h"

namespace AutoB {

using calcora::detail::cross;
using calcora::detail::dot;
using calcora::detail::kPi;
using calcora::detail::kTwoPi;
using calcora::detail::pointDistSquared;

namespace {

/// Squared distance up to which end points of a polyline repeat each other.
constexpr double kRepeatSquared = 1e-14;

/// Bulge from which a single segment is kept as an arc.
constexpr double kEdgeArcBulge = 1e-7;

/// Bulge from which a direction bends away from its chord.
constexpr double kDirectionArcBulge = 1e-10;

/// Share of the first segment at which a half-edge's direction is taken, so that arcs that leave
/// along one tangent are told apart.
constexpr double kDirectionShare = 0.01;

/// Squared distance from a segment's line within which a point lies on it.
constexpr double kOnSegmentSquared = 1e-12;

/// Direction from p0 towards the point a hundredth along the segment or arc to p1, as atan2 gives
/// it.
///
/// The chord from p0 to the point at share t of an arc of sweep s is the chord to p1 turned by
/// -(1 - t) s / 2, which loses nothing for flat arcs far from the origin.
double leavingAngle(const tav::Point2DF& p0, const tav::Point2DF& p1, double bulge)
{
    const double chord = std::atan2(p1.y() - p0.y(), p1.x() - p0.x());
    if (!(std::fabs(bulge) >= kDirectionArcBulge)) return chord;
    const double angle = chord - (1 - kDirectionShare) * 2 * std::atan(bulge);
    if (angle > kPi) return angle - kTwoPi;
    return angle < -kPi ? angle + kTwoPi : angle;
}

/// True for points within 1e-6 of the line and between its ends, seen from the nearer end.
bool pointOnSegment(const tav::Point2DF& p, const tav::Point2DF& a, const tav::Point2DF& b)
{
    const bool nearerToA = pointDistSquared(p, b) > pointDistSquared(p, a);
    const tav::Point2DF& origin = nearerToA ? a : b;
    const tav::Point2DF along = (nearerToA ? b : a) - origin;
    const tav::Point2DF offset = p - origin;
    const double d = dot(along, offset);
    const double lengthSquared = dot(along, along);
    if (!(d >= -1e-12 && d <= lengthSquared + 2e-14 * std::sqrt(lengthSquared) + 1e-12))
        return false;
    const double area = cross(along, offset);
    return area * area / lengthSquared < kOnSegmentSquared;
}

}  // namespace

CAutoLoop::CAutoLoop() : geometry_(tav::kObjectCapacity) {}

CAutoLoop::~CAutoLoop() = default;

void CAutoLoop::addSegments(const calcora::SegmentSet& set, bool keepDirection)
{
    calcora::CancelCheck check(cancelFlag_);
    edges_.reserve(edges_.size() + set.segments.size() * 2);
    if (!edges_.empty() || !set.endsAreExact) {
        for (const calcora::SegmentKey& segment : set.segments) {
            check();
            addSegment(segment, keepDirection, 0);
        }
        return;
    }
    // No two of the set's ends are within the tolerance, so they are the nodes, whatever the order.
    nodePoints_ = set.ends;
    nodesAreInSetOrder_ = true;
    for (std::size_t i = 0; i < set.segments.size(); ++i) {
        check();
        const auto& [a, b, bulge] = set.segments[i];
        if (!(pointDistSquared(a, b) > kRepeatSquared)) continue;
        const auto [start, end] = set.endsOf[i];
        if (keepDirection)
            addEdge(start, end, bulge, true, 0);
        else
            addEdge(end, start, -bulge, false, 0);
    }
}

/// The node at that point, within the tolerance.
int CAutoLoop::findOrAddNode(const tav::Point2DF& point)
{
    if (nodesAreInSetOrder_) {
        nodesAreInSetOrder_ = false;
        for (const tav::Point2DF& known : nodePoints_) nodeSet_.findOrAdd(known);
    }
    const int node = nodeSet_.findOrAdd(point);
    if (static_cast<std::size_t>(node) == nodePoints_.size()) nodePoints_.push_back(point);
    return node;
}

void CAutoLoop::addPolyline(Points points, Values bulges, bool keepDirection, int tag)
{
    bulges.resize(points.size());
    const Points& given = points;
    int begin = 0;
    int end = given.size();
    while (end - begin >= 2 && pointDistSquared(given[begin], given[begin + 1]) <= kRepeatSquared)
        ++begin;
    while (end - begin >= 2 && pointDistSquared(given[end - 2], given[end - 1]) <= kRepeatSquared)
        --end;
    if (end - begin < 2) return;

    // Dropping the last point drops its bulge, the one behind the segment that goes with it stays.
    Points trimmed(given.begin() + begin, given.begin() + end);
    Values trimmedBulges(std::as_const(bulges).begin() + begin,
                         std::as_const(bulges).begin() + end);
    addOpenPolyline(std::move(trimmed), std::move(trimmedBulges), keepDirection, tag);
}

/// Adds a polyline without repeats at its ends, splitting it when it is closed.
void CAutoLoop::addOpenPolyline(Points points, Values bulges, bool keepDirection, int tag)
{
    if (!keepDirection) {
        calcora::detail::reversePoints(points);
        calcora::detail::reverseBulges(bulges);
    }
    const Points& shapePoints = points;
    const Values& shapeBulges = bulges;
    const int n = shapePoints.size();
    if (pointDistSquared(shapePoints.first(), shapePoints.last()) < kRepeatSquared) {
        const int middle = n / 2;
        addPolyline(Points(shapePoints.begin(), shapePoints.begin() + middle + 1),
                    Values(shapeBulges.begin(), shapeBulges.begin() + middle + 1), true, 0);
        addPolyline(Points(shapePoints.begin() + middle, shapePoints.end()),
                    Values(shapeBulges.begin() + middle, shapeBulges.end()), true, 0);
        return;
    }
    if (n == 2) {
        // The turning above is undone by the segment form.
        const tav::Point2DF& a = shapePoints.first();
        const tav::Point2DF& b = shapePoints.last();
        if (keepDirection)
            addSegment({a, b, shapeBulges.first()}, true, tag);
        else
            addSegment({b, a, -shapeBulges.first()}, false, tag);
        return;
    }

    CLoopEdge edge;
    edge.startNode = findOrAddNode(shapePoints.first());
    edge.endNode = findOrAddNode(shapePoints.last());
    edge.startAngle = leavingAngle(shapePoints[0], shapePoints[1], shapeBulges[0]);
    edge.bulge = shapeBulges[0];
    edge.tag = tag;
    edge.keepDirection = keepDirection;
    const double backAngle =
        leavingAngle(shapePoints[n - 1], shapePoints[n - 2], -shapeBulges[n - 2]);
    const Shape shape{points, bulges};
    addEdgePair(edge, backAngle, &shape);
}

void CAutoLoop::addSegment(const calcora::SegmentKey& segment, bool keepDirection, int tag)
{
    if (!(pointDistSquared(segment.a, segment.b) > kRepeatSquared)) return;
    if (keepDirection) {
        const int start = findOrAddNode(segment.a);
        addEdge(start, findOrAddNode(segment.b), segment.bulge, true, tag);
    } else {
        const int start = findOrAddNode(segment.b);
        addEdge(start, findOrAddNode(segment.a), -segment.bulge, false, tag);
    }
}

void CAutoLoop::addEdge(int startNode, int endNode, double bulge, bool keepDirection, int tag)
{
    CLoopEdge edge;
    edge.startNode = startNode;
    edge.endNode = endNode;
    edge.bulge = std::fabs(bulge) > kEdgeArcBulge ? bulge : 0.0;
    edge.tag = tag;
    edge.keepDirection = keepDirection;
    const tav::Point2DF& start = pointOf(startNode);
    const tav::Point2DF& end = pointOf(endNode);
    edge.startAngle = leavingAngle(start, end, edge.bulge);
    addEdgePair(edge, leavingAngle(end, start, -edge.bulge), nullptr);
}

/// Appends a half-edge and its opposite.
void CAutoLoop::addEdgePair(CLoopEdge edge, double backAngle, const Shape* shape)
{
    CLoopEdge opposite = edge;
    std::swap(opposite.startNode, opposite.endNode);
    opposite.startAngle = backAngle;
    opposite.bulge = -edge.bulge;
    opposite.againstInput = true;
    if (shape) {
        Shape reversed = *shape;
        calcora::detail::reversePoints(reversed.points);
        calcora::detail::reverseBulges(reversed.bulges);
        edge.shape = static_cast<int>(shapes_.size());
        opposite.shape = edge.shape + 1;
        opposite.bulge = std::as_const(reversed.bulges).first();
        shapes_.push_back(*shape);
        shapes_.push_back(std::move(reversed));
    }
    edges_.push_back(edge);
    edges_.push_back(opposite);
}

tav::Point2DF CAutoLoop::secondPoint(const CLoopEdge& edge) const
{
    if (edge.shape < 0) return pointOf(edge.endNode);
    return shapes_[static_cast<std::size_t>(edge.shape)].points[1];
}

int CAutoLoop::pointInPolygon(const Points& polygon, double x, double y)
{
    const int n = polygon.size();
    if (n < 3) return 0;
    bool inside = false;
    for (int i = 0, j = n - 1; i < n; j = i++) {
        const tav::Point2DF& a = polygon[i];
        const tav::Point2DF& b = polygon[j];
        if (pointOnSegment({x, y}, a, b)) return 0;
        if (!((a.y() <= y && y < b.y()) || (b.y() <= y && y < a.y()))) continue;
        const double crossing = (b.x() - a.x()) * (y - a.y()) / (b.y() - a.y()) + a.x();
        if (crossing > x) inside = !inside;
    }
    return inside ? -1 : 1;
}

}  // namespace AutoB
