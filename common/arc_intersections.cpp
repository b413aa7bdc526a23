// Intersections of arcs with segments and with each other.
//
// Each operation moves its figures so that one of their ends is the origin, finds where line and
// circle, or the two circles, meet, and lets the ranges on both figures decide. Where the figures
// share an end exactly, that end is one of the meeting points and its mirror image the other: a
// rounded corner meets its neighbours tangentially, where computed points would be lost or doubled.

#include <algorithm>
#include <cmath>

#include "common/commonFunc.h"
#include "common/detail/measured_arc.h"
#include "common/detail/meeting_limits.h"
#include "detail/exact_class.h"

using namespace calcora;
using detail::CircleEquation;
using detail::dot;
using detail::isFinite;
using detail::leftNormal;
using detail::lengthSquared;
using detail::MeasuredArc;
using detail::QuadraticRoots;
using tav::Point2DF;

namespace {

/// Drawing units: a mirror image this near to a shared end is that end.
constexpr double kSharedEndReach = 1e-6;
/// Drawing units, resp. drawing units per unit of chord: how far the shorter of two arcs, one of
/// them flat, may lie off the circle of the other and still belong to it.
constexpr double kFlatSameCircle = 1e-6;
/// y difference of a line below which it is horizontal: intersectLineCircleEq() then gives the
/// larger x first, else the larger y.
constexpr double kHorizontalLine = 1e-10;

/// Where two curves meet: up to two points in the moved frame.
struct Meeting {
    int count = 0;
    Point2DF points[2];
    bool sameCircle = false;

    void add(const Point2DF& p)
    {
        if (isFinite(p)) points[count++] = p;
    }
};

/// A meeting point that both ranges let in, with its place on either figure.
struct Hit {
    Point2DF point;
    double onFirst = 0.0;
    double onSecond = 0.0;
};

struct Hits {
    int count = 0;
    Hit items[4];

    void add(const Hit& hit) { items[count++] = hit; }
};

struct Range {
    double lo, hi;
    bool holds(double value) const { return lo <= value && value <= hi; }
};

/// How far an arc is let in before its start, and how far beyond its length.
struct ArcRange {
    double lo, extra;
};

/// The ends that two figures share exactly, as the caller gave them.
struct SharedEnds {
    int count = 0;
    Point2DF points[2];

    SharedEnds(const Point2DF& a0, const Point2DF& a1, const Point2DF& b0, const Point2DF& b1)
    {
        for (const Point2DF* end : {&a0, &a1})
            if (*end == b0 || *end == b1) points[count++] = *end;
    }
};

/// Moves points into the frame of an origin and back; the figures' own ends come back bit for bit.
class LocalFrame {
public:
    LocalFrame(const Point2DF& origin, const Point2DF& a0, const Point2DF& a1, const Point2DF& b0,
               const Point2DF& b1)
        : origin_(origin), ends_{a0, a1, b0, b1}
    {
    }
    Point2DF moved(const Point2DF& p) const { return p - origin_; }
    Point2DF restored(const Point2DF& p) const
    {
        for (const Point2DF& end : ends_)
            if (moved(end) == p) return end;
        return origin_ + p;
    }
    /// What rounding may have moved the given points.
    double roundingReach() const
    {
        return detail::roundingReach(ends_[0], ends_[1], ends_[2], ends_[3]);
    }

private:
    Point2DF origin_;
    Point2DF ends_[4];
};

/// The meeting points of curves that share `end`: that end and its mirror image, in the order in
/// which the points found had them.
Meeting throughSharedEnd(const Meeting& found, const Point2DF& end, const Point2DF& image)
{
    Meeting meeting;
    const bool isOne =
        !isFinite(image) || lengthSquared(image - end) <= kSharedEndReach * kSharedEndReach;
    if (isOne) {
        meeting.add(end);
        return meeting;
    }
    const bool imageFirst = found.count == 2 && lengthSquared(found.points[1] - end) <
                                                    lengthSquared(found.points[0] - end);
    meeting.add(imageFirst ? image : end);
    meeting.add(imageFirst ? end : image);
    return meeting;
}

/// The line a x + b y + c = 0 through two points, with a >= 0.
struct LineEquation {
    double a, b, c;

