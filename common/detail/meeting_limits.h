// Limits that several layers of the intersections share.
#pragma once

#include <algorithm>
#include <cmath>

#include "common/detail/vec.h"

namespace calcora::detail {

/// |bulge|: a smaller one is a straight edge for the walks along polylines.
inline constexpr double kStraightBulgeForMeeting = 1e-10;

/// Product of two squared lengths: segments with a smaller one are too short to meet. Two segments
/// of 0.0316 drawing units each are the limit.
inline constexpr double kShortestMeetingProduct = 1e-6;

/// Fraction: how far before its start the first of two segments may be met at all.
inline constexpr double kFarthestBack = 0.1;

/// Squared drawing units: how far a straight edge reaches back before its start, as fraction times
/// squared length. Walks over straight polylines and against arcs, resp. straight edges in walks
/// over polylines with arcs.
inline constexpr double kEdgeStartReach = 1e-6;
inline constexpr double kBulgeWalkStartReach = 1e-5;

/// Per drawing unit of the largest coordinate: how far rounding may have moved a computed point.
inline constexpr double kRoundingPerUnit = 1e-14;

inline double largestCoordinate(const Point2DF& p)
{
    return std::max(std::fabs(p.x()), std::fabs(p.y()));
}

/// The rounding reach of points whose largest coordinate is given; 0 when that is infinite.
inline double roundingReach(double largest)
{
    return std::isfinite(largest) ? kRoundingPerUnit * largest : 0.0;
}

inline double roundingReach(const Point2DF& a0, const Point2DF& a1, const Point2DF& b0,
                            const Point2DF& b1)
{
    return roundingReach(std::max(std::max(largestCoordinate(a0), largestCoordinate(a1)),
                                  std::max(largestCoordinate(b0), largestCoordinate(b1))));
}

}  // namespace calcora::detail
