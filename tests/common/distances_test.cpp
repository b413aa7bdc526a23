#include <gtest/gtest.h>

#include "common/commonFunc.h"
#include "tests/support/edges.h"

namespace {

using namespace test_support;

commonFunc geometry(4);

// On long oblique segments a difference of squares would come out below zero.
TEST(Distances, OfSegmentsAndLinesFarOut)
{
    std::mt19937 random(5);
    for (int i = 0; i < 2000; ++i) {
        const Edge edge{randomPoint(random, kSurvey, 9e4), randomPoint(random, kSurvey, 9e4)};
        const double length = dist(edge.start, edge.end);
        const double t = uniform(random, -1, 2), left = i % 2 ? uniform(random, -9, 9) : 0;
        const Point2DF across = turned(edge.end - edge.start, kPi / 2);
        const Point2DF p = edge.at(t) + (left / length) * across;
        const double lineSquared = geometry.pointLineDistSquared(p, edge.start, edge.end);
        const double squared = geometry.pointSegmentDistSquared(p, edge.start, edge.end);
        const double beyond = std::max({-t, 0.0, t - 1}) * length;
        ASSERT_NEAR(geometry.pointLineSignedDist(p, edge.start, edge.end), -left, 1e-8);
        ASSERT_NEAR(std::sqrt(lineSquared), std::fabs(left), 1e-8);
        ASSERT_NEAR(std::sqrt(squared), std::hypot(left, beyond), 1e-8);
    }
    EXPECT_EQ(geometry.pointSegmentDistSquared({-3, 4}, {0, 0}, {0, 0}), 25);
    EXPECT_EQ(geometry.pointLineDistSquared({-3, 4}, {0, 0}, {0, 0}), 25);
    EXPECT_EQ(geometry.pointLineSignedDist({-3, 4}, {0, 0}, {0, 0}), 0);
}

TEST(Distances, AgreeWithSamplesOfTheFigure)
{
    std::mt19937 random(11);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        const Point2DF origin = round % 2 ? kSurvey : Point2DF();
        const double slack = round % 2 ? 2e-8 : 1e-10;
        const Point2DF p = randomPoint(random, origin, 40);
        Points points{randomPoint(random, origin, 30)};
        Values bulges;
        double sampled = kInfinity;
        for (int i = 0; i < 5; ++i) {
            bulges.append(i % 2 ? uniform(random, -3, 3) : 0.0);
            points.append(randomPoint(random, origin, 30));
            const Edge edge{points.at(i), points.at(i + 1), bulges.at(i)};
            for (int k = 0; k <= 2000; ++k)
                sampled = std::min(sampled, dist(p, edge.at(k / 2000.0)));
        }
        const double squared = geometry.pointBulgePolylineDistSquared(p, points, bulges);
        ASSERT_LE(std::sqrt(squared), sampled + slack);
        ASSERT_NEAR(std::sqrt(squared), sampled, 0.1);

        Point2DF nearest;
        int index[2];
        double param[2];
        ASSERT_EQ(geometry.nearestOnBulgePolylineEx(p, points, bulges, nearest, index, param),
                  squared);
        ASSERT_NEAR(dist(p, nearest), std::sqrt(squared), slack);
        // Within the edge the parameter names the very point; beyond its ends, the end is nearest.
        const int i = index[0];
        const Edge edge{points.at(i), points.at(i + 1), bulges.at(i)};
        ASSERT_NEAR(dist(edge.at(std::clamp(param[0] - i, 0.0, 1.0)), nearest), 0, 30 * slack);
        geometry.projectPointOnBulgePolyline(p, points, bulges, index + 1, param + 1);
        ASSERT_TRUE(index[1] == index[0] && param[1] == param[0]);
        ASSERT_EQ(geometry.pointBulgeSegmentDistSquared(p, edge.start, edge.end, edge.bulge),
                  squared);
    }
}

TEST(Distances, PlaceTheNearestPoint)
{
    struct Case {
        const char* what;
        Point2DF p;
        Points polyline;
        Values bulges;
        double squared;
        int index;
        double param;
        Point2DF nearest;
    };
    const Points corner{{0, 0}, {2, 0}, {2, 2}};
    const Points chord{{0, 0}, {2, 0}};
    const Case cases[] = {
        {"the projection is not clamped", {1, 5}, corner, {}, 10, 1, 3.5, {2, 2}},
        {"tie at the corner: the first edge", {3, -1}, corner, {}, 2, 0, 1.5, {2, 0}},
        {"no length", {3, 4}, {{0, 0}, {0, 0}, {0, 0}}, {0, 1}, 25, 0, 0, {0, 0}},
        {"not a number first", {1, 1}, {{kNan, 0}, {0, 0}, {2, 0}}, {}, 1, 1, 1.5, {1, 0}},
        {"nor its bulge", {1, 1}, {{9, 0}, {0, 0}, {2, 0}}, {kNan}, 1, 1, 1.5, {1, 0}},
        {"half circle below", {1, -0.5}, chord, {1}, 0.25, 0, 0.5, {1, -1}},
        {"its ends tie: the start", {1, 2}, chord, {1}, 5, 0, 1.5, {0, 0}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Point2DF nearest = c.p;  // also the asked point
        int index = -7;
        double param = -7;
        EXPECT_NEAR(geometry.nearestOnBulgePolylineEx(nearest, c.polyline, c.bulges, nearest,
                                                      &index, &param),
                    c.squared, 1e-12);
        EXPECT_EQ(index, c.index);
        EXPECT_NEAR(param, c.param, 1e-12);
        EXPECT_NEAR(dist(nearest, c.nearest), 0, 1e-12);
        if (!c.bulges.isEmpty()) continue;
        EXPECT_EQ(geometry.nearestOnPolyline(c.p, c.polyline, nearest, &index, &param), c.squared);
        EXPECT_EQ(param, c.param);
    }
    Point2DF nearest = kUntouched;
    EXPECT_EQ(geometry.nearestOnPolyline({1, 1}, {{5, 5}}, nearest, nullptr, nullptr), 0);
    EXPECT_EQ(geometry.nearestOnBulgePolylineEx({1, 1}, {}, {1}, nearest, nullptr, nullptr), 0);
    EXPECT_EQ(nearest, kUntouched);
    // Ends in one direction from the centre: a circle of radius 2.5e5, not a point.
    EXPECT_NEAR(geometry.pointBulgeSegmentDistSquared({0, -1e6}, {0, 0}, {1e-11, 0}, 1e17), 2.5e11,
                1);
}

}  // namespace
