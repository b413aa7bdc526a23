// The graph of the loop builder: nodes, half-edges, and the point-in-polygon test.
#include "datageo/autob/CAutoLoop.h"

#include <cmath>
#include <utility>

#include "common/detail/primitives.h"
#include "datageo/autob/set_nodes.h"

namespace AutoB {

using calcora::detail::cross;
using calcora::detail::dot;
using calcora::detail::pointDistSquared;

namespace {

/// Bulge from which a single segment is kept as an arc.
constexpr double kEdgeArcBulge = 1e-7;

/// Squared distance from a segment's line within which a point lies on it.
constexpr double kOnSegmentSquared = 1e-12;

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

CAutoLoop::CAutoLoop() = default;

CAutoLoop::~CAutoLoop() = default;

void CAutoLoop::addSegments(const calcora::SegmentSet& set, bool keepDirection)
{
    calcora::CancelCheck check(cancelFlag_);
    edges_.reserve(edges_.size() + set.segments.size() * 2);
    lines_.reserve(lines_.size() + set.segments.size());
    if (!edges_.empty() || !nodePoints_.empty()) {
        for (const calcora::SegmentKey& segment : set.segments) {
            check();
            addSegment(segment, keepDirection, 0);
        }
        return;
    }
    SetNodes nodes = nodesOfSet(set, keepDirection, check);
    nodePoints_ = std::move(nodes.points);
    nodesAreInSetOrder_ = true;
    const auto& endsOf = nodes.endsOf.empty() ? set.endsOf : nodes.endsOf;
    for (std::size_t i = 0; i < set.segments.size(); ++i) {
        check();
        if (!hasExtent(set.segments[i])) continue;
        const auto [start, end] = endsOf[i];
        const double bulge = set.segments[i].bulge;
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

    CLoopLine line;
    line.shape = static_cast<int>(shapes_.size());
    line.tag = tag;
    line.keepDirection = keepDirection;
    const int start = findOrAddNode(shapePoints.first());
    addEdgePair(start, findOrAddNode(shapePoints.last()), line);
    Shape reversed{points, bulges};
    calcora::detail::reversePoints(reversed.points);
    calcora::detail::reverseBulges(reversed.bulges);
    shapes_.push_back({points, bulges});
    shapes_.push_back(std::move(reversed));
}

void CAutoLoop::addSegment(const calcora::SegmentKey& segment, bool keepDirection, int tag)
{
    if (!hasExtent(segment)) return;
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
    CLoopLine line;
    line.bulge = std::fabs(bulge) > kEdgeArcBulge ? bulge : 0.0;
    line.tag = tag;
    line.keepDirection = keepDirection;
    addEdgePair(startNode, endNode, line);
}

/// Appends a half-edge and its opposite.
void CAutoLoop::addEdgePair(int startNode, int endNode, const CLoopLine& line)
{
    edges_.push_back({startNode, -1});
    edges_.push_back({endNode, -1});
    lines_.push_back(line);
}

/// The bulge of a half-edge's first segment.
double CAutoLoop::bulgeOf(int edge) const
{
    const CLoopLine& line = lineOf(edge);
    if (line.shape >= 0)
        return shapes_[static_cast<std::size_t>(line.shape + (edge & 1))].bulges.first();
    return (edge & 1) != 0 ? -line.bulge : line.bulge;
}

tav::Point2DF CAutoLoop::secondPoint(int edge) const
{
    const CLoopLine& line = lineOf(edge);
    if (line.shape < 0) return pointOf(startOf(edge ^ 1));
    return shapes_[static_cast<std::size_t>(line.shape + (edge & 1))].points[1];
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
