#include "app/segment_index.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace calcora::app {

namespace {

using tav::Point2DF;

std::vector<Segment> segmentsOf(const Points& points, const Values& bulges)
{
    std::vector<Segment> segments;
    for (int i = 0; i + 1 < points.size(); ++i)
        segments.push_back({points.at(i), points.at(i + 1), bulges.at(i)});
    return segments;
}

/// Whether a ray from the point to the right crosses the chord.
bool chordIsRightOf(const Segment& segment, const Point2DF& point)
{
    const Point2DF& a = segment.from;
    const Point2DF& b = segment.to;
    if ((a.y() <= point.y()) == (b.y() <= point.y())) return false;
    return point.x() - a.x() < (b.x() - a.x()) * ((point.y() - a.y()) / (b.y() - a.y()));
}

/// True between the arc and its chord: there, and only there, the ray crosses one of them more.
bool isUnderArc(IcommonFunc& common, const Segment& segment, const Point2DF& point)
{
    if (std::fabs(segment.bulge) < kArcBulge) return false;
    const Point2DF chord = segment.to - segment.from;
    const Point2DF toPoint = point - segment.from;
    const double side = chord.x() * toPoint.y() - chord.y() * toPoint.x();
    if ((segment.bulge > 0) != (side < 0)) return false;
    Point2DF centre;
    double radius = 0;
    common.bulgeArcCenter(segment.from, segment.to, segment.bulge, centre, &radius);
    return centre.distanceTo(point) < radius;
}

}  // namespace

double boxDistance(const Box& box, const Point2DF& point)
{
    const double x = std::max({box.minX - point.x(), point.x() - box.maxX, 0.0});
    const double y = std::max({box.minY - point.y(), point.y() - box.maxY, 0.0});
    return std::sqrt(x * x + y * y);
}

SegmentIndex::SegmentIndex(const Points& points, const Values& bulges)
    : SegmentIndex(segmentsOf(points, bulges))
{
}

SegmentIndex::SegmentIndex(std::vector<Segment> segments) : segments_(std::move(segments))
{
    std::vector<Box> boxes;
    for (const Segment& segment : segments_)
        boxes.push_back(segmentBox(segment.from, segment.to, segment.bulge));
    tree_ = BoundsTree(std::move(boxes));
}

int nearestSegment(IcommonFunc& common, const SegmentIndex& index, const Point2DF& point)
{
    int nearest = -1;
    double least = std::numeric_limits<double>::infinity();
    index.search(
        point, [&](const Box& box) { return boxDistance(box, point) < least; },
        [&](int i) {
            const Segment& segment = index.segment(i);
            const double distance = std::sqrt(common.pointBulgeSegmentDistSquared(
                point, segment.from, segment.to, segment.bulge));
            if (!(distance < least)) return;
            least = distance;
            nearest = i;
        });
    return nearest;
}

bool isInside(IcommonFunc& common, const SegmentIndex& ring, const Point2DF& point)
{
    bool inside = false;
    ring.search(
        point,
        [&](const Box& box) {
            return box.minY <= point.y() && point.y() <= box.maxY && point.x() <= box.maxX;
        },
        [&](int i) {
            const Segment& segment = ring.segment(i);
            inside =
                inside != (chordIsRightOf(segment, point) != isUnderArc(common, segment, point));
        });
    return inside;
}

double shareOf(IcommonFunc& common, const Segment& segment, const Point2DF& point)
{
    if (std::fabs(segment.bulge) < kArcBulge)
        return common.projectionRatio(point, segment.from, segment.to);
    Point2DF centre;
    double radius = 0;
    common.bulgeArcCenter(segment.from, segment.to, segment.bulge, centre, &radius);
    return common.arcSweepFraction(point, centre, segment.from, segment.to, segment.bulge < 0);
}

Point2DF pointAt(IcommonFunc& common, const Segment& segment, double share)
{
    if (share <= 0) return segment.from;
    if (share >= 1) return segment.to;
    Point2DF point = segment.from;
    common.pointOnBulgeSegmentAtRatio(segment.from, segment.to, segment.bulge, share, point);
    return point;
}

}  // namespace calcora::app
