// Stations along a path in plan: the angle between segments, the bulge of an arc, the point at a
// running length.
#include <algorithm>
#include <cmath>
#include <optional>

#include "frame/detail/circumcentre.h"
#include "frame/detail/vec3.h"
#include "geometric/CGeometric.h"
#include "geometric/detail/arc.h"
#include "geometric/detail/auxiliary.h"

using namespace calcora::paths;

namespace {

/// Cosine below which two segments are perpendicular, so that their sense is looked at.
/// angleBetweenSegments2d().
constexpr double kPerpendicularCosine = 1e-6;

/// Twice a triangle's area, in square drawing units, below which an arc is its chord. arcBulge().
constexpr double kFlatArcArea = 1e-6;

/// How far along the chord, in drawing units and as a share of the radius, an arc point may lie
/// from the arc's middle and still be the middle as a drawing stores it. arcBulge().
constexpr double kMiddleTolerance = 0.002;
constexpr double kMiddleShare = 0.01;

/// Drawing units: a station this near the end of a segment is that end.
constexpr double kStationTolerance = 1e-6;

/// The angle that slot 20 gives between the plan vectors from `origin1` to `tip1` and from
/// `origin2` to `tip2`, 0 when it gives none; nothing when an object could not be created.
std::optional<double> segmentAngle(IGeometric& self, const Vec3& origin1, const Vec3& tip1,
                                   const Vec3& origin2, const Vec3& tip2)
{
    const geo::PathRef first = segmentPath(toPoint(origin1), toPoint(tip1));
    if (!first) return std::nullopt;
    const geo::PathRef second = segmentPath(toPoint(origin2), toPoint(tip2));
    if (!second) return std::nullopt;
    double angle = 0.0;
    self.angleBetweenSegments2d(first, 0, second, 0, angle);
    return angle;
}

/// Whether the bulge of the arc from the origin to u about `centre` is negative; v is its arc
/// point.
std::optional<bool> bulgeIsNegative(IGeometric& self, const Vec3& u, const Vec3& v,
                                    const Vec3& centre)
{
    const Vec3 toArcPoint = v - centre;
    const double fromMiddle = std::fabs(dot(toArcPoint, u)) / length(u);
    if (fromMiddle <= std::min(kMiddleTolerance, kMiddleShare * length(centre)))
        return planCross(u, toArcPoint) < 0;
    const auto angle = segmentAngle(self, {}, u, centre, v);
    if (!angle) return std::nullopt;
    return *angle >= kPi;
}

/// arcBulge(), or nothing when an object could not be created.
std::optional<double> bulgeThrough(IGeometric& self, const tav::Point3DF& a, const tav::Point3DF& b,
                                   const tav::Point3DF& m)
{
    const Vec3 u = planBetween(a, b);
    const Vec3 v = planBetween(a, m);
    if (!(std::fabs(planCross(u, v)) >= kFlatArcArea)) return 0.0;
    const Vec3 centre = planCircumcentre(u, v);
    if (!isFinite(centre)) return 0.0;
    const auto sweep = segmentAngle(self, centre, {}, centre, u);
    const auto negative = sweep ? bulgeIsNegative(self, u, v, centre) : std::nullopt;
    if (!negative) return std::nullopt;
    const double bulge = std::tan(*sweep / 4);
    return *negative ? -bulge : bulge;
}

/// A segment as it counts in plan.
struct PlanSegment {
    tav::Point3DF a;
    tav::Point3DF b;
    std::optional<tav::Point3DF> arcPoint;  ///< set when it counts as an arc
    double bulge = 0.0;
    double length = 0.0;
};

/// The plan sweep that counts for a bulge; it never exceeds pi.
double sweepOfBulge(double bulge)
{
    const double sweep = 4 * std::atan(std::fabs(bulge));
    return std::fabs(bulge) <= 1 ? sweep : kTwoPi - sweep;
}

/// Segment i as it counts: an arc by its bulge, one without a bulge as its chord. Nothing when an
/// object could not be created.
std::optional<PlanSegment> planSegment(CGeometric& self, const PathView& path, const ArcIndex& arcs,
                                       int i)
{
    PlanSegment segment{path.point(i), path.point(i + 1), std::nullopt, 0.0, 0.0};
    segment.length = length(planBetween(segment.a, segment.b));
    const auto arcPoint = arcs.arcPoint(i);
    if (!arcPoint) return segment;
    const auto bulge = bulgeThrough(self, segment.a, segment.b, *arcPoint);
    if (!bulge) return std::nullopt;
    const double sweep = sweepOfBulge(*bulge);
    const double arcLength = segment.length * sweep / (2 * std::sin(sweep / 2));
    if (!isUsableLength(arcLength)) return segment;
    segment.arcPoint = arcPoint;
    segment.bulge = *bulge;
    segment.length = arcLength;
    return segment;
}

tav::Point3DF pointOnChord(const PlanSegment& segment, double t)
{
    return {segment.a.x() + t * (segment.b.x() - segment.a.x()),
            segment.a.y() + t * (segment.b.y() - segment.a.y()), 0.0};
}

/// The point `along` the arc of segment i. Nothing when an operation that it needs fails.
std::optional<tav::Point3DF> pointOnArc(IGeometric& self, const geo::PathRef& path, int i,
                                        const PlanSegment& segment, double along)
{
    tav::Point3DF centre;
    double radius = 0.0;
    if (!self.segmentArcCircle2d(path, i, centre, radius)) {
        const bool noCircle =
            areCollinear(inPlan(segment.a), inPlan(segment.b), inPlan(*segment.arcPoint));
        if (noCircle) return pointOnChord(segment, along / segment.length);
        return std::nullopt;
    }
    double start = 0.0;
    if (!self.directionAngle2d(centre, segment.a, start) || !(radius > 0)) return std::nullopt;
    const double turn = along / radius;
    const double angle = segment.bulge > 0 ? start - turn : start + turn;
    return tav::Point3DF(centre.x() + radius * std::cos(angle),
                         centre.y() + radius * std::sin(angle), 0.0);
}

}  // namespace

