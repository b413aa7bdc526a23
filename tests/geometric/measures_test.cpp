// Measures of one segment, angles between two, points built from a base.
#include <gtest/gtest.h>

#include "geometric/CGeometric.h"
#include "tests/support/paths.h"

namespace {

using namespace path_test;

constexpr double kNone = -777;

class Measures : public PathTest {
protected:
    CGeometric g;

    double get(bool (IGeometric::*operation)(Point3DF, Point3DF, double&), const Point3DF& b)
    {
        double value = 777;
        return (g.*operation)({}, b, value) ? value : kNone;
    }
    double angle2d(const Vec3& u, const Vec3& v)
    {
        double angle = 777;
        return g.angleBetweenLines2d({}, toPoint(u), {}, toPoint(v), angle) == 1 ? angle : kNone;
    }
    double angle3d(const Vec3& u, const Vec3& v)
    {
        const PathRef a = makePath({{}, toPoint(u)}), b = makePath({{}, toPoint(v)});
        double angle = 777;
        return g.angleBetweenSegments3d(a, 0, b, 0, angle) == 1 ? angle : kNone;
    }
};

TEST_F(Measures, DirectionsAndSlopes)
{
    const std::tuple<Point3DF, double, double, double> cases[] = {
        {{0, -1, 0}, 1.5 * kPi, 1.5 * kPi, 0},  {{1, 0, 1}, 2 * kPi - kPi / 4, 0, -kPi / 4},
        {{1, -1e-200, 0}, 2 * kPi, 2 * kPi, 0}, {{0, 0, 5}, 1.5 * kPi, kNone, kNone},
        {{0, 1e-200, 0}, kNone, kNone, kNone},  {{1, kNan, 1}, kNone, kNone, kNone},
        {{1, 1, kNan}, kNone, kPi / 4, kNone},
    };
    for (const auto& [to, direction3d, direction2d, slope] : cases) {
        SCOPED_TRACE(testing::Message() << to.x() << ' ' << to.y() << ' ' << to.z());
        EXPECT_NEAR(get(&IGeometric::directionAngle3d, to), direction3d, 1e-15);
        EXPECT_NEAR(get(&IGeometric::directionAngle2d, to), direction2d, 1e-15);
        EXPECT_NEAR(get(&IGeometric::slopeAngle3d, to), slope, 1e-15);
    }
}

TEST_F(Measures, PointsAgainstALineKeepTheirDigits)
{
    for (int round = 0; round < 500; ++round) {
        const Point3DF a = anyPoint(100);
        const Vec3 u{uniform(-100, 100), uniform(-100, 100), uniform(-100, 100)};
        const PathRef path = makePath({a, moved(a, u)});
        const double side = round % 5 ? uniform(-50, 50) : 0, plan = std::hypot(u.x, u.y);
        const Point3DF onLine = moved(a, uniform(-2, 3) * u);
        Point3DF q = moved(onLine, (side / plan) * Vec3{-u.y, u.x, 0});
        double offset = 777, distance = 777;
        ASSERT_TRUE(g.pointOffsetFromSegmentLine2d(path, 0, q, offset));
        ASSERT_TRUE(g.pointDistToSegmentLine3d(path, 0, q, distance)) << "on the line too";
        ASSERT_TRUE(g.projectPointToSegmentLine3d(path, 0, q, q)) << "output is the input";
        EXPECT_NEAR(offset, side, 1e-8) << "positive to the left";
        EXPECT_NEAR(distance, std::fabs(side), 1e-8);
        EXPECT_POINT_NEAR(q, onLine, 1e-8);
    }
}

TEST_F(Measures, Angles)
{
    const double turn = std::atan2(9, 4) - std::atan2(1, 5);
    const std::tuple<Vec3, Vec3, double, double> cases[] = {
        {{1, 0, 0}, {-1, 1, 0}, 5 * kPi / 4, 3 * kPi / 4},  // obtuse in plan: the rest
        {{1, 0, 0}, {1, -1, 0}, kPi / 4, kPi / 4},          // acute in plan: no sense
        {{1, 0, 0}, {9e-7, 2, 0}, kPi / 2, kPi / 2 - 4.5e-7},
        {{1, 0, 0}, {0, -1, 0}, 1.5 * kPi, kPi / 2},  // perpendicular in plan: with its sense
        {{1, 0, 5}, {-1, 0, 2}, kPi, kPi},            // level y: plan directions, no heights
        {{0, 0, 1}, {-1, 0, 0}, kNone, kPi},          // no plan length: direction 0
        {{0, 1, 5}, {0, 9, 4}, 0, 2 * kPi - turn},    // downwards: beyond pi
        {{1, 1, 0}, {-1, -1 - 1e-9, 0}, kPi + 5e-10, kPi - 5e-10},
        {{0, kNan, 0}, {1, 0, 0}, kNone, kNone},
    };
    for (const auto& [u, v, plan, space] : cases) {
        EXPECT_NEAR(angle2d(u, v), plan, 1e-14) << plan;
        EXPECT_NEAR(angle3d(u, v), space, 1e-14) << space;
    }
}

TEST_F(Measures, PointsMadeOfPoints)
{
    Point3DF p(1, 2, 3);
    g.pointAlongVector(p, {0, 3, -4}, 10, p);
    g.raisePoint(p, 0.5, p);
    EXPECT_EQ(p, Point3DF(1, 8, -4.5));
    for (const double none : {9e-7, kNan, kInfinity, 1e200}) {
        g.pointAlongVector(p = {1, 2, 3}, {none, 0, 0}, 10, p);
        EXPECT_EQ(p, Point3DF(1, 2, 3));
    }
    for (double angle = -7; angle < 9; angle += 0.1) {
        g.polarPoint(p = {1, 2, 3}, angle, 5, p);
        EXPECT_POINT_NEAR(p, Point3DF(1 + 5 * std::cos(angle), 2 + 5 * std::sin(angle), 3), 1e-14);
    }
    const auto m = geo::MatrixRef::create();
    m->initSquare(4, 1.0);
    m->setValue(1, 3, 10);
    ASSERT_TRUE(g.transformPoint3d({1, 2, 3}, m, p));
    EXPECT_EQ(p, Point3DF(7, 16, 7)) << "no division by the fourth component";
    m->initSquare(3, 1.0);
    EXPECT_FALSE(g.transformPoint3d(p, m, p) || g.transformPoint3d(p, {}, p));
}

TEST_F(Measures, SideOfALineIsToldByArea)
{
    const std::tuple<double, double, bool> cases[] = {// chord, height above it
                                                      {1, 1e-6, true},
                                                      {0.001, 1e-3, true},
                                                      {1e4, 1.1e-10, false},
                                                      {0, 1, true},
                                                      {1, kNan, false}};
    for (const auto& [chord, y, same] : cases)
        for (const double sign : {1, -1}) {
            const Point3DF end(chord, 0, 0), near(0, sign * y, 0), beyond(0, sign * -5, 0);
            EXPECT_EQ(g.sameSideOfLine({}, end, near, beyond), same) << sign * y;
            EXPECT_EQ(g.sameSideOfLine({}, end, beyond, near), same) << sign * y;
        }
}

}  // namespace
