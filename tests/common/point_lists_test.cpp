#include <cstdint>

#include "common/detail/exact_orientation.h"
#include "tests/support/edges.h"

namespace {

using namespace test_support;

TEST(PointLists, OrientationAndCentroidHoldAnywhere)
{
    std::mt19937 random(1);
    for (int i = 0; i < 200; ++i) {
        const int n = 4 + i % 20;
        Points ring;
        for (int k = 0; k < n; ++k)
            ring.append((i % 3) * kSurvey + uniform(random, 30, 100) * direction(2 * kPi * k / n));
        Point2DF expected = ring[0];
        for (int k = 1; k + 1 < n; ++k) {  // the triangles over the first vertex
            const double share = geometry.orientation3(ring[0], ring[k], ring[k + 1]) / 2 /
                                 geometry.polygonArea(ring);
            expected +=
                share * geometry.triangleCentroid({}, ring[k] - ring[0], ring[k + 1] - ring[0]);
        }
        if (i % 5 == 0) ring.append(Point2DF(ring.first()));
        for (const bool clockwise : {false, true}) {
            EXPECT_EQ(geometry.isClockwiseRing(ring), clockwise);
            EXPECT_LT(dist(geometry.ringCentroid(ring), expected), 1e-6);
            geometry.reversePointList(ring);
        }
    }
    // Equal triangles on either side of a vertex: their weights cancel on the way.
    const Points cancelling{{3, 4}, {5, 9}, {3, 4}, {1, -1}, {9, 0}, {7, 8}};
    EXPECT_LT(dist(geometry.ringCentroid(cancelling) + kSurvey,
                   geometry.ringCentroid(moved(cancelling, kSurvey))),
              1e-8);
    for (int i = 1; i < 100; ++i) {  // smaller than what sums of absolute coordinates resolve
        const Point2DF top(5e5 + i, 4e6 + i * 5e-10), right(5e5 + 10, 4e6);
        EXPECT_FALSE(geometry.isClockwiseRing({kSurvey, right, top}));
        EXPECT_TRUE(geometry.isClockwiseRing({kSurvey, top, right}));
    }
}

TEST(PointLists, DegenerateRings)
{
    const std::tuple<Points, bool, Point2DF, Point2DF> cases[] = {
        {{{0, 0}, {2, 0}, {4, 0}, {0, 0}}, true, {2, 0}, {2, 0}},
        {{{0, 1}, {3, 5}, {0, 3}}, false, {1, 3}, {1, 3}},  // ends alike in x only
        {{{53.2, 71.9}, {-12.2, 158.3}}, true, {20.5, 115.1}, {20.5, 115.1}},
        // The moment of a part that cancels the weight is lost.
        {{{-1, -1}, {1, 1}, {-1, 1}}, false, {0, 0}, {-1 / 3.0, 1 / 3.0}},
        {{{0, 0}, {0x1p-537, 0}, {0, 0x1p-537}}, true, {0, 0}, {0, 0}},  // half of its area is 0
    };
    for (const auto& [ring, clockwise, centroid, mean] : cases) {
        EXPECT_EQ(geometry.isClockwiseRing(ring), clockwise);
        EXPECT_LT(dist(geometry.ringMeanPoint(ring), mean), 1e-13);
        EXPECT_LT(dist(geometry.ringCentroid(ring), centroid), 1e-12);
    }
    EXPECT_EQ(geometry.polylinesMeanPoint({{{9, 9}}, {{0, 0}, {4, 0}, {0, 0}}, {{5, 9}, {7, 3}}}),
              Point2DF(4, 3));
}

TEST(PointLists, Extents)
{
    const std::pair<PointLists, tav::RectF> cases[] = {
        {{{{-5, 7}, {-4, 9}, {kNan, 8}, {-8, 6}}}, {-8, 6, 4, 3}},
        {{{{5, 7}}, {{-1, 20}, {2, 3}}}, {-1, 3, 6, 17}},
        {{{{5, 7}}, {}}, {0, 0, 5, 7}},
    };
    for (const auto& [lists, rect] : cases) EXPECT_EQ(geometry.polylinesRect(lists), rect);
    EXPECT_EQ(geometry.lowerLeftPointIndex({{kNan, 0}, {3, 3}, {5, -2}, {-2, 5}}), 2);
}

TEST(PointLists, MovesSubtractAndMayWorkInPlace)
{
    PointLists lists{{{5, 5}, {9, 9}}, {}, {{1, 2}}};
    geometry.translatePolylines(lists, 1, 2, lists);
    EXPECT_EQ(lists, (PointLists{{{4, 3}, {8, 7}}, {}, {{0, 0}}}));
    Points points{{2, 4}, {6, 14}};
    double cx = 0, cy = 0;
    EXPECT_EQ(geometry.centerPointsOnBox(points, cx, cy, points), 2);
    EXPECT_EQ(Point2DF(cx, cy), Point2DF(4, 9));
    EXPECT_EQ(points, (Points{{-2, -5}, {2, 5}}));
}

TEST(PointLists, SortKeepsTheOrderOfEqualKeys)
{
    Points points{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}, {5, 0}};
    Values keys{kNan, 2, kNan, 0.0, -0.0, 2, -9};  // one key too many
    geometry.sortPointsByKey(points, keys);
    EXPECT_EQ(points, (Points{{3, 0}, {4, 0}, {1, 0}, {5, 0}, {0, 0}, {2, 0}}));
    EXPECT_TRUE(keys[0] == 0 && keys[3] == 2 && std::isnan(keys[4]) && keys[6] == -9);
    keys = {3, 2, 1, 0};  // too few
    geometry.sortPointsByKey(points, keys);
    EXPECT_TRUE(points[0].x() == 3 && keys[0] == 3);
}

