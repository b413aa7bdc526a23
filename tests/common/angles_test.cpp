#include <gtest/gtest.h>

#include <cmath>

#include "common/commonFunc.h"
#include "tests/support/arcs.h"

namespace {

using namespace test_support;

commonFunc functions(0);

TEST(Angles, DegreesSplitTowardsZeroAndComeBack)
{
    const double cases[][4] = {
        {-(12 + 30 / 60.0 + 45 / 3600.0), 12, 30, 45},
        {-5e-11, 0, 0, -1.8e-7},
        {10.1, 10, 5, 60},  // never carried into 10, 6, 0
        {-2147483647.5, 2147483647, 30, 0},
        {2147483648.0, 7, 7, 7},  // nothing is written
        {kNan, 7, 7, 7},
    };
    int d = 7, m = 7;
    for (const auto& [degrees, wholeDegrees, minutes, seconds] : cases) {
        d = m = 7;
        double s = 7;
        functions.degreesToDms(degrees, d, m, s);
        EXPECT_TRUE(d == wholeDegrees && m == minutes) << degrees;
        EXPECT_NEAR(s, seconds, 1e-10) << degrees;
    }
    std::mt19937 random(4);
    for (int i = 0; i < 300; ++i) {
        const double radians = uniform(random, 0.02, 10);
        double s = 0;
        functions.radiansToDms(i % 2 ? radians : -radians, d, m, s);
        EXPECT_NEAR(functions.dmsToRadians(d, m, s), radians, 1e-14);
        EXPECT_NEAR(functions.dmsToRadians(-d, m, s), -radians, 1e-14);
    }
    EXPECT_NEAR(functions.dmsToRadians(0, -30, 0), -0.5 * kPi / 180, 1e-16);
    EXPECT_NEAR(functions.dmsToRadians(-10, -30, 0), -9.5 * kPi / 180, 1e-16);
}

TEST(Angles, DirectionsGuardTheVertical)
{
    const double cases[][4] = {
        // x, y, and the direction by either operation
        {0, -1, 1.5 * kPi, 1.5 * kPi},
        {0, 0, 0, 0},
        {1, -1e-300, 2 * kPi, 2 * kPi},
        {-1e-11, 1e-11, std::atan2(0.1, -1), 0.75 * kPi},
        {-1e-13, 1e-13, std::atan2(1e-3, -1), std::atan2(0.1, -1)},
    };
    for (const auto& [toX, toY, vector, polar] : cases) {
        double x = toX, y = toY;  // inputs and outputs at once
        EXPECT_NEAR(functions.vectorAngle(0, 0, x, y), vector, 1e-9);
        functions.polarFromCoordinates(0, 0, x, y, y, x);
        EXPECT_NEAR(y, polar, 1e-9);
        EXPECT_EQ(x, std::sqrt(toX * toX + toY * toY));
        functions.coordinatesFromPolar(x, y, 0, 0, x, y);
        EXPECT_LT(std::hypot(x - toX, y - toY), 1e-11);
    }
    EXPECT_EQ(functions.normalizeAngle(4 * kPi + 1), 4 * kPi + 1 - 2 * kPi);
}

}  // namespace
