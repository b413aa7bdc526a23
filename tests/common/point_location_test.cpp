#include "tests/support/edges.h"

namespace {

using namespace test_support;

constexpr int kInside = -1;
constexpr int kBoundary = 0;
constexpr int kOutside = 1;

const Points kUnitSquare{{0, 0}, {1, 0}, {1, 1}, {0, 1}};

/// Inside where the boundary turns round p an odd number of times; kBoundary where p is too near to
/// the sampled boundary to tell.
int placeByTurning(const Points& boundary, const Point2DF& p)
{
    double turning = 0;
    for (int i = 0; i < boundary.size(); ++i) {
        const Point2DF u = boundary[i] - p;
        const Point2DF v = boundary[(i + 1) % boundary.size()] - p;
        if (dist(u, {}) < 0.05) return kBoundary;
        turning += std::atan2(u.x() * v.y() - u.y() * v.x(), u.x() * v.x() + u.y() * v.y());
    }
    return std::lround(turning / (2 * kPi)) % 2 ? kInside : kOutside;
}

TEST(PointLocation, OfRandomRingsAgreesWithTheTurnsRoundThePoint)
{
    std::mt19937 random(10);
    int told = 0;
    for (int i = 0; i < 150; ++i) {
        Points ring;
        Values bulges;
        for (int k = 0; k < 2 + i % 6; ++k) {
            // Whole coordinates put many vertices level with each other and with the points asked.
            ring.append({double(random() % 9), double(random() % 9)});
            bulges.append(i % 2 ? uniform(random, -2.5, 2.5) : double(random() % 3) - 1);
        }
        const Points boundary = sampledRing(geometry, ring, bulges, 300);
        for (int k = 0; k < 60; ++k) {
            const Point2DF p(uniform(random, -4, 12), double(random() % 12) - 2);
            const int place = placeByTurning(boundary, p);
            if (place == kBoundary) continue;
            ++told;
            ASSERT_EQ(geometry.pointInBulgePolygon(ring, bulges, p), place) << i << ", " << k;
            ASSERT_EQ(geometry.pointInPolygon(boundary, p), place);
        }
    }
    EXPECT_GT(told, 3000);
}

TEST(PointLocation, InPolygons)
{
    const Points step{{0, 0}, {20, 0}, {20, 6}, {20.00006, 6.00006}, {20.00006, 12}, {0, 12}};
    const std::tuple<Points, Point2DF, int> cases[] = {
        {kUnitSquare, {1, 0.5}, kBoundary},
        {kUnitSquare, {0.5, 0.00009}, kBoundary},
        {kUnitSquare, {0.5, 0.00011}, kInside},
        // Between the ends of neither edge: no boundary beside a corner.
        {kUnitSquare, {1.00005, 1.00005}, kOutside},
        {{{0, 0}, {1, 0}}, {0.5, 0}, -2},
        // Level with an edge too short to be a boundary.
        {step, {8, 6.00003}, kInside},
        {step, {-8, 6.00003}, kOutside},
        {kUnitSquare, {kNan, 0.5}, kOutside},
        {{{0, 0}, {1e300, 0}, {kNan, 1e300}}, {1, 1}, kOutside},
    };
    for (const auto& [ring, p, code] : cases) {
        EXPECT_EQ(geometry.pointInPolygon(ring, p), code) << p.x() << ", " << p.y();
        EXPECT_EQ(geometry.pointInBulgePolygon(ring, {}, p), code);
        EXPECT_EQ(geometry.pointInBulgePolygon(ring, {0}, p), code == -2 ? kBoundary : code);
    }
}

TEST(PointLocation, InRingsWithArcs)
{
    const std::tuple<Values, Point2DF, int> cases[] = {
        {{1, 1}, {1 + std::cos(0.4), std::sin(0.4) - 9e-7}, kBoundary},
        {{1, 1}, {1 + std::cos(0.4), std::sin(0.4) - 1e-5}, kInside},
        {{1}, {1, 0.00005}, kBoundary},
        {{kNan, kInfinity}, {5, 5}, kOutside}};
    for (const auto& [bulges, p, code] : cases)
        EXPECT_EQ(geometry.pointInBulgePolygon({{0, 0}, {2, 0}}, bulges, p), code) << p.y();
    // Edges without length are no arcs.
    EXPECT_EQ(
        geometry.pointInBulgePolygon({{0, 0}, {2, 0}, {2, 0}, {0, 0}}, {1, 5, 1, -7}, {1, 0.5}),
        kInside);
    Point2DF centre;
    EXPECT_TRUE(geometry.isPointOnBulgeSegment({1, -1}, {0, 0}, {2, 0}, 1, centre, nullptr));
    EXPECT_EQ(centre, Point2DF(1, 0));
}

/// Every corner's arc ends where its circle turns, so extremes and vertices differ by rounding, and
/// the points asked are level with the vertices.
TEST(PointLocation, LevelWithTheJointsOfARoundedRectangle)
{
    std::mt19937 random(11);
    const double corner = std::tan(kPi / 8);
    for (int i = 0; i < 400; ++i) {
        const double r = uniform(random, 0.5, 3);
        const double w = uniform(random, 7, 30);
        const double h = uniform(random, 7, 30);
        const Point2DF origin = (i % 2 ? kSurvey : Point2DF()) + Point2DF(r, h);
        Points ring =
            moved({{r, 0}, {w - r, 0}, {w, r}, {w, h - r}, {w - r, h}, {r, h}, {0, h - r}, {0, r}},
                  origin);
        Values bulges{0, corner, 0, corner, 0, corner, 0, corner};
        // Any vertex may be the seam.
        std::rotate(ring.begin(), ring.begin() + i % 8, ring.end());
        std::rotate(bulges.begin(), bulges.begin() + i % 8, bulges.end());
        for (const Point2DF& vertex : ring) {
            for (const double x : {-50.0, -0.001, w + 0.001, w + 50}) {
                const Point2DF p(origin.x() + x, vertex.y());
                ASSERT_EQ(geometry.pointInBulgePolygon(ring, bulges, p), kOutside) << i << " " << x;
            }
            const double height = vertex.y() - origin.y();
            const bool isOnSide = std::min(height, h - height) < 1e-4;
            ASSERT_EQ(geometry.pointInBulgePolygon(ring, bulges, {origin.x() + w / 2, vertex.y()}),
                      isOnSide ? kBoundary : kInside);
        }
    }
}

TEST(PointLocation, OnLongSegmentsAndAtTheirEnds)
{
    std::mt19937 random(12);
    for (int i = 0; i < 1000; ++i) {
        const Point2DF u = Arc{{}, 1, uniform(random, 0, 2 * kPi)}.start();
        const Point2DF normal(-u.y(), u.x());
        const Point2DF a(uniform(random, -9, 9), uniform(random, -9, 9));
        const Point2DF b = a + 1e5 * u;
        const Point2DF on = a + uniform(random, 1, 99999) * u;
        ASSERT_TRUE(geometry.isPointOnSegment(on + 9e-5 * normal, a, b));
        ASSERT_FALSE(geometry.isPointOnSegment(on + 1.1e-4 * normal, a, b));
        ASSERT_FALSE(geometry.isPointOnSegment(a + -1e-5 * u, a, b));
        ASSERT_TRUE(geometry.isPointOnSegment(a, a, b) && geometry.isPointOnSegment(b, a, b));
    }
    EXPECT_FALSE(geometry.isPointOnSegment({1, 1}, {1, 1}, {1, 1}));
    EXPECT_FALSE(geometry.isPointOnSegment({0, 5}, {-1e300, 0}, {1e300, 0}));
}

TEST(PointLocation, InRegions)
{
    const Points outer{{0, 0}, {0, 10}, {10, 10}, {10, 0}};
    const Points hole{{4, 4}, {6, 4}, {6, 6}, {4, 6}};
    const Points island{{4.5, 4.5}, {4.5, 5.5}, {5.5, 5.5}, {5.5, 4.5}};
    const Points neighbour{{5, 0}, {5, 10}, {15, 10}, {15, 0}};
    const std::tuple<PointLists, Point2DF, int> cases[] = {
        {{outer, hole}, {1, 1}, kInside},
        // A hole decides at once: its island is outside, wherever it is listed.
        {{outer, hole, island}, {5, 5}, kOutside},
        // Once inside, the boundaries of further outer rings are not looked at.
        {{outer, neighbour}, {5, 3}, kInside},
        {{neighbour, outer}, {5, 3}, kBoundary},
        {{{}, {{1, 1}}, outer}, {1, 1}, kInside},
    };
    for (const auto& [rings, p, code] : cases) {
        EXPECT_EQ(geometry.pointInRegion(rings, p), code);
        EXPECT_EQ(geometry.pointInBulgeRegion(rings, {{0, 0, 0, 0}}, p), code);
    }
    const PointLists withDisc{outer, {{20, 0}, {22, 0}}};
    EXPECT_EQ(geometry.pointInBulgeRegion(withDisc, {{}, {1, 1}}, {21, 0.5}), kInside);
    EXPECT_EQ(geometry.pointInBulgeRegion(withDisc, {}, {21, 0.5}), kOutside);
}

TEST(PointLocation, OfPolylinesAgainstAPolygon)
{
    const Points ring{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}};
    const Points open{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const std::tuple<Points, Points, int> cases[] = {
        {ring, {{1, 1}, {5, 6}, {9, 2}}, kInside},
        {ring, {{-3, 4}, {5, 5}, {6, 6}}, kBoundary},
        {{{0, 0}, {10, 0}, {5, 8}, {0, 0}}, {{5, 4}, {5, 8}}, kBoundary},
        {ring, {{5, 5}, {5, 0}}, kInside},      // a vertical's end does not count
        {ring, {{5, 5}, {6, 0}}, kBoundary},    // a sloped one's does
        {ring, {{-5, 5}, {-5, 15}}, kOutside},  // level with edges whose boxes it does not meet
        {open, {{-3, 5}, {3, 5.5}}, kOutside},  // through the edge that the list does not hold
        {ring, {{5, 5}}, -2},
        {{{0, 0}, {1000, 0}, {1000, 90}}, {{-1, -4e-4}, {999, 4e-4 - 1e-9}}, kOutside},
        {ring, {{kNan, 5}, {5, kInfinity}}, kOutside},
    };
    for (const auto& [figure, line, code] : cases)
        EXPECT_EQ(geometry.polylineRegionRelation(figure, line), code);
}

// On long oblique segments a difference of squares would come out below zero.
TEST(Distances, OfSegmentsAndLinesFarOut)
{
    std::mt19937 random(5);
    for (int i = 0; i < 2000; ++i) {
        const Edge edge{randomPoint(random, kSurvey, 9e4), randomPoint(random, kSurvey, 9e4)};
        const double length = dist(edge.start, edge.end);
        const double t = uniform(random, -1, 2), left = i % 2 ? uniform(random, -9, 9) : 0;
        const Point2DF across = turned(edge.end - edge.start, kPi / 2);
        const Point2DF p = edge.at(t) + (left / length) * across;
        const double lineSquared = geometry.pointLineDistSquared(p, edge.start, edge.end);
        const double squared = geometry.pointSegmentDistSquared(p, edge.start, edge.end);
        const double beyond = std::max({-t, 0.0, t - 1}) * length;
        ASSERT_NEAR(geometry.pointLineSignedDist(p, edge.start, edge.end), -left, 1e-8);
        ASSERT_NEAR(std::sqrt(lineSquared), std::fabs(left), 1e-8);
        ASSERT_NEAR(std::sqrt(squared), std::hypot(left, beyond), 1e-8);
    }
    EXPECT_EQ(geometry.pointSegmentDistSquared({-3, 4}, {0, 0}, {0, 0}), 25);
    EXPECT_EQ(geometry.pointLineDistSquared({-3, 4}, {0, 0}, {0, 0}), 25);
    EXPECT_EQ(geometry.pointLineSignedDist({-3, 4}, {0, 0}, {0, 0}), 0);
}

TEST(Distances, AgreeWithSamplesOfTheFigure)
{
    std::mt19937 random(11);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        const Point2DF origin = round % 2 ? kSurvey : Point2DF();
        const double slack = round % 2 ? 2e-8 : 1e-10;
        const Point2DF p = randomPoint(random, origin, 40);
        Points points{randomPoint(random, origin, 30)};
        Values bulges;
        double sampled = kInfinity;
        for (int i = 0; i < 5; ++i) {
            bulges.append(i % 2 ? uniform(random, -3, 3) : 0.0);
            points.append(randomPoint(random, origin, 30));
            const Edge edge{points.at(i), points.at(i + 1), bulges.at(i)};
            for (int k = 0; k <= 2000; ++k)
                sampled = std::min(sampled, dist(p, edge.at(k / 2000.0)));
        }
        const double squared = geometry.pointBulgePolylineDistSquared(p, points, bulges);
        ASSERT_LE(std::sqrt(squared), sampled + slack);
        ASSERT_NEAR(std::sqrt(squared), sampled, 0.1);

        Point2DF nearest;
        int index[2];
        double param[2];
        ASSERT_EQ(geometry.nearestOnBulgePolylineEx(p, points, bulges, nearest, index, param),
                  squared);
        ASSERT_NEAR(dist(p, nearest), std::sqrt(squared), slack);
        // Within the edge the parameter names the very point; beyond its ends, the end is nearest.
        const int i = index[0];
        const Edge edge{points.at(i), points.at(i + 1), bulges.at(i)};
        ASSERT_NEAR(dist(edge.at(std::clamp(param[0] - i, 0.0, 1.0)), nearest), 0, 30 * slack);
        geometry.projectPointOnBulgePolyline(p, points, bulges, index + 1, param + 1);
        ASSERT_TRUE(index[1] == index[0] && param[1] == param[0]);
        ASSERT_EQ(geometry.pointBulgeSegmentDistSquared(p, edge.start, edge.end, edge.bulge),
                  squared);
    }
}