/// The rule itself, recursive.
void keepPlainly(const Points& points, int first, int last, double tolerance, Points& kept)
{
    double largest = -1;
    int m = 0;
    for (int i = first + 1; i < last; ++i) {
        const double d = geometry.pointSegmentDistSquared(points[i], points[first], points[last]);
        if (d > largest) largest = d, m = i;
    }
    if (largest < tolerance * tolerance) {
        kept.append(points[first]);
        return;
    }
    keepPlainly(points, first, m, tolerance, kept);
    keepPlainly(points, m, last, tolerance, kept);
}

TEST(Simplification, KeepsTheVerticesOfThePlainRule)
{
    std::mt19937 random(11);
    std::uniform_int_distribution<int> step(-2, 2);
    for (int round = 0; round < 400; ++round) {
        // Whole steps: equal distances and vertices at exactly the tolerance all the time.
        const int n = 3 + round % 40;
        Points points{{0, 0}};
        for (int i = 1; i < n; ++i)
            points.append(points.last() + Point2DF(step(random), 0.01 * i + step(random)));
        for (const double tolerance : {1.0, 2.0, 1.2345}) {
            Points out, expected, outPoints;
            Values none(n), a, b;
            keepPlainly(points, 0, n - 1, tolerance, expected);
            expected.append(points[n - 1]);
            geometry.simplifyPolyline(points, out, tolerance);
            ASSERT_EQ(out, expected);
            geometry.simplifyPolylineWithValues(points, none, none, outPoints, a, b, tolerance);
            ASSERT_TRUE(outPoints == expected || tolerance != 1.2345);  // no vertex just there
        }
    }
}

TEST(Simplification, ValuesStayWithTheirVertices)
{
    const std::tuple<Points, double, Values> cases[] = {
        {{{0, 0}, {1, 1}, {2, 0}}, 1.0, {0, 2}},  // exactly at the tolerance
        {{{0, 0}, {1, kNan}, {2, 5}, {3, 0}}, 1.0, {0, 2, 3}},
        // A closed ring keeps its closing vertex and the last one before it that lies apart.
        {{{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 1e-6}, {0, 0}}, 20.0, {0, 3, 4, 5}},
        {{{0, 0}, {1e-6, 0}, {0, 1e-6}, {0, 0}}, 1.0, {0, 1, 2, 3}},
        {{{0, 0}, {1, 9}, {2, 0}}, kNan, {0, 1, 2}},
    };
    for (const auto& [points, tolerance, kept] : cases) {  // kept: the numbers of the vertices
        Values numbers, a, b;
        Points out;
        for (int i = 0; i < points.size(); ++i) numbers.append(i);
        geometry.simplifyPolylineWithValues(points, numbers, numbers, out, a, b, tolerance);
        EXPECT_TRUE(a == kept && b == kept && out.size() == kept.size());
    }
}

