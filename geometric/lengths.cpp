// The length of a path, in plan and in space, arcs by their true sweep.
#include <algorithm>
#include <cmath>
#include <optional>

#include "frame/detail/vec3.h"
#include "geometric/CGeometric.h"
#include "geometric/detail/arc.h"
#include "geometric/detail/auxiliary.h"

using namespace calcora::paths;

namespace {

/// What unusable paths measure.
constexpr double kNoLength = -1.0;

/// Radians: below this angle between the radii its cosine has lost too many digits, and the chord
/// gives it instead. polylineLength2d().
constexpr double kSmallAngle = 0.01;

/// The sweep of the plan arc from a through m to b, unfolded from the angle that slot 20 gives
/// between its radii. Nothing when an object could not be created.
std::optional<double> planSweep(IGeometric& geometric, const tav::Point3DF& a,
                                const tav::Point3DF& b, const tav::Point3DF& m,
                                const tav::Point3DF& centre, double radius)
{
    if (endsMeetInPlan(a, b)) return kTwoPi;
    const geo::PathRef toStart = segmentPath(centre, a);
    if (!toStart) return std::nullopt;
    const geo::PathRef toEnd = segmentPath(centre, b);
    if (!toEnd) return std::nullopt;
    double angle = 0.0;
    geometric.angleBetweenSegments2d(toStart, 0, toEnd, 0, angle);

    const Vec3 chord = planBetween(a, b);
    double minor = std::min(angle, kTwoPi - angle);
    if (minor < kSmallAngle) minor = 2 * clampedAsin(length(chord) / (2 * radius));
    const bool centreLeft = planCross(chord, planBetween(a, centre)) > 0;
    const bool arcPointLeft = planCross(chord, planBetween(a, m)) > 0;
    return centreLeft != arcPointLeft ? minor : kTwoPi - minor;
}

/// The plan length of the segment from a to b, an arc when there is an arc point. Nothing when it
/// has none or an object could not be created.
std::optional<double> planLength(IGeometric& geometric, const tav::Point3DF& a,
                                 const tav::Point3DF& b,
                                 const std::optional<tav::Point3DF>& arcPoint)
{
    const geo::PathRef path = segmentPath(a, b, arcPoint);
    if (!path) return std::nullopt;
    if (arcPoint) {
        tav::Point3DF centre;
        double radius = 0.0;
        if (geometric.segmentArcCircle2d(path, 0, centre, radius)) {
            const auto sweep = planSweep(geometric, a, b, *arcPoint, centre, radius);
            if (!sweep) return std::nullopt;
            return radius * *sweep;
        }
        if (!areCollinear(a, b, *arcPoint)) return std::nullopt;
    }
    double chord = 0.0;
    if (!geometric.segmentLength3d(path, 0, chord)) return std::nullopt;
    return chord;
}

}  // namespace

double CGeometric::pointListLength2d(const PointList& points)
{
    const PathRef path = pathThrough(points);
    return path ? polylineLength2d(path) : kNoLength;
}

double CGeometric::polylineLength2d(const PathRef& path)
{
    const PathView view(path);
    if (view.pointCount() < 2) return kNoLength;
    const auto geometric = createAuxiliary<IGeometric>();
    if (!geometric) return kNoLength;
    const ArcIndex arcs(view);
    double total = 0.0;
    for (int i = 0; i + 1 < view.pointCount(); ++i) {
        auto arcPoint = arcs.arcPoint(i);
        if (arcPoint) arcPoint = inPlan(*arcPoint);
        const auto part =
            planLength(*geometric, inPlan(view.point(i)), inPlan(view.point(i + 1)), arcPoint);
        if (!part) return kNoLength;
        total += *part;
    }
    return std::isfinite(total) ? total : kNoLength;
}

double CGeometric::polylineLength3d(const PathRef& path)
{
    const PathView view(path);
    if (view.pointCount() < 2) return kNoLength;
    const ArcIndex arcs(view);
    double total = 0.0;
    for (int i = 0; i + 1 < view.pointCount(); ++i) {
        const Point3DF a = view.point(i);
        const Point3DF b = view.point(i + 1);
        const auto arcPoint = arcs.arcPoint(i);
        const auto arc = arcPoint ? arcThrough(a, *arcPoint, b) : std::nullopt;
        total += arc ? arc->arcLength() : length(between(a, b));
    }
    return std::isfinite(total) ? total : kNoLength;
}
