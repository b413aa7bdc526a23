// What tests of plane geometry start from: the operations, edges by chord and bulge, calls of
// intersections that write into arrays.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "common/commonFunc.h"
#include "tests/support/arcs.h"

namespace test_support {

using tav::Point3DF;
using testing::ElementsAre;

inline commonFunc geometry(0);

struct Figure {
    Points points;
    Values bulges;
};

inline Point2DF direction(double angle)
{
    return {std::cos(angle), std::sin(angle)};
}

inline Point2DF turned(const Point2DF& v, double angle)
{
    const Point2DF u = direction(angle);
    return {v.x() * u.x() - v.y() * u.y(), v.x() * u.y() + v.y() * u.x()};
}

inline Points turned(const Points& points, double angle, const Point2DF& by = {})
{
    Points result;
    for (const Point2DF& p : points) result.append(by + turned(p, angle));
    return result;
}

inline Point2DF randomPoint(std::mt19937& random, const Point2DF& about, double reach)
{
    return about + Point2DF(uniform(random, -reach, reach), uniform(random, -reach, reach));
}

/// A straight edge (bulge 0) or an arc.
struct Edge {
    Point2DF start, end;
    double bulge = 0.0;

    /// The place at fraction t, without a centre, so that flat arcs keep their digits: the chord to
    /// it is as long as the sine of half its sweep says, and turned by half the rest.
    Point2DF at(double t) const
    {
        const double half = 2 * std::atan(bulge);
        const double scale = bulge == 0 ? t : std::sin(t * half) / std::sin(half);
        return start + scale * turned(end - start, (t - 1) * half);
    }
    Edge movedBy(const Point2DF& by) const { return {start + by, end + by, bulge}; }
    Edge reversed() const { return {end, start, -bulge}; }
};

struct Found {
    std::vector<Point2DF> points;
    std::vector<double> params;

    friend bool operator==(const Found&, const Found&) = default;
};

/// Calls `intersect(points, params, &count)` with arrays of `room` entries: nothing may be written
/// behind the count, and nothing that is not finite may come out.
template <class Intersect>
Found collect(std::size_t room, Intersect intersect)
{
    Found found{std::vector<Point2DF>(room + 3, kUntouched), std::vector<double>(room + 3, 777)};
    int count = -5;
    intersect(found.points.data(), found.params.data(), &count);
    EXPECT_TRUE(0 <= count && static_cast<std::size_t>(count) <= room) << count;
    const auto kept = std::min(static_cast<std::size_t>(std::max(count, 0)), room);
    for (std::size_t i = 0; i < room + 3; ++i) {
        const double sum = found.points[i].x() + found.points[i].y() + found.params[i];
        const bool isUntouched = found.points[i] == kUntouched && found.params[i] == 777;
        EXPECT_TRUE(i < kept ? std::isfinite(sum) : isUntouched);
    }
    found.points.resize(kept);
    found.params.resize(kept);
    return found;
}

}  // namespace test_support
