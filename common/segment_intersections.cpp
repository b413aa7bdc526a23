// Intersections of straight segments and lines.

#include <algorithm>
#include <cmath>
#include <utility>

#include "common/commonFunc.h"
#include "common/detail/meeting_limits.h"
#include "common/detail/primitives.h"
#include "common/detail/segment_meeting.h"

using namespace calcora;
using detail::cross;
using detail::dot;
using detail::isFinite;
using detail::lengthSquared;
using tav::Point2DF;

namespace {

/// Squared sine of the angle, seen from the first segment's start, up to which the second starts on
/// the first one's line; and what is added to the squared cross product for near starts.
constexpr double kSameLineSquared = 1e-12;
constexpr double kSameLineArea = 1e-20;
/// Fraction of the first segment by which the second must run backwards to be turned round.
constexpr double kReversedBy = 1e-6;

/// Cross product of two directions from which on their lines cross. intersectSegmentsAll()
constexpr double kCrossingProduct = 1e-6;
/// Drawing units: both ends this close to a line lie on it. intersectSegmentsAll()
constexpr double kCommonLine = 1e-6;
/// Drawing units: ends of two segments that are closer become one. intersectSegmentsAll()
constexpr double kMergedEnds = 1e-4;

/// Radians from a half turn within which two directions are opposite. intersectAngleLines()
constexpr double kOppositeDirections = 1e-6;
/// Sine of the angle below which lines are parallel. intersectAngleLines()
constexpr double kParallelSine = 1e-12;

/// 0 or 1 when the fraction of a segment is one of them but for rounding.
double snappedToEnds(double fraction, double lengthSquared, double reachSquared)
{
    if (fraction * fraction * lengthSquared <= reachSquared) return 0.0;
    if ((fraction - 1) * (fraction - 1) * lengthSquared <= reachSquared) return 1.0;
    return fraction;
}

/// What two segments on one line have in common, to be appended to a list.
void appendCommonPart(const Point2DF& p0, const Point2DF& d0, const Point2DF& p1,
                      const Point2DF& d1, tav::Vector<Point2DF>& out)
{
    const double chordSquared = lengthSquared(d0);
    const Point2DF between = p1 - p0;
    const double reach = kCommonLine * std::sqrt(chordSquared);
    if (!(std::fabs(cross(d0, between)) <= reach && std::fabs(cross(d0, between + d1)) <= reach))
        return;

    // Both in the direction of d0, as fractions of it.
    Point2DF from1 = p1;
    Point2DF to1 = p1 + d1;
    double start1 = dot(d0, between) / chordSquared;
    double end1 = dot(d0, between + d1) / chordSquared;
    if (start1 > end1) {
        std::swap(from1, to1);
        std::swap(start1, end1);
    }
    const Point2DF to0 = p0 + d0;
    const bool firstFrom1 = start1 > 0;
    const bool lastFrom1 = end1 < 1;
    const Point2DF first = firstFrom1 ? from1 : p0;
    const Point2DF last = lastFrom1 ? to1 : to0;
    const auto areMerged = [](const Point2DF& a, const Point2DF& b) {
        return detail::pointDistSquared(a, b) < kMergedEnds * kMergedEnds;
    };
    if (firstFrom1 != lastFrom1 && areMerged(first, last)) {
        out.append(detail::midpoint(first, last));
        return;
    }
    if (!(std::max(start1, 0.0) <= std::min(end1, 1.0))) return;
    out.append(areMerged(p0, from1) ? detail::midpoint(p0, from1) : first);
    out.append(areMerged(to0, to1) ? detail::midpoint(to0, to1) : last);
}

}  // namespace

