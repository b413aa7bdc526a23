#include "tests/support/edges.h"

namespace {

using namespace test_support;

TEST(BulgeExtents, HoldTheSampledArcsAndTouchThem)
{
    std::mt19937 random(3);
    for (int i = 0; i < 300; ++i) {
        const Arc arc = randomArc(random, i % 2 ? kSurvey : Point2DF());
        Point2DF low, high;
        geometry.bulgeArcExtents(arc.start(), arc.end(), arc.bulge(), low, high);
        double gap[4] = {9, 9, 9, 9};
        for (int k = 0; k <= 2000; ++k) {
            const Point2DF inner = arc.at(k / 2000.0) - low, outer = high - arc.at(k / 2000.0);
            int side = 0;
            for (const double g : {inner.x(), inner.y(), outer.x(), outer.y()})
                gap[side] = std::min(gap[side], g), ++side;
        }
        for (const double g : gap) ASSERT_TRUE(-1e-8 < g && g < 2e-4) << g;
    }
}

TEST(BulgeExtents, OfPolylines)
{
    Point2DF low = kUntouched, high = kUntouched;
    geometry.bulgePolylineExtents({{1, 1}}, {}, true, low, high, 5);
    EXPECT_EQ(low, kUntouched);
    const Points line{{0, 0}, {2, 0}, {2, 4}};
    // The closing arc of bulge 1 reaches out to the left by half the chord.
    geometry.bulgePolylineExtents(line, {0, 0, 1}, true, low, high, -0.5);
    EXPECT_LT(dist(low, Point2DF(1 - std::sqrt(5) + 0.5, 0.5)), 1e-12);
    geometry.bulgeArcExtents({0, 0}, {2, 0}, 0.5e-6, low, high);
    EXPECT_TRUE(low == Point2DF(0, 0) && high == Point2DF(2, 0));
    geometry.bulgeArcExtents({0, 0}, {2, 0}, 1e-6, low, high);
    EXPECT_LT(low.y(), -0.9e-6);
    geometry.bulgeArcExtents({3, 4}, {3, 4}, 1, low, high);
    EXPECT_TRUE(low == Point2DF(3, 4) && high == low);
    geometry.parallelSegment({1, 1}, {1, 1}, low, high, 2);  // no direction: towards +x
    EXPECT_LT(dist(low, {3, 1}) + dist(high, {3, 1}), 1e-12);

    // A closed list with a bulge on its last entry, whose arc has no chord.
    EXPECT_TRUE(geometry.hasPositiveBulgeArea({{0, 0}, {0, 5}, {5, 5}, {0, 0}}, {0, 0, 0, 3}));

    EXPECT_DOUBLE_EQ(geometry.bulgeSegmentsLength(line, {1, 0}), kPi + 4);
    EXPECT_EQ(geometry.bulgeSegmentsLength(line, {1}), 0.0);

    for (const auto& [bulges, hasArc] : {std::pair<Values, bool>{{}, false},
                                         {{0, 1e-6, -1e-6}, false},
                                         {{kNan, 0}, false},
                                         {{0, -1.1e-6}, true}}) {
        EXPECT_EQ(geometry.hasBulges(bulges), hasArc);
        EXPECT_EQ(geometry.anyBulgeInLists({{0}, {}, bulges, {1e-6}}), hasArc);
    }
}

TEST(BulgeFromRadius, GivesTheBulgeBack)
{
    std::mt19937 random(4);
    for (int i = 0; i < 500; ++i) {
        Arc arc = randomArc(random, {});
        if (std::fabs(std::fabs(arc.sweep) - kPi) < 0.1) continue;
        if (i % 5 == 0) arc.radius = 1e7;
        if (i % 5 == 0) arc.sweep *= 1e-6;
        const double bulge =
            geometry.bulgeFromRadius(arc.centre, arc.start(), arc.end(), arc.radius, arc.sweep < 0);
        ASSERT_NEAR(bulge / arc.bulge(), 1, 1e-8) << arc.sweep;
    }
    EXPECT_EQ(geometry.bulgeFromRadius({1, 0}, {0, 0}, {2, 0}, 0.5, true), -1);
    for (const bool clockwise : {false, true})  // ends opposite each other take the short way
        EXPECT_NEAR(geometry.bulgeFromRadius({0, 0}, {-1, 0}, {1, 0}, 2, clockwise),
                    (2 - std::sqrt(3)) * (clockwise ? -1 : 1), 1e-12);
    for (const double radius : {kNan, kInfinity})
        EXPECT_EQ(geometry.bulgeFromRadius({0, 9}, {-1, 0}, {1, 0}, radius, false), 0);
    EXPECT_EQ(geometry.bulgeFromRadius({0, 0}, {1, 0}, {1, 0}, 1, false), 0);
}

TEST(BulgeChords, LieOnTheArcWithinTheTolerance)
{
    std::mt19937 random(5);
    for (int i = 0; i < 200; ++i) {
        const Arc arc = randomArc(random, i % 2 ? kSurvey : Point2DF());
        const double tolerance = std::pow(10, uniform(random, -5, 0.5));
        const Point3DF from(arc.start(), 10), to(arc.end(), 20);
        Points chords;
        Values heights;
        geometry.bulgeArcToChords3d(from, to, arc.bulge(), tolerance, chords, heights);
        const int n = chords.size() - 1;
        ASSERT_EQ(n & (n - 1), 0);
        ASSERT_TRUE(chords.first() == arc.start() && chords.last() == arc.end());
        for (int k = 0; k <= n; ++k) {
            ASSERT_LT(dist(chords[k], arc.at(double(k) / n)), 1e-8);
            ASSERT_NEAR(heights[k], 10 + 10.0 * k / n, 1e-12);
        }
        // The sagitta is below the tolerance, and that of arcs twice as long is not.
        const double part = arc.sweep / n;
        ASSERT_LT(arc.radius * (1 - std::cos(part / 2)), tolerance * (1 + 1e-6));
        ASSERT_TRUE(n == 1 || arc.radius * (1 - std::cos(part)) > tolerance * (1 - 1e-6));
    }
}

TEST(BulgeChords, NumberForTolerance)
{
    const std::tuple<const char*, double, double, double, int> cases[] = {
        // chord, bulge, tolerance, points
        {"equality halves", 2, 1, 1, 3},
        {"flat arc whose parts pass the straight limit", 1e6, 4e-6, 0.1, 9},
        {"no tolerance is the finest", 2, 1, 0, (1 << 17) + 1},
        {"as is one that is not a number", 2, -1, kNan, (1 << 17) + 1},
        {"arc too large for its points", 1, 1e300, 1e-3, 2},
        {"infinite chord", 1e300, 1, 1, 0},
        {"bulge not a number", 1, kNan, 1, 0},
    };
    for (const auto& [name, chord, bulge, tolerance, points] : cases) {
        Points out;
        geometry.bulgeArcToChords({0, 0}, {chord, 0}, bulge, tolerance, out);
        EXPECT_EQ(out.size(), points) << name;
        // The flat arc bulges to the right.
        EXPECT_TRUE(points != 9 || std::fabs(out[4].y() + 2) < 1e-9);
    }
}

TEST(BulgeChords, OfPolylines)
{
    const Points line{{0, 0}, {2, 0}, {4, 0}, {9, 0}};
    Points out;
    Values heights;
    geometry.bulgePolylineToChords3d(line, {1, -1, 0}, {0, 2, 4, 8}, 0.5, out, heights);
    ASSERT_EQ(out.size(), 6);
    EXPECT_LT(dist(out[1], {1, -1}) + dist(out[3], {3, 1}), 1e-12);
    EXPECT_THAT(heights, ElementsAre(0, 1, 2, 3, 4, 8));
    // Without elevations arcs give zeros, shared ones twice, and straight segments nothing.
    geometry.bulgePolylineToChords3d(line, {1, -1, 0}, {}, 0.5, out, heights);
    EXPECT_TRUE(out.size() == 6 && heights == Values(6, 0.0));

    out = line, heights = {0, 2, 4, 8};
    for (const auto& [bulges, z] : {std::pair<Values, Values>{{1, 1}, {0, 2, 4, 8}},
                                    {{1, 1, 1}, {0, 2, 4}},
                                    {{1, kNan, 1}, {}},
                                    {{0, 0, 0}, {0, 2, kInfinity, 4}}}) {
        geometry.bulgePolylineToChords3d(line, bulges, z, 0.5, out, heights);
        EXPECT_TRUE(out == line && heights.size() == 4);
    }

    // Long lines of arcs stop at the bound.
    Points many;
    for (int i = 0; i < 2000; ++i) many.append({double(i), 0});
    geometry.bulgePolylineToChords(many, Values(2000, 3), 0, many);
    EXPECT_LE(many.size(), 4194304 + 64 * 2000);
    EXPECT_GT(many.size(), 4000000);
}

TEST(BulgeDensify, ByAngle)
{
    const std::tuple<double, double, int, bool> cases[] = {
        // degrees, step, points, stays an arc
        {-90, -10, 10, false}, {30, 30, 2, false},  {30, 10, 4, false},       {15, 10, 2, false},
        {5, 10, 2, true},      {90, kNan, 2, true}, {90, 1e-9, 65537, false}, {90, 0, 2, true},
    };
    for (const auto& [degrees, step, count, staysArc] : cases) {
        const Values bulges{std::tan(degrees * kPi / 720), 0, 0.7};
        Points points{kSurvey, kSurvey + Point2DF(4, 0), kSurvey + Point2DF(4, 4)};
        Values dense = bulges, values{0, 9, 10};
        geometry.densifyBulgesByAngle(points, dense, values, step, points, dense, values);
        ASSERT_EQ(points.size(), count + 1) << degrees << ' ' << step;
        ASSERT_TRUE(dense.size() == points.size() && values.size() == points.size());
        EXPECT_TRUE(dense[0] == (staysArc ? bulges[0] : 0.0) && dense.last() == 0.7);
        for (int i = 1; i < count; ++i) {
            ASSERT_NEAR(values[i], 9.0 * i / (count - 1), 1e-12);
            ASSERT_NEAR(dist(points[i - 1], points[i]), dist(points[0], points[1]), 1e-8);
        }
    }
    Points points;
    Values bulges, values{1};  // too few values: untouched
    geometry.densifyBulgesByAngle({{0, 0}, {1, 0}}, {1}, {5}, 10, points, bulges, values);
    EXPECT_THAT(values, ElementsAre(1));
    // Of 69 arcs 64 are cut, then the bound is reached.
    points = Points(70, {1, 1}), bulges = Values(70, 1.0), values = {};
    geometry.densifyBulgesByAngle(points, bulges, {}, 1e-9, points, bulges, values);
    EXPECT_EQ(points.size(), (64 << 16) + 6);
    EXPECT_TRUE(bulges[(64 << 16) - 1] == 0 && bulges[64 << 16] == 1);
}

class BulgeSection : public testing::Test {
protected:
    IcommonFunc::PointLists points{Points()};
    IcommonFunc::ValueLists bulges{Values()}, values{Values()};

