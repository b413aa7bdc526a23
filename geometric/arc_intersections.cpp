// Where arcs are met: by the line of a segment, by a circle, by another arc. All in plan.
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "frame/detail/vec3.h"
#include "geometric/CGeometric.h"
#include "geometric/detail/arc.h"
#include "geometric/detail/auxiliary.h"

using namespace calcora::paths;

namespace {

/// Drawing units: a line this near to touching a circle touches it. lineCircleIntersections().
constexpr double kLineTouching = 1e-6;

/// Drawing units: a foot nearer the segment's start is the start. lineCircleIntersections().
constexpr double kFootAtStart = 1e-8;

/// The line with which a path that could not be created for lineCircleIntersections() is reported.
constexpr int kLinePathReport = 1304;

/// Drawing units: centres and radii nearer than this are the same circle. intersectArcs().
constexpr double kSameArcCircle = 1e-6;

/// Drawing units: circles of arcs this near to touching touch in one point. intersectArcs().
constexpr double kArcTouching = 1e-6;

constexpr short kInvalid = -1;
constexpr short kSameCircle = 3;

constexpr double kUnset = std::numeric_limits<double>::quiet_NaN();

/// A circle in plan.
struct Circle {
    tav::Point3DF centre;
    double radius = 0.0;
};

/// An arc segment and its circle.
struct ArcOnCircle {
    ArcPoints points;
    Circle circle;
};

/// Up to two points, or one of the codes kInvalid and kSameCircle.
struct Meeting {
    short code = 0;
    tav::Point3DF points[2];

    void keep(const tav::Point3DF& p) { points[code++] = p; }
};

/// Arc segment i of the path; nothing for a bad index, a straight segment and one without a circle.
std::optional<ArcOnCircle> arcOnCircle(IGeometric& self, const geo::PathRef& path, int i)
{
    const auto points = arcSegment(path, i);
    Circle circle;
    if (!points || !self.segmentArcCircle2d(path, i, circle.centre, circle.radius) ||
        !(circle.radius > 0))
        return std::nullopt;
    return ArcOnCircle{*points, circle};
}

/// Whether a point of the arc's circle lies on the arc: on its side of the chord.
bool holds(IGeometric& self, const ArcPoints& arc, const tav::Point3DF& p)
{
    return self.sameSideOfLine(arc.a, arc.b, arc.m, p);
}

/// Where two circles meet: the foot of the points on the line of centres and their height over it.
Meeting meetCircles(const Circle& first, const Circle& second)
{
    const Vec3 d = planBetween(first.centre, second.centre);
    const double apart = length(d);
    const double r1 = first.radius;
    const double r2 = second.radius;
    if (!std::isfinite(apart) || !isUsableLength(r1) || !isUsableLength(r2)) return {kInvalid, {}};
    if (apart < kSameArcCircle)
        return {std::fabs(r1 - r2) < kSameArcCircle ? kSameCircle : short{0}, {}};

    const Vec3 unit = d / apart;
    const auto at = [&](double along, double across) {
        const Vec3 offset{along * unit.x - across * unit.y, along * unit.y + across * unit.x, 0.0};
        return inPlan(moved(first.centre, offset));
    };
    Meeting meeting;
    if (std::fabs(apart - (r1 + r2)) < kArcTouching) {
        meeting.keep(at(r1, 0.0));
    } else if (std::fabs(apart - std::fabs(r1 - r2)) < kArcTouching) {
        meeting.keep(at(r1 > r2 ? r1 : -r1, 0.0));
    } else if (apart < r1 + r2 && apart > std::fabs(r1 - r2)) {
        const double along = (apart + (r1 - r2) * ((r1 + r2) / apart)) / 2;
        const double across = std::sqrt(std::max(0.0, (r1 - along) * (r1 + along)));
        meeting.keep(at(along, -across));
        meeting.keep(at(along, across));
    }
    return meeting;
}

/// How far along the arc a point of its circle lies; a point just before the start counts as
/// negative.
double placeOnArc(const Arc& arc, const tav::Point3DF& p)
{
    const double angle = arc.angleTowards(inPlan(p));
    const double middleOfGap = arc.sweep + (kTwoPi - arc.sweep) / 2;
    return angle > middleOfGap ? angle - kTwoPi : angle;
}

/// The points of `candidates` on the arc (and on `other` when there is one), in order along it.
Meeting onArc(IGeometric& self, const Meeting& candidates, const ArcPoints& arc,
              const ArcPoints* other)
{
    Meeting kept;
    for (short k = 0; k < candidates.code; ++k) {
        const tav::Point3DF& p = candidates.points[k];
        if (isFinite(p) && holds(self, arc, p) && (!other || holds(self, *other, p))) kept.keep(p);
    }
    const auto curve = planArcThrough(arc.a, arc.m, arc.b);
    if (kept.code == 2 && curve &&
        placeOnArc(*curve, kept.points[1]) < placeOnArc(*curve, kept.points[0]))
        std::swap(kept.points[0], kept.points[1]);
    return kept;
}

/// Writes the points that are counted.
short write(const Meeting& meeting, tav::Point3DF& p1, tav::Point3DF& p2)
{
    if (meeting.code == 1 || meeting.code == 2) p1 = meeting.points[0];
    if (meeting.code == 2) p2 = meeting.points[1];
    return meeting.code;
}

}  // namespace

