#include <array>

#include "tests/support/edges.h"

namespace {

using namespace test_support;

/// Random vertices with random bulges, some 0, some beyond a half circle.
Figure randomLine(std::mt19937& random, int n)
{
    Figure line;
    for (int i = 0; i < n; ++i) {
        line.points.append({uniform(random, -9, 9), uniform(random, -9, 9)});
        line.bulges.append(i % 3 ? uniform(random, -2.5, 2.5) : 0.0);
    }
    return line;
}

/// Signed area of the polygon, clockwise positive.
double signedArea(const Points& points)
{
    double twice = 0;
    for (int i = 0, before = points.size() - 1; i < points.size(); before = i++)
        twice += points[before].y() * points[i].x() - points[before].x() * points[i].y();
    return twice / 2;
}

TEST(BulgePolylines, AreaIsThatOfTheSampledRing)
{
    std::mt19937 random(5);
    for (int i = 0; i < 40; ++i) {
        auto [points, bulges] = randomLine(random, 2 + i % 6);
        const double area = geometry.bulgePolygonArea(points, bulges);
        ASSERT_NEAR(area, signedArea(sampledRing(geometry, points, bulges, 4000)), 1e-3);
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
        Values stations, heights;
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
        Point3DF measured, known;
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
    geometry.pointAtStationZ({{3, 4}}, {}, {}, 0, out);  // no height, no point
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
    Point2DF two[2];
    double value = 0;
    int count = 2;
    geometry.removeDuplicatePointsRaw(two, nullptr, &count);
    geometry.removeDuplicatePointsRaw(two, &value, nullptr);
    EXPECT_EQ(count, 2);
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

/// Arcs built from a circle come back from their chord and bulge, near the origin to rounding, in
/// survey coordinates to what their coordinates can hold.
TEST(BulgeArcs, AgreeWithTheCircleTheyWereTakenFrom)
{
    std::mt19937 random(3);
    for (int i = 0; i < 2000; ++i) {
        const bool isFar = i % 2;
        const Arc arc = randomArc(random, isFar ? kSurvey : Point2DF());
        const Point2DF p1 = arc.start();
        const Point2DF p2 = arc.end();
        const double b = arc.bulge();
        // An end moved by rounding moves the centre by that over the sine of half the sweep.
        const double amplified = 1 + 1 / std::pow(std::sin(arc.sweep / 2), 2);
        const double slack = (isFar ? 3e-9 : 1e-13 * (1 + arc.radius)) * amplified;
        SCOPED_TRACE(testing::Message() << i << " sweep " << arc.sweep << " r " << arc.radius);

        Point2DF centre;
        double radius = 0;
        geometry.bulgeArcCenter(p1, p2, b, centre, &radius);
        ASSERT_NEAR(dist(centre, arc.centre), 0, slack);
        ASSERT_NEAR(radius, arc.radius, slack);
        ASSERT_NEAR(geometry.bulgeSegmentLength(p1, p2, b), arc.length(), 7 * slack);
        ASSERT_NEAR(dist(geometry.arcMidPoint(p1, p2, b), arc.at(0.5)), 0, 2 * slack);

        const double t = uniform(random, 0.001, 0.999);
        Point2DF place;
        geometry.pointOnBulgeSegmentAtRatio(p1, p2, b, t, place);
        ASSERT_NEAR(dist(place, arc.at(t)), 0, 7 * slack);
        geometry.pointOnBulgeSegmentAtDistance(p1, p2, b, t * arc.length(), place);
        ASSERT_NEAR(dist(place, arc.at(t)), 0, 14 * slack);
        ASSERT_NEAR(geometry.arcSweepFraction(arc.at(t), arc.centre, p1, p2, b < 0), t,
                    1e-12 + 4 * slack / arc.length());
        // In the gap the nearer end decides between below 0 and above 1.
        const double gap = (2 * kPi - std::fabs(arc.sweep)) / std::fabs(arc.sweep);
        ASSERT_LT(geometry.arcSweepFraction(arc.at(-0.4 * gap), arc.centre, p1, p2, b < 0), 0);
        ASSERT_GT(geometry.arcSweepFraction(arc.at(1 + 0.4 * gap), arc.centre, p1, p2, b < 0), 1);
        const double found = geometry.bulgeFrom3Points(p1, arc.at(0.5), p2);
        ASSERT_NEAR(4 * std::atan(found), arc.sweep, 20 * slack * amplified / arc.radius);
    }
}

TEST(BulgeArcs, FlatArcsKeepTheirSagittaAndTheirArea)
{
    for (const double b : {1e-10, 3e-7, -1e-6, 1e-5, -5e-4, 9.99e-4, 1.001e-3, -0.01}) {
        SCOPED_TRACE(b);
        const Point2DF p2 = kSurvey + Point2DF(80, 60);
        const Point2DF middle = kSurvey + Point2DF(40, 30) + b * Point2DF(30, -40);
        const bool isStraight = std::fabs(b) < 1e-6;  // for lengths and distances
        Point2DF place;
        geometry.pointOnBulgeSegmentAtRatio(kSurvey, p2, b, 0.5, place);
        EXPECT_NEAR(dist(place, middle), 0, 2e-9);
        const double length = geometry.bulgeSegmentLength(kSurvey, p2, b);
        EXPECT_NEAR(length, isStraight ? 100 : 100 * (1 + b * b) * std::atan(b) / b, 1e-7);
        geometry.pointOnBulgeSegmentAtDistance(kSurvey, p2, b, length / 2, place);
        EXPECT_NEAR(dist(place, isStraight ? kSurvey + Point2DF(40, 30) : middle), 0, 3e-9);
        // Two thirds of sagitta times chord, to the next order in the bulge.
        const double area = 2.0 / 3 * 100 * 50 * std::fabs(b);
        EXPECT_NEAR(geometry.bulgeSegmentArea(kSurvey, p2, b), area * (1 + b * b / 5), area * 2e-9);
    }
    EXPECT_EQ(geometry.bulgeSegmentArea({0, 0}, {100, 0}, 9e-13), 0);
    EXPECT_NEAR(geometry.bulgeSegmentArea({1, 0}, {0, -1}, std::tan(3 * kPi / 8)),
                3 * kPi / 4 - 0.5, 1e-14);
}

TEST(BulgeArcs, PlacesOutsideTheRangesAreNotWritten)
{
    const std::tuple<double, double, double, bool> cases[] = {
        // fraction, distance on a chord of 2
        {1, -5e-7, -7, true},          {1, 1.0000005, 3.1415, true}, {1, 1.000002, 3.1416, false},
        {0, 1.000002, 2.0001, false},  {1, kNan, kNan, false},       {0, -2e-6, -kInfinity, false},
        {1, -2e-6, -kInfinity, false}, {kNan, 0.5, 1, true}};
    for (const auto& [bulge, t, distance, written] : cases) {
        Point2DF byRatio = kUntouched, byDistance = kUntouched;
        geometry.pointOnBulgeSegmentAtRatio({0, 0}, {2, 0}, bulge, t, byRatio);
        geometry.pointOnBulgeSegmentAtDistance({0, 0}, {2, 0}, bulge, distance, byDistance);
        EXPECT_EQ(byRatio != kUntouched, written) << bulge << " at " << t;
        EXPECT_EQ(byDistance != kUntouched, written) << bulge << " at " << distance;
    }
}

TEST(BulgeArcs, AnArcWithoutLengthIsAPoint)
{
    const Point2DF p(3, 4);
    Point2DF out;
    double radius = 7;
    geometry.pointOnBulgeSegmentAtRatio(p, p, -0.5, 0.3, out);
    EXPECT_EQ(out, p);
    geometry.bulgeArcCenter(p, p, 1e200, out = kUntouched, &radius);
    EXPECT_TRUE(out == p && radius == 0);
    EXPECT_EQ(geometry.bulgeSegmentLength(p, p, 1e-5), 0);
    EXPECT_EQ(geometry.bulgeSegmentArea(p, p, 1e200), 0);
    // An arc without sweep: only its own direction is on it.
    EXPECT_EQ(geometry.arcSweepFraction({5, 0}, {0, 0}, {1, 0}, {2, 0}, false), 0);
    EXPECT_EQ(geometry.arcSweepFraction({0, -5}, {0, 0}, {1, 0}, {2, 0}, false), kInfinity);
    EXPECT_EQ(geometry.arcSweepFraction({kNan, 0}, {0, 0}, {1, 0}, {0, 1}, true), kInfinity);
}

TEST(BulgeArcs, CirclesThroughPoints)
{
    Point2DF p = kUntouched;
    double radius = 7;
    for (const auto& third : {Point2DF(3, 3), Point2DF(kNan, 1), Point2DF(1e300, -1e300)}) {
        EXPECT_FALSE(geometry.circleFrom3Points({0, 0}, {1, 1}, third, p, &radius));
        EXPECT_EQ(geometry.bulgeFrom3Points({0, 0}, {1, 1}, third), 0);
    }
    EXPECT_TRUE(p == kUntouched && radius == 7);
    // Outputs may be inputs.
    ASSERT_TRUE(geometry.circleFrom3Points(p = {1, 0}, {0, 1}, {-1, 0}, p, &radius));
    EXPECT_NEAR(radius, 1, 1e-15);
    geometry.bulgeArcCenter({0, 0}, p = {2, 0}, 1, p, nullptr);
    EXPECT_NEAR(dist(p, {1, 0}), 0, 1e-15);
    // Twice the triangle's area decides: a half circle over 1e-3 is too small for a bulge.
    EXPECT_EQ(geometry.bulgeFrom3Points({0, 0}, {5e-4, -5e-4}, {1e-3, 0}), 0);
    EXPECT_NEAR(geometry.bulgeFrom3Points({0, 0}, {1e-3, -1e-3}, {2e-3, 0}), 1, 1e-12);
}

TEST(BulgeArcs, DensifyingStepsEvenlyAndAppends)
{
    IcommonFunc::Points points{{9, 9}};
    IcommonFunc::Values heights{9};
    const double quarter = std::tan(kPi / 8);
    ASSERT_TRUE(geometry.densifyArc3d({1, 0, 10}, {0, 1, 16}, quarter, -0.5, points, heights));
    ASSERT_EQ(points.size(), 5);
    for (int k = 0; k <= 3; ++k) {
        EXPECT_NEAR(dist(points[1 + k], Arc{{}, 1, 0, kPi / 2}.at(k / 3.0)), 0, 1e-14);
        EXPECT_DOUBLE_EQ(heights[1 + k], 10 + 2 * k);
    }
    for (const double step : {0.0, kNan, 1e-300, 1e-7, 2.0})
        EXPECT_FALSE(geometry.densifyArc3d({1, 0, 0}, {0, 1, 0}, quarter, step, points, heights));
    EXPECT_FALSE(geometry.densifyArc3d({1, 0, 0}, {0, 1, 0}, 1e-6, 1e-7, points, heights));
    EXPECT_EQ(points.size(), 5);
}

}  // namespace