    /// The three pieces, behind what the outputs hold.
    int cut(const Point2DF& a, const Point2DF& b, const Points& line, const Values& lineBulges,
            const Values& lineValues = {})
    {
        points = {Points()};
        bulges = values = {Values()};
        geometry.bulgePolylineSection(a, b, line, lineBulges, lineValues, points, bulges, values,
                                      true);
        return points.size() - 1;
    }
};

TEST_F(BulgeSection, PiecesMakeUpTheLine)
{
    std::mt19937 random(8);
    for (int i = 0; i < 200; ++i) {
        const Point2DF origin = i % 2 ? kSurvey : Point2DF();
        Points line;
        Values lineBulges, stations;
        for (int k = 0; k < 5; ++k) {
            line.append(origin + Point2DF(10.0 * k, uniform(random, -3, 3)));
            lineBulges.append(k % 2 ? uniform(random, -1, 1) : 0.0);
        }
        geometry.bulgePolylineStations(line, lineBulges, stations);
        // On one line values are stations, so that cuts and pieces can be measured by length.
        const double length = stations.last();
        const double s = uniform(random, 0, length), t = uniform(random, 0, length);
        Point2DF a, b;
        geometry.pointAtStation(line, lineBulges, s, a);
        geometry.pointAtStation(line, lineBulges, t, b);
        ASSERT_EQ(cut(a, b, line, lineBulges, stations), 3);
        const double ends[] = {0, std::min(s, t), std::max(s, t), length};
        for (int k = 0; k < 3; ++k) {
            const Points& piece = points[k + 1];
            ASSERT_TRUE(bulges[k + 1].size() == piece.size() && bulges[k + 1].last() == 0);
            ASSERT_TRUE(values[k + 1].size() == piece.size());
            EXPECT_NEAR(values[k + 1].first(), ends[k], 1e-7);
            EXPECT_NEAR(values[k + 1].last(), ends[k + 1], 1e-7);
            EXPECT_NEAR(geometry.bulgeSegmentsLength(piece, bulges[k + 1]), ends[k + 1] - ends[k],
                        1e-7);
            const Point2DF middle = geometry.arcMidPoint(
                piece[0], piece[std::min(1, piece.size() - 1)], bulges[k + 1][0]);
            EXPECT_LT(geometry.pointBulgePolylineDistSquared(middle, line, lineBulges), 1e-15);
        }
    }
}

TEST_F(BulgeSection, CutsAtAndBesideVertices)
{
    const Points line{{0, 0}, {2, 0}, {2, 2}, {8, 2}};
    // Beside the corner the parameter of segment 0 reaches into segment 1; the cut does not.
    ASSERT_EQ(cut({3, -1}, {2, 2 + 1e-7}, line, {}), 3);
    EXPECT_THAT(points[1], ElementsAre(Point2DF(0, 0), Point2DF(2, 0)));
    EXPECT_THAT(points[2], ElementsAre(Point2DF(2, 0), Point2DF(2, 2)));
    EXPECT_THAT(points[3], ElementsAre(Point2DF(2, 2), Point2DF(8, 2)));
    EXPECT_TRUE(values[1].isEmpty() && values[3].isEmpty());
    // Beyond the ends.
    ASSERT_EQ(cut({99, 3}, {-5, 1}, line, {}), 3);
    EXPECT_THAT(points[1], ElementsAre(Point2DF(0, 0)));
    EXPECT_EQ(points[2], line);
    EXPECT_THAT(points[3], ElementsAre(Point2DF(8, 2)));

    EXPECT_EQ(cut({0, 0}, {1, 0}, {{0, 0}}, {}), 0);
    EXPECT_EQ(cut({0, 0}, {1, 0}, line, {}, {1, 2, 3}), 0);
    EXPECT_EQ(cut({0, kNan}, {1, 0}, line, {}), 0);
    EXPECT_EQ(cut({1, 0}, {0, kNan}, line, {}), 0);
}

}  // namespace
