// Where two straight segments cross, apart from those on one line.
#pragma once

#include <cmath>

#include "common/detail/meeting_limits.h"
#include "common/detail/vec.h"

namespace calcora::detail {

/// Squared sine of the angle up to which two directions are parallel.
inline constexpr double kParallelSquared = 1e-12;

/// Squared drawing units, added to every upper bound of a straight edge.
inline constexpr double kEdgeEndSlack = 1e-12;

/// Drawing units: what an inner straight edge gives up before its end, and what a last one reaches
/// beyond, taken on fraction times squared length, hence twice.
inline constexpr double kEdgeEndReach = 1e-6;

struct EdgeRange {
    double lo, hi;
    bool holds(double value) const { return lo <= value && value <= hi; }
};

/// What is let in on a straight edge, on fraction times squared length. At large coordinates the
/// start must reach back by what rounding moves, or meetings at a vertex would be lost.
inline EdgeRange straightRange(double edgeSquared, double startReach, double rounding, bool isLast)
{
    const double edge = std::sqrt(edgeSquared);
    const double endReach = 2 * edge * kEdgeEndReach;
    return {-std::max(startReach, rounding * edge),
            edgeSquared + kEdgeEndSlack + (isLast ? endReach : -endReach)};
}

enum class SegmentMeeting {
    None,
    Crossing,
    Parallel  ///< not looked at further
};

/// Where the segments p0 + s d0 and p1 + t d1 cross; `holds0` and `holds1` let in s resp. t times the
/// squared length. Segments that are too short for each other or too large to multiply meet nowhere.
template <class Holds0, class Holds1>
SegmentMeeting crossSegments(const Point2DF& p0, const Point2DF& d0, const Point2DF& p1,
                             const Point2DF& d1, Holds0&& holds0, Holds1&& holds1, double& s)
{
    const double length0Squared = lengthSquared(d0);
    const double length1Squared = lengthSquared(d1);
    const double product = length0Squared * length1Squared;
    if (!(product >= kShortestMeetingProduct) || !std::isfinite(product))
        return SegmentMeeting::None;
    const double kross = cross(d0, d1);
    if (!(kross * kross > kParallelSquared * product)) return SegmentMeeting::Parallel;
    const Point2DF between = p1 - p0;
    s = cross(between, d1) / kross;
    if (!(holds0(s * length0Squared, length0Squared) && s >= -kFarthestBack))
        return SegmentMeeting::None;
    const double reach1 = cross(between, d0) / kross * length1Squared;
    return holds1(reach1, length1Squared) ? SegmentMeeting::Crossing : SegmentMeeting::None;
}

}  // namespace calcora::detail
