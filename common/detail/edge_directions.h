// Undirected directions of edges, and corners that are none.
#pragma once

#include <cmath>

#include "calcora/IcommonFunc.h"
#include "common/detail/primitives.h"

namespace calcora::detail {

/// Radians: directions that differ by less are the same.
inline constexpr double kSameDirection = 1e-3;
/// Radians: two vertical edges of opposite fold differ from a half turn by rounding alone.
inline constexpr double kHalfTurnRounding = 1e-9;
/// Drawing units: points that lie nearer are the same.
inline constexpr double kSamePlace = 1e-3;

/// The direction of the edge from a to b or from b to a, in (-pi/2, pi/2]. Directions up to
/// kSameDirection below the x axis count as 0, those above it do not.
inline double foldedDirection(IcommonFunc& functions, const Point2DF& a, const Point2DF& b)
{
    double angle = functions.lineAngle(a, b);
    if (angle < 0) angle += kTwoPi;
    if (angle > kPi) angle -= kPi;
    if (std::fabs(angle - kTwoPi) < kSameDirection) angle = 0;
    if (std::fabs(angle - kPi) < kSameDirection) angle = 0;
    if (angle > kPi / 2) angle -= kPi;
    return angle;
}

/// The difference of two folded directions as numbers: just left and just right of the vertical are
/// half a turn apart, unless rounding alone parts them.
inline double directionDifference(double a, double b)
{
    const double difference = std::fabs(a - b);
    return std::fabs(difference - kPi) <= kHalfTurnRounding ? 0.0 : difference;
}

/// The angle between two undirected lines, in [0, pi/2].
inline double lineDifference(double a, double b)
{
    return std::fabs(std::remainder(a - b, kPi));
}

inline bool samePlace(IcommonFunc& functions, const Point2DF& a, const Point2DF& b)
{
    return std::sqrt(functions.pointDistSquared(a, b)) < kSamePlace;
}

/// The points without those that lie near the one before them in the list.
inline IcommonFunc::Points withoutRepeats(IcommonFunc& functions, const IcommonFunc::Points& points)
{
    IcommonFunc::Points distinct;
    distinct.reserve(points.size());
    for (int i = 0; i < points.size(); ++i)
        if (i == 0 || !samePlace(functions, points[i], points[i - 1])) distinct.append(points[i]);
    return distinct;
}

/// The true corners of a ring that does not repeat its first vertex: without the middle one of any
/// three that are in line, the first and the last vertex included, and without repeats.
template <class IsInLine>
IcommonFunc::Points cornersOf(IcommonFunc& functions, const IcommonFunc::Points& ring,
                              IsInLine&& isInLine)
{
    IcommonFunc::Points bent;
    bent.reserve(ring.size());
    for (int i = 0; i < ring.size(); ++i) {
        const bool isBetween = i > 0 && i + 1 < ring.size();
        if (!isBetween || !isInLine(std::as_const(bent).last(), ring[i], ring[i + 1]))
            bent.append(ring[i]);
    }
    const IcommonFunc::Points distinct = withoutRepeats(functions, bent);
    int first = 0;
    int last = distinct.size() - 1;
    while (last - first >= 2) {
        if (samePlace(functions, distinct[last], distinct[first]) ||
            isInLine(distinct[last - 1], distinct[last], distinct[first]))
            --last;
        else if (isInLine(distinct[last], distinct[first], distinct[first + 1]))
            ++first;
        else
            break;
    }
    return IcommonFunc::Points(distinct.begin() + first, distinct.begin() + (last + 1));
}

}  // namespace calcora::detail
