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
constexpr double kPivotKey = 2.0;

/// A point seen from the pivot.
struct Sight {
    double key;  ///< falls from 1 to -1 as the direction turns from the positive x axis to the left
    int index;
};

bool isUsable(const Point2DF& p)
{
    return std::fabs(p.x()) <= kLargestCoordinate && std::fabs(p.y()) <= kLargestCoordinate;
}

/// The points without those that lie near one kept before.
Points withoutRepeats(IcommonFunc& functions, const Points& points)
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
    int best = 0;
    for (int i = 1; i < points.size(); ++i) {
        const Point2DF& p = points[i];
        const Point2DF& b = points[best];
        if (p.y() < b.y() || (p.y() == b.y() && p.x() < b.x())) best = i;
    }
    return best;
}

Point2DF multipliable(const Point2DF& p)
{
    const auto coordinate = [](double v) { return std::fabs(v) < kSmallestCoordinate ? 0.0 : v; };
    return {coordinate(p.x()), coordinate(p.y())};
}

/// Puts points on a common ray nearer first.
void orderRays(IcommonFunc& functions, const Points& points, const Points& places,
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
        while (end < sights.size() && sights[end].key >= sights[start].key - kKeyRounding &&
               detail::orientationSign(places[sights[start].index], places[sights[end].index],
                                       places[0]) == 0)
            ++end;
        if (end - start < 2) continue;
        ray.clear();
        for (std::size_t i = start; i < end; ++i) {
            const Point2DF& p = points[sights[i].index];
            ray.push_back({functions.pointDistSquared(p, points.first()), sights[i]});
        }
        std::stable_sort(ray.begin(), ray.end(), [](const Entry& a, const Entry& b) {
            return a.distanceSquared < b.distanceSquared;
        });
        for (std::size_t i = start; i < end; ++i) sights[i] = ray[i - start].sight;
    }
}

/// The points counter-clockwise around the first one, which is the lowest.
Points sortedAround(IcommonFunc& functions, const Points& points)
{
    Points places;
    places.reserve(points.size());
    for (const Point2DF& p : points) places.append(multipliable(p));
    const Point2DF* place = places.constData();

    std::vector<Sight> sights;
    sights.reserve(static_cast<std::size_t>(points.size()));
    for (int i = 1; i < points.size(); ++i) {
        const Point2DF v = place[i] - place[0];
        const double size = std::fabs(v.x()) + std::fabs(v.y());
        sights.push_back({size > 0 ? v.x() / size : kPivotKey, i});
    }
    std::sort(sights.begin(), sights.end(), [place](const Sight& a, const Sight& b) {
        if (std::fabs(a.key - b.key) > kKeyRounding) return a.key > b.key;
        const int turn = detail::orientationSign(place[a.index], place[b.index], place[0]);
        return turn != 0 ? turn > 0 : a.index < b.index;
    });
    orderRays(functions, points, places, sights);
    Points sorted;
    sorted.reserve(points.size());
    sorted.append(points.first());
    for (const Sight& sight : sights) sorted.append(points[sight.index]);
    return sorted;
}

/// The orientation of p, last, before: that of the interface, or the exact sign where rounding
/// could have given it the wrong one.
double turn(IcommonFunc& functions, const Point2DF& p, const Point2DF& last, const Point2DF& before)
{
    const double computed = functions.orientation3(p, last, before);
    if (computed == 0 || std::fabs(computed) > detail::orientationNoise(p, last, before))
        return computed;
    return detail::orientationSign(p, last, before);
}

/// Whether p, on the line through a and b, is the middle one of the three.
bool liesBetween(IcommonFunc& functions, const Point2DF& p, const Point2DF& a, const Point2DF& b)
{
    const double whole = functions.pointDistSquared(a, b);
    return functions.pointDistSquared(p, a) < whole && functions.pointDistSquared(p, b) < whole;
}

/// The corners of the hull of points in order around the first one.
///
/// Three points in line come nearer first, so the middle one goes. Where only rounding puts them in
/// line the last of them may be the middle one, and taking the one before it would lose a corner.
Points scanned(IcommonFunc& functions, const Points& sorted)
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
    Points sorted = withoutRepeats(*this, given);
    const int pivot = lowestLeftmost(sorted);
    std::swap(sorted[0], sorted[pivot]);
    sorted = sortedAround(*this, sorted);
    const Points corners = scanned(*this, sorted);
    points = std::move(sorted);
    hull.append(corners);
}
