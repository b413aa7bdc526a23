// Measures of one segment, angles between two, points built from a base, circles and tangents.
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
    const double y = 4e6 + 0.1;
    const Point3DF none = kUntouched;
    const std::tuple<const char*, Point3DF, Point3DF, Point3DF, bool, bool, Point3DF, Point3DF>
        cases[] = {
            {"full circle", {1, 6, 3}, {1, 6, 3}, {-5, 2, 5}, true, true, {-2, 4, 0}, {-2, 4, 4}},
            {"upright", {-50, y, 0}, {50, y, 0}, {0, y, 10}, false, true, none, {0, y, -120}},
            {"on a line", {0.1, 0.1, 0}, {0.3, 0.3, 0}, {0.7, 0.7, 0}, false, false, none, none},
            {"not a number", {kNan, 0, 0}, {-1, 0, 0}, {0, 1, 0}, false, false, none, none},
            {"overflow", {1e300, 0, 0}, {-1e300, 0, 0}, {0, 1e300, 0}, false, false, none, none},
        };
    for (const auto& [name, a, b, m, inPlan, inSpace, planCentre, spaceCentre] : cases) {
        SCOPED_TRACE(name);
        centre = kUntouched;
        EXPECT_EQ(g.circleFrom3Points2d(a, b, m, centre, radius), inPlan);
        EXPECT_POINT_NEAR(centre, planCentre, 1e-9);
        centre = kUntouched;
        EXPECT_EQ(g.circleFrom3Points3d(a, b, m, centre, radius), inSpace);
        EXPECT_POINT_NEAR(centre, spaceCentre, 1e-9);
        EXPECT_EQ(centre.y(), spaceCentre.y()) << "an upright arc keeps it to the bit";
        if (inSpace) {
            EXPECT_NEAR(radius, apart(centre, a), 1e-9);
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