    LineEquation(const Point2DF& p1, const Point2DF& p2)
        : a(p2.y() - p1.y()), b(p1.x() - p2.x()), c(p1.y() * p2.x() - p1.x() * p2.y())
    {
        if (a < 0) {
            a = -a;
            b = -b;
            c = -c;
        }
    }
};

/// Where the line through two points meets the circle of an arc.
Meeting meetLine(IcommonFunc& common, const Point2DF& a0, const Point2DF& a1,
                 const MeasuredArc& arc)
{
    Meeting meeting;
    if (!arc.isFlat()) {
        const LineEquation line(a0, a1);
        Point2DF first;
        Point2DF second;
        const int count = common.intersectLineCircleEq(arc.centre(), arc.radius(), line.a, line.b,
                                                       line.c, first, second);
        if (count >= 1) meeting.add(first);
        if (count >= 2) meeting.add(second);
        return meeting;
    }
    const Point2DF direction = a1 - a0;
    const QuadraticRoots roots = arc.meetLine(a0, direction);
    if (roots.count == 0) return meeting;
    const bool largerFirst =
        std::fabs(direction.y()) < kHorizontalLine ? direction.x() > 0 : direction.y() > 0;
    for (const bool takeLarger : {largerFirst, !largerFirst}) {
        const Point2DF p = a0 + (takeLarger ? roots.larger : roots.smaller) * direction;
        if (arc.isNear(p)) meeting.add(p);
    }
    return meeting;
}

/// The mirror image of a shared end in the foot of the circle's centre on the line through it along
/// `direction`: the other point in which that line meets the circle. The far side of a flat arc's
/// circle is out of reach, and the end itself takes its place.
Point2DF mirrorImage(const MeasuredArc& arc, const Point2DF& end, const Point2DF& direction)
{
    if (arc.isFlat()) {
        const Point2DF image = end + arc.secondMeeting(end, direction) * direction;
        return arc.isNear(image) ? image : end;
    }
    const double along = dot(end - arc.centre(), direction) / lengthSquared(direction);
    return end - 2 * along * direction;
}

/// The common part of intersectSegmentArc and intersectArcSegment: onFirst is the place on the
/// segment, onSecond that on the arc, where it is asked for.
Hits meetSegmentWithArc(commonFunc& common, detail::CircleMemo* circles, bool placeOnArc,
                        const Point2DF& a0, const Point2DF& a1, const Point2DF& b0,
                        const Point2DF& b1, double bulge, const Range& range, double loArc,
                        double extraArc)
{
    Hits hits;
    const LocalFrame frame(MeasuredArc::isFlatBulge(bulge) ? b0 : a0, a0, a1, b0, b1);
    const Point2DF from = frame.moved(a0);
    const Point2DF to = frame.moved(a1);
    const double segmentSquared = common.pointDistSquared(from, to);
    const bool isPlain = detail::isExactly(common);
    const MeasuredArc arc(common, isPlain, circles, frame.moved(b0), frame.moved(b1), bulge);
    if (!(segmentSquared > 0) || !arc.isProper()) return hits;

    Meeting meeting = meetLine(common, from, to, arc);
    const SharedEnds shared(a0, a1, b0, b1);
    if (shared.count > 0) {
        const Point2DF end = frame.moved(shared.points[0]);
        const Point2DF image =
            shared.count == 2 ? frame.moved(shared.points[1]) : mirrorImage(arc, end, to - from);
        meeting = throughSharedEnd(meeting, end, image);
    }
    if (meeting.count == 0) return hits;

    for (int i = 0; i < meeting.count; ++i) {
        const Point2DF& p = meeting.points[i];
        const double t = common.segmentParameter(p, from, to);
        if (!range.holds(t * segmentSquared)) continue;
        if (!arc.holds(p, loArc, extraArc)) continue;
        hits.add({frame.restored(p), t, placeOnArc ? arc.fraction(p) : 0.0});
    }
    return hits;
}

/// Whether the shorter of two arcs, at least one of them flat, runs on the circle of the other.
bool lieOnOneCircle(const MeasuredArc& a, const MeasuredArc& b, double roundingReach)
{
    const MeasuredArc& shorter = a.chord() <= b.chord() ? a : b;
    const MeasuredArc& longer = a.chord() <= b.chord() ? b : a;
    const double reach = kFlatSameCircle * std::min(1.0, shorter.chord()) + roundingReach;
    return longer.distanceOffCircle(shorter.start()) <= reach &&
           longer.distanceOffCircle(shorter.middle()) <= reach &&
           longer.distanceOffCircle(shorter.end()) <= reach;
}

/// The line of the points that have the same power with regard to both circles: it passes through
/// their meeting points. Its unit normal points from the centre of a to that of b.
struct RadicalLine {
    Point2DF normal;
    double offset;  ///< the line is normal . P = offset

