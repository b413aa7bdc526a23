#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "common/commonFunc.h"
#include "tests/support/arcs.h"

namespace {

using namespace test_support;

commonFunc geometry(10);
using tav::Point3DF;
using testing::ElementsAre;

struct Line {
    Points points;
    Values bulges;
};

/// Random vertices with random bulges, some 0, some beyond a half circle.
Line randomLine(std::mt19937& random, int n)
{
    Line line;
    for (int i = 0; i < n; ++i) {
        line.points.append({uniform(random, -9, 9), uniform(random, -9, 9)});
        line.bulges.append(i % 3 ? uniform(random, -2.5, 2.5) : 0.0);
    }
    return line;
}

/// Signed area of the polygon, clockwise positive.
double signedArea(const Points& points)
{
    double area = 0;
    Point2DF before = points.last();
    for (const Point2DF& at : points) {
        area += (before.y() * at.x() - before.x() * at.y()) / 2;
        before = at;
    }
    return area;
}

TEST(BulgePolylines, AreaIsThatOfTheSampledRing)
{
    std::mt19937 random(5);
    for (int i = 0; i < 40; ++i) {
        auto [points, bulges] = randomLine(random, 2 + i % 6);
        const double area = geometry.bulgePolygonArea(points, bulges);
        ASSERT_NEAR(area, signedArea(sampledRing(geometry, points, bulges, 4000)), 1e-3);
        ASSERT_NEAR(geometry.bulgePolygonArea(moved(points, kSurvey), bulges), area, 1e-6);
        // Run backwards, the ring has the same length and the opposite area.
        const double length = geometry.bulgePolylineLength(points, bulges, true);
        geometry.reversePointList(points);
        geometry.reverseBulges(bulges);
        ASSERT_NEAR(geometry.bulgePolygonArea(points, bulges), -area, 1e-9);
        ASSERT_NEAR(geometry.bulgePolylineLength(points, bulges, true), length, 1e-9);
    }
    // A repeated start closes as none does; missing bulges are straight, and so is one of no value.
    EXPECT_NEAR(geometry.bulgePolygonArea({{0, 0}, {2, 0}, {0, 0}}, {1, 1, 5}), -kPi, 1e-14);
    EXPECT_EQ(geometry.bulgePolygonArea({{0, 0}, {2, 0}, {2, 2}}, {kNan, 5e-7}), -2);
    EXPECT_EQ(geometry.bulgePolylineLength({{0, 0}, {2, 0}}, {1}, false), -1);
}

TEST(BulgePolylines, StationsLeadBackToTheLine)
{
    std::mt19937 random(6);
    for (int i = 0; i < 200; ++i) {
        const auto [points, bulges] = randomLine(random, 2 + i % 7);
        const int n = points.size();
        Values stations;
        Values heights;
        geometry.bulgePolylineStations(points, bulges, stations);
        for (const double station : stations) heights.append(station * 3 + 1);

        // The length of the line is the station of its last vertex, to the bit.
        ASSERT_EQ(geometry.bulgePolylineLength(points, bulges, false), stations[n - 1]);
        Point2DF plan = kUntouched;
        geometry.pointAtStation(points, bulges, stations[n - 1], plan);
        ASSERT_NEAR(dist(plan, points[n - 1]), 0, 1e-11);

        const int k = i % (n - 1);
        const double t = uniform(random, 0.01, 1);
        const double station = stations[k] + t * (stations[k + 1] - stations[k]);
        Point2DF expected;
        Point3DF measured;
        Point3DF known;
        geometry.pointOnBulgeSegmentAtRatio(points[k], points[k + 1], bulges[k], t, expected);
        geometry.pointAtStation(points, bulges, station, plan);
        geometry.pointAtStationZ(points, bulges, heights, station, measured);
        ASSERT_TRUE(
            geometry.pointAtStation3d(7, points, bulges, heights, stations, station, known));
        ASSERT_NEAR(dist(plan, expected), 0, 1e-10);
        for (const Point3DF& out : {measured, known}) {
            ASSERT_NEAR(dist({out.x(), out.y()}, expected), 0, 1e-10);
            ASSERT_NEAR(out.z(), station * 3 + 1, 1e-9);
        }
    }
}

TEST(BulgePolylines, StationsAtTheLimits)
{
    const Points line{{0, 0}, {3, 0}, {3, 0}, {3, 4}};
    const std::pair<double, Point2DF> cases[] = {
        {0.00009, {0, 0}}, {-0.00009, {0, 0}},      {-0.00011, kUntouched}, {3, {3, 0}},
        {5, {3, 2}},       {7.0000001, kUntouched}, {kNan, kUntouched}};
    for (const auto& [station, expected] : cases) {
        SCOPED_TRACE(station);
        Point2DF plan = kUntouched;
        Point3DF out(kUntouched, 7);
        geometry.pointAtStation(line, {}, station, plan);
        EXPECT_NEAR(dist(plan, expected), 0, 1e-14);
        EXPECT_EQ(geometry.pointAtStation3d(0, line, {}, {1, 1, 2, 2}, {0, 3, 3, 7}, station, out),
                  expected != kUntouched);
        EXPECT_NEAR(dist({out.x(), out.y()}, expected), 0, 1e-14);
    }
    // A flat arc has the arc's length but is placed on the chord's direction.
    Point2DF plan;
    geometry.pointAtStation({{0, 0}, {100, 0}}, {0.0009}, 50, plan);
    EXPECT_NEAR(dist(plan, {50, 0}), 0, 1e-12);
    // Stations that claim a length for an arc that has none.
    Point3DF out;
    ASSERT_TRUE(geometry.pointAtStation3d(0, {{1, 2}, {1, 2}}, {1}, {0, 1}, {0, 4}, 2, out));
    EXPECT_EQ(out, Point3DF(1, 2, 0.5));
    Values both{0};
    geometry.bulgePolylineStations({{0, 0}, {3, 0}, {3, 4}, {3, 5}}, both, both);
    EXPECT_THAT(both, ElementsAre(0, 0, 3, 7, 8));
}

TEST(BulgePolylines, ParametersNameVerticesAndFractions)
{
    const std::tuple<int, double, Point2DF> cases[] = {
        {1, 1.5, {2, 1}},    {1, 2.0000001, {2, 2}}, {0, 1 - 5e-7, {2, 0}},
        {9, -3, {0, 0}},     {2, 2.5, {2, 2}},       {2147483647, 1, {2, 2}},
        {2, 3, kUntouched},  {1, 0.5, kUntouched},   {-1, -0.5, kUntouched},
        {-1, 0, kUntouched}, {2, kNan, kUntouched}};
    for (const auto& [index, parameter, expected] : cases) {
        Point2DF out = kUntouched;
        commonFunc(10).pointAtParameter({{0, 0}, {2, 0}, {2, 2}}, {}, index, parameter, out);
        EXPECT_EQ(out, expected) << index << ", " << parameter;
    }
}

/// Clusters about as wide as the distance that makes repeats, and pairs of extreme coordinates.
Points clusters(std::mt19937& random, const Point2DF& origin)
{
    Points points;
    for (int i = 0; i < 120; ++i)
        points.append(origin + Point2DF(double(random() % 3) + uniform(random, -2e-6, 2e-6),
                                        uniform(random, -2e-6, 2e-6)));
    for (const double huge : {0.0, -0.0, 1e11, 1e300, -1e305, 1.7e308, kInfinity, kNan})
        for (int k = 0; k < 2; ++k) points.append({huge, -huge});
    return points;
}

TEST(BulgePolylines, RemovedRepeatsAreThoseOfThePlainScan)
{
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        Points found =
            clusters(random, std::array{Point2DF(), kSurvey, Point2DF(-1e9, 3e9)}[round % 3]);
        Values foundValues;
        for (int i = 0; i < found.size() + 2; ++i) foundValues.append(i);
        Points kept = found;
        Values keptValues = foundValues;
        for (int i = 0; i < kept.size(); ++i) {
            for (int j = kept.size() - 1; j > i; --j) {
                if (!(geometry.pointDistSquared(kept[j], kept[i]) < 1e-12)) continue;
                kept.remove(j);
                keptValues.remove(j);
            }
        }
        geometry.removeDuplicatePoints(found, foundValues);
        ASSERT_EQ(foundValues, keptValues);
        ASSERT_EQ(found.size(), kept.size());
    }
}

TEST(BulgePolylines, ParallelsOfSharpAndDegenerateLines)
{
    const std::pair<Points, Points> cases[] = {
        {{{1, 1}}, {}},
        {{{0, 0}, {1, 0}, {1, 1}, {2, 1}}, {{0, 0.5}, {0.5, 0.5}, {0.5, 1.5}, {2, 1.5}}},
        // Straight back, in a direction whose two angles differ by rounding.
        {{{0, 0}, {2.4, 3.2}, {2.1, 2.8}}, {{-0.4, 0.3}, {2, 3.5}, {2.5, 2.5}}},
        {{{0, 0}, {1, 0}, {1, 0}, {2, 0}}, {{0, 0.5}, {1.5, 0.5}, {0.5, 0.5}, {2, 0.5}}},
    };
    for (const auto& [line, expected] : cases) {
        Points out = line;
        geometry.offsetPolyline(out, 0.5, out);
        ASSERT_EQ(out.size(), line.size() + expected.size());
        for (int i = 0; i < expected.size(); ++i)
            EXPECT_NEAR(dist(out[line.size() + i], expected[i]), 0, 1e-12) << i;
    }
}

}  // namespace
