#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "common/commonFunc.h"
#include "common/detail/exact_orientation.h"
#include "tests/support/arcs.h"

namespace {

using namespace test_support;

commonFunc functions(0);

/// The order around the lowest point by repeated scans and selection.
Points selectedAround(Points points)
{
    for (int i = 0; i < points.size(); ++i) {
        for (int j = points.size() - 1; j > i; --j)
            if (functions.pointDistSquared(points[i], points[j]) < 1e-6) points.remove(j);
    }
    const int n = points.size();
    for (int i = 1; i < n; ++i) {
        const Point2DF p = points[i], q = points[0];
        if (p.y() < q.y() || (p.y() == q.y() && p.x() < q.x())) std::swap(points[0], points[i]);
    }
    for (int i = 1; i + 1 < n; ++i) {
        int best = i;
        for (int j = i + 1; j < n; ++j) {
            const double turn = functions.orientation3(points[j], points[best], points[0]);
            if (turn > 0 || (turn == 0 && functions.pointDistSquared(points[j], points[0]) <
                                              functions.pointDistSquared(points[best], points[0])))
                best = j;
        }
        std::swap(points[i], points[best]);
    }
    return points;
}

/// How far the farthest point lies outside the ring, by its sides' lines.
double outside(const Points& ring, const Points& points)
{
    double farthest = 0;
    for (int i = 0; i < ring.size(); ++i)
        for (const Point2DF& p : points)
            farthest = std::max(
                farthest, functions.pointLineSignedDist(p, ring[i], ring[(i + 1) % ring.size()]));
    return farthest;
}

TEST(ConvexHull, OrdersLikeSelectionAndHoldsAllPoints)
{
    std::mt19937 random(3);
    std::uniform_int_distribution<int> lattice(-4, 4);
    for (int round = 0; round < 600; ++round) {
        Points points, hull;
        for (int i = 0; i < 3 + round % 30; ++i) {
            if (round % 2)
                points.append(kSurvey + Point2DF(lattice(random), lattice(random)));
            else  // many repeats within 1e-3
                points.append({uniform(random, 0, 0.02), uniform(random, 0, 0.02)});
        }
        const Points expected = selectedAround(points);
        functions.convexHull(points, hull);
        ASSERT_EQ(points, expected);
        ASSERT_LT(outside(hull, points), 1e-12);
        for (int i = 0, n = hull.size(); n > 2 && i < n; ++i)
            ASSERT_GT(functions.orientation3(hull[i], hull[(i + 1) % n], hull[(i + 2) % n]), 0);
    }
}

// Rounding alone decides their order: a scan that trusts it runs to and fro along the lines.
TEST(ConvexHull, HoldsLinesOfPoints)
{
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        Points points, hull;
        const Point2DF centre = (round % 3) * kSurvey;
        for (int line = 0; line < 1 + round % 4; ++line) {
            const double angle = uniform(random, 0, 3.2);
            for (int i = 0; i < 60; ++i)
                points.append(centre + uniform(random, -1e3, 1e3) *
                                           Point2DF(std::cos(angle), std::sin(angle)));
        }
        functions.convexHull(points, hull);
        ASSERT_LT(outside(hull, points), 1e-8);
    }
}

TEST(ConvexHull, LeavesOutWhatIsNoCorner)
{
    std::pair<Points, Points> cases[] = {
        {{{3, 3}, {1, 1}, {0, 0}, {2, 2}}, {{0, 0}, {3, 3}}},
        {{{0, 0}, {0, 0.0009}, {5, 0}, {0, 5}}, {{0, 0}, {5, 0}, {0, 5}}},
        {{{1e200, 0}, {1, 1}, {1, 1}, {0, 4}}, {}},
        {{{1, 1}, {kNan, 0}, {1, 1}}, {}},
    };
    for (auto& [points, expected] : cases) {
        Points hull{{9, 9}};
        functions.convexHull(points, hull);
        expected.insert(0, {9, 9});
        EXPECT_EQ(hull, expected);
    }
}

TEST(ExactOrientation, IsThatOfWholeNumbers)
{
    std::mt19937_64 random(9);
    std::uniform_int_distribution<std::int64_t> large(-(1LL << 49), 1LL << 49);
    int hidden = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::int64_t cx = large(random), cy = large(random);
        const std::int64_t ux = large(random), uy = large(random);
        const std::int64_t vx = 5 * ux + i % 3, vy = 5 * uy - i % 2;
        const auto exact = static_cast<__int128>(ux) * vy - static_cast<__int128>(uy) * vx;
        const int sign = (exact > 0) - (exact < 0);
        const auto at = [&](std::int64_t x, std::int64_t y) {
            return Point2DF(static_cast<double>(cx + x), static_cast<double>(cy + y));
        };
        const double computed = functions.orientation3(at(ux, uy), at(vx, vy), at(0, 0));
        hidden += (computed > 0) - (computed < 0) != sign;
        ASSERT_EQ(calcora::detail::orientationSign(at(ux, uy), at(vx, vy), at(0, 0)), sign);
    }
    EXPECT_GT(hidden, 100);
}

}  // namespace