    RadicalLine(const MeasuredArc& a, const MeasuredArc& b)
    {
        const CircleEquation ea = a.equation();
        const CircleEquation eb = b.equation();
        const Point2DF across = eb.curvature * ea.linear - ea.curvature * eb.linear;
        const double constant = eb.curvature * ea.constant - ea.curvature * eb.constant;
        const double size = std::copysign(detail::length(across), ea.curvature * eb.curvature);
        normal = {across.x() / size, across.y() / size};
        offset = -constant / size;
    }
    Point2DF direction() const { return leftNormal(normal); }
    Point2DF foot(const Point2DF& p) const { return p + (offset - dot(normal, p)) * normal; }
};

/// Where two circles meet of which at least one belongs to a flat arc: the line through the meeting
/// points is met with the rounder of the two. The point to the left of centre a -> centre b first.
Meeting meetAlongRadicalLine(const MeasuredArc& a, const MeasuredArc& b, const RadicalLine& line)
{
    Meeting meeting;
    const MeasuredArc& rounder = a.curvature() >= b.curvature() ? a : b;
    double offsets[2];
    const Point2DF base = line.foot(rounder.isFlat() ? rounder.start() : rounder.centre());
    if (rounder.isFlat()) {
        const QuadraticRoots roots = rounder.meetLine(base, line.direction());
        if (roots.count == 0) return meeting;
        offsets[0] = roots.larger;
        offsets[1] = roots.smaller;
    } else {
        const double distance = detail::length(base - rounder.centre());
        const double gap = (rounder.radius() - distance) * (rounder.radius() + distance);
        if (!(gap >= 0)) return meeting;
        offsets[0] = std::sqrt(gap);
        offsets[1] = -offsets[0];
    }
    for (const double offset : offsets) {
        const Point2DF p = base + offset * line.direction();
        if (a.isNear(p) && b.isNear(p)) meeting.add(p);
    }
    return meeting;
}

Meeting meetCircles(IcommonFunc& common, const MeasuredArc& a, const MeasuredArc& b,
                    const LocalFrame& frame)
{
    Meeting meeting;
    if (a.isFlat() || b.isFlat()) {
        meeting.sameCircle = lieOnOneCircle(a, b, frame.roundingReach());
        return meeting.sameCircle ? meeting : meetAlongRadicalLine(a, b, RadicalLine(a, b));
    }
    Point2DF first;
    Point2DF second;
    const int count = common.circleCircleIntersection(a.centre(), a.radius(), b.centre(),
                                                      b.radius(), first, second);
    meeting.sameCircle = count == -1;
    if (count >= 1) meeting.add(first);
    if (count >= 2) meeting.add(second);
    return meeting;
}

/// The mirror image of an end that two arcs share, in the line of their centres.
Point2DF mirrorImage(const MeasuredArc& a, const MeasuredArc& b, const Point2DF& end)
{
    if (a.isFlat() || b.isFlat()) {
        const MeasuredArc& rounder = a.curvature() >= b.curvature() ? a : b;
        const Point2DF image = mirrorImage(rounder, end, RadicalLine(a, b).direction());
        return a.isNear(image) && b.isNear(image) ? image : end;
    }
    return mirrorImage(a, end, leftNormal(b.centre() - a.centre()));
}

/// Ends of either arc that lie within the other: the meeting of two arcs of one circle.
Hits meetOnOneCircle(const MeasuredArc& a, const MeasuredArc& b, const LocalFrame& frame,
                     const ArcRange& rangeA, const ArcRange& rangeB)
{
    Hits hits;
    for (const Point2DF& end : {b.start(), b.end()})
        if (a.holds(end, rangeA.lo, rangeA.extra))
            hits.add({frame.restored(end), a.fraction(end), 0.0});
    if (b.holds(a.start(), rangeB.lo, rangeB.extra))
        hits.add({frame.restored(a.start()), 0.0, 0.0});
    if (b.holds(a.end(), rangeB.lo, rangeB.extra)) hits.add({frame.restored(a.end()), 1.0, 0.0});
    return hits;
}

void writeHits(const Hits& hits, double Hit::*parameter, Point2DF* outPoints, double* outParams,
               int* count)
{
    for (int i = 0; i < hits.count; ++i) {
        outPoints[i] = hits.items[i].point;
        outParams[i] = hits.items[i].*parameter;
    }
    *count = hits.count;
}

}  // namespace

