#include <gtest/gtest.h>

#include "common/commonFunc.h"
#include "tests/support/edges.h"

namespace {

using namespace test_support;
using tav::Point2DF;
using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

const double kQuarter = std::tan(kPi / 8);  ///< bulge of a quarter circle
const double kThird = std::tan(kPi / 6);    ///< bulge of a third of a circle
const double kSixty = std::sqrt(3.0) / 2;

struct Figure {
    Points points;
    Values bulges;
};

const Figure kRectangle{{{0, 0}, {10, 0}, {10, 4}, {0, 4}, {0, 0}}, {}};
const Figure kDisc{{{-2, 0}, {2, 0}, {-2, 0}}, {1, 1}};
const Figure kThreeArcs{{{2, 0}, {-1, 2 * kSixty}, {-1, -2 * kSixty}, {2, 0}},
                        {kThird, kThird, kThird}};
const Figure kStadium{{{2, 0}, {8, 0}, {8, 4}, {2, 4}, {2, 0}}, {0, 1, 0, 1}};
const Figure kRounded{
    {{2, 0}, {18, 0}, {20, 2}, {20, 8}, {18, 10}, {2, 10}, {0, 8}, {0, 2}, {2, 0}},
    {0, kQuarter, 0, kQuarter, 0, kQuarter, 0, kQuarter}};
const Figure kEll{{{0, 0}, {10, 0}, {10, 4}, {4, 4}, {4, 10}, {0, 10}, {0, 0}}, {}};
const Figure kNotched{
    {{0, 0}, {20, 0}, {20, 10}, {12, 10}, {12, 5}, {8, 5}, {8, 10}, {0, 10}, {0, 0}}, {}};
const Figure kHalfDisc{{{-10, 0}, {10, 0}, {-10, 0}}, {0, 1}};
const Figure kFourDents{{{-5, 0}, {0, -5}, {5, 0}, {0, 5}, {-5, 0}}, {-.4, -.4, -.4, -.4}};
const Figure kStroke{{{0, 0}, {8, 6}, {0, 0}}, {}};  ///< there and back
const Figure kRoad{{{-20, 0}, {0, 0}, {5, 5}, {5, 12}, {8, 15}, {20, 15}},
                   {0, kQuarter, 0, -kQuarter}};
const Figure kTwoArcs{{{0, 0}, {6, 0}, {12, 0}}, {1, -1}};
const Figure kSteps{{{0, 0}, {10, 0}, {10, 5}, {20, 5}}, {}};
const Figure kBulb{{{-10, 0}, {-3, 0}, {3, 0}, {10, 0}}, {0, -1.2}};
const Figure kParting{{{8, 0}, {2, 0}, {7, 5}, {2, 6}, {4, 2}, {3, 4}}, {}};
const Figure kMetBefore{{{6, 5}, {2, 3}, {8, 6}, {1, 7}, {4, 0}, {0, 5}}, {}};
const Figure kProlonged{{{7, 0}, {6, 0}, {6, 1.75}, {4, 0}, {1, 0.25}}, {0, 0, -.3}};
const Figure kOneCircle{{{4, 0}, {6, 2}, {4, 1}, {6, 0}, {4, 0}}, {-1, 0, 0, -kQuarter}};
const Figure kBridgeLast{{{8, 8}, {3, 0}, {1, 7}, {2, 3}, {6, 8}, {7, 8}, {4, 7}},
                         {-.5, 0, .5, 0, 1}};
const Figure kUnjoined{{{1, 8}, {6, 7}, {7, 5}, {1, 7}, {8, 3}, {1, 8}}, {0, kQuarter, 0, 2, 1}};

class BulgeOffset : public testing::Test {
protected:
    commonFunc geometry{10};
    Figure out{{kUntouched}, {7}};

