#include "tests/support/edges.h"

namespace {

using namespace test_support;

TEST(EdgeDirections, TheGreatestLengthWins)
{
    const Points rectangle{{0, 0}, {10, 0}, {10, 2}, {0, 2}, {0, 0}};
    const std::pair<PointLists, double> cases[] = {
        {{turned(rectangle, 0.3, kSurvey)}, 0.3},
        {{turned(rectangle, -0.0005)}, 0},                      // just below the axis
        {{{{0, 0}, {3, 0}}, {{0, 0}, {2, 0.001}, {0, 0}}}, 0},  // 3 and twice 2 in one entry
        // Vertical sides whose x differs in the last bit are one direction.
        {{{{0, 0}, {3, 3}, {0, 0}}, {{1, 0}, {std::nextafter(1, 0), 4}}, {{2, 4}, {2, -1}}},
         kPi / 2},
        {{{{1, 1}, {kNan, 1}, {1, 5e307}, {1, -1e308}}}, 0},
    };
    for (const auto& [rings, wanted] : cases)
        EXPECT_NEAR(geometry.dominantEdgeDirection(rings), wanted, 1e-9);
}

TEST(EdgeDirections, LinesMeet)
{
    // Near -pi/2 a slope would amplify rounding; within 0.001 of pi/2 a line is vertical.
    for (double off = 1e-16; off < 1; off *= 3) {
        Point2DF out;
        const double a = -kPi / 2 + off;
        geometry.intersectDirectionLines(kSurvey + 70 * direction(a), a, kSurvey - Point2DF(50, 50),
                                         kPi / 4, out);
        EXPECT_LT(dist(out, kSurvey), 1e-7);
    }
    Point2DF out;
    geometry.intersectDirectionLines({0, 0}, kPi / 2 - 0.0009, {5, 3}, 0, out);
    EXPECT_EQ(out, Point2DF(0, 3));
    const double parallels[][2] = {
        {1, 1 + 1e-13},      {kPi / 2, kPi / 2},  {kNan, 1},
        {1, 1 - kPi},        {1.5704, 1.5704},    {1.5704, 1.5704 - kPi},
        {kPi / 2, -kPi / 2}, {-kPi / 2, kPi / 2}, {kPi / 2 - 9e-13, kPi / 2 + 9e-13}};
    for (const auto& [a, b] : parallels)
        geometry.intersectDirectionLines({0, 0}, a, {5, 3}, b, out);
    EXPECT_EQ(out, Point2DF(0, 3));
}

TEST(EdgeDirections, OnlyTrueCornersStay)
{
    std::pair<Points, Points> cases[] = {
        {{{5, 0}, {7, 0}, {10, 0}, {10, 5}, {0, 5}, {0, 0}, {3, 0}},
         {{10, 0}, {10, 5}, {0, 5}, {0, 0}}},
        {{{0, 0}, {9, 0}, {12, 0}, {5, 0}, {5, 5}}, {{0, 0}, {5, 0}, {5, 5}}},  // turns back
        {{{0, 0}, {5, 0}, {5, 0.0001}, {0, 0}}, {{0, 0}, {5, 0}, {0, 0}}},
    };
    for (auto& [ring, corners] : cases) {
        geometry.removeCollinearPoints(ring);
        EXPECT_EQ(ring, corners);
    }
}

/// How far the sides of a closed ring are from running along and across `angle` by turns.
double offSquare(const Points& ring, double angle)
{
    double off = ring.first() == ring.last() ? 0 : 1;
    bool ranAlong = false;
    for (int i = 0; i + 1 < ring.size(); ++i) {
        const Point2DF v = ring[i + 1] - ring[i];
        const double fromAlong = std::fabs(std::remainder(std::atan2(v.y(), v.x()) - angle, kPi));
        const bool along = fromAlong < kPi / 4;
        if (i > 0 && along == ranAlong) return 1;
        ranAlong = along;
        off = std::max(off, along ? fromAlong : kPi / 2 - fromAlong);
    }
    return off;
}

TEST(Squaring, RingsComeOutSquare)
{
    std::mt19937 random(1);
    const Points step{{0, 0}, {40, 0}, {40, 12}, {29, 12}, {29, 25}, {0, 25}};
    for (int i = 0; i < 300; ++i) {
        const double angle = i % 3 ? uniform(random, -1.5, 1.5) : 2e-11;
        Points outline = step;
        for (int k = 2; k < step.size(); ++k)
            outline[k] += Point2DF(uniform(random, 0.1, 0.4) * (k % 2 ? 1 : -1),
                                   0.12 * k + uniform(random, 0, 0.05));
        if (i % 5 == 0) outline.append(0.5 * outline.last());  // in line
        outline.append(Point2DF(outline.first()));
        outline = turned(outline, angle, (i % 2) * kSurvey);
        if (i % 7 == 0) geometry.reversePointList(outline);

        PointLists squared{{}};
        geometry.squareRings({outline}, squared);
        ASSERT_EQ(squared.size(), 2);
        const Points& ring = squared[1];
        EXPECT_EQ(ring.size(), step.size() + 1);
        EXPECT_TRUE(geometry.isClockwiseRing(ring));
        EXPECT_LT(offSquare(ring, geometry.dominantEdgeDirection({outline})), 1e-9);
        EXPECT_NEAR(geometry.polygonArea(ring), geometry.polygonArea(outline), 40);
        for (const Point2DF& p : ring)
            EXPECT_LT(geometry.pointPolylineDistSquared(p, outline), 1.5 * 1.5);
    }
}

TEST(Squaring, AKinkBeforeAnEdgeAlongBecomesAStep)
{
    PointLists out;
    geometry.squareRings({{{0, 0}, {0, 9}, {4, 9}, {12, 9.4}, {20, 9.4}, {20, 0}, {0, 0}}}, out);
    const Points squared{{0, 0}, {0, 9}, {4, 9}, {4, 9.4}, {20, 9.4}, {20, 0}, {0, 0}};
    ASSERT_EQ(out[0].size(), squared.size());
    for (int i = 0; i < squared.size(); ++i) EXPECT_NEAR(dist(out[0][i], squared[i]), 0, 1e-9);
    // Not one corner of the sliver can be squared to the larger ring's direction.
    const Points sliver{{0, 0}, {-0.2, 100}, {0.96, 200}, {1, 100}, {0, 0}};
    geometry.squareRings({{{0, 0}, {0, 500}, {2000, 500}, {2000, 0}}, sliver}, out);
    EXPECT_EQ(out[2], sliver);
}

TEST(Squaring, CornersMoveToTheNearestRightAngle)
{
    std::mt19937 random(2);
    for (int i = 0; i < 200; ++i) {
        const Point2DF a = (i % 2) * kSurvey, c = a + Point2DF(10, 0), middle = a + Point2DF(5, 0);
        const Point2DF given = a + Point2DF(uniform(random, -2, 12), uniform(random, -7, 7));
        const bool isTooHigh = std::fabs(given.y() - a.y()) > 5;
        Point2DF b = given;
        ASSERT_NE(geometry.squareCorner(a, b, c), isTooHigh);
        EXPECT_NEAR(dist(b, given), isTooHigh ? 0 : std::fabs(dist(given, middle) - 5), 1e-8);
        if (isTooHigh) continue;
        EXPECT_NEAR(geometry.angleBetweenDirections(a, b, c), kPi / 2, 1e-8);
    }
    Point2DF middle(0.5, 1e-170);  // no direction to move it to
    EXPECT_TRUE(!geometry.squareCorner({0, 0}, middle, {1, 0}) && middle == Point2DF(0.5, 1e-170));
    for (const double tolerance : {5.0, 0.1, kNan}) {
        const Points skew{{0, 0}, {10, 0.1}, {10.2, 6}, {-0.1, 6.2}, {0, 0}};
        Points ring = skew;
        ASSERT_TRUE(geometry.squareCorners(ring, tolerance));
        EXPECT_EQ(ring == skew, tolerance != 5.0);
        for (int i = 0; tolerance == 5.0 && i < 4; ++i)
            EXPECT_NEAR(geometry.angleBetweenDirections(ring[i], ring[i + 1], ring[(i + 2) % 4]),
                        kPi / 2, 1e-6);
    }
}

}  // namespace