void commonFunc::intersectSegmentArc(const Point2DF& a0, const Point2DF& a1, const Point2DF& b0,
                                     const Point2DF& b1, double bulge, double loA, double hiA,
                                     double loB, double extraB, Point2DF* outPoints,
                                     double* outParams, int* count)
{
    if (!count) return;
    *count = 0;
    if (!outPoints || !outParams) return;
    const Hits hits =
        meetSegmentWithArc(*this, circles_, false, a0, a1, b0, b1, bulge, {loA, hiA}, loB, extraB);
    writeHits(hits, &Hit::onFirst, outPoints, outParams, count);
}

void commonFunc::intersectArcSegment(const Point2DF& b0, const Point2DF& b1, double bulge,
                                     const Point2DF& a0, const Point2DF& a1, double loB,
                                     double extraB, double loA, double hiA, Point2DF* outPoints,
                                     double* outParams, int* count)
{
    if (!count) return;
    *count = 0;
    if (!outPoints || !outParams) return;
    const Hits hits =
        meetSegmentWithArc(*this, circles_, true, a0, a1, b0, b1, bulge, {loA, hiA}, loB, extraB);
    writeHits(hits, &Hit::onSecond, outPoints, outParams, count);
}

void commonFunc::intersectArcArc(const Point2DF& a0, const Point2DF& a1, double bulgeA,
                                 const Point2DF& b0, const Point2DF& b1, double bulgeB, double loA,
                                 double extraA, double loB, double extraB, Point2DF* outPoints,
                                 double* outParams, int* count)
{
    if (!count) return;
    *count = 0;
    if (!outPoints || !outParams) return;
    const bool startAtB = MeasuredArc::isFlatBulge(bulgeB) && !MeasuredArc::isFlatBulge(bulgeA);
    const LocalFrame frame(startAtB ? b0 : a0, a0, a1, b0, b1);
    const bool isPlain = detail::isExactly(*this);
    const MeasuredArc a(*this, isPlain, circles_, frame.moved(a0), frame.moved(a1), bulgeA);
    const MeasuredArc b(*this, isPlain, circles_, frame.moved(b0), frame.moved(b1), bulgeB);
    if (!a.isProper() || !b.isProper()) return;

    Meeting meeting = meetCircles(*this, a, b, frame);
    const SharedEnds shared(a0, a1, b0, b1);
    if (!meeting.sameCircle && shared.count > 0) {
        const Point2DF end = frame.moved(shared.points[0]);
        const Point2DF image =
            shared.count == 2 ? frame.moved(shared.points[1]) : mirrorImage(a, b, end);
        meeting = throughSharedEnd(meeting, end, image);
    }
    if (!meeting.sameCircle && meeting.count == 0) return;

    Hits hits;
    if (meeting.sameCircle) {
        hits = meetOnOneCircle(a, b, frame, {loA, extraA}, {loB, extraB});
    } else {
        for (int i = 0; i < meeting.count; ++i) {
            const Point2DF& p = meeting.points[i];
            if (a.holds(p, loA, extraA) && b.holds(p, loB, extraB))
                hits.add({frame.restored(p), a.fraction(p), 0.0});
        }
    }
    writeHits(hits, &Hit::onFirst, outPoints, outParams, count);
}
