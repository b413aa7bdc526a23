#include <gtest/gtest.h>

#include <cmath>

#include "common/commonFunc.h"
#include "tests/support/arcs.h"

namespace {

using namespace test_support;

commonFunc functions(0);

TEST(PointLists, OrientationAndCentroidHoldAnywhere)
{
    std::mt19937 random(1);
    for (int i = 0; i < 200; ++i) {
        const int n = 4 + i % 20;
        Points ring;
        for (int k = 0; k < n; ++k) {
            const double radius = uniform(random, 30, 100);
            const double angle = 2 * kPi * k / n;
            ring.append((i % 3) * kSurvey + radius * Point2DF(std::cos(angle), std::sin(angle)));
        }
        Point2DF expected = ring[0];
        for (int k = 1; k + 1 < n; ++k) {  // the triangles over the first vertex
            const double share = functions.orientation3(ring[0], ring[k], ring[k + 1]) / 2 /
                                 functions.polygonArea(ring);
            expected +=
                share * functions.triangleCentroid({}, ring[k] - ring[0], ring[k + 1] - ring[0]);
        }
        if (i % 5 == 0) ring.append(Point2DF(ring.first()));
        for (const bool clockwise : {false, true}) {
            EXPECT_EQ(functions.isClockwiseRing(ring), clockwise);
            EXPECT_LT(dist(functions.ringCentroid(ring), expected), 1e-6);
            functions.reversePointList(ring);
        }
    }
    // Equal triangles on either side of a vertex: their weights cancel on the way.
    const Points cancelling{{3, 4}, {5, 9}, {3, 4}, {1, -1}, {9, 0}, {7, 8}};
    EXPECT_LT(dist(functions.ringCentroid(cancelling) + kSurvey,
                   functions.ringCentroid(moved(cancelling, kSurvey))),
              1e-8);
    for (int i = 1; i < 100; ++i) {  // smaller than what sums of absolute coordinates resolve
        const Point2DF top(5e5 + i, 4e6 + i * 5e-10), right(5e5 + 10, 4e6);
        EXPECT_FALSE(functions.isClockwiseRing({kSurvey, right, top}));
        EXPECT_TRUE(functions.isClockwiseRing({kSurvey, top, right}));
    }
}

TEST(PointLists, DegenerateRings)
{
    const std::tuple<Points, bool, Point2DF, Point2DF> cases[] = {
        {{{0, 0}, {2, 0}, {4, 0}, {0, 0}}, true, {2, 0}, {2, 0}},
        {{{0, 1}, {3, 5}, {0, 3}}, false, {1, 3}, {1, 3}},  // ends alike in x only
        {{{53.2, 71.9}, {-12.2, 158.3}}, true, {20.5, 115.1}, {20.5, 115.1}},
        // The moment of a part that cancels the weight is lost.
        {{{-1, -1}, {1, 1}, {-1, 1}}, false, {0, 0}, {-1 / 3.0, 1 / 3.0}},
    };
    for (const auto& [ring, clockwise, centroid, mean] : cases) {
        EXPECT_EQ(functions.isClockwiseRing(ring), clockwise);
        EXPECT_LT(dist(functions.ringMeanPoint(ring), mean), 1e-13);
        EXPECT_LT(dist(functions.ringCentroid(ring), centroid), 1e-12);
    }
    EXPECT_EQ(functions.polylinesMeanPoint({{{9, 9}}, {{0, 0}, {4, 0}, {0, 0}}, {{5, 9}, {7, 3}}}),
              Point2DF(4, 3));
}

TEST(PointLists, Extents)
{
    const std::pair<PointLists, tav::RectF> cases[] = {
        {{{{-5, 7}, {-4, 9}, {kNan, 8}, {-8, 6}}}, {-8, 6, 4, 3}},
        {{{{5, 7}}, {{-1, 20}, {2, 3}}}, {-1, 3, 6, 17}},
        {{{{5, 7}}, {}}, {0, 0, 5, 7}},
    };
    for (const auto& [lists, rect] : cases) EXPECT_EQ(functions.polylinesRect(lists), rect);
    EXPECT_EQ(functions.lowerLeftPointIndex({{kNan, 0}, {3, 3}, {5, -2}, {-2, 5}}), 2);
}

TEST(PointLists, MovesSubtractAndMayWorkInPlace)
{
    PointLists lists{{{5, 5}, {9, 9}}, {}, {{1, 2}}};
    functions.translatePolylines(lists, 1, 2, lists);
    EXPECT_EQ(lists, (PointLists{{{4, 3}, {8, 7}}, {}, {{0, 0}}}));
    Points points{{2, 4}, {6, 14}};
    double cx = 0, cy = 0;
    EXPECT_EQ(functions.centerPointsOnBox(points, cx, cy, points), 2);
    EXPECT_EQ(Point2DF(cx, cy), Point2DF(4, 9));
    EXPECT_EQ(points, (Points{{-2, -5}, {2, 5}}));
}

TEST(PointLists, SortKeepsTheOrderOfEqualKeys)
{
    Points points{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}, {5, 0}};
    Values keys{kNan, 2, kNan, 0.0, -0.0, 2, -9};  // one key too many
    functions.sortPointsByKey(points, keys);
    EXPECT_EQ(points, (Points{{3, 0}, {4, 0}, {1, 0}, {5, 0}, {0, 0}, {2, 0}}));
    EXPECT_TRUE(keys[0] == 0 && keys[3] == 2 && std::isnan(keys[4]) && keys[6] == -9);
    keys = {3, 2, 1, 0};  // too few
    functions.sortPointsByKey(points, keys);
    EXPECT_TRUE(points[0].x() == 3 && keys[0] == 3);
}

}  // namespace
