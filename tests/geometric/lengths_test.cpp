// True lengths of paths, arcs as chords, the nearest place of a path, centroids.
#include <gtest/gtest.h>

#include <algorithm>

#include "geometric/CGeometric.h"
#include "tests/support/paths.h"

namespace {

using namespace path_test;

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