TEST(Simplification, AppendsOrReplacesAndSkipsWhatIsNoRange)
{
    const Points peak{{0, 0}, {1, 1}, {2, 0}};
    Points out{{7, 7}};
    geometry.simplifyPolyline(peak, out, 1.5);
    EXPECT_EQ(out, (Points{{7, 7}, {0, 0}, {2, 0}}));
    geometry.simplifyPolyline(out, out, 5e-8);
    EXPECT_EQ(out.size(), 3);

    Values a{1, 2, 3}, b{4, 5, 6};
    geometry.simplifyPolylineWithValues(peak, a, b, out, b, a, 5e-8);
    EXPECT_EQ(a, (Values{4, 5, 6}));

    const int ranges[][2] = {{2, 0}, {1, 1}, {-1, 2}, {0, 3}, {0, 1 << 30}};
    tav::Vector<int> kept;
    for (const auto& [first, last] : ranges) geometry.simplifyRange(peak, first, last, 0, kept);
    geometry.simplifyRange(peak, 0, 2, kNan, kept);
    EXPECT_TRUE(kept.isEmpty());
}

TEST(Primitives, LineAngleOfTheNamedDirections)
{
    const std::pair<Point2DF, double> cases[] = {
        {{0, 1}, kPi / 2},     {{0, -1}, 3 * kPi / 2},    {{-1, 0}, kPi},  {{1, -1}, 7 * kPi / 4},
        {{0, 0}, 3 * kPi / 2}, {{0, 5e-13}, 3 * kPi / 2}, {{1, -1e-17}, 0}};
    for (const auto& [to, expected] : cases)
        EXPECT_DOUBLE_EQ(geometry.lineAngle({0, 0}, to), expected) << to.x() << ", " << to.y();
}

TEST(Primitives, SweepsStayBelowTheFullTurn)
{
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {  // targets in the very direction, but for rounding
        const Point2DF from(uniform(random, -9, 9), uniform(random, -9, 9));
        const double sweep = geometry.sweepAngle({0, 0}, from, uniform(random, 0.1, 3) * from);
        ASSERT_TRUE(0 <= sweep && sweep < 2 * kPi);
    }
}

/// Distances that no plain helper would give.
class Doubled : public commonFunc {
public:
    using commonFunc::commonFunc;
    double pointDistSquared(const Point2DF& a, const Point2DF& b) override
    {
        return 4 * commonFunc::pointDistSquared(a, b);
    }
};

TEST(Primitives, AnOverrideCarriesThroughToWhatRestsOnIt)
{
    Doubled doubled(10);
    EXPECT_EQ(doubled.pointDist({0, 0}, {3, 4}), 10);
    EXPECT_EQ(doubled.segmentParameter({2, 0}, {0, 0}, {4, 0}), 0.125);
    EXPECT_EQ(doubled.closestPointOnSegment({2, 0}, {0, 0}, {4, 0}), Point2DF(0.5, 0));
    EXPECT_EQ(doubled.closestPointOnSegment({2, 0}, {1, 1}, {1, 1}), Point2DF(1, 1));
    EXPECT_EQ(doubled.bulgeSegmentLength({0, 0}, {3, 4}, 0), 10);
    IcommonFunc::Values values{1, 2};
    Points points{{0, 0}, {7e-7, 0}};
    doubled.removeDuplicatePoints(points, values);
    EXPECT_EQ(points.size(), 2);
}

