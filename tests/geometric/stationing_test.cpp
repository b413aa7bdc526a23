// Stations along paths in plan and in space, the bulge of arcs, debug lines.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "geometric/CGeometric.h"
#include "tests/support/paths.h"

namespace {

using namespace path_test;

using Place = std::vector<double>;

class Stationing : public PathTest {
protected:
    CGeometric g;
    Messages quiet;

    using Station = bool (IGeometric::*)(const PathRef&, double, Point3DF&);
    /// Coordinates of the station, empty when there is none.
    Place at(const PathRef& path, double distance,
             Station station = &IGeometric::pointDistFromPolyline)
    {
        Point3DF p = kUntouched;
        if ((g.*station)(path, distance, p)) return {p.x(), p.y(), p.z()};
        EXPECT_EQ(p, kUntouched);
        return {};
    }
    Place at3d(const PathRef& path, double distance)
    {
        return at(path, distance, &IGeometric::pointDistFromPolyline3d);
    }
};

testing::Matcher<Place> isNear(const Point3DF& p, double tolerance)
{
    const Place wanted{p.x(), p.y(), p.z()};
    return testing::Pointwise(testing::DoubleNear(tolerance), wanted);
}

TEST_F(Stationing, StraightPaths)
{
    const PathRef path = makePath({{0, 0, 0}, {0, 0, 0}, {10, 0, 0}, {10, 10, 0}});
    const PathRef raised = makePath({{0, 0, 1}, {3, 0, 5}, {3, 0, 5}, {3, 12, 10}});
    const std::tuple<double, Place, Place> cases[] = {
        {0, {0, 0, 0}, {0, 0, 1}},
        {10, {10, 0, 0}, {3, 60. / 13, 90. / 13}},
        {18 + 5e-7, {10, 8 + 5e-7, 0}, {}},
        {20 + 5e-7, {10, 10, 0}, {}},
        {-5, {-5, 0, 0}, {}},
        {kNan, {}, {}},
    };
    for (const auto& [distance, plan, space] : cases) {
        using namespace testing;
        EXPECT_THAT(at(path, distance), Pointwise(DoubleNear(1e-13), plan)) << distance;
        EXPECT_THAT(at3d(raised, distance), Pointwise(DoubleNear(1e-13), space)) << distance;
    }
    EXPECT_EQ(at3d(makePath({{1, 2, 3}}), 0), (Place{1, 2, 3})) << "the first point, of any path";
    const PathRef broken = makePath({{}, {1, 0, 0}, {kNan, 0, 0}, {5, 0, 0}});
    EXPECT_EQ(at(broken, 3), Place());
}

TEST_F(Stationing, Ratios)
{
    const std::vector<Point3DF> corners{{1, 2, 5}, {4, 6, 5}, {4, 6, 17}};
    const std::tuple<double, Place, Place> cases[] = {
        {0, {1, 2, 0}, {1, 2, 5}},  {0.5, {2.5, 4, 0}, {4, 6, 8.5}},
        {1, {4, 6, 0}, {4, 6, 17}}, {1 + 1e-15, {}, {}},
        {-1e-300, {}, {}},          {kNan, {}, {}},
    };
    const PathRef path = makePath(corners);
    for (const auto& [ratio, plan, space] : cases) {
        EXPECT_EQ(at(path, ratio, &IGeometric::pointRatioFromPolyline), plan) << ratio;
        EXPECT_EQ(at(path, ratio, &IGeometric::pointRatioFromPolyline3d), space) << ratio;
    }
    const tav::List<Point3DF> list{corners[0], corners[1], corners[2]};
    Point3DF distance, ratio, middle;
    EXPECT_TRUE(g.pointDistFromPointList(list, 2.5, distance) &&
                g.midPointOfPolyline(path, middle));
    EXPECT_TRUE(g.pointRatioFromPointList(list, 0.5, ratio) && middle == Point3DF(2.5, 4, 0));
    EXPECT_TRUE(distance == middle && ratio == middle);
    for (int round = 0; round < 200; ++round) {  // whose sums do not come out even
        std::vector<Point3DF> points;
        while (static_cast<int>(points.size()) < 2 + round % 6) points.push_back(anyPoint(100));
        const PathRef odd = makePath(points, {{1, anyPoint(100)}, {4, anyPoint(100)}});
        EXPECT_THAT(at(odd, 1, &IGeometric::pointRatioFromPolyline),
                    isNear(inPlan(points.back()), 1e-6));
        EXPECT_THAT(at(odd, 1, &IGeometric::pointRatioFromPolyline3d), isNear(points.back(), 1e-6));
    }
}

// With the middle as arc point, up to a half circle, plan stations run along the true arc.
TEST_F(Stationing, LevelArcsByRotationOfTheStartRadius)
{
    for (int round = 0; round < 2000; ++round) {
        const double sense = round % 4 < 2 ? 1 : -1;
        const TurnedArc arc = levelArc(anyPoint(100), uniform(1, 100), uniform(0, 7),
                                       sense * uniform(0.1, kPi - 0.01));
        const double t = uniform(0.01, 0.99);
        EXPECT_THAT(at(arc.path(), t * arc.length()), isNear(inPlan(arc.at(t)), 1e-6));
        EXPECT_THAT(at3d(arc.path(), t * arc.length()), isNear(arc.at(t), 1e-6));
        EXPECT_TRUE(at(arc.path(), arc.length() + 1e-4).empty()) << arc.sweep;
        // The middle as a drawing stores it, to three decimals.
        const auto stored = [&](double share) {
            const Point3DF p = arc.at(share);
            return Point3DF(std::round(p.x() * 1e3) / 1e3, std::round(p.y() * 1e3) / 1e3, 0);
        };
        if (arc.size() < 10 || arc.sweep < 0.3) continue;
        EXPECT_EQ(g.arcBulge(stored(0), stored(1), stored(0.5)) < 0, sense > 0) << arc.sweep;
    }
}

TEST_F(Stationing, TiltedArcsRunThroughTheirArcPoint)
{
    for (int round = 0; round < 2000; ++round) {
        const double radius = round % 2 ? uniform(1, 100) : uniform(0.003, 0.05);
        const Point3DF centre = round % 2 ? anyPoint(100) : Point3DF();
        const TurnedArc arc = tiltedArc(random, centre, radius, uniform(0.3, kPi - 0.05));
        if (arc.at(1).z() < arc.at(0).z()) {
            const double counted = radius * (2 * kPi - arc.sweep);
            EXPECT_TRUE(at3d(arc.path(), counted + 1e-5).empty());
            EXPECT_FALSE(at3d(arc.path(), counted - 1e-5).empty());
            continue;
        }
        const double t = uniform(0.05, 0.95);
        EXPECT_THAT(at3d(arc.path(uniform(0.2, 0.8)), t * arc.length()), isNear(arc.at(t), 1e-6));
    }
}

// The bisector of a level chord with rounding in y.
TEST_F(Stationing, BulgeOverALevelChord)
{
    EXPECT_NEAR(g.arcBulge({5e5, 4e6, 0}, {500100, 4e6 + 1e-9, 0}, {500050, 4e6 - 50, 0}), -1,
                1e-6);
}

TEST_F(Stationing, HowOddArcsCount)
{
    const double y = 4e6;
    const std::tuple<const char*, PathRef, double, double> cases[] = {
        {"three quarters fold", levelArc({}, 1, 0, 1.5 * kPi).path(), kPi / 2, kPi / 2},
        {"small area", makePath({{}, {1e-3, 0, 0}}, {{0, {5e-4, 5e-4, 0}}}), 1e-3, kPi * 5e-4},
        {"upright in y = const", makePath({{-50, y, 0}, {50, y, 0}}, {{0, {0, y, 10}}}), 100,
         kPi * 130},
        {"upright across y", makePath({{0, y - 50, 0}, {0, y + 50, 0}}, {{0, {0, y, 10}}}), 100,
         260 * std::atan2(50, 120)},
    };
    for (const auto& [name, path, plan, space] : cases) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(!at(path, plan * (1 - 1e-12)).empty() && at(path, plan + 2e-6).empty());
        EXPECT_TRUE(!at3d(path, space * (1 - 1e-12)).empty() && at3d(path, space + 2e-6).empty());
    }
    const PathRef later = makePath({{0, 0, 0}, {9, 0, 0}, {9, 2, 0}}, {{1, {10, 1, 0}}});
    EXPECT_EQ(at3d(later, -kPi / 2).size(), 3u) << "a later arc takes a negative station";
    EXPECT_EQ(at(makePath({{3, 3, 0}, {3, 3, 0}, {4, 3, 0}}, {{0, {5, 3, 0}}}), -1),
              (Place{2, 3, 0}))
        << "extrapolates the first segment that has a length";
}

TEST_F(Stationing, DebugLines)
{
    Messages messages;
    Point3DF p;
    const std::string name = "pointDistFromPolyline3d:";
    const PathRef path = makePath({{1.5, -2, 1e-7}, {5, 5, 5}});
    ASSERT_TRUE(g.pointDistFromPolyline3d(path, -1e-7, p));
    EXPECT_EQ(messages.debugLines,
              (std::vector{name + "1", name + "2", name + "3", name + "4", name + "5",
                           std::string("x:1.500000 y:-2.000000 z:0.000000"), name + "6"}));
    EXPECT_TRUE(g.pointDistFromPolyline3d(makePath({{1e300, -1e300, 1e300}}), 0, p));
    EXPECT_EQ(messages.debugLines.at(7 + 5).size(), 511u);
}

}  // namespace