void commonFunc::intersectSegments(const Point2DF& p0, const Point2DF& d0, const Point2DF& p1,
                                   const Point2DF& d1, double lo0, double hi0, double lo1,
                                   double hi1, Point2DF* outPoints, double* outParams, int* count)
{
    if (!count) return;
    *count = 0;
    if (!outPoints || !outParams) return;

    if (p0 == p1 && d0 == d1) {
        const Point2DF ends[] = {p0, p0 + d0};
        if (!isFinite(ends[0]) || !isFinite(ends[1])) return;
        std::copy_n(ends, 2, outPoints);
        outParams[0] = 0.0;
        outParams[1] = 1.0;
        *count = 2;
        return;
    }
    double place = 0.0;
    const detail::SegmentMeeting meeting = detail::crossSegments(
        p0, d0, p1, d1, [=](double reach, double) { return lo0 <= reach && reach <= hi0; },
        [=](double reach, double) { return lo1 <= reach && reach <= hi1; }, place);
    if (meeting == detail::SegmentMeeting::Crossing) {
        const Point2DF crossing = p0 + place * d0;
        outPoints[0] = crossing;
        outParams[0] = place;
        *count = 1;
    }
    if (meeting != detail::SegmentMeeting::Parallel) return;

    const double length0Squared = lengthSquared(d0);
    const double length1Squared = lengthSquared(d1);
    const Point2DF between = p1 - p0;
    const double offLine = cross(between, d0);
    const double rounding = detail::roundingReach(p0, p0 + d0, p1, p1 + d1);
    const double reachSquared = rounding * rounding;
    const double sameLine =
        kSameLineSquared * length0Squared * lengthSquared(between) + kSameLineArea;
    if (!(offLine * offLine <= sameLine || offLine * offLine <= reachSquared * length0Squared))
        return;

    const double along = dot(d0, d1);
    const auto snapped0 = [&](double fraction) {
        return snappedToEnds(fraction, length0Squared, reachSquared);
    };
    const auto snapped1 = [&](double fraction) {
        return snappedToEnds(fraction, length1Squared, reachSquared);
    };
    // The ends of the second segment as fractions of the first, and the other way round.
    const double toSecond = dot(d0, between) / length0Squared;
    const double s0 = snapped0(toSecond);
    const double s1 = snapped0(toSecond + along / length0Squared);
    const double toFirst = -dot(d1, between) / length1Squared;
    const double t0 = snapped1(toFirst);
    const double t1 = snapped1(toFirst + along / length1Squared);

    const double nearer = s0 - s1 > kReversedBy ? s1 : s0;
    const double farther = s0 - s1 >= kReversedBy ? s0 : s1;
    double common[2];
    const int ends = overlapIntervals(0.0, 1.0, nearer, farther, common);
    Point2DF meetings[2];
    double params[2];
    int found = 0;
    for (int i = 0; i < std::min(ends, 2); ++i) {
        const double s = common[i];
        const double t = std::clamp(t0 + s * (t1 - t0), 0.0, 1.0);
        const double reach0 = s * length0Squared;
        const double reach1 = t * length1Squared;
        if (!(lo0 <= reach0 && reach0 <= hi0 && lo1 <= reach1 && reach1 <= hi1)) continue;
        meetings[found] = p0 + s * d0;
        params[found++] = s;
    }
    std::copy_n(meetings, found, outPoints);
    std::copy_n(params, found, outParams);
    *count = found;
}

int commonFunc::overlapIntervals(double a0, double a1, double b0, double b1, double* out)
{
    if (!out || !(b0 <= a1 && a0 <= b1)) return 0;
    if (a1 == b0) {
        out[0] = a1;
        return 1;
    }
    if (b1 == a0) {
        out[0] = a0;
        return 1;
    }
    out[0] = std::max(a0, b0);
    out[1] = std::min(a1, b1);
    return 2;
}

void commonFunc::intersectSegmentsAll(const Point2DF& p0, const Point2DF& d0, const Point2DF& p1,
                                      const Point2DF& d1, Points& out)
{
    const double length0Squared = lengthSquared(d0);
    const double length1Squared = lengthSquared(d1);
    const double kross = cross(d0, d1);
    if (!std::isfinite(length0Squared * length1Squared)) return;

    if (std::fabs(kross) >= kCrossingProduct) {
        if (!(length0Squared * length1Squared >= detail::kShortestMeetingProduct)) return;
        const Point2DF meeting = p0 + cross(p1 - p0, d1) / kross * d0;
        if (isFinite(meeting)) out = {meeting};
    } else if (length0Squared > 0 && length1Squared > 0) {
        const Point2DF ends[] = {p0, p0 + d0};
        if (p0 == p1 && d0 == d1) {
            out.append(ends[0]);
            out.append(ends[1]);
        } else {
            appendCommonPart(ends[0], Point2DF(d0), Point2DF(p1), Point2DF(d1), out);
        }
    }
}

void commonFunc::intersectAngleLines(const Point2DF& p1, double angle1, const Point2DF& p2,
                                     double angle2, Point2DF& out)
{
    const double fromOpposite = std::fabs(detail::kPi - std::fabs(angle1 - angle2));
    if (fromOpposite < kOppositeDirections) {
        out = detail::midpoint(p1, p2);
        return;
    }
    if (!(std::fabs(std::sin(angle1 - angle2)) >= kParallelSine)) return;
    const Point2DF between = p2 - p1;
    const double slope1 = std::tan(angle1);
    const double slope2 = std::tan(angle2);
    const double x = (between.y() - between.x() * slope2) / (slope1 - slope2);
    // The flatter line gives y without magnifying the last bit of x.
    const double y = std::fabs(slope1) <= std::fabs(slope2)
                         ? x * slope1
                         : between.y() + (x - between.x()) * slope2;
    const Point2DF meeting = p1 + Point2DF(x, y);
    if (isFinite(meeting)) out = meeting;
}