TEST(Angles, DegreesSplitTowardsZeroAndComeBack)
{
    const double cases[][4] = {
        {-(12 + 30 / 60.0 + 45 / 3600.0), 12, 30, 45},
        {-5e-11, 0, 0, -1.8e-7},
        {10.1, 10, 5, 60},  // never carried into 10, 6, 0
        {-2147483647.5, 2147483647, 30, 0},
        {2147483648.0, 7, 7, 7},  // nothing is written
        {kNan, 7, 7, 7},
    };
    int d = 7, m = 7;
    for (const auto& [degrees, wholeDegrees, minutes, seconds] : cases) {
        d = m = 7;
        double s = 7;
        geometry.degreesToDms(degrees, d, m, s);
        EXPECT_TRUE(d == wholeDegrees && m == minutes) << degrees;
        EXPECT_NEAR(s, seconds, 1e-10) << degrees;
    }
    std::mt19937 random(4);
    for (int i = 0; i < 300; ++i) {
        const double radians = uniform(random, 0.02, 10);
        double s = 0;
        geometry.radiansToDms(i % 2 ? radians : -radians, d, m, s);
        EXPECT_NEAR(geometry.dmsToRadians(d, m, s), radians, 1e-14);
        EXPECT_NEAR(geometry.dmsToRadians(-d, m, s), -radians, 1e-14);
    }
    EXPECT_NEAR(geometry.dmsToRadians(0, -30, 0), -0.5 * kPi / 180, 1e-16);
    EXPECT_NEAR(geometry.dmsToRadians(-10, -30, 0), -9.5 * kPi / 180, 1e-16);
}

TEST(Angles, DirectionsGuardTheVertical)
{
    const double cases[][4] = {
        // x, y, and the direction by either operation
        {0, -1, 1.5 * kPi, 1.5 * kPi},
        {0, 0, 0, 0},
        {1, -1e-300, 2 * kPi, 2 * kPi},
        {-1e-11, 1e-11, std::atan2(0.1, -1), 0.75 * kPi},
        {-1e-13, 1e-13, std::atan2(1e-3, -1), std::atan2(0.1, -1)},
    };
    for (const auto& [toX, toY, vector, polar] : cases) {
        double x = toX, y = toY;  // inputs and outputs at once
        EXPECT_NEAR(geometry.vectorAngle(0, 0, x, y), vector, 1e-9);
        geometry.polarFromCoordinates(0, 0, x, y, y, x);
        EXPECT_NEAR(y, polar, 1e-9);
        EXPECT_EQ(x, std::sqrt(toX * toX + toY * toY));
        geometry.coordinatesFromPolar(x, y, 0, 0, x, y);
        EXPECT_LT(std::hypot(x - toX, y - toY), 1e-11);
    }
    EXPECT_EQ(geometry.normalizeAngle(4 * kPi + 1), 4 * kPi + 1 - 2 * kPi);
}

/// The order around the lowest point by repeated scans and selection.
Points selectedAround(Points points)
{
    for (int i = 0; i < points.size(); ++i) {
        for (int j = points.size() - 1; j > i; --j)
            if (geometry.pointDistSquared(points[i], points[j]) < 1e-6) points.remove(j);
    }
    const int n = points.size();
    for (int i = 1; i < n; ++i) {
        const Point2DF p = points[i], q = points[0];
        if (p.y() < q.y() || (p.y() == q.y() && p.x() < q.x())) std::swap(points[0], points[i]);
    }
    for (int i = 1; i + 1 < n; ++i) {
        int best = i;
        for (int j = i + 1; j < n; ++j) {
            const double turn = geometry.orientation3(points[j], points[best], points[0]);
            if (turn > 0 || (turn == 0 && geometry.pointDistSquared(points[j], points[0]) <
                                              geometry.pointDistSquared(points[best], points[0])))
                best = j;
        }
        std::swap(points[i], points[best]);
    }
    return points;
}

/// How far the farthest point lies outside the ring, by its sides' lines.
double outside(const Points& ring, const Points& points)
{
    double farthest = 0;
    for (int i = 0; i < ring.size(); ++i)
        for (const Point2DF& p : points)
            farthest = std::max(
                farthest, geometry.pointLineSignedDist(p, ring[i], ring[(i + 1) % ring.size()]));
    return farthest;
}

