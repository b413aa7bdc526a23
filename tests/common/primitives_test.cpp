#include <gtest/gtest.h>

#include "common/commonFunc.h"
#include "tests/support/arcs.h"

namespace {

using namespace test_support;
using tav::Point2DF;
using Points = IcommonFunc::Points;

TEST(Primitives, LineAngleOfTheNamedDirections)
{
    struct Case {
        Point2DF to;
        double expected;
    };
    commonFunc geometry(10);
    for (const auto& [to, expected] :
         {Case{{0, 1}, kPi / 2}, Case{{0, -1}, 3 * kPi / 2}, Case{{1, 0}, 0}, Case{{-1, 0}, kPi},
          Case{{1, -1}, 7 * kPi / 4}, Case{{0, 0}, 3 * kPi / 2}, Case{{1e-13, 5}, kPi / 2},
          Case{{0, 5e-13}, 3 * kPi / 2}, Case{{1, -1e-17}, 0}})
        EXPECT_DOUBLE_EQ(geometry.lineAngle({0, 0}, to), expected) << to.x() << ", " << to.y();
}

TEST(Primitives, SweepsStayBelowTheFullTurnAndLeadToTheirTarget)
{
    commonFunc geometry(10);
    EXPECT_EQ(geometry.sweepAngle({0, 0}, {0.3, 3}, {0.1, 1}), 0);
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {
        const Point2DF from(uniform(random, -9, 9), uniform(random, -9, 9));
        // Half of the targets lie in the very direction of `from`, but for rounding.
        const Point2DF to = i % 2 ? uniform(random, 0.1, 3) * from
                                  : Point2DF(uniform(random, -9, 9), uniform(random, -9, 9));
        const double sweep = geometry.sweepAngle({0, 0}, from, to);
        ASSERT_TRUE(0 <= sweep && sweep < 2 * kPi);
        Point2DF reached;
        geometry.polarPoint({0, 0}, geometry.lineAngle({0, 0}, from) + sweep,
                            geometry.pointDist({0, 0}, to), reached);
        ASSERT_NEAR(dist(reached, to), 0, 1e-11);
    }
}

TEST(Primitives, PolygonAreaIsTheSameAnywhereAndEitherWayRound)
{
    commonFunc geometry(10);
    const Points shape{{0, 0}, {7, 0}, {7, 3}, {5, 3}, {5, 9}, {0, 9}};
    for (const Point2DF& origin : {Point2DF(0, 0), kSurvey}) {
        Points ring = moved(shape, origin);
        EXPECT_EQ(geometry.polygonArea(ring), 51);
        geometry.reversePointList(ring);
        EXPECT_EQ(ring[1], shape[4] + origin);
        EXPECT_EQ(geometry.polygonArea(ring), 51);
    }
}

/// Distances that no plain helper would give.
class Doubled : public commonFunc {
public:
    using commonFunc::commonFunc;
    double pointDistSquared(const Point2DF& a, const Point2DF& b) override
    {
        return 4 * commonFunc::pointDistSquared(a, b);
    }
};

TEST(Primitives, AnOverrideCarriesThroughToWhatRestsOnIt)
{
    Doubled geometry(10);
    EXPECT_EQ(geometry.pointDist({0, 0}, {3, 4}), 10);
    EXPECT_EQ(geometry.segmentParameter({2, 0}, {0, 0}, {4, 0}), 0.125);
    EXPECT_EQ(geometry.closestPointOnSegment({2, 0}, {0, 0}, {4, 0}), Point2DF(0.5, 0));
    EXPECT_EQ(geometry.closestPointOnSegment({2, 0}, {1, 1}, {1, 1}), Point2DF(1, 1));
    EXPECT_EQ(geometry.bulgeSegmentLength({0, 0}, {3, 4}, 0), 10);
    IcommonFunc::Values values{1, 2};
    Points points{{0, 0}, {7e-7, 0}};
    geometry.removeDuplicatePoints(points, values);
    EXPECT_EQ(points.size(), 2);
}

}  // namespace
