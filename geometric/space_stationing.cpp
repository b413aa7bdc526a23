// Stations along a path in space.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>

#include "frame/detail/vec3.h"
#include "geometric/CGeometric.h"
#include "geometric/detail/arc.h"
#include "geometric/detail/auxiliary.h"

using namespace calcora::paths;

namespace {

/// Drawing units: a station this near the start of the path or the end of an arc is that point.
constexpr double kStationTolerance = 1e-6;

/// Characters of the debug line that tells the first point.
constexpr std::size_t kCoordinateLineLimit = 511;

/// A segment as it counts in space.
struct SpaceSegment {
    tav::Point3DF a;
    tav::Point3DF b;
    std::optional<tav::Point3DF> arcPoint;  ///< set when it counts as an arc
    tav::Point3DF centre;
    double radius = 0.0;
    double length = 0.0;
};

/// Segment i as it counts: an arc by its radius and the angle of slot 18 between the radii to its
/// ends, collinear arc points as their chord. Nothing when an operation that it needs fails.
std::optional<SpaceSegment> spaceSegment(IGeometric& self, const PathView& path,
                                         const ArcIndex& arcs, int i)
{
    SpaceSegment segment{path.point(i), path.point(i + 1), std::nullopt, {}, 0.0, 0.0};
    segment.length = length(between(segment.a, segment.b));
    const auto arcPoint = arcs.arcPoint(i);
    if (!arcPoint) return segment;
    if (!self.circleFrom3Points3d(segment.a, segment.b, *arcPoint, segment.centre,
                                  segment.radius)) {
        if (areCollinear(segment.a, segment.b, *arcPoint)) return segment;
        return std::nullopt;
    }
    const geo::PathRef toStart = segmentPath(segment.centre, segment.a);
    if (!toStart) return std::nullopt;
    const geo::PathRef toEnd = segmentPath(segment.centre, segment.b);
    if (!toEnd) return std::nullopt;
    double angle = 0.0;
    self.angleBetweenSegments3d(toStart, 0, toEnd, 0, angle);
    segment.arcPoint = arcPoint;
    segment.length = std::fabs(angle) * segment.radius;
    return segment;
}

/// The unit axis about which the arc runs counter-clockwise from its start through its arc point.
std::optional<Vec3> arcAxis(const SpaceSegment& segment)
{
    const Vec3 toArcPoint = between(segment.a, *segment.arcPoint);
    if (endsMeetInSpace(segment.a, segment.b)) {
        const double diameter = length(toArcPoint);
        if (!isUsableLength(diameter)) return std::nullopt;
        return mostUprightNormal(toArcPoint / diameter);
    }
    const Vec3 n = cross(between(segment.a, segment.b), toArcPoint);
    const double size = length(n);
    if (!isUsableLength(size)) return std::nullopt;
    return -n / size;
}

/// The point `along` the arc: the start radius turned about the arc's axis.
std::optional<tav::Point3DF> pointOnArc(const SpaceSegment& segment, double along)
{
    const auto axis = arcAxis(segment);
    if (!axis || !(segment.radius > 0)) return std::nullopt;
    const Vec3 startRadius = between(segment.centre, segment.a);
    const double half = along / segment.radius / 2;
    const double sine = std::sin(half);
    const Vec3 level = startRadius - dot(*axis, startRadius) * *axis;
    const Vec3 across = cross(*axis, startRadius);
    return moved(segment.a, 2 * sine * (std::cos(half) * across - sine * level));
}

/// The point at `distance` from the first point of the path, which is not the first point itself.
std::optional<tav::Point3DF> walk(IGeometric& self, const PathView& path, double distance)
{
    const ArcIndex arcs(path);
    double station = 0.0;
    for (int i = 0; i + 1 < path.pointCount(); ++i) {
        const auto segment = spaceSegment(self, path, arcs, i);
        if (!segment) return std::nullopt;
        const double end = station + segment->length;
        if (!std::isfinite(end)) return std::nullopt;
        if (segment->arcPoint) {
            if (distance < end && segment->radius > 0)
                return pointOnArc(*segment, distance - station);
            if (std::fabs(end - distance) < kStationTolerance) return segment->b;
        } else if (distance <= end && distance > 0 && segment->length > 0) {
            const double t = (distance + segment->length - end) / segment->length;
            return moved(segment->a, t * between(segment->a, segment->b));
        }
        station = end;
    }
    return std::nullopt;
}

/// Six decimals with a point, whatever the locale.
void appendFixed(std::string& text, double value)
{
    char digits[352];  // 309 before the point, 6 behind it
    const auto end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 6);
    text.append(digits, end.ptr);
}

std::string coordinateLine(const tav::Point3DF& p)
{
    std::string text = "x:";
    appendFixed(text, p.x());
    text += " y:";
    appendFixed(text, p.y());
    text += " z:";
    appendFixed(text, p.z());
    text.resize(std::min(text.size(), kCoordinateLineLimit));
    return text;
}

void debugLine(const char* text, int line = __builtin_LINE())
{
    tav::MessageLogger(kGeometricSource, line, "CGeometric::pointDistFromPolyline3d").debug()
        << text;
}

}  // namespace

bool CGeometric::pointDistFromPolyline3d(const PathRef& path, double distance, Point3DF& point)
{
    debugLine("pointDistFromPolyline3d:1");
    const PathView view(path);
    debugLine("pointDistFromPolyline3d:2");
    if (view.pointCount() < 1) return false;
    view->firstPoint();
    view.point(0);
    for (int i = 0; i < view.pointCount(); ++i) view.point(i);
    debugLine("pointDistFromPolyline3d:3");
    if (std::fabs(distance - 0) < kStationTolerance) {
        debugLine("pointDistFromPolyline3d:4");
        const Point3DF first = view->firstPoint();
        debugLine("pointDistFromPolyline3d:5");
        debugLine(coordinateLine(first).c_str());
        point = first;
        debugLine("pointDistFromPolyline3d:6");
        return true;
    }
    const auto found = walk(*this, view, distance);
    if (!found || !isFinite(*found)) return false;
    point = *found;
    return true;
}

bool CGeometric::pointRatioFromPolyline3d(const PathRef& path, double ratio, Point3DF& point)
{
    if (!(ratio >= 0 && ratio <= 1)) return false;
    const PathView view(path);
    if (view.pointCount() < 2) return false;
    const auto total = totalLength(
        view, [&](const ArcIndex& arcs, int i) { return spaceSegment(*this, view, arcs, i); });
    return total && pointDistFromPolyline3d(path, *total * ratio, point);
}
