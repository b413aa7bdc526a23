// Point location, crossings into lists, arc extremes, lengths and areas of IDataGeo.
#include "datageo/DataGeo.h"
#include "tests/support/edges.h"

namespace {

using namespace test_support;

DataGeo data(0);

const double kQuarter = std::tan(M_PI / 8);

/// A rectangle of 12 by 8, its corners rounded by 2, counter-clockwise from the lower side.
const Points kRounded{{2, 0}, {10, 0}, {12, 2}, {12, 6}, {10, 8}, {2, 8}, {0, 6}, {0, 2}};
const Values kRoundedBulges{0, kQuarter, 0, kQuarter, 0, kQuarter, 0, kQuarter};

TEST(DataGeo, LocatesPointsInFiguresWithArcsAtAnyCoordinates)
{
    for (const Point2DF& shift : {Point2DF(0, 0), Point2DF(123456.789, 5123456.321)}) {
        const auto locate = [&](double px, double py) {
            Points ring = moved(kRounded, shift);
            Values bulges = kRoundedBulges;
            return data.pointInBulgePolygon(ring, bulges, shift + Point2DF(px, py));
        };
        EXPECT_EQ(locate(12 - 2 + std::sqrt(2), 2 - std::sqrt(2)), 0);
        for (const auto& [px, py] : {std::pair(0.2, 0.2), {11.9, 7.9}, {0.3, 7.7}})
            EXPECT_EQ(locate(px, py), 1);
        for (const double level : {0.0, 2.0, 6.0, 8.0}) {  // level with vertices, on both sides
            EXPECT_TRUE(locate(-3, level) == 1 && locate(15, level) == 1) << level;
            EXPECT_EQ(locate(1, level), level == 2 || level == 6 ? -1 : 1) << level;
        }
    }
    Points none, one{{1, 1}};
    Values noBulges;
    EXPECT_EQ(data.pointInBulgePolygon(none, noBulges, {0, 0}), -2);
    EXPECT_EQ(data.pointInBulgePolygon(one, noBulges, {0, 0}), 1);
    // A counter-clockwise ring comes back reversed, its bulges with it.
    Points disc{{0, 0}, {2, 0}};
    Values halves{1, 1};
    EXPECT_EQ(data.pointInBulgePolygon(disc, halves, {1, 0.5}), -1);
    EXPECT_TRUE(disc == (Points{{2, 0}, {0, 0}}) && halves == (Values{-1, -1}));
}

TEST(DataGeo, CutsArcsAtTheirExtremes)
{
    for (const double shift : {0.0, 4e6}) {
        Points cut;
        Values bulges;
        // A rounded rectangle: every extreme coincides with a vertex up to rounding, whatever side
        // it falls on, and the straight sides stay straight.
        data.insertArcExtremes(moved(kRounded, {shift, 1}), kRoundedBulges, true, true, true, cut,
                               bulges);
        ASSERT_EQ(cut.size(), 9);
        for (int i = 0; i < 9; ++i)
            EXPECT_NEAR(bulges[i], i % 2 && i < 8 ? kQuarter : 0, 1e-5) << i;
    }
    // Outputs may be the inputs; missing bulges are straight.
    Points own{{0, 0}, {2, 0}, {2, 2}};
    Values ownBulges{1};
    data.insertArcExtremes(own, ownBulges, false, false, true, own, ownBulges);
    EXPECT_EQ(own.size(), 4);
    EXPECT_EQ(ownBulges.size(), 4);

    // So steep that both ends lie in one direction from the centre: no sweep to cut.
    for (const auto& [steep, count] : {std::pair{1e15, 7}, {1e17, 4}, {1e150, 4}}) {
        data.insertArcExtremes({{0, 0}, {1, 0}, {0.5, 3}}, {steep}, true, true, true, own,
                               ownBulges);
        EXPECT_EQ(own.size(), count) << steep;
        EXPECT_EQ(ownBulges.size(), count) << steep;
    }

    Points extremes{{9, 9}};
    Values positions{7};
    data.segmentArcExtremes(3, {1, 0}, {0, -1}, std::tan(3 * M_PI / 8), true, true, extremes,
                            positions);
    ASSERT_EQ(extremes.size(), 3) << "appended: top and left; the ends themselves are no extremes";
    EXPECT_NEAR(std::hypot(positions[1] - 10 / 3.0, positions[2] - 11 / 3.0), 0, 1e-12);
}

TEST(DataGeo, MeasuresLists)
{
    EXPECT_EQ(data.bulgeChordArea({0, 0}, {1, 0}, 9e-13), 0);
    EXPECT_NEAR(data.polylineLengthWithBulges({{0, 0}, {2, 0}}, {1, 1}, true), 2 * M_PI, 1e-12);
    EXPECT_EQ(data.polylineLengthWithBulges({{0, 0}, {2, 0}, {2, 3}}, {0, 0}, false), -1.0);
    for (const double x : {0.0, 5e5})
        EXPECT_NEAR(data.polygonAreaAbs({{x, x}, {x + 2, x}, {x + 2, x + 2}, {x, x + 2}}), 4, 1e-9);
}

TEST(DataGeo, ListsCrossings)
{
    Points points{{9, 9}};
    Values params{9};
    const Points zigzag{{0, -1}, {1, 1}, {2, -1}, {3, 1}};
    EXPECT_EQ(data.intersectSegmentPolylineToLists({0, 0}, {4, 0}, zigzag, 0, 16, points, params),
              3);
    EXPECT_NEAR(params[1], 1.5 / 4, 1e-12);
    EXPECT_EQ(data.intersectSegmentPolylineToLists({0, 0}, {4, 0}, {{1, 1}}, 0, 16, points, params),
              0);
    EXPECT_TRUE(points.isEmpty());

    points = {{9, 9}};
    EXPECT_EQ(data.intersectPolylinesToListsEx(zigzag, {{0, 0}}, points, params), 0);
    EXPECT_EQ(points.size(), 1) << "untouched";
    EXPECT_EQ(data.intersectPolylinesToListsEx(zigzag, {{0, 0}, {1.5, 0}, {4, 0}}, points, params),
              3);
    EXPECT_NEAR(params[2], 2.5, 1e-12);
    // An inner vertex keeps the last 2e-6 of its edge to itself.
    for (const auto& [x, count] : {std::pair(2 - 1e-6, 0), std::pair(2 - 3e-6, 1)})
        EXPECT_EQ(data.intersectPolylinesToListsEx({{0, 0}, {2, 0}, {4, 0}}, {{x, -1}, {x, 1}},
                                                   points, params),
                  count);
}

}  // namespace
