// Circles through three points, lengths and middles of arcs, tangents.
#include <gtest/gtest.h>

#include "geometric/CGeometric.h"
#include "tests/support/paths.h"

namespace {

using namespace path_test;

class Circles : public PathTest {
protected:
    CGeometric g;
    Point3DF centre;
    double radius = 0;
};

TEST_F(Circles, OfArcsInAnyPlane)
{
    for (int round = 0; round < 1000; ++round) {
        const TurnedArc arc =
            tiltedArc(random, anyPoint(100), uniform(0.5, 200), uniform(0.1, 6.1));
        const Point3DF a = arc.at(0), b = arc.at(1), m = arc.at(uniform(0.3, 0.7));
        ASSERT_TRUE(g.circleFrom3Points3d(a, b, m, centre, radius));
        EXPECT_POINT_NEAR(centre, arc.centre, 1e-5);
        for (const Point3DF& p : {a, b, m}) EXPECT_NEAR(apart(centre, p), radius, 1e-8);

        ASSERT_TRUE(g.circleFrom3Points2d(a, b, m, centre, radius));
        for (const Point3DF& p : {a, b, m})
            EXPECT_NEAR(apart(centre, inPlan(p)), radius, 1e-9 * (1 + radius));

        Point3DF middle;
        ASSERT_TRUE(g.arcSegmentOp34(makePath({a, b}, {{0, m}}), 0, middle));
        EXPECT_POINT_NEAR(middle, arc.at(0.5), 1e-6);
        double total = 0;
        ASSERT_TRUE(g.segmentArcLength(arc.path(), 0, total));
        EXPECT_NEAR(total, arc.length(), 1e-6);
    }
}

TEST_F(Circles, CornerCases)
{
    struct Case {
        const char* name;
        Point3DF a, b, m;
        bool inPlan, inSpace;
        Point3DF planCentre, spaceCentre;
    };
    const double y = 4e6 + 0.1;
    const Point3DF none = kUntouched;
    const Case cases[] = {
        {"full circle", {1, 6, 3}, {1, 6, 3}, {-5, 2, 5}, true, true, {-2, 4, 0}, {-2, 4, 4}},
        {"upright", {-50, y, 0}, {50, y, 0}, {0, y, 10}, false, true, none, {0, y, -120}},
        {"on a line", {0.1, 0.1, 0}, {0.3, 0.3, 0}, {0.7, 0.7, 0}, false, false, none, none},
        {"not a number", {kNan, 0, 0}, {-1, 0, 0}, {0, 1, 0}, false, false, none, none},
        {"overflow", {1e300, 0, 0}, {-1e300, 0, 0}, {0, 1e300, 0}, false, false, none, none},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        centre = kUntouched;
        EXPECT_EQ(g.circleFrom3Points2d(c.a, c.b, c.m, centre, radius), c.inPlan);
        EXPECT_POINT_NEAR(centre, c.planCentre, 1e-9);
        centre = kUntouched;
        EXPECT_EQ(g.circleFrom3Points3d(c.a, c.b, c.m, centre, radius), c.inSpace);
        EXPECT_POINT_NEAR(centre, c.spaceCentre, 1e-9);
        EXPECT_EQ(centre.y(), c.spaceCentre.y()) << "an upright arc keeps it to the bit";
        if (c.inSpace) {
            EXPECT_NEAR(radius, apart(centre, c.a), 1e-9);
        }
    }
    ASSERT_TRUE(g.circleFrom3Points2d({1, 0, 0}, centre = {-1, 0, 0}, {0, 1, 0}, centre, radius));
    EXPECT_NEAR(radius, 1, 1e-15) << "output is an input";
}

TEST_F(Circles, DecimalTriplesOnALineHaveNone)
{
    for (int round = 0; round < 2000; ++round) {
        const int x = below(100000), y = below(100000), dx = below(2000), dy = below(2000);
        const auto at = [&](int k) {
            return Point3DF((x + k * dx) / 1000., (y + k * dy) / 1000., (k * dx) / 1000.);
        };
        EXPECT_TRUE((dx == 0 && dy == 0) ||
                    !g.circleFrom3Points3d(at(0), at(7), at(3), centre, radius));
    }
}

TEST_F(Circles, TangentsRunCounterClockwise)
{
    for (const double sweep : {kPi, -kPi}) {
        const PathRef path = levelArc({3, 4, 5}, 2, sweep < 0 ? kPi : 0, sweep).path();
        double tx = 777, ty = 777;
        EXPECT_FALSE(g.arcTangentAtPoint(path, 0, {3, 2, 0}, tx, ty)) << "beyond the chord";
        EXPECT_FALSE(g.arcTangentAtPoint(path, 0, {3 + 1e-7, 4, 0}, tx, ty)) << "at the centre";
        EXPECT_EQ(tx, 777);
        ASSERT_TRUE(g.arcTangentAtPoint(path, 0, {3, 6, 4}, tx, ty));
        EXPECT_NEAR(std::hypot(tx + 1, ty), 0, 1e-15);
    }
}

}  // namespace
