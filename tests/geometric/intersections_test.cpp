// Projections onto segments, meetings of segments, lines, circles and arcs.
#include <gtest/gtest.h>

#include "geometric/CGeometric.h"
#include "tests/support/paths.h"

namespace {

using namespace path_test;

constexpr Point3DF kZero;

Vec3 leftOf(const Vec3& v)
{
    return {-v.y, v.x, 0};
}

/// What an operation with two points is to give.
struct Meeting {
    short result;
    Point3DF p1 = kUntouched, p2 = kUntouched;
};

class Intersections : public PathTest {
protected:
    CGeometric g;
    Point3DF p[2] = {kUntouched, kUntouched};

    Vec3 anyDirection()
    {
        const double angle = uniform(0, 7);
        return {std::cos(angle), std::sin(angle), 0};
    }
    void expect(const Meeting& wanted, short result)
    {
        EXPECT_EQ(result, wanted.result);
        EXPECT_POINT_NEAR(p[0], wanted.p1, 1e-5);
        EXPECT_POINT_NEAR(p[1], wanted.p2, 1e-5);
        p[0] = p[1] = kUntouched;
    }
};

TEST_F(Intersections, Projections)
{
    const PathRef east = makePath({{0, 0, 2}, {10, 0, 3}}), west = makePath({{}, {-10, 0, 0}});
    const PathRef most = levelArc({}, 1, 0, 1.5 * kPi).path();
    const std::tuple<const char*, PathRef, Point3DF, short, Point3DF> cases[] = {
        {"behind the start", east, {-2, 1, 0}, 0, {-2, 0, 0}},
        {"behind the start, due west", west, {2, 1, 0}, 1, {2, 0, 0}},
        {"not a number", east, {kNan, 0, 0}, -1, kUntouched},
        {"arc, far side wins", most, {0.8, 0.6, 3}, 1, {-0.8, -0.6, 0}},
        {"arc, near side", levelArc({}, 1, 0, kPi).path(), {0, 0.5, 3}, 1, {0, 1, 0}},
        {"arc, both beside it", levelArc({}, 1, 1.2, 0.7).path(), {5, 0, 0}, 0, kUntouched},
    };
    for (const auto& [name, path, q, result, foot] : cases) {
        SCOPED_TRACE(name);
        p[0] = kUntouched;
        EXPECT_EQ(g.projectPointToSegment(path, 0, q, p[0]), result);
        EXPECT_POINT_NEAR(p[0], foot, 1e-12);
    }
    for (int round = 0; round < 2000; ++round) {
        const Point3DF a(uniform(-1e3, 1e3), uniform(-1e3, 1e3), 0);
        const Vec3 u = round % 10 ? anyDirection() : Vec3{1, 0, 0};
        const PathRef path = makePath({a, moved(a, uniform(1, 100) * u)});
        const Point3DF q = moved(a, uniform(-50, 50) * leftOf(u));
        EXPECT_EQ(g.projectPointToSegment(path, 0, q, p[0]), 1) << "square to the start";
    }
}

TEST_F(Intersections, LineAndCircle)
{
    const std::tuple<int, Point3DF, double, Meeting> cases[] = {
        {0, {5, 3, 1}, 5, {2, {1, 0, 0}, {9, 0, 0}}},
        {0, {5, 3, 0}, 3 + 5e-7, {1, {5, 0, 0}, kZero}},
        {0, {-5, 3, 0}, 5, {2, {-1, 0, 0}, {-9, 0, 0}}},
        {0, {5, kNan, 0}, 5, {-1}},
    };
    const PathRef path = makePath({{0, 0, 3}, {10, 0, 9}, {10, 0, 0}});
    for (const auto& [i, centre, radius, wanted] : cases)
        expect(wanted, g.lineCircleIntersections(path, i, centre, radius, p[0], p[1]));
    for (int round = 0; round < 1000; ++round) {
        // The foot of the centre a rounding step off the start, or anywhere.
        const Point3DF a = inPlan(anyPoint(100));
        const Vec3 u = anyDirection(), along = (round % 2 ? 0 : uniform(-50, 50)) * u;
        const Point3DF centre = moved(a, along + uniform(-90, 90) * leftOf(u));
        const PathRef line = makePath({a, moved(a, 30 * u)});
        ASSERT_EQ(g.lineCircleIntersections(line, 0, centre, 100, p[0], p[1]), 2);
        for (const Point3DF& found : p) {
            EXPECT_NEAR(apart(found, centre), 100, 1e-6);
            EXPECT_NEAR(planCross(u, between(a, found)), 0, 1e-6);
        }
    }
}

TEST_F(Intersections, Circles)
{
    const Point3DF hub(10, 20, 5);  // heights count for the same centre only
    const std::tuple<double, Point3DF, double, Meeting> cases[] = {
        {1, {12, 20, 0}, 1, {1, {11, 20, 0}, kZero}},
        {4, {12, 20, 0}, 2, {1, {14, 20, 0}, kZero}},
        {2, {10, 18, 0}, 4, {1, {10, 22, 0}, kZero}},
        {3, {11, 20, 0}, 2, {0, kZero, kZero}},  // touching from inside, sizes alike
        {4e-7, {10, 20, 0}, 4e-7, {0, kZero, kZero}},
        {-3, {10 + 9e-7, 20, 5}, -3, {3}},
        {3, {10, 20, 5}, 2, {-1}},
        {1e308, {1e308, 1e308, 0}, 1e308, {-1}},
    };
    for (const auto& [r1, c2, r2, wanted] : cases)
        expect(wanted, g.intersectCircles(hub, r1, c2, r2, p[0], p[1]));
    for (int round = 0; round < 1000; ++round) {
        const Point3DF c1 = inPlan(anyPoint(100));
        const Vec3 d = uniform(5, 50) * anyDirection();
        const double r1 = uniform(1, 60), r2 = uniform(1, 60), size = length(d);
        const bool meet = size < r1 + r2 && size > std::fabs(r1 - r2);
        if (r2 * r2 > r1 * r1 + size * size) continue;  // points behind the first centre
        ASSERT_EQ(g.intersectCircles(c1, r1, moved(c1, d), r2, p[0], p[1]), meet ? 2 : 0);
        for (const double side : {-1.0, 1.0}) {
            const Vec3 found = between(c1, p[side < 0 ? 0 : 1]);
            if (!meet) continue;
            EXPECT_NEAR(length(found), r1, 1e-6);
            EXPECT_NEAR(length(found - d), r2, 1e-6);
            EXPECT_GE(side * planCross(d, found), 0) << "right of the line of centres, then left";
        }
    }
}

TEST_F(Intersections, SegmentLineAndArc)
{
    const PathRef arc = makePath({{1, 0, 7}, {-1, 0, 7}}, {{0, {0, 1, 7}}, {0, {0, -1, 0}}});
    const std::tuple<Point3DF, Point3DF, Meeting> cases[] = {
        {{0.6, -3, 0}, {0.6, -2, 0}, {1, {0.6, 0.8, 0}}},  // the second of two, beyond the segment
        {{-5, 0.6, 0}, {5, 0.6, 0}, {2, {-0.8, 0.6, 0}, {0.8, 0.6, 0}}},
        {{-5, 1, 0}, {5, 1, 0}, {1, {0, 1, 0}}},
        {{-5, -1, 0}, {5, -1, 0}, {0}},
        {{0, 1, 0}, {0, 1, 0}, {0}},
    };
    for (const auto& [from, to, wanted] : cases)
        expect(wanted, g.intersectSegmentArc(makePath({from, to}), 0, arc, 0, p[0], p[1]));
    const PathRef line = makePath({{}, {1, 0, 0}});
    expect({-1}, g.intersectSegmentArc(line, 0, line, 0, p[0], p[1]));
    const PathRef collinear = makePath({{}, {2, 0, 0}}, {{0, {1, 0, 0}}});
    expect({0}, g.intersectSegmentArc(line, 0, collinear, 0, p[0], p[1]));
}

// Against the arcs' own shapes: the points of both circles that lie within both sweeps, in order.
TEST_F(Intersections, ArcsAgainstTheirSweeps)
{
    const auto place = [](const TurnedArc& arc, const Point3DF& q) {
        const Vec3 d = between(arc.centre, q);
        const double angle = std::atan2(dot(d, arc.across), dot(d, arc.radius));
        return (angle < 0 ? angle + 2 * kPi : angle) / arc.sweep;
    };
    int met = 0;
    for (int round = 0; round < 3000; ++round) {
        const Point3DF hub = inPlan(anyPoint(10));
        const Vec3 d = uniform(1, 20) * anyDirection();
        const double sense = below(2) ? 1 : -1, sweep = sense * uniform(0.3, 6);
        const TurnedArc first = levelArc(hub, uniform(1, 15), uniform(0, 7), sweep);
        const TurnedArc second =
            levelArc(moved(hub, d), uniform(1, 15), uniform(0, 7), uniform(0.3, 6));
        const double r1 = first.size(), r2 = second.size();
        const double share = (dot(d, d) + r1 * r1 - r2 * r2) / (2 * dot(d, d));
        const double square = r1 * r1 - share * share * dot(d, d);
        if (std::fabs(square) < 1e-3) continue;  // nearly touching
        std::vector<Point3DF> inFirst, inBoth;
        for (const double side : {-1.0, 1.0}) {
            if (square < 0) break;
            const double rise = side * std::sqrt(square / dot(d, d));
            const Point3DF q = moved(hub, share * d + rise * leftOf(d));
            if (place(first, q) > 1) continue;
            const bool before = !inFirst.empty() && place(first, q) < place(first, inFirst[0]);
            inFirst.insert(before ? inFirst.begin() : inFirst.end(), q);
        }
        for (const Point3DF& q : inFirst)
            if (place(second, q) <= 1) inBoth.push_back(q);
        const auto wanted = [](std::vector<Point3DF> points) {
            const auto count = static_cast<short>(points.size());
            points.resize(2, kUntouched);
            return Meeting{count, points[0], points[1]};
        };
        const PathRef a = first.path(uniform(0.1, 0.9)), b = second.path();
        expect(wanted(inBoth), g.intersectArcs(a, 0, b, 0, p[0], p[1]));
        expect(wanted(inFirst), g.segmentArcIntersections(a, 0, second.centre, r2, p[0], p[1]));
        met += static_cast<int>(inBoth.size());
    }
    EXPECT_GT(met, 300);
}

TEST_F(Intersections, ArcCornerCases)
{
    const PathRef half = levelArc({}, 1, 0, kPi).path(), line = makePath({{}, {1, 0, 0}});
    const std::pair<PathRef, Meeting> arcs[] = {
        {levelArc({}, 1, 3.5, 1).path(), {3}},
        {line, {-1}},
        {levelArc({-2, 0, 0}, 1, 0, kPi).path(), {1, {-1, 0, 0}}},  // at a common vertex
    };
    for (const auto& [arc, wanted] : arcs)
        expect(wanted, g.intersectArcs(half, 0, arc, 0, p[0], p[1]));
    const std::tuple<double, double, Meeting> circles[] = {
        {0, 1, {-1}}, {1, kNan, {-1}}, {3, 2 + 5e-7, {1, {0, 1, 0}}}, {-1, 2, {1, {0, 1, 0}}}};
    for (const auto& [y, radius, wanted] : circles)
        expect(wanted, g.segmentArcIntersections(half, 0, {0, y, 0}, radius, p[0], p[1]));
}

TEST_F(Intersections, ChordsInSpace)
{
    const PathRef path = makePath({{0, 0, 1}, {10, 0, 1}});
    const std::tuple<const char*, Point3DF, Point3DF, short, Point3DF> cases[] = {
        {"an end within reach", {5, 9e-7, 1}, {5, 3, 1}, 1, {5, 0, 1}},
        {"an end out of reach", {5, 1.1e-6, 1}, {5, 3, 1}, 0, kUntouched},
        {"overlap from before", {-5, 5e-7, 1}, {4, 5e-7, 1}, 2, {0, 0, 1}},
        {"overlap from inside", {20, 5e-7, 1}, {4, 5e-7, 1}, 2, {4, 0, 1}},
        {"end to end on one line", {10, 0, 1}, {20, 0, 1}, 1, {10, 0, 1}},
        {"no length", {4, 0, 1}, {4, 0, 1}, -1, kUntouched},
    };
    for (const auto& [name, from, to, result, point] : cases) {
        SCOPED_TRACE(name);
        p[0] = kUntouched;
        EXPECT_EQ(g.intersectSegments3d(path, 0, makePath({from, to}), 0, p[0]), result);
        EXPECT_POINT_NEAR(p[0], point, 1e-9);
    }
    for (int round = 0; round < 500; ++round) {
        const Point3DF at = anyPoint(100);
        PathRef crossing[2];
        for (PathRef& each : crossing) {
            const Vec3 u{uniform(-50, 50), uniform(-50, 50), uniform(-50, 50)};
            const double t = uniform(0, 1);
            each = makePath({moved(at, -t * u), moved(at, (1 - t) * u)});
        }
        ASSERT_EQ(g.intersectSegments3d(crossing[0], 0, crossing[1], 0, p[0]), 1);
        EXPECT_POINT_NEAR(p[0], at, 1e-6);
    }
}

}  // namespace