short CGeometric::angleBetweenLines2d(const Point3DF& a1, const Point3DF& a2, const Point3DF& b1,
                                      const Point3DF& b2, double& angle)
{
    const PathRef first = segmentPath(a1, a2);
    if (!first) return 0;
    const PathRef second = segmentPath(b1, b2);
    if (!second) return 0;
    return angleBetweenSegments2d(first, 0, second, 0, angle);
}

short CGeometric::angleBetweenSegments2d(const PathRef& a, int i, const PathRef& b, int j,
                                         double& angle)
{
    const PathView first(a);
    const PathView second(b);
    if (!first.hasSegment(i) || !second.hasSegment(j)) return 0;
    const Vec3 u = planBetween(first.point(i), first.point(i + 1));
    const Vec3 v = planBetween(second.point(j), second.point(j + 1));
    const double product = length(u) * length(v);
    if (!isUsableLength(product)) return 0;
    const double cosine = dot(u, v) / product;
    const double sense = planCross(u, v);
    double folded = std::atan2(std::fabs(sense), dot(u, v));
    if (cosine > 1) folded = 0.0;
    if (cosine < -1) folded = kPi;
    if (std::fabs(cosine) < kPerpendicularCosine)
        folded = sense >= 0 ? kPi * 0.5 : 1.5 * kPi;
    else if (dot(u, v) < 0)
        folded = kTwoPi - folded;
    if (!std::isfinite(folded)) return 0;
    angle = folded;
    return 1;
}

double CGeometric::arcBulge(const Point3DF& a, const Point3DF& b, const Point3DF& m)
{
    return bulgeThrough(*this, a, b, m).value_or(0.0);
}

bool CGeometric::pointDistFromPointList(const PointList& points, double distance, Point3DF& point)
{
    const PathRef path = pathThrough(points);
    return path && pointDistFromPolyline(path, distance, point);
}

bool CGeometric::pointDistFromPolyline(const PathRef& path, double distance, Point3DF& point)
{
    const PathView view(path);
    const ArcIndex arcs(view);
    double station = 0.0;
    for (int i = 0; i + 1 < view.pointCount(); ++i) {
        const auto segment = planSegment(*this, view, arcs, i);
        if (!segment) return false;
        const double end = station + segment->length;
        if (!std::isfinite(end)) return false;
        if (segment->length > 0 && distance < end) {
            const double onChord = (distance - (end - segment->length)) / segment->length;
            const auto found = segment->arcPoint
                                   ? pointOnArc(*this, path, i, *segment, distance - station)
                                   : pointOnChord(*segment, onChord);
            if (!found || !isFinite(*found)) return false;
            point = *found;
            return true;
        }
        if (std::fabs(end - distance) < kStationTolerance) {
            point = inPlan(segment->b);
            return true;
        }
        station = end;
    }
    return false;
}

bool CGeometric::pointRatioFromPointList(const PointList& points, double ratio, Point3DF& point)
{
    const PathRef path = pathThrough(points);
    return path && pointRatioFromPolyline(path, ratio, point);
}

bool CGeometric::pointRatioFromPolyline(const PathRef& path, double ratio, Point3DF& point)
{
    if (!(ratio >= 0 && ratio <= 1)) return false;
    const PathView view(path);
    if (view.pointCount() < 2) return false;
    const auto total = totalLength(
        view, [&](const ArcIndex& arcs, int i) { return planSegment(*this, view, arcs, i); });
    return total && pointDistFromPolyline(path, *total * ratio, point);
}

bool CGeometric::midPointOfPointList(const PointList& points, Point3DF& point)
{
    const PathRef path = pathThrough(points);
    return path && midPointOfPolyline(path, point);
}

bool CGeometric::midPointOfPolyline(const PathRef& path, Point3DF& point)
{
    return pointRatioFromPolyline(path, 0.5, point);
}
