// Where a point falls on a segment, straight or arc, and the place of a path nearest a point.
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "frame/detail/vec3.h"
#include "geometric/CGeometric.h"
#include "geometric/detail/arc.h"
#include "geometric/detail/auxiliary.h"

using namespace calcora::paths;

namespace {

/// Drawing units: how far beyond the segment's end a foot still lies on it.
/// projectPointToSegment().
constexpr double kBeyondEnd = 1e-6;

/// Radians: how far the directions to the foot and to the end may differ. projectPointToSegment().
constexpr double kSameDirection = 1e-6;

/// Drawing units: a foot nearer the segment's start is the start and has no direction.
/// projectPointToSegment().
constexpr double kAtStart = 1e-8;

constexpr short kInvalid = -1;
constexpr short kOffSegment = 0;
constexpr short kOnSegment = 1;

bool sameDirection(double angle1, double angle2)
{
    const double apart = std::fabs(angle1 - angle2);
    return std::min(apart, std::fabs(kTwoPi - apart)) < kSameDirection;
}

short projectToStraight(IGeometric& self, const tav::Point3DF& a, const tav::Point3DF& b,
                        const tav::Point3DF& q, tav::Point3DF& foot)
{
    const Vec3 d = planBetween(a, b);
    const double chord = length(d);
    if (!isUsableLength(chord)) return kInvalid;
    const Vec3 toFoot = (dot(planBetween(a, q), d) / dot(d, d)) * d;
    const tav::Point3DF found = inPlan(moved(a, toFoot));
    if (!isFinite(found)) return kInvalid;

    const double away = length(toFoot);
    double ahead = 0.0;
    double towardsFoot = 0.0;
    if (!self.directionAngle2d({}, toPoint(d), ahead)) return kInvalid;
    if (away >= kAtStart && !self.directionAngle2d({}, toPoint(toFoot), towardsFoot))
        return kInvalid;
    foot = found;
    const bool towardsEnd = sameDirection(ahead, towardsFoot) || towardsFoot == 0;
    return away - chord < kBeyondEnd && towardsEnd ? kOnSegment : kOffSegment;
}

short projectToArc(IGeometric& self, const geo::PathRef& path, int i, const PathView& view,
                   const tav::Point3DF& arcPoint, const tav::Point3DF& q, tav::Point3DF& foot)
{
    const tav::Point3DF a = view.point(i);
    const tav::Point3DF b = view.point(i + 1);
    const tav::Point3DF from = inPlan(q);
    tav::Point3DF centre;
    double radius = 0.0;
    double direction = 0.0;
    double away = 0.0;
    if (!self.segmentArcCircle2d(path, i, centre, radius)) return kInvalid;
    if (!self.directionAngle2d({}, toPoint(planBetween(q, centre)), direction)) return kInvalid;
    if (!self.distance3d(from, centre, away)) return kInvalid;
    for (const double reach : {away + radius, away - radius}) {
        tav::Point3DF onCircle;
        self.polarPoint(from, direction, reach, onCircle);
        if (isFinite(onCircle) && self.sameSideOfLine(a, b, arcPoint, onCircle)) {
            foot = onCircle;
            return kOnSegment;
        }
    }
    return kOffSegment;
}

/// The place of the straight segment nearest q, in plan.
tav::Point3DF nearestOnChord(const tav::Point3DF& a, const tav::Point3DF& b, const tav::Point3DF& q)
{
    const Vec3 d = planBetween(a, b);
    const double squared = dot(d, d);
    const double t = dot(planBetween(a, q), d) / squared;
    if (!(squared > 0) || t <= 0) return a;
    return t >= 1 ? b : moved(a, t * d);
}

/// The place of the arc nearest q, in plan: q's own ray from the centre, or the nearer end when
/// that misses the sweep.
tav::Point3DF nearestOnArc(const Arc& arc, const tav::Point3DF& b, const tav::Point3DF& q)
{
    const double angle = arc.angleTowards(q);
    if (angle <= arc.sweep) return arc.pointAt(angle);
    return length(planBetween(arc.start, q)) <= length(planBetween(b, q)) ? arc.start : b;
}

}  // namespace

short CGeometric::projectPointToSegment(const PathRef& path, int i, const Point3DF& q,
                                        Point3DF& foot)
{
    const PathView view(path);
    if (!view.hasSegment(i)) return kInvalid;
    if (const auto arcPoint = view.arcPoint(i))
        return projectToArc(*this, path, i, view, *arcPoint, q, foot);
    return projectToStraight(*this, view.point(i), view.point(i + 1), q, foot);
}

bool CGeometric::nearestPointOnPolyline(const PathRef& path, const Point3DF& q, Point3DF& nearest,
                                        int& segment, double& distance)
{
    const PathView view(path);
    const Point3DF from = inPlan(q);
    if (view.pointCount() < 2 || !isFinite(q)) return false;
    const ArcIndex arcs(view);
    Point3DF best;
    int bestSegment = -1;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (int i = 0; i + 1 < view.pointCount(); ++i) {
        const Point3DF a = inPlan(view.point(i));
        const Point3DF b = inPlan(view.point(i + 1));
        const auto arcPoint = arcs.arcPoint(i);
        const auto arc = arcPoint ? planArcThrough(a, *arcPoint, b) : std::nullopt;
        const Point3DF place = arc ? nearestOnArc(*arc, b, from) : nearestOnChord(a, b, from);
        const double away = length(planBetween(place, from));
        if (away < bestDistance) {
            best = place;
            bestSegment = i;
            bestDistance = away;
        }
    }
    if (bestSegment < 0) return false;
    nearest = best;
    segment = bestSegment;
    distance = bestDistance;
    return true;
}
