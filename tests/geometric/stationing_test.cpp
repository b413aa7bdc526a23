// Stations along paths in plan and in space, the bulge of arcs, debug lines; true lengths, arcs as
// chords, the nearest place of a path, centroids.
#include <gmock/gmock.h>

#include <algorithm>

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

TEST_F(Stationing, HowOddArcsCount)
{
    // The bisector of a level chord with rounding in y.
    EXPECT_NEAR(g.arcBulge({5e5, 4e6, 0}, {500100, 4e6 + 1e-9, 0}, {500050, 4e6 - 50, 0}), -1,
                1e-6);
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

class Lengths : public PathTest {
protected:
    CGeometric g;
    std::vector<Point3DF> fine;  ///< of the path last made, 4001 to an arc
    double fineLength3d = 0, fineLength2d = 0;

    /// A path of straight segments and arcs, its records in any order.
    PathRef randomPath(bool level)
    {
        std::vector<Point3DF> points{anyPoint(50)};
        std::vector<tav::Radian> records;
        fine = {points[0]};
        for (int i = 0; i < 5; ++i) {
            const double radius = uniform(0.5, 30), sweep = uniform(0.05, 6.2);
            const TurnedArc arc = level ? levelArc({}, radius, uniform(0, 7), sweep)
                                        : tiltedArc(random, {}, radius, sweep);
            const Vec3 move = between(arc.at(0), points.back());
            const bool curved = below(3) > 0;
            if (curved) records.push_back({i, moved(arc.at(uniform(0.2, 0.8)), move)});
            for (int k = 1; curved && k <= 4000; ++k) fine.push_back(moved(arc.at(k / 4e3), move));
            points.push_back(moved(arc.at(1), move));
            if (!curved) fine.push_back(points.back());
        }
        fineLength3d = fineLength2d = 0;
        for (std::size_t k = 1; k < fine.size(); ++k) {
            fineLength3d += apart(fine[k - 1], fine[k]);
            fineLength2d += length(planBetween(fine[k - 1], fine[k]));
        }
        std::shuffle(records.begin(), records.end(), random);
        return makePath(points, records);
    }
};

TEST_F(Lengths, ByFineChords)
{
    for (int round = 0; round < 50; ++round) {
        const PathRef level = randomPath(true);
        EXPECT_NEAR(g.polylineLength2d(level), fineLength2d, 1e-4);
        EXPECT_NEAR(g.polylineLength3d(level), fineLength3d, 1e-4);
        const PathRef tilted = randomPath(false);
        EXPECT_NEAR(g.polylineLength3d(tilted), fineLength3d, 1e-4);
        PathRef chords;
        ASSERT_TRUE(g.pathArcOp52(tilted, 1e-6, chords));
        EXPECT_NEAR(g.polylineLength3d(chords), fineLength3d, 1e-4) << "points lie on the arcs";
        EXPECT_TRUE(recordsOf(chords).empty());
        const auto vertices = pointsOf(tilted);
        std::size_t next = 0;
        for (const Point3DF& p : pointsOf(chords))
            if (next < vertices.size() && p == vertices[next]) ++next;
        EXPECT_EQ(next, vertices.size()) << "vertices come back bit for bit, in order";
    }
}

TEST_F(Lengths, CornerCases)
{
    const double nearly = 200 * kPi - 1e-3, flatRadius = (2500 + 1e-8) / 2e-4;
    const double flat = 2 * flatRadius * std::asin(50 / flatRadius);
    const PathRef repeated =
        makePath({{1, 0, 0}, {-1, 0, 0}}, {{3, {9, 9, 9}}, {0, {0, 1, 0}}, {0, {0, -7, 0}}});
    const std::tuple<const char*, PathRef, double, double> cases[] = {
        {"one point", makePath({{1, 2, 3}}), -1, -1},
        {"overflow", makePath({{}, {1e300, 0, 0}}), -1, -1},
        {"nearly a full circle", levelArc({}, 100, 0, 2 * kPi - 1e-5).path(), nearly, nearly},
        {"upright arc", makePath({{-50, 4e6, 0}, {50, 4e6, 0}}, {{0, {0, 4e6, 10}}}), 100,
         260 * std::atan2(50, 120)},
        {"flat", makePath({{}, {100, 0, 0}}, {{0, {50, 1e-4, 0}}}), flat, flat},
        {"the first record counts", repeated, kPi, kPi},
    };
    for (const auto& [name, path, plan, space] : cases) {
        EXPECT_NEAR(g.polylineLength2d(path), plan, 1e-9 * (1 + plan)) << name;
        EXPECT_NEAR(g.polylineLength3d(path), space, 1e-9 * (1 + space)) << name;
        PathRef chords;
        EXPECT_EQ(g.pathArcOp52(path, 1e-6, chords), pointsOf(path).size() > 1);
        EXPECT_TRUE(space < 0 || std::fabs(g.polylineLength3d(chords) / space - 1) < 1e-6) << name;
    }
}

TEST_F(Lengths, NumbersOfChords)
{
    const PathRef circle = makePath({{1, 0, 0}, {1, 0, 0}, {5, 0, 0}}, {{0, {-1, 0, 0}}});
    const std::pair<double, std::size_t> counts[] = {
        {100, 5}, {0.5001, 5}, {0.4999, 6}, {0.01, 25}, {1e-300, 10002}};
    PathRef same;
    for (const auto& [sagitta, count] : counts) {
        ASSERT_TRUE(g.pathArcOp52(same = circle, sagitta, same)) << "output is the input";
        EXPECT_EQ(pointsOf(same).size(), count) << sagitta;
    }
    ASSERT_TRUE(g.pathArcOp52(makePath({{3, 5, 0}, {3, 5, 0}}, {{0, {3, 5, 10}}}), 0.1, same));
    for (const Point3DF& p : pointsOf(same))
        EXPECT_TRUE(p.y() == 5 && std::fabs(apart(p, {3, 5, 5}) - 5) < 1e-12) << "upright";
    const PathRef before = same;
    for (const double sagitta : {0.0, kNan}) EXPECT_FALSE(g.pathArcOp52(circle, sagitta, same));
    EXPECT_EQ(same, before);
}

TEST_F(Lengths, NearestPlace)
{
    Point3DF nearest;
    int segment = -1;
    double distance = -1;
    for (int round = 0; round < 50; ++round) {
        const PathRef path = randomPath(true);
        const Vec3 aside{uniform(-60, 60), uniform(-60, 60), 9};
        const Point3DF q = moved(pointsOf(path)[0], aside);
        ASSERT_TRUE(g.nearestPointOnPolyline(path, q, nearest, segment, distance));
        EXPECT_NEAR(apart(nearest, inPlan(q)), distance, 1e-8);
        double finest = kInfinity;
        for (std::size_t k = 1; k < fine.size(); ++k) {
            const Vec3 d = planBetween(fine[k - 1], fine[k]), w = planBetween(fine[k - 1], q);
            const double t = std::clamp(dot(w, d) / dot(d, d), 0.0, 1.0);
            finest = std::fmin(finest, length(w - t * d));
        }
        EXPECT_NEAR(distance, finest, 1e-5);
    }
    const PathRef path = makePath({{0, 0, 5}, {10, 0, 5}, {10, 10, 5}, {0, 10, 5}});
    EXPECT_TRUE(g.nearestPointOnPolyline(path, {9, 9, 0}, nearest, segment, distance));
    EXPECT_EQ(segment, 1) << "ties: the lowest";
}

TEST_F(Lengths, CentroidsByTriangulation)
{
    Point3DF centroid;
    for (int round = 0; round < 200; ++round) {
        // A star-shaped ring: triangles from its hub.
        const int n = 3 + below(20);
        const Point3DF hub = inPlan(anyPoint(10));
        std::vector<Point3DF> ring;
        for (int k = 0; k < n; ++k)
            ring.push_back(levelArc(hub, uniform(1, 10), 2 * kPi * k / n, 1).at(0));
        ring.push_back(ring[0]);
        Vec3 moment;
        double area = 0;
        for (std::size_t k = 1; k < ring.size(); ++k) {
            const Vec3 u = between(hub, ring[k - 1]), v = between(hub, ring[k]);
            moment = moment + (planCross(u, v) / 3) * (u + v);
            area += planCross(u, v);
        }
        if (below(2)) std::reverse(ring.begin(), ring.end());
        ASSERT_TRUE(g.polygonCentroid(makePath(ring), centroid));
        EXPECT_POINT_NEAR(centroid, moved(hub, moment / area), 1e-8);
    }
    const tav::List<Point3DF> none[] = {
        {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 1}},
        {{0, 0, 0}, {1e300, 0, 0}, {1e300, 1e300, 0}, {0, 0, 0}},
    };
    centroid = kUntouched;
    for (const auto& ring : none) EXPECT_FALSE(g.polygonCentroidOfPointList(ring, centroid));
    EXPECT_EQ(centroid, kUntouched);
}

}  // namespace
