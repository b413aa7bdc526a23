#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/arcs.h"
#include "unit/CUnit.h"

namespace {

using test_support::kNan;
using test_support::kPi;

TEST(Units, ScaleByTheFactorsOfTheField)
{
    CUnit unit;
    const double pairs[][2] = {
        {unit.meterToUsFoot(1e4), 32808.3335}, {unit.meterToFoot(1e4), 32808.399},
        {unit.usFootToMeter(1e4), 3048.006},   {unit.footToMeter(1e4), 3048.0},
        {unit.degreeToGon(360.0), 400.0},      {unit.gonToDegree(400.0), 360.0},
        {unit.degreeToMil(360.0), 6400.0},     {unit.milToDegree(6400.0), 360.0},
        {unit.radianToDegree(2 * kPi), 360.0}, {unit.degreeToRadian(-90.0), -kPi / 2},
    };
    for (const auto& [converted, expected] : pairs)
        EXPECT_NEAR(converted, expected, 4e-16 * std::fabs(expected));
}

TEST(Units, PolarOfAnOffsetIgnoresTheQuadrant)
{
    const double cases[][4] = {
        // east, north, distance, azimuth
        {3, 4, 5, std::atan(0.75)},
        {3, -4, -5, std::atan(-0.75)},
        {-5, 0, 0, -kPi / 2},
        {1e5, 1e-12, 16331.23935, kPi / 2},
    };
    CUnit unit;
    for (const auto& [east, north, distance, azimuth] : cases) {
        double d = 0, a = 0;
        unit.rectToPolar(east, north, &d, nullptr);
        unit.rectToPolar(east, north, nullptr, &a);
        EXPECT_NEAR(d, distance, 1e-4);
        EXPECT_NEAR(a, azimuth, 1e-15);
        unit.polarToRect(-5, std::atan(-0.75), &a, &d);
        EXPECT_NEAR(std::hypot(a - 3, d + 4), 0, 1e-14);
    }
}

TEST(Units, AzimuthsFallIntoQuadrantsAndComeBack)
{
    const double cases[][3] = {
        // azimuth, quadrant, bearing
        {0, 1, 0},
        {kPi / 2, 1, kPi / 2},
        {std::nextafter(kPi / 2, 4), 3, kPi / 2},
        {kPi, 3, 0},
        {std::nextafter(kPi, 4), 4, 0},
        {1.5 * kPi, 4, kPi / 2},
        {std::nextafter(1.5 * kPi, 5), 2, kPi / 2},
        {-kPi / 4, 2, kPi / 4},
        {-6 * kPi - 1, 2, 1},
        {kNan, 77, 77},  // nothing is written
        {-1e-17, 77, 77},
    };
    CUnit unit;
    for (const auto& [azimuth, code, angle] : cases) {
        int quadrant = 77;
        double bearing = 77, back = azimuth;
        unit.azimuthToBearing(azimuth, &quadrant, &bearing);
        EXPECT_EQ(quadrant, code) << azimuth;
        EXPECT_NEAR(bearing, angle, 1e-14) << azimuth;
        unit.bearingToAzimuth(quadrant, bearing, &back);
        EXPECT_FALSE(std::fabs(std::remainder(back - azimuth, 2 * kPi)) > 1e-14);
    }
}

}  // namespace
