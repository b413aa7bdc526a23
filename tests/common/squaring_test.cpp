#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "common/commonFunc.h"
#include "tests/support/arcs.h"

namespace {

using tav::Point2DF;
using test_support::dist;
using test_support::kNan;
using test_support::kPi;
using test_support::kSurvey;
using Points = tav::Vector<Point2DF>;
using PointLists = tav::Vector<Points>;

Points turned(const Points& points, double angle, const Point2DF& by = {})
{
    Points result;
    for (const Point2DF& p : points)
        result.append(by + Point2DF(p.x() * std::cos(angle) - p.y() * std::sin(angle),
                                    p.x() * std::sin(angle) + p.y() * std::cos(angle)));
    return result;
}

TEST(EdgeDirections, TheGreatestLengthWins)
{
    const Points rectangle{{0, 0}, {10, 0}, {10, 2}, {0, 2}, {0, 0}};
    struct Case {
        PointLists rings;
        double direction;
    };
    const Case cases[] = {
        {{turned(rectangle, 0.3, kSurvey)}, 0.3},
        {{turned(rectangle, -0.0005)}, 0},                      // just below the axis
        {{{{0, 0}, {4, 4}}, {{0, 0}, {4, -4}}}, -kPi / 4},      // equal lengths
        {{{{0, 0}, {3, 0}}, {{0, 0}, {2, 0.001}, {0, 0}}}, 0},  // 3 and twice 2 in one entry
        // Vertical sides whose x differs in the last bit are one direction.
        {{{{0, 0}, {3, 3}, {0, 0}}, {{1, 0}, {std::nextafter(1, 0), 4}}, {{2, 4}, {2, -1}}},
         kPi / 2},
        {{{{1, 1}, {1, 1}}}, kPi / 2},
        {{{{1, 1}, {kNan, 1}, {1, 5e307}, {1, -1e308}}}, 0},
    };
    commonFunc functions(0);
    for (const Case& c : cases)
        EXPECT_NEAR(functions.dominantEdgeDirection(c.rings), c.direction, 1e-9);
}

TEST(EdgeDirections, LinesMeet)
{
    commonFunc functions(0);
    // Near -pi/2 a slope would amplify rounding; within 0.001 of pi/2 a line is vertical.
    for (double off = 1e-16; off < 1; off *= 3) {
        Point2DF out;
        const double a = -kPi / 2 + off;
        const Point2DF u(std::cos(a), std::sin(a));
        functions.intersectDirectionLines(kSurvey + 70 * u, a, kSurvey - Point2DF(50, 50), kPi / 4,
                                          out);
        EXPECT_LT(dist(out, kSurvey), 1e-7);
    }
    Point2DF out;
    functions.intersectDirectionLines({0, 0}, kPi / 2 - 0.0009, {5, 3}, 0, out);
    EXPECT_EQ(out, Point2DF(0, 3));
    const double parallels[][2] = {{1, 1 + 1e-13}, {kPi / 2, kPi / 2}, {kNan, 1}, {1, 1 - kPi}};
    for (const auto& [a, b] : parallels)
        functions.intersectDirectionLines({0, 0}, a, {5, 3}, b, out);
    EXPECT_EQ(out, Point2DF(0, 3));
}

TEST(EdgeDirections, OnlyTrueCornersStay)
{
    struct Case {
        Points ring, corners;
    };
    const Case cases[] = {
        {{{5, 0}, {7, 0}, {10, 0}, {10, 5}, {0, 5}, {0, 0}, {3, 0}},
         {{10, 0}, {10, 5}, {0, 5}, {0, 0}}},
        {{{0, 0}, {9, 0}, {12, 0}, {5, 0}, {5, 5}}, {{0, 0}, {5, 0}, {5, 5}}},  // turns back
        {{{0, 0}, {0, 3}, {1e-14, 6}, {4, 4}, {0, 0}}, {{0, 0}, {1e-14, 6}, {4, 4}, {0, 0}}},
        {{{0, 0}, {5, 0}, {5, 0.0001}, {0, 0}}, {{0, 0}, {5, 0}, {0, 0}}},
    };
    commonFunc functions(0);
    for (Case c : cases) {
        functions.removeCollinearPoints(c.ring);
        EXPECT_EQ(c.ring, c.corners);
    }
    const tav::Vector<CMyAngleLine> lines{{0.1, 1}, {0.2, 2}, {0.2 + 5e-7, 3}};
    EXPECT_EQ(functions.lookupAngleLine(lines, 0.2 + 4e-7), &lines[1]);
    EXPECT_EQ(functions.lookupAngleLine(lines, 0.3), nullptr);
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
    commonFunc functions(0);
    for (int i = 0; i < 300; ++i) {
        const double angle = i % 3 ? test_support::uniform(random, -1.5, 1.5) : 2e-11;
        Points outline = step;
        for (int k = 2; k < step.size(); ++k)
            outline[k] += Point2DF(test_support::uniform(random, 0.1, 0.4) * (k % 2 ? 1 : -1),
                                   0.12 * k + test_support::uniform(random, 0, 0.05));
        if (i % 5 == 0) outline.append(0.5 * outline.last());  // in line
        outline.append(Point2DF(outline.first()));
        outline = turned(outline, angle, (i % 2) * kSurvey);
        if (i % 7 == 0) functions.reversePointList(outline);

        PointLists squared{{}};
        functions.squareRings({outline}, squared);
        ASSERT_EQ(squared.size(), 2);
        const Points& ring = squared[1];
        EXPECT_EQ(ring.size(), step.size() + 1);
        EXPECT_TRUE(functions.isClockwiseRing(ring));
        EXPECT_LT(offSquare(ring, functions.dominantEdgeDirection({outline})), 1e-9);
        EXPECT_NEAR(functions.polygonArea(ring), functions.polygonArea(outline), 40);
        for (const Point2DF& p : ring)
            EXPECT_LT(functions.pointPolylineDistSquared(p, outline), 1.5 * 1.5);
    }
}

TEST(Squaring, OutlinesWithTooLittleOrStrangeCorners)
{
    struct Case {
        Points ring, squared;
    };
    const Case cases[] = {
        {{{0, 0}, {8, 0}, {10, 2.01}, {10, 10}, {0, 10}},  // a corner cut off comes back
         {{0, 0}, {0, 10}, {10, 10}, {10, 0}, {0, 0}}},
        // A kink before an edge along becomes a step.
        {{{0, 0}, {0, 9}, {4, 9}, {12, 9.4}, {20, 9.4}, {20, 0}, {0, 0}},
         {{0, 0}, {0, 9}, {4, 9}, {4, 9.4}, {20, 9.4}, {20, 0}, {0, 0}}},
        {{{0, 0}, {4, 0}, {4, 4}, {0, 0}}, {{0, 0}, {4, 0}, {4, 4}, {0, 0}}},
    };
    commonFunc functions(0);
    for (const Case& c : cases) {
        PointLists out;
        functions.squareRings({c.ring}, out);
        ASSERT_EQ(out[0].size(), c.squared.size());
        for (int i = 0; i < c.squared.size(); ++i)
            EXPECT_FALSE(dist(out[0][i], c.squared[i]) > 1e-9);
    }
}

TEST(Squaring, CornersMoveToTheNearestRightAngle)
{
    commonFunc functions(0);
    std::mt19937 random(2);
    for (int i = 0; i < 200; ++i) {
        const Point2DF a = (i % 2) * kSurvey, c = a + Point2DF(10, 0), middle = a + Point2DF(5, 0);
        const Point2DF given = a + Point2DF(test_support::uniform(random, -2, 12),
                                            test_support::uniform(random, -7, 7));
        const bool isTooHigh = std::fabs(given.y() - a.y()) > 5;
        Point2DF b = given;
        ASSERT_NE(functions.squareCorner(a, b, c), isTooHigh);
        EXPECT_NEAR(dist(b, given), isTooHigh ? 0 : std::fabs(dist(given, middle) - 5), 1e-8);
        if (isTooHigh) continue;
        EXPECT_NEAR(functions.angleBetweenDirections(a, b, c), kPi / 2, 1e-8);
    }
    Point2DF onLine(3, 0);
    EXPECT_FALSE(functions.squareCorner({0, 0}, onLine, {10, 0}));
    EXPECT_FALSE(functions.squareCorner({0, 0}, onLine, {0, 0}));

    for (const double tolerance : {5.0, 0.1, kNan}) {
        const Points skew{{0, 0}, {10, 0.1}, {10.2, 6}, {-0.1, 6.2}, {0, 0}};
        Points ring = skew;
        ASSERT_TRUE(functions.squareCorners(ring, tolerance));
        EXPECT_EQ(ring == skew, tolerance != 5.0);
        for (int i = 0; tolerance == 5.0 && i < 4; ++i)
            EXPECT_NEAR(functions.angleBetweenDirections(ring[i], ring[i + 1], ring[(i + 2) % 4]),
                        kPi / 2, 1e-6);
    }
}

}  // namespace
