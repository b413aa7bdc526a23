// Convex hull by Graham's scan.
//
// Orientations as computed are not consistent with each other where rounding decides: a sort by
// them is not defined, and a scan may fold the outline back along a side on which points lie almost
// in line. So where the computed orientation is within its rounding the exact one decides, and the
// order around the pivot is the exact one throughout. An outline that runs around the pivot in
// exact order and turns left at every corner is convex, whatever points it left out.

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/exact_orientation.h"
#include "common/detail/key_sort.h"
#include "common/detail/plain_functions.h"
#include "common/detail/point_grid.h"

namespace {

namespace detail = calcora::detail;
using tav::Point2DF;
using Points = tav::Vector<Point2DF>;

/// Drawing units: of two points that lie nearer the later one is removed.
constexpr double kSamePointDistance = 1e-3;
constexpr double kSamePointSquared = 1e-6;

/// Drawing units: the coordinates whose products fit a double. Below, a coordinate counts as 0 in
/// the order around the pivot; beyond, there is no hull.
constexpr double kSmallestCoordinate = 1e-100;
constexpr double kLargestCoordinate = 1e150;

/// Two keys that differ by more than this are on different rays for certain: a key is a rounded
/// quotient of rounded differences, at most 1 in size.
constexpr double kKeyRounding = 2e-15;

/// Ahead of every direction: a copy of the pivot, which only another pointDistSquared lets pass.
constexpr double kPivotKey = -2.0;

/// Points nearer than kSamePointDistance differ in their keys by less than this, divided by the
/// distance of either from the pivot (as the sum of both coordinates' sizes), and rounding.
constexpr double kSamePointKeys = 2.5e-3;
constexpr double kSamePointKeyRounding = 4e-15;

/// Comparisons for each point after which a search for near points along the order is given up.
constexpr std::size_t kComparisonsPerPoint = 8;

/// A point seen from the pivot. The key grows from -1 to 1 as the direction turns from the positive x
/// axis to the left.
using Sight = detail::KeyedIndex;

/// Points counter-clockwise around the first one, which is the lowest.
struct Around {
    Points points;
    std::vector<Sight> sights;  ///< of the points but the first, in their order
};

bool isUsable(const Point2DF& p)
{
    return std::fabs(p.x()) <= kLargestCoordinate && std::fabs(p.y()) <= kLargestCoordinate;
}

/// The points without those that lie near one kept before.
template <class Functions>
Points withoutRepeats(Functions& functions, const Points& points)
{
    detail::PointGrid kept(kSamePointDistance, points.size());
    Points distinct;
    distinct.reserve(points.size());
    for (const Point2DF& p : points) {
        const auto isSamePoint = [&](const Point2DF& earlier) {
            return functions.pointDistSquared(earlier, p) < kSamePointSquared;
        };
        if (kept.findEarliest(p, isSamePoint) != detail::PointGrid::kNone) continue;
        kept.add(p);
        distinct.append(p);
    }
    return distinct;
}

int lowestLeftmost(const Points& points)
{
    const Point2DF* point = points.constData();
    int best = 0;
    for (int i = 1, n = points.size(); i < n; ++i) {
        const Point2DF& p = point[i];
        const Point2DF& b = point[best];
        if (p.y() < b.y() || (p.y() == b.y() && p.x() < b.x())) best = i;
    }
    return best;
}

bool isMultipliable(double v)
{
    return !(std::fabs(v) < kSmallestCoordinate) || v == 0;
}

/// The points with the coordinates as they count in the order.
Points multipliable(const Points& points)
{
    const bool areAll = std::all_of(points.begin(), points.end(), [](const Point2DF& p) {
        return isMultipliable(p.x()) && isMultipliable(p.y());
    });
    Points places = points;
    if (areAll) return places;
    const auto counted = [](double v) { return isMultipliable(v) ? v : 0.0; };
    for (Point2DF& p : places) p = {counted(p.x()), counted(p.y())};
    return places;
}

/// The places but the pivot, in their exact order around it; of several in one direction first that
/// which comes first when pivot and first place are exchanged.
std::vector<Sight> sightsFrom(int pivot, const Points& places)
{
    const Point2DF* place = places.constData();
    std::vector<Sight> sights;
    sights.reserve(static_cast<std::size_t>(places.size()));
    for (int i = 0, n = places.size(); i < n; ++i) {
        if (i == pivot) continue;
        const Point2DF v = place[i] - place[pivot];
        const double size = std::fabs(v.x()) + std::fabs(v.y());
        sights.push_back({size > 0 ? -v.x() / size : kPivotKey, i});
    }
    detail::sortByKey(sights);
    const auto arrival = [pivot](int index) { return index > 0 ? index : pivot; };
    const auto byDirection = [&](const Sight& a, const Sight& b) {
        if (std::fabs(a.key - b.key) > kKeyRounding) return a.key < b.key;
        const int turn = detail::orientationSign(place[a.index], place[b.index], place[pivot]);
        return turn != 0 ? turn > 0 : arrival(a.index) < arrival(b.index);
    };
    // Keys that differ by rounding only come in stretches without a wider gap.
    for (auto begin = sights.begin(); begin != sights.end();) {
        auto end = begin + 1;
        while (end != sights.end() && end->key - (end - 1)->key <= kKeyRounding) ++end;
        if (end - begin > 1) std::sort(begin, end, byDirection);
        begin = end;
    }
    return sights;
}

/// Puts points on a common ray nearer first.
template <class Functions>
void orderRays(Functions& functions, int pivot, const Point2DF* point, const Point2DF* place,
               std::vector<Sight>& sights)
{
    struct Entry {
        double distanceSquared;
        Sight sight;
    };
    std::vector<Entry> ray;
    std::size_t end = 0;
    for (std::size_t start = 0; start < sights.size(); start = end) {
        end = start + 1;
        while (end < sights.size() && sights[end].key <= sights[start].key + kKeyRounding &&
               detail::orientationSign(place[sights[start].index], place[sights[end].index],
                                       place[pivot]) == 0)
            ++end;
        if (end - start < 2) continue;
        ray.clear();
        for (std::size_t i = start; i < end; ++i)
            ray.push_back(
                {functions.pointDistSquared(point[sights[i].index], point[pivot]), sights[i]});
        std::stable_sort(ray.begin(), ray.end(), [](const Entry& a, const Entry& b) {
            return a.distanceSquared < b.distanceSquared;
        });
        for (std::size_t i = start; i < end; ++i) sights[i] = ray[i - start].sight;
    }
}

template <class Functions>
Around sortedAroundLowest(Functions& functions, const Points& points)
{
    const int pivot = lowestLeftmost(points);
    const Points places = multipliable(points);
    const Point2DF* point = points.constData();
    Around around{Points(points.size()), sightsFrom(pivot, places)};
    orderRays(functions, pivot, point, places.constData(), around.sights);
    Point2DF* target = around.points.data();
    *target = point[pivot];
    for (const Sight& sight : around.sights) *++target = point[sight.index];
    return around;
}

/// Whether no two of the points lie so near that one of them is to be removed. Near points are near
/// in the order as well. False, too, where it takes too long to tell.
bool lieApart(const Around& around)
{
    const Point2DF* point = around.points.constData();
    const auto isSamePoint = [](const Point2DF& p, const Point2DF& q) {
        return detail::pointDistSquared(p, q) < kSamePointSquared;
    };
    const std::vector<Sight>& sights = around.sights;  // sights[i] is that of point[i + 1]
    std::size_t comparisons = 0;
    for (std::size_t i = 0; i < sights.size(); ++i) {
        const Point2DF& p = point[i + 1];
        if (isSamePoint(p, point[0])) return false;
        const double size = std::fabs(p.x() - point[0].x()) + std::fabs(p.y() - point[0].y());
        const double last = sights[i].key + kSamePointKeys / size + kSamePointKeyRounding;
        std::size_t j = i + 1;
        for (; j < sights.size() && sights[j].key <= last; ++j)
            if (isSamePoint(p, point[j + 1])) return false;
        comparisons += j - i;
        if (comparisons > kComparisonsPerPoint * sights.size()) return false;
    }
    return true;
}

/// The points without those at the end that repeat the first one, as in a ring drawn closed.
Points opened(const Points& points)
{
    int n = points.size();
    while (n > 1 && detail::pointDistSquared(points[0], points[n - 1]) < kSamePointSquared) --n;
    return n == points.size() ? points : Points(points.begin(), points.begin() + n);
}

/// Removes repeats and sorts the rest around the lowest point. Repeats are rare, so first it is
/// tried without.
template <class Functions>
Points distinctAroundPivot(Functions& functions, const Points& points)
{
    if constexpr (Functions::kIsPlain) {
        Around around = sortedAroundLowest(functions, opened(points));
        if (lieApart(around)) return std::move(around.points);
    }
    return sortedAroundLowest(functions, withoutRepeats(functions, points)).points;
}

/// The orientation of p, last, before: that of the interface, or the exact sign where rounding
/// could have given it the wrong one.
template <class Functions>
double turn(Functions& functions, const Point2DF& p, const Point2DF& last, const Point2DF& before)
{
    const double computed = functions.orientation3(p, last, before);
    if (computed == 0 || std::fabs(computed) > detail::orientationNoise(p, last, before))
        return computed;
    return detail::orientationSign(p, last, before);
}

/// Whether p, on the line through a and b, is the middle one of the three.
template <class Functions>
bool liesBetween(Functions& functions, const Point2DF& p, const Point2DF& a, const Point2DF& b)
{
    const double whole = functions.pointDistSquared(a, b);
    return functions.pointDistSquared(p, a) < whole && functions.pointDistSquared(p, b) < whole;
}

/// The corners of the hull of points in order around the first one.
///
/// Three points in line come nearer first, so the middle one goes. Where only rounding puts them in
/// line the last of them may be the middle one, and taking the one before it would lose a corner.
template <class Functions>
Points scanned(Functions& functions, const Points& sorted)
{
    std::vector<Point2DF> hull;
    for (const Point2DF& p : sorted) {
        bool isCorner = true;
        while (hull.size() >= 2) {
            const Point2DF& last = hull.back();
            const Point2DF& before = hull[hull.size() - 2];
            const double orientation = turn(functions, p, last, before);
            if (!(orientation >= 0)) break;
            isCorner = orientation > 0 || !liesBetween(functions, p, before, last);
            if (!isCorner) break;
            hull.pop_back();
        }
        if (isCorner) hull.push_back(p);
    }
    return Points(hull.begin(), hull.end());
}

}  // namespace

void commonFunc::convexHull(Points& points, Points& hull)
{
    const Points given = points;
    if (given.isEmpty() || !std::all_of(given.begin(), given.end(), isUsable)) return;
    detail::withFunctionsOf(*this, [&](auto& functions) {
        Points sorted = distinctAroundPivot(functions, given);
        const Points corners = scanned(functions, sorted);
        points = std::move(sorted);
        hull.append(corners);
    });
}
