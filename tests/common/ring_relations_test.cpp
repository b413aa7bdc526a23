#include <gtest/gtest.h>

#include "common/commonFunc.h"
#include "tests/support/edges.h"

namespace {

using namespace test_support;
using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

enum Relation : int { kInside = -1, kOnRing = 0, kOutside = 1, kPartly = 2, kNone = -2 };

int combined(bool inside, bool outside)
{
    return inside && outside ? kPartly : inside ? kInside : outside ? kOutside : kOnRing;
}

struct Figure {
    Points points;
    Values bulges;
};

/// Whole coordinates, so that figures touch and overlap.
Figure randomFigure(std::mt19937& random, int vertices, bool hasArcs)
{
    Figure figure;
    for (int i = 0; i < vertices; ++i) {
        figure.points.append({double(random() % 7), double(random() % 7)});
        figure.bulges.append(hasArcs ? 0.5 * (double(random() % 5) - 2) : 0.0);
    }
    return figure;
}

/// Told by many points along the line that are clear of the ring.
TEST(RingRelations, AgreeWithSampledPlaces)
{
    commonFunc geometry(10);
    std::mt19937 random(118);
    int told[4] = {};
    for (int i = 0; i < 400; ++i) {
        const bool hasArcs = i % 2;
        const auto [ring, ringBulges] = randomFigure(random, 3 + i % 5, hasArcs);
        Points closed = ring;
        closed.append(Point2DF(closed.first()));
        const auto [line, bulges] =
            i % 9 ? randomFigure(random, 2 + i % 3, hasArcs) : Figure{ring, ringBulges};
        bool inside = false;
        bool outside = false;
        for (int k = 0; k < 400 * (line.size() - 1); ++k) {
            const int edge = k / 400;
            const Point2DF p =
                Edge{line[edge], line[edge + 1], bulges[edge]}.at((k % 400 + 0.5) / 400);
            if (geometry.pointBulgePolylineDistSquared(p, closed, ringBulges) < 1e-6) continue;
            const bool isIn = geometry.pointInBulgePolygon(ring, ringBulges, p) == -1;
            inside = inside || isIn;
            outside = outside || !isIn;
        }
        const int relation = combined(inside, outside);
        ASSERT_EQ(geometry.polylineRingRelation(line, bulges, ring, ringBulges), relation) << i;
        ASSERT_EQ(geometry.polylineRingRelation(moved(line, kSurvey), bulges,
                                                moved(closed, kSurvey), ringBulges),
                  relation)
            << i;
        if (!hasArcs) {
            ASSERT_EQ(geometry.polylinePartsInRing(closed, line), relation) << i;
        }
        ++told[relation + 1];
    }
    for (const int count : told) EXPECT_GT(count, 0);
}

/// Edges clear of the ring are not located one by one; the answer must not show it.
TEST(RingRelations, OfALongLineAreThoseOfItsEdges)
{
    commonFunc geometry(10);
    std::mt19937 random(119);
    for (int i = 0; i < 60; ++i) {
        Figure ring;
        for (int k = 0; k < 40; ++k) {
            ring.points.append(uniform(random, 6, 10) * direction(k * kPi / 20));
            ring.bulges.append(uniform(random, -0.5, 0.5));
        }
        Points line{randomPoint(random, {}, 12)};
        bool inside = false;
        bool outside = false;
        for (int k = 0; k < 60; ++k) {
            // A vertex that is no number parts the line: beyond it it goes on elsewhere.
            if (k == 30) line.append({kNan, 1});
            line.append(k == 30 ? randomPoint(random, {}, 12)
                                : randomPoint(random, line.last(), 0.4));
            const int code = geometry.polylineRingRelation({line[line.size() - 2], line.last()}, {},
                                                           ring.points, ring.bulges);
            inside = inside || code == kInside || code == kPartly;
            outside = outside || code == kOutside || code == kPartly;
        }
        ASSERT_EQ(geometry.polylineRingRelation(line, {}, ring.points, ring.bulges),
                  combined(inside, outside));
    }
}

TEST(RingRelations, OfTouchingAndDegenerateFigures)
{
    const Points square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    struct Case {
        Figure line;
        Figure ring;
        int relation;
    };
    const Case cases[] = {
        {{{{1, 1}, {10, 5}, {1, 9}}, {}}, {square, {}}, kInside},
        {{{{12, 1}, {10, 5}, {12, 9}}, {}}, {square, {}}, kOutside},
        {{{{0, 2}, {0, 10}, {10, 10}}, {}}, {square, {}}, kOnRing},
        {{{{-1, 5}, {5, 5}}, {}}, {square, {}}, kPartly},  // through the closing edge
        {{{{1, 1}, {9, 1}}, {1}}, {square, {}}, kPartly},  // only the arc leaves
        {{{{-5, 5}, {15, 5}}, {}}, {{{0, 0}, {10, 0}}, {1, 1}}, kOutside},  // a tangent
        {{{{5, 5}, {5.0003, 5}, {5.0009, 5}}, {}}, {square, {}}, kInside},  // all pieces short
        {{{{1, 1}, {2, 2}}, {}}, {{{0, 0}, {10, 0}}, {}}, kNone},
        {{{{1, 1}, {2, 2}}, {kNan}}, {square, {}}, kOnRing},
        {{{{5, 5}, {1e300, 1e300}}, {}}, {square, {}}, kOutside},
    };
    commonFunc geometry(10);
    for (const auto& [line, ring, relation] : cases)
        EXPECT_EQ(geometry.polylineRingRelation(line.points, line.bulges, ring.points, ring.bulges),
                  relation)
            << line.points[0].x();
    const Points triangle{{0, 0}, {9, 0}, {0, 9}};
    EXPECT_EQ(geometry.polylinePartsInRing(triangle, {{1, 1}, {2, 2}}), kNone);
    EXPECT_EQ(geometry.segmentMidpointInRing(triangle, {1, 1}, {2, 2}), 2);
    EXPECT_EQ(geometry.segmentMidpointInRing(square, {1, -2}, {2, 2}), kOnRing);
}

}  // namespace
