// The centre of area of a closed polygon.
#include <cmath>
#include <limits>

#include "frame/detail/vec3.h"
#include "geometric/CGeometric.h"
#include "geometric/detail/auxiliary.h"

using namespace calcora::paths;

namespace {

/// Share of the products it is summed from below which an area is their rounding: the ring has
/// none.
constexpr double kZeroAreaShare = 4 * std::numeric_limits<double>::epsilon();

}  // namespace

bool CGeometric::polygonCentroidOfPointList(const PointList& points, Point3DF& centroid)
{
    const PathRef path = pathThrough(points);
    return path && polygonCentroid(path, centroid);
}

bool CGeometric::polygonCentroid(const PathRef& path, Point3DF& centroid)
{
    const PathView view(path);
    const int n = view.pointCount();
    if (n < 1) return false;
    const Point3DF origin = view.point(0);
    if (n == 1) {
        centroid = origin;
        return false;
    }
    if (!(origin == view.point(n - 1))) return false;

    // Told from the first point, where survey coordinates do not cancel the digits of the area.
    double twiceArea = 0.0;
    double products = 0.0;
    double momentX = 0.0;
    double momentY = 0.0;
    Vec3 p;
    for (int k = 0; k + 1 < n; ++k) {
        const Vec3 next = planBetween(origin, view.point(k + 1));
        const double term = p.x * next.y - next.x * p.y;
        twiceArea += term;
        products += std::fabs(p.x * next.y) + std::fabs(next.x * p.y);
        momentX += (p.x + next.x) * term;
        momentY += (p.y + next.y) * term;
        p = next;
    }
    if (!(std::fabs(twiceArea) > kZeroAreaShare * products)) return false;
    const Vec3 toCentroid{momentX / (3 * twiceArea), momentY / (3 * twiceArea), 0.0};
    const Point3DF found = inPlan(moved(origin, toCentroid));
    if (!isFinite(found)) return false;
    centroid = found;
    return true;
}