TEST(Distances, PlaceTheNearestPoint)
{
    const Points corner{{0, 0}, {2, 0}, {2, 2}};
    const Points chord{{0, 0}, {2, 0}};
    using Case = std::tuple<const char*, Point2DF, Points, Values, double, int, double, Point2DF>;
    const Case cases[] = {
        {"the projection is not clamped", {1, 5}, corner, {}, 10, 1, 3.5, {2, 2}},
        {"tie at the corner: the first edge", {3, -1}, corner, {}, 2, 0, 1.5, {2, 0}},
        {"no length", {3, 4}, {{0, 0}, {0, 0}, {0, 0}}, {0, 1}, 25, 0, 0, {0, 0}},
        {"not a number first", {1, 1}, {{kNan, 0}, {0, 0}, {2, 0}}, {}, 1, 1, 1.5, {1, 0}},
        {"nor its bulge", {1, 1}, {{9, 0}, {0, 0}, {2, 0}}, {kNan}, 1, 1, 1.5, {1, 0}},
        {"half circle below", {1, -0.5}, chord, {1}, 0.25, 0, 0.5, {1, -1}},
        {"its ends tie: the start", {1, 2}, chord, {1}, 5, 0, 1.5, {0, 0}},
    };
    for (const auto& [what, asked, polyline, bulges, squared, edge, place, expected] : cases) {
        SCOPED_TRACE(what);
        Point2DF p = asked;  // also where the nearest one goes
        int index = -7;
        double param = -7;
        EXPECT_NEAR(geometry.nearestOnBulgePolylineEx(p, polyline, bulges, p, &index, &param),
                    squared, 1e-12);
        EXPECT_EQ(index, edge);
        EXPECT_NEAR(param, place, 1e-12);
        EXPECT_NEAR(dist(p, expected), 0, 1e-12);
        geometry.projectPointOnBulgePolyline(asked, polyline, bulges, &index, &param);
        EXPECT_TRUE(index == edge && std::fabs(param - place) < 1e-12);
        if (!bulges.isEmpty()) continue;
        EXPECT_EQ(geometry.nearestOnPolyline(asked, polyline, p, &index, &param), squared);
        EXPECT_EQ(param, place);
    }
    Point2DF nearest = kUntouched;
    EXPECT_EQ(geometry.nearestOnPolyline({1, 1}, {{5, 5}}, nearest, nullptr, nullptr), 0);
    EXPECT_EQ(geometry.nearestOnBulgePolylineEx({1, 1}, {}, {1}, nearest, nullptr, nullptr), 0);
    EXPECT_EQ(nearest, kUntouched);
    // Ends in one direction from the centre: a circle of radius 2.5e5, not a point.
    EXPECT_NEAR(geometry.pointBulgeSegmentDistSquared({0, -1e6}, {0, 0}, {1e-11, 0}, 1e17), 2.5e11,
                1);
}

}  // namespace
