#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/commonFunc.h"
#include "tests/support/arcs.h"

namespace {

using namespace test_support;
using tav::Point2DF;
using testing::ElementsAre;
using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

class BulgeSection : public testing::Test {
protected:
    commonFunc geometry{10};
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
}

}  // namespace