TEST(ConvexHull, OrdersLikeSelectionAndHoldsAllPoints)
{
    std::mt19937 random(3);
    std::uniform_int_distribution<int> lattice(-4, 4);
    for (int round = 0; round < 600; ++round) {
        Points points, hull;
        for (int i = 0; i < 3 + round % 30; ++i) {
            // Many repeats within 1e-3 in every second one.
            points.append(round % 2 ? kSurvey + Point2DF(lattice(random), lattice(random))
                                    : randomPoint(random, {}, 0.01));
        }
        const Points expected = selectedAround(points);
        geometry.convexHull(points, hull);
        ASSERT_EQ(points, expected);
        ASSERT_LT(outside(hull, points), 1e-12);
        for (int i = 0, n = hull.size(); n > 2 && i < n; ++i)
            ASSERT_GT(geometry.orientation3(hull[i], hull[(i + 1) % n], hull[(i + 2) % n]), 0);
    }
}

// Rounding alone decides their order: a scan that trusts it runs to and fro along the lines.
TEST(ConvexHull, HoldsLinesOfPoints)
{
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        Points points, hull;
        const Point2DF centre = (round % 3) * kSurvey;
        for (int line = 0; line < 1 + round % 4; ++line) {
            const double angle = uniform(random, 0, 3.2);
            for (int i = 0; i < 60; ++i)
                points.append(centre + uniform(random, -1e3, 1e3) * direction(angle));
        }
        geometry.convexHull(points, hull);
        ASSERT_LT(outside(hull, points), 1e-8);
    }
    for (const bool hasTop : {false, true}) {  // very many in exactly one direction
        Points points, hull;
        for (int i = 0; i < 20000; ++i) points.append({double(i * 7919 % 20000), 3});
        if (hasTop) points.append({0, 9});
        geometry.convexHull(points, hull);
        EXPECT_EQ(hull.size(), hasTop ? 3 : 2);
        for (int i = 0; i < 20000; ++i) ASSERT_EQ(points[i], Point2DF(i, 3));
    }
}

TEST(ConvexHull, LeavesOutWhatIsNoCorner)
{
    std::pair<Points, Points> cases[] = {
        {{{3, 3}, {1, 1}, {0, 0}, {2, 2}}, {{0, 0}, {3, 3}}},
        {{{0, 0}, {0, 0.0009}, {5, 0}, {0, 5}}, {{0, 0}, {5, 0}, {0, 5}}},
        {{{1e200, 0}, {1, 1}, {1, 1}, {0, 4}}, {}},
        {{{1, 1}, {kNan, 0}, {1, 1}}, {}},
    };
    for (auto& [points, expected] : cases) {
        Points hull{{9, 9}};
        geometry.convexHull(points, hull);
        expected.insert(0, {9, 9});
        EXPECT_EQ(hull, expected);
    }
}

TEST(ExactOrientation, IsThatOfWholeNumbers)
{
    std::mt19937_64 random(9);
    std::uniform_int_distribution<std::int64_t> large(-(1LL << 49), 1LL << 49);
    int hidden = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::int64_t cx = large(random), cy = large(random);
        const std::int64_t ux = large(random), uy = large(random);
        const std::int64_t vx = 5 * ux + i % 3, vy = 5 * uy - i % 2;
        const auto exact = static_cast<__int128>(ux) * vy - static_cast<__int128>(uy) * vx;
        const int sign = (exact > 0) - (exact < 0);
        const auto at = [&](std::int64_t x, std::int64_t y) {
            return Point2DF(static_cast<double>(cx + x), static_cast<double>(cy + y));
        };
        const double computed = geometry.orientation3(at(ux, uy), at(vx, vy), at(0, 0));
        hidden += (computed > 0) - (computed < 0) != sign;
        ASSERT_EQ(calcora::detail::orientationSign(at(ux, uy), at(vx, vy), at(0, 0)), sign);
    }
    EXPECT_GT(hidden, 100);
}

}  // namespace
