// Crossings of straight polylines, into lists.
#include <array>
#include <cmath>
#include <utility>

#include "common/commonFunc.h"
#include "common/detail/vec.h"
#include "datageo/DataGeo.h"
#include "tavrel/NormalObject.h"

namespace {

/// Squared length before an edge's start within which a crossing counts as at the start.
constexpr double kStartSlack = -1e-12;

/// Squared length added to an edge's own at its end, and the length by which inner edges end early
/// and last edges end late.
constexpr double kEndSlack = 1e-12;
constexpr double kEndReach = 1e-6;

/// Upper bound of a crossing along an edge with that squared length, in squared length.
double upperBound(double lengthSquared, bool isLast)
{
    const double reach = 2 * std::sqrt(lengthSquared) * kEndReach;
    return lengthSquared + kEndSlack + (isLast ? reach : -reach);
}

}  // namespace

int DataGeo::intersectSegmentPolylineToLists(const Point2DF& start, const Point2DF& end,
                                             const Points& polyline, double lo, double hi,
                                             Points& outPoints, Values& outParams)
{
    commonFunc geometry(tav::kObjectCapacity);
    const Point2DF direction = end - start;
    Points found;
    Values params;
    const int m = polyline.size();
    for (int k = 0; k + 1 < m; ++k) {
        const Point2DF edge = polyline[k + 1] - polyline[k];
        const double lengthSquared = calcora::detail::lengthSquared(edge);
        std::array<Point2DF, 2> points;
        std::array<double, 2> at{};
        int count = 0;
        geometry.intersectSegments(start, direction, polyline[k], edge, lo, hi, kStartSlack,
                                   upperBound(lengthSquared, k + 2 == m), points.data(), at.data(),
                                   &count);
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
            found.append(points[i]);
            params.append(at[i]);
        }
    }
    outPoints = std::move(found);
    outParams = std::move(params);
    return outPoints.size();
}

int DataGeo::intersectPolylinesToListsEx(const Points& a, const Points& b, Points& outPoints,
                                         Values& outParams)
{
    const int n = a.size();
    if (n < 2 || b.size() < 2) return 0;
    commonFunc geometry(tav::kObjectCapacity);
    Points found, edgePoints;
    Values params, edgeParams;
    for (int k = 0; k + 1 < n; ++k) {
        const double lengthSquared = pointDistSquared(a[k], a[k + 1]);
        intersectSegmentPolylineToLists(a[k], a[k + 1], b, kStartSlack,
                                        upperBound(lengthSquared, k + 2 == n), edgePoints,
                                        edgeParams);
        geometry.removeDuplicatePoints(edgePoints, edgeParams);
        const int count = edgePoints.size();
        for (int i = 0; i < count; ++i) {
            found.append(std::as_const(edgePoints)[i]);
            params.append(k + std::as_const(edgeParams)[i]);
        }
    }
    outPoints = std::move(found);
    outParams = std::move(params);
    return outPoints.size();
}
