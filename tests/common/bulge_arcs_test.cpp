#include <gtest/gtest.h>

#include "common/commonFunc.h"
#include "tests/support/arcs.h"

namespace {

using namespace test_support;

commonFunc geometry(10);

/// Arcs built from a circle come back from their chord and bulge, near the origin to rounding, in
/// survey coordinates to what their coordinates can hold.
TEST(BulgeArcs, AgreeWithTheCircleTheyWereTakenFrom)
{
    std::mt19937 random(3);
    for (int i = 0; i < 2000; ++i) {
        const bool isFar = i % 2;
        const Arc arc = randomArc(random, isFar ? kSurvey : Point2DF());
        const Point2DF p1 = arc.start();
        const Point2DF p2 = arc.end();
        const double b = arc.bulge();
        // An end moved by rounding moves the centre by that over the sine of half the sweep.
        const double amplified = 1 + 1 / std::pow(std::sin(arc.sweep / 2), 2);
        const double slack = (isFar ? 3e-9 : 1e-13 * (1 + arc.radius)) * amplified;
        SCOPED_TRACE(testing::Message() << i << " sweep " << arc.sweep << " r " << arc.radius);

        Point2DF centre;
        double radius = 0;
        geometry.bulgeArcCenter(p1, p2, b, centre, &radius);
        ASSERT_NEAR(dist(centre, arc.centre), 0, slack);
        ASSERT_NEAR(radius, arc.radius, slack);
        ASSERT_NEAR(geometry.bulgeSegmentLength(p1, p2, b), arc.length(), 7 * slack);
        ASSERT_NEAR(dist(geometry.arcMidPoint(p1, p2, b), arc.at(0.5)), 0, 2 * slack);

        const double t = uniform(random, 0.001, 0.999);
        Point2DF place;
        geometry.pointOnBulgeSegmentAtRatio(p1, p2, b, t, place);
        ASSERT_NEAR(dist(place, arc.at(t)), 0, 7 * slack);
        geometry.pointOnBulgeSegmentAtDistance(p1, p2, b, t * arc.length(), place);
        ASSERT_NEAR(dist(place, arc.at(t)), 0, 14 * slack);
        ASSERT_NEAR(geometry.arcSweepFraction(arc.at(t), arc.centre, p1, p2, b < 0), t,
                    1e-12 + 4 * slack / arc.length());
        // In the gap the nearer end decides between below 0 and above 1.
        const double gap = (2 * kPi - std::fabs(arc.sweep)) / std::fabs(arc.sweep);
        ASSERT_LT(geometry.arcSweepFraction(arc.at(-0.4 * gap), arc.centre, p1, p2, b < 0), 0);
        ASSERT_GT(geometry.arcSweepFraction(arc.at(1 + 0.4 * gap), arc.centre, p1, p2, b < 0), 1);
        const double found = geometry.bulgeFrom3Points(p1, arc.at(0.5), p2);
        ASSERT_NEAR(4 * std::atan(found), arc.sweep, 20 * slack * amplified / arc.radius);
    }
}

TEST(BulgeArcs, FlatArcsKeepTheirSagittaAndTheirArea)
{
    for (const double b : {1e-10, 3e-7, -1e-6, 1e-5, -5e-4, 9.99e-4, 1.001e-3, -0.01}) {
        SCOPED_TRACE(b);
        const Point2DF p2 = kSurvey + Point2DF(80, 60);
        const Point2DF middle = kSurvey + Point2DF(40, 30) + b * Point2DF(30, -40);
        const bool isStraight = std::fabs(b) < 1e-6;  // for lengths and distances
        Point2DF place;
        geometry.pointOnBulgeSegmentAtRatio(kSurvey, p2, b, 0.5, place);
        EXPECT_NEAR(dist(place, middle), 0, 2e-9);
        const double length = geometry.bulgeSegmentLength(kSurvey, p2, b);
        EXPECT_NEAR(length, isStraight ? 100 : 100 * (1 + b * b) * std::atan(b) / b, 1e-7);
        geometry.pointOnBulgeSegmentAtDistance(kSurvey, p2, b, length / 2, place);
        EXPECT_NEAR(dist(place, isStraight ? kSurvey + Point2DF(40, 30) : middle), 0, 3e-9);
        // Two thirds of sagitta times chord, to the next order in the bulge.
        const double area = 2.0 / 3 * 100 * 50 * std::fabs(b);
        EXPECT_NEAR(geometry.bulgeSegmentArea(kSurvey, p2, b), area * (1 + b * b / 5), area * 2e-9);
    }
    EXPECT_EQ(geometry.bulgeSegmentArea({0, 0}, {100, 0}, 9e-13), 0);
    EXPECT_NEAR(geometry.bulgeSegmentArea({1, 0}, {0, -1}, std::tan(3 * kPi / 8)),
                3 * kPi / 4 - 0.5, 1e-14);
}

TEST(BulgeArcs, PlacesOutsideTheRangesAreNotWritten)
{
    const std::tuple<double, double, double, bool> cases[] = {
        // fraction, distance on a chord of 2
        {1, -5e-7, -7, true},          {1, 1.0000005, 3.1415, true}, {1, 1.000002, 3.1416, false},
        {0, 1.000002, 2.0001, false},  {1, kNan, kNan, false},       {0, -2e-6, -kInfinity, false},
        {1, -2e-6, -kInfinity, false}, {kNan, 0.5, 1, true}};
    for (const auto& [bulge, t, distance, written] : cases) {
        Point2DF byRatio = kUntouched, byDistance = kUntouched;
        geometry.pointOnBulgeSegmentAtRatio({0, 0}, {2, 0}, bulge, t, byRatio);
        geometry.pointOnBulgeSegmentAtDistance({0, 0}, {2, 0}, bulge, distance, byDistance);
        EXPECT_EQ(byRatio != kUntouched, written) << bulge << " at " << t;
        EXPECT_EQ(byDistance != kUntouched, written) << bulge << " at " << distance;
    }
}

TEST(BulgeArcs, AnArcWithoutLengthIsAPoint)
{
    const Point2DF p(3, 4);
    Point2DF out;
    double radius = 7;
    geometry.pointOnBulgeSegmentAtRatio(p, p, -0.5, 0.3, out);
    EXPECT_EQ(out, p);
    geometry.bulgeArcCenter(p, p, 1e200, out = kUntouched, &radius);
    EXPECT_TRUE(out == p && radius == 0);
    EXPECT_EQ(geometry.bulgeSegmentLength(p, p, 1e-5), 0);
    EXPECT_EQ(geometry.bulgeSegmentArea(p, p, 1e200), 0);
    // An arc without sweep: only its own direction is on it.
    EXPECT_EQ(geometry.arcSweepFraction({5, 0}, {0, 0}, {1, 0}, {2, 0}, false), 0);
    EXPECT_EQ(geometry.arcSweepFraction({0, -5}, {0, 0}, {1, 0}, {2, 0}, false), kInfinity);
    EXPECT_EQ(geometry.arcSweepFraction({kNan, 0}, {0, 0}, {1, 0}, {0, 1}, true), kInfinity);
}

TEST(BulgeArcs, CirclesThroughPoints)
{
    Point2DF p = kUntouched;
    double radius = 7;
    for (const auto& third : {Point2DF(3, 3), Point2DF(kNan, 1), Point2DF(1e300, -1e300)}) {
        EXPECT_FALSE(geometry.circleFrom3Points({0, 0}, {1, 1}, third, p, &radius));
        EXPECT_EQ(geometry.bulgeFrom3Points({0, 0}, {1, 1}, third), 0);
    }
    EXPECT_TRUE(p == kUntouched && radius == 7);
    // Outputs may be inputs.
    ASSERT_TRUE(geometry.circleFrom3Points(p = {1, 0}, {0, 1}, {-1, 0}, p, &radius));
    EXPECT_NEAR(radius, 1, 1e-15);
    geometry.bulgeArcCenter({0, 0}, p = {2, 0}, 1, p, nullptr);
    EXPECT_NEAR(dist(p, {1, 0}), 0, 1e-15);
    // Twice the triangle's area decides: a half circle over 1e-3 is too small for a bulge.
    EXPECT_EQ(geometry.bulgeFrom3Points({0, 0}, {5e-4, -5e-4}, {1e-3, 0}), 0);
    EXPECT_NEAR(geometry.bulgeFrom3Points({0, 0}, {1e-3, -1e-3}, {2e-3, 0}), 1, 1e-12);
}

TEST(BulgeArcs, DensifyingStepsEvenlyAndAppends)
{
    IcommonFunc::Points points{{9, 9}};
    IcommonFunc::Values heights{9};
    const double quarter = std::tan(kPi / 8);
    ASSERT_TRUE(geometry.densifyArc3d({1, 0, 10}, {0, 1, 16}, quarter, -0.5, points, heights));
    ASSERT_EQ(points.size(), 5);
    for (int k = 0; k <= 3; ++k) {
        EXPECT_NEAR(dist(points[1 + k], Arc{{}, 1, 0, kPi / 2}.at(k / 3.0)), 0, 1e-14);
        EXPECT_DOUBLE_EQ(heights[1 + k], 10 + 2 * k);
    }
    for (const double step : {0.0, kNan, 1e-300, 1e-7, 2.0})
        EXPECT_FALSE(geometry.densifyArc3d({1, 0, 0}, {0, 1, 0}, quarter, step, points, heights));
    EXPECT_FALSE(geometry.densifyArc3d({1, 0, 0}, {0, 1, 0}, 1e-6, 1e-7, points, heights));
    EXPECT_EQ(points.size(), 5);
}

}  // namespace