    bool offset(const Figure& figure, double distance)
    {
        return geometry.offsetBulgePolyline(figure.points, figure.bulges, distance, out.points,
                                            out.bulges);
    }
    /// Counter-clockwise positive.
    double area(const Figure& figure)
    {
        return -geometry.bulgePolygonArea(figure.points, figure.bulges);
    }
    /// The least and the largest distance of points of the result from the figure.
    std::pair<double, double> reach(const Figure& figure)
    {
        std::pair<double, double> range{kInfinity, 0};
        for (int i = 0; i + 1 < out.points.size(); ++i) {
            for (int k = 0; k <= 40; ++k) {
                Point2DF at;
                geometry.pointOnBulgeSegmentAtRatio(out.points[i], out.points[i + 1], out.bulges[i],
                                                    k / 40.0, at);
                const double d = std::sqrt(
                    geometry.pointBulgePolylineDistSquared(at, figure.points, figure.bulges));
                range = {std::min(range.first, d), std::max(range.second, d)};
            }
        }
        return range;
    }
};

/// Figures and distances at which nothing of the result is nearer than the distance. `farthest` is
/// how far a joint may lie off, as a multiple of it; `area` that of the closed result, from its own
/// geometry.
TEST_F(BulgeOffset, LiesAtTheDistance)
{
    const double miter = std::sqrt(2.0) + 1e-9;
    const struct {
        const char* name;
        const Figure& figure;
        double distance, farthest, area;
        int points;
    } cases[] = {
        {"rectangle in", kRectangle, 1.5, 1, 7, 5},
        {"rectangle nearly gone", kRectangle, 1.9995, 1, 6.001 * 0.001, 5},
        {"rectangle out", kRectangle, -3, miter, 160, 5},
        {"three arcs in", kThreeArcs, 1.9, 1, 0.01 * kPi, 4},
        {"stadium in", kStadium, 1.9, 1, 1.2 + 0.01 * kPi, 5},
        {"rounded in by its radius", kRounded, 2, 1, 96, 5},
        {"rounded out", kRounded, -1, 1, 264 - 9 * (4 - kPi), 9},
        {"notch half closed", kNotched, -1, miter, 22 * 12 - 2 * 5, 9},
        {"half disc in", kHalfDisc, 2, 1, 64 * std::acos(0.25) - 2 * std::sqrt(60.0), 3},
        {"dents filled", kFourDents, -6, 1, 0, 5},
        {"stroke", kStroke, 1, 1, -20 - kPi, 5},
        {"road left", kRoad, 2.5, 1, 0, 6},
        {"road left, without its arc", kRoad, 6, 1, 0, 5},
        {"two arcs left", kTwoArcs, 2.9, 1, 0, 3},
        {"steps", kSteps, 6, miter, 0, 4},
        {"past the bulb", kBulb, -4, 1, 0, 5},
        // Crossing themselves, so that there meets what was no neighbour:
        {"lines that part again", kParting, 4.5, 1, 0, 2},
        {"lines that met before", kMetBefore, 4.25, 1, 0, 2},
        {"lines that are prolonged", kProlonged, 2, 1.1, 0, 3},
        {"parts of one circle", kOneCircle, 6, 1.1, 0, 3},
        {"bridge at the end", kBridgeLast, 3.75, 1, 0, 2},
        {"strip without a joint", kUnjoined, -3.5, 1.02, 0, 3},
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(offset(c.figure, c.distance)) << c.name;
        const double d = std::fabs(c.distance);
        const auto [nearest, farthest] = reach(c.figure);
        EXPECT_GT(nearest, d - 1e-9) << c.name;
        EXPECT_LT(farthest, c.farthest * d + 1e-9) << c.name;
        EXPECT_EQ(out.points.size(), c.points) << c.name;
        ASSERT_TRUE(out.bulges.size() == out.points.size() && out.bulges.last() == 0) << c.name;
        const bool isClosed = c.figure.points.first() == c.figure.points.last();
        EXPECT_EQ(out.points.first() == out.points.last(), isClosed) << c.name;
        EXPECT_TRUE(c.area == 0 || std::fabs(area(out) - c.area) < 1e-9) << c.name << area(out);
        EXPECT_NEAR(geometry.polygonArea(sampledRing(geometry, out.points, out.bulges, 1000)),
                    std::fabs(area(out)), 1e-3)
            << c.name;

        const Figure near = out;
        // Aslant and far out, where tangents do not touch to the last digit.
        ASSERT_TRUE(offset({turned(c.figure.points, 0.3, kSurvey), c.figure.bulges}, c.distance));
        ASSERT_EQ(out.points.size(), near.points.size()) << c.name;
        for (int i = 0; i < near.points.size(); ++i) {
            EXPECT_LT(dist(out.points[i], kSurvey + turned(near.points[i], 0.3)), 1e-7) << c.name;
            EXPECT_NEAR(out.bulges[i], near.bulges[i], 1e-7) << c.name;
        }
    }
}

TEST_F(BulgeOffset, VanishesWhenNothingIsLeft)
{
    const std::pair<Figure, double> cases[] = {
        {kRectangle, 2},
        {kDisc, 2},
        {kStadium, 2},
        {kHalfDisc, 6},
        {kFourDents, 6},
        {kEll, 2.1},
        {kTwoArcs, kNan},
        {{{{1, 1}}, {}}, 1},
        {{{{1, 1}, {1, 1.0005}}, {}}, 1},
        {{{{0, 0}, {1e300, 0}, {0, 1e300}}, {1, 1}}, 1},
        {{{{0, 0}, {kInfinity, 0}}, {}}, 1},
        {{{{0, 0}, {1, 0}}, {kNan}}, 1},
    };
    for (const auto& [figure, distance] : cases) {
        EXPECT_FALSE(offset(figure, distance)) << figure.points.size() << ' ' << distance;
        EXPECT_TRUE(out.points.size() == 1 && out.bulges.size() == 1);
    }
}

/// A slot narrower than twice the distance, its sides measured not quite parallel, its mouth not
/// quite level: nothing but the slot may change.
TEST_F(BulgeOffset, UsedUpSlotsLeaveTheRest)
{
    std::mt19937 random(7);
    for (int i = 0; i < 200; ++i) {
        const double side =
            i % 2 ? 1 : -1;  // niches on the left, slots on the right of the outline
        const double accuracy = std::pow(10, uniform(random, -8, -2));
        const int slots = 1 + i % 6;
        Figure plate{{{0, 20}, {0, 0}}, {}};
        for (int k = 0; k < slots; ++k)
            for (const auto& [x, y] : {std::pair(3, 0), {3, 3}, {4, 3}, {4, 0}})
                plate.points.append({4.0 * k + x, -y * side});
        const double width = 4.0 * slots + 3;
        for (const Point2DF& p : {Point2DF(width, 0), Point2DF(width, 20)}) plate.points.append(p);
        for (Point2DF& p : plate.points)
            p += Point2DF(uniform(random, 0, accuracy), uniform(random, 0, accuracy));
        plate.points.append(Point2DF(plate.points.first()));
        const double distance = side * uniform(random, 0.6, 4);
        ASSERT_TRUE(offset(plate, distance)) << i;
        EXPECT_NEAR(area(out), (width - 2 * distance) * (20 - 2 * distance), 60 * accuracy) << i;
        EXPECT_GT(reach(plate).first, std::fabs(distance) - accuracy) << i;
    }
}

/// Arcs that cross right behind their corner leave a sliver in which their parallels do not meet.
TEST_F(BulgeOffset, SliversBetweenArcsSpoilNothingElse)
{
    std::mt19937 random(9);
    Figure scallops;
    for (int i = 0; i < 1000; ++i) {
        scallops.points.append({2.0 * i, uniform(random, 0, 2)});
        scallops.bulges.append(uniform(random, -1, 1));
    }
    for (const double distance : {0.01, -0.2}) {
        ASSERT_TRUE(offset(scallops, distance));
        const Figure parallel = out;
        const auto isMissing = [&](int i) {  // the middle of arc i, moved
            const Point2DF chord = scallops.points[i + 1] - scallops.points[i];
            const Point2DF middle = geometry.arcMidPoint(scallops.points[i], scallops.points[i + 1],
                                                         scallops.bulges[i]);
            const double share = distance / std::hypot(chord.x(), chord.y());
            return geometry.pointBulgePolylineDistSquared(
                       middle + share * Point2DF(-chord.y(), chord.x()), parallel.points,
                       parallel.bulges) > 1e-12;
        };
        int missing = 0;
        for (int i = 0; i + 1 < scallops.points.size(); ++i) missing += isMissing(i) ? 1 : 0;
        EXPECT_LT(missing, 3) << distance;
    }
}

TEST_F(BulgeOffset, RepeatsAndRings)
{
    // The vanishing segment takes its own bulge away, not that of the arc behind it.
    ASSERT_TRUE(offset({{{0, 0}, {0.0005, 0}, {4, 0}}, {0, 1}}, 1));
    EXPECT_TRUE(out.points.size() == 2 && std::fabs(out.bulges[0] - 1) < 1e-12);
    // A flat arc stays one.
    ASSERT_TRUE(offset({{{0, 0}, {4, 0}}, {5e-4}}, 1));
    EXPECT_NEAR(out.bulges[0], 5e-4, 1e-9);
    // A closing vertex within 1e-4 closes; within 1e-3 it only is near; none leaves it open.
    for (const auto& [gap, closes] : {std::pair(5e-5, true), {5e-4, false}, {5.0, false}}) {
        Figure ring{{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, gap}}, {}};
        ASSERT_TRUE(offset(ring, 1));
        EXPECT_EQ(out.points.first() == out.points.last(), closes) << gap;
    }
    // A repeat before the closing vertex would turn back there.
    ASSERT_TRUE(offset({{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0.0005, 0}, {0, 0}}, {}}, -1));
    EXPECT_NEAR(area(out), 144, 1e-9);
    // Both segments are overrun; with the short one gone the long one is whole again.
    ASSERT_TRUE(offset({{{0, 0}, {10, 0}, {9, 1}}, {}}, 5));
    EXPECT_TRUE(out.points.size() == 2 && dist(out.points[1], {10, 5}) < 1e-9);
    // Inputs as outputs.
    Figure disc = kDisc;
    ASSERT_TRUE(
        geometry.offsetBulgePolyline(disc.points, disc.bulges, 1, disc.points, disc.bulges));
    EXPECT_NEAR(area(disc), kPi, 1e-12);
}

}  // namespace
