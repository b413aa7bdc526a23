#include <gtest/gtest.h>

#include "common/commonFunc.h"
#include "tests/support/edges.h"

namespace {

using namespace test_support;
using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

constexpr int kRight = -1;
constexpr int kLeft = 1;

/// Beside a ring that runs counter-clockwise left is inside, at corners of any sharpness.
TEST(PolylineSides, OfRingsAreInsideAndOutside)
{
    commonFunc geometry(10);
    std::mt19937 random(114);
    for (int i = 0; i < 300; ++i) {
        const int corners = 4 + i % 9;
        Points ring;
        for (int k = 0; k < corners; ++k) {
            const double angle = (k + uniform(random, 0, 0.8)) * 2 * kPi / corners;
            ring.append(uniform(random, 0.5, k % 2 ? 20 : 2) * direction(angle));
            if (random() % 4 == 0) ring.append(Point2DF(ring.last()));
        }
        ring.append(Point2DF(ring.first()));
        Points reversed = ring;
        geometry.reversePointList(reversed);
        for (int k = 0; k < 60; ++k) {
            const Point2DF p = randomPoint(random, ring[k % ring.size()], k % 3 ? 0.02 : 20);
            if (geometry.pointPolylineDistSquared(p, ring) < 1.1e-6) continue;
            const int side = geometry.pointInPolygon(ring, p) == -1 ? kLeft : kRight;
            ASSERT_EQ(geometry.pointSideOfPolyline(p, ring), side) << i << ", " << k;
            ASSERT_EQ(geometry.pointSideOfPolyline(p, reversed), -side) << i << ", " << k;
            ASSERT_EQ(geometry.pointSideOfPolyline(p + kSurvey, moved(ring, kSurvey)), side);
            ASSERT_EQ(geometry.pointSideOfBulgePolyline(p, ring, {}), side);
        }
    }
}

/// A chain of arcs that runs in +x throughout has its left above it.
TEST(PolylineSides, OfAChainOfArcsAreAboveAndBelow)
{
    commonFunc geometry(10);
    std::mt19937 random(113);
    Points chain{{0, 0}};
    Values bulges;
    for (int k = 0; k < 300; ++k) {
        chain.append(chain.last() + Point2DF(uniform(random, 0.5, 4), uniform(random, -0.3, 0.3)));
        bulges.append(k % 3 ? uniform(random, -0.35, 0.35) : uniform(random, -2e-6, 2e-6));
    }
    for (int k = 1; k < 299; ++k)
        for (double t = 0; t < 1; t += 1.0 / 16)
            for (const double rise : {-0.3, -0.01, 0.01, 0.3}) {
                const Point2DF p =
                    Edge{chain[k], chain[k + 1], bulges[k]}.at(t) + Point2DF(0, rise);
                ASSERT_EQ(
                    geometry.pointSideOfBulgePolyline(p + kSurvey, moved(chain, kSurvey), bulges),
                    rise > 0 ? kLeft : kRight)
                    << k << ", " << t;
            }
}

TEST(PolylineSides, OfSinglePoints)
{
    const Points corner{{0, 0}, {10, 0}, {10, 10}};
    const double y = 4e6 + 0x1p-30;  // the last bit is odd
    const Points repeated{{0, y}, {0, y}, {5, y}, {5, y}, {9, y}, {9, y}};
    const Points chord{{0, 0}, {8, 0}};
    struct Case {
        Points polyline;
        Values bulges;
        Point2DF p;
        int side;
    };
    const Case cases[] = {
        {corner, {}, {5, 0.0009}, 0},
        {corner, {}, {5, -0.0011}, kRight},
        {corner, {}, {13, 0}, kRight},   // in line with the first segment
        {corner, {}, {10, -3}, kRight},  // in line with the second
        {corner, {}, {-2, 0}, 0},        // beyond an end, in line and not
        {corner, {}, {-2, 1e-5}, kLeft},
        {{{0, 0}, {10, 0}, {3, 0}}, {}, {12, 0}, 0},  // straight back
        {repeated, {}, {5, y + 2}, kLeft},
        {{{0, 0}, {5e-4, 0}, {5e-4, 9}}, {}, {2, 0}, kRight},  // nearest to the second vertex
        {{{1, 1}}, {}, {5, 5}, 0},
        {corner, {}, {kNan, 1}, 0},
        {chord, {0.5}, {4, -1}, kLeft},  // between chord and arc
        {chord, {1}, {4, 0}, kLeft},     // the centre
        {{{0, 0}, {8, 0}, {9, 9}}, {kNan, kInfinity}, {4, -1}, 0},
    };
    commonFunc geometry(10);
    for (const auto& [polyline, bulges, p, side] : cases) {
        EXPECT_EQ(geometry.pointSideOfBulgePolyline(p, polyline, bulges), side) << p.x();
        if (bulges.isEmpty()) {
            EXPECT_EQ(geometry.pointSideOfPolyline(p, polyline), side) << p.x();
        }
    }
}

TEST(PolylineSides, OfPolylinesAndTheirEnds)
{
    const Points base{{0, 0}, {10, 0}, {10, 10}};
    commonFunc geometry(10);
    EXPECT_EQ(geometry.polylineSideOfPolyline({{1, 1}, {5, 0}, {9, 5}}, base), kLeft);
    EXPECT_EQ(geometry.polylineSideOfPolyline({{1, 2}, {1, -1}}, base), 2);
    EXPECT_EQ(geometry.segmentsSideOfPolyline({{1, 2}, {1, -1}}, base), kLeft);
    // All vertices on the line.
    EXPECT_EQ(geometry.polylineSideOfPolyline({{0, 0}, {10, 10}}, base), kLeft);
    EXPECT_EQ(geometry.polylineSideOfPolyline({{2, 0}, {10, 0}, {10, 4}}, base), 0);
    const Points line{{0, 0}, {3, 3}, {5, 1}};
    const Points oneEnd{{0, 0}, {5, 1.00011}};
    const Points loop{{0, 0}, {4, 4}, {0, 0}};
    const Points opposite{{5.00009, 1}, {-0.00009, 0}};
    EXPECT_EQ(geometry.findSameEnds({{}, oneEnd, loop, opposite, line}, line), 3);
    EXPECT_EQ(geometry.findSameEnds({oneEnd, loop, {}}, line), -1);
    EXPECT_TRUE(geometry.haveSameEnds(line, {{0, 0}, {5, 1}}));
}

}  // namespace