short CGeometric::lineCircleIntersections(const PathRef& path, int i, const Point3DF& centre,
                                          double radius, Point3DF& p1, Point3DF& p2)
{
    const PathView view(path);
    if (!view.hasSegment(i) || !isUsableLength(radius)) return kInvalid;
    const Point3DF a = inPlan(view.point(i));
    const Vec3 along = planBetween(a, view.point(i + 1));
    const Vec3 toCentre = planBetween(a, centre);
    const double size = length(along);
    if (!isFinite(a) || !isFinite(toCentre) || !std::isfinite(size)) return kInvalid;

    // The segment and the centre told from a, where the digits of survey coordinates are free.
    const auto line = createOrReport<geo::IPath>(kGeometricSource, kLinePathReport);
    const auto points = line.query<geo::IPointCollection>();
    if (!points) return kInvalid;
    points->addPoint({});
    points->addPoint(toPoint(along));

    Meeting meeting;
    if (size > 0) {
        Point3DF foot(kUnset, kUnset, kUnset);
        double offset = kUnset;
        projectPointToSegment(line, 0, toPoint(toCentre), foot);
        pointOffsetFromSegmentLine2d(line, 0, toPoint(toCentre), offset);
        if (!isFinite(foot) || !std::isfinite(offset)) return kInvalid;
        const Vec3 toFoot = planBetween({}, foot);
        const double away = std::fabs(offset);
        if (std::fabs(away - radius) < kLineTouching) {
            meeting.keep(inPlan(moved(a, toFoot)));
        } else if (radius > away) {
            // From the foot towards a; from a itself towards the segment's end.
            const bool towardsEnd = length(toFoot) < kFootAtStart || dot(toFoot, along) < 0;
            const double half = std::sqrt((radius - away) * (radius + away));
            const Vec3 step = ((towardsEnd ? half : -half) / size) * along;
            meeting.keep(inPlan(moved(a, toFoot + step)));
            meeting.keep(inPlan(moved(a, toFoot - step)));
        }
    }
    if (!isFinite(meeting.points[0]) || !isFinite(meeting.points[1])) return kInvalid;
    p1 = meeting.points[0];
    p2 = meeting.points[1];
    return meeting.code;
}

short CGeometric::intersectSegmentArc(const PathRef& a, int i, const PathRef& b, int j,
                                      Point3DF& p1, Point3DF& p2)
{
    const auto arc = arcSegment(b, j);
    if (!PathView(a).hasSegment(i) || !arc) return kInvalid;
    Circle circle;
    if (!circleFrom3Points2d(arc->a, arc->b, inPlan(arc->m), circle.centre, circle.radius))
        return 0;

    Meeting crossings;
    crossings.code = lineCircleIntersections(a, i, circle.centre, circle.radius,
                                             crossings.points[0], crossings.points[1]);
    Meeting kept;
    for (short k = 0; k < crossings.code && crossings.code <= 2; ++k)
        if (holds(*this, *arc, crossings.points[k])) kept.keep(crossings.points[k]);
    return write(kept, p1, p2);
}

short CGeometric::intersectArcs(const PathRef& a, int i, const PathRef& b, int j, Point3DF& p1,
                                Point3DF& p2)
{
    const auto first = arcOnCircle(*this, a, i);
    const auto second = first ? arcOnCircle(*this, b, j) : std::nullopt;
    if (!second) return kInvalid;
    const Meeting candidates = meetCircles(first->circle, second->circle);
    if (candidates.code < 0 || candidates.code == kSameCircle) return candidates.code;
    return write(onArc(*this, candidates, first->points, &second->points), p1, p2);
}

short CGeometric::segmentArcIntersections(const PathRef& path, int i, const Point3DF& centre,
                                          double radius, Point3DF& p1, Point3DF& p2)
{
    const auto arc = arcOnCircle(*this, path, i);
    if (!arc) return kInvalid;
    const Meeting candidates = meetCircles(arc->circle, {inPlan(centre), radius});
    if (candidates.code < 0 || candidates.code == kSameCircle) return kInvalid;
    return write(onArc(*this, candidates, arc->points, nullptr), p1, p2);
}
