#include <gtest/gtest.h>

#include "common/commonFunc.h"
#include "tests/support/arcs.h"

namespace {

using namespace test_support;

commonFunc geometry(10);

TEST(Primitives, LineAngleOfTheNamedDirections)
{
    const std::pair<Point2DF, double> cases[] = {
        {{0, 1}, kPi / 2},     {{0, -1}, 3 * kPi / 2},    {{-1, 0}, kPi},  {{1, -1}, 7 * kPi / 4},
        {{0, 0}, 3 * kPi / 2}, {{0, 5e-13}, 3 * kPi / 2}, {{1, -1e-17}, 0}};
    for (const auto& [to, expected] : cases)
        EXPECT_DOUBLE_EQ(geometry.lineAngle({0, 0}, to), expected) << to.x() << ", " << to.y();
}

TEST(Primitives, SweepsStayBelowTheFullTurn)
{
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {  // targets in the very direction, but for rounding
        const Point2DF from(uniform(random, -9, 9), uniform(random, -9, 9));
        const double sweep = geometry.sweepAngle({0, 0}, from, uniform(random, 0.1, 3) * from);
        ASSERT_TRUE(0 <= sweep && sweep < 2 * kPi);
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
    Doubled doubled(10);
    EXPECT_EQ(doubled.pointDist({0, 0}, {3, 4}), 10);
    EXPECT_EQ(doubled.segmentParameter({2, 0}, {0, 0}, {4, 0}), 0.125);
    EXPECT_EQ(doubled.closestPointOnSegment({2, 0}, {0, 0}, {4, 0}), Point2DF(0.5, 0));
    EXPECT_EQ(doubled.closestPointOnSegment({2, 0}, {1, 1}, {1, 1}), Point2DF(1, 1));
    EXPECT_EQ(doubled.bulgeSegmentLength({0, 0}, {3, 4}, 0), 10);
    IcommonFunc::Values values{1, 2};
    Points points{{0, 0}, {7e-7, 0}};
    doubled.removeDuplicatePoints(points, values);
    EXPECT_EQ(points.size(), 2);
}

}  // namespace
