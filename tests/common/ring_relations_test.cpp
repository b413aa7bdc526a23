// Where lines lie with regard to rings and to other lines, and points inside of rings.
#include "tests/support/edges.h"

namespace {

using namespace test_support;

enum Relation : int { kInside = -1, kOnRing = 0, kOutside = 1, kPartly = 2, kNone = -2 };

int combined(bool inside, bool outside)
{
    return inside && outside ? kPartly : inside ? kInside : outside ? kOutside : kOnRing;
}

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
    std::mt19937 random(118);
    int told[4] = {};
    for (int i = 0; i < 400; ++i) {
        const bool hasArcs = i % 2;
        const auto [ring, ringBulges] = randomFigure(random, 3 + i % 5, hasArcs);
        Points closed = ring;
        closed.append(Point2DF(closed.first()));
        const auto [line, bulges] =
            i % 9 ? randomFigure(random, 2 + i % 3, hasArcs) : Figure{ring, ringBulges};
        bool inside = false, outside = false;
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
        ASSERT_EQ(geometry.polylineRingRelation(line, bulges, closed, ringBulges), relation) << i;
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
    std::mt19937 random(119);
    for (int i = 0; i < 60; ++i) {
        Figure ring;
        for (int k = 0; k < 40; ++k) {
            ring.points.append(uniform(random, 6, 10) * direction(k * kPi / 20));
            ring.bulges.append(uniform(random, -0.5, 0.5));
        }
        Points line{randomPoint(random, {}, 12)};
        bool inside = false, outside = false;
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
    const std::tuple<Figure, Figure, int> cases[] = {
        {{{{1, 1}, {10, 5}, {1, 9}}, {}}, {square, {}}, kInside},
        {{{{12, 1}, {10, 5}, {12, 9}}, {}}, {square, {}}, kOutside},
        {{{{0, 2}, {0, 10}, {10, 10}}, {}}, {square, {}}, kOnRing},
        {{{{-1, 5}, {5, 5}}, {}}, {square, {}}, kPartly},  // through the closing edge
        {{{{1, 1}, {9, 1}}, {1}}, {square, {}}, kPartly},  // only the arc leaves
        {{{{-5, 5}, {15, 5}}, {}}, {{{0, 0}, {10, 0}}, {1, 1}}, kOutside},  // a tangent
        {{{{5, 5}, {5.0003, 5}, {5.0009, 5}}, {}}, {square, {}}, kInside},  // all pieces short
        {{{{5, 5}, {10.0009, 5}, {5, 6}}, {}}, {square, {}}, kInside},      // too short outside
        {{{{1, 1}, {2, 2}}, {}}, {{{0, 0}, {10, 0}}, {}}, kNone},
        {{{{1, 1}, {2, 2}}, {kNan}}, {square, {}}, kOnRing},
        {{{{5, 5}, {1e300, 1e300}}, {}}, {square, {}}, kOutside},
    };
    for (const auto& [line, ring, relation] : cases)
        EXPECT_EQ(geometry.polylineRingRelation(line.points, line.bulges, ring.points, ring.bulges),
                  relation)
            << line.points[0].x();
    const Points triangle{{0, 0}, {9, 0}, {0, 9}};
    EXPECT_EQ(geometry.polylinePartsInRing(triangle, {{1, 1}, {2, 2}}), kNone);
    EXPECT_EQ(geometry.segmentMidpointInRing(triangle, {1, 1}, {2, 2}), 2);
    EXPECT_EQ(geometry.segmentMidpointInRing(square, {1, -2}, {2, 2}), kOnRing);
}

void expectLabelInside(const Figure& figure, const Point2DF& origin)
{
    Point2DF label = kUntouched;
    ASSERT_TRUE(geometry.labelPoint(moved(figure.points, origin), figure.bulges, label));
    Values bulges = figure.bulges;
    bulges.resize(figure.points.size());
    const Points boundary = sampledRing(geometry, figure.points, bulges, 400);
    EXPECT_EQ(geometry.pointInPolygon(boundary, label - origin), -1);
    EXPECT_EQ(geometry.pointInBulgePolygon(moved(figure.points, origin), figure.bulges, label), -1);
}

TEST(InnerPoints, LabelsLieInside)
{
    // Thin teeth that lean over: the largest triangles, at the tips, lie between the teeth.
    Points comb{{0, 0}};
    for (double x = 0; x < 1000; x += 10) {
        comb.append({x + 300, 100});
        comb.append({x + 0.01, 0.2});
        comb.append({x + 10, 0.2});
    }
    comb.append({1000, 0});
    const Figure figures[] = {
        {{{0, 0}, {2, 0}}, {1, 1}},
        {{{0, 0}, {0, 2}, {0, 0}}, {1, 1, 0}},
        {{{0, 0}, {8, 3}}, {1, -0.9995}},  // a thin crescent
        {{{5, 0}, {0, 5}, {-5, 0}, {0, -5}}, {-0.4, -0.4, -0.4, -0.4}},
        {{{2, 2}, {10, 0}, {2, 10}, {2, 9}, {1, 1}}, {}},  // reflex at its first vertex
        {{{0, 0}, {1000, 1}, {0, 0.01}}, {}},
        {comb, {}},
    };
    for (int i = 0; i < int(std::size(figures)); ++i) {
        SCOPED_TRACE(i);
        for (const Point2DF& origin : {Point2DF(), kSurvey}) expectLabelInside(figures[i], origin);
    }
    std::mt19937 random(24);
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(i);
        Figure figure;
        for (int k = 0; k < 3 + i % 9; ++k) {
            figure.points.append({uniform(random, 0, 50), uniform(random, 0, 50)});
            figure.bulges.append(k % 2 ? uniform(random, -1.5, 1.5) : 0.0);
        }
        expectLabelInside(figure, i % 2 ? kSurvey : Point2DF());
    }
}

TEST(InnerPoints, RingsWithoutAreaHaveNoLabel)
{
    Point2DF out = kUntouched;
    for (const auto& [ring, bulges] :
         {Figure{}, Figure{{{0, 0}, {5, 1}}, {0.7, -0.7}},
          Figure{{{0, 0}, {5, 1}, {9, 4}, {5, 1}}, {}},
          Figure{{{0, 0}, {9, 0}, {9, 1e-4}, {0, 1e-4}}, {}},  // thinner than the boundary
          Figure{{{kNan, 0}, {5, kNan}, {kNan, kInfinity}}, {kNan, 1, kInfinity}}})
        EXPECT_FALSE(geometry.labelPoint(ring, bulges, out)) << ring.size();
    EXPECT_EQ(out, kUntouched);
}

TEST(InnerPoints, OnTheScanLine)
{
    const Points outer{{0, 0}, {0, 10}, {10, 10}, {10, 0}, {0, 0}};
    const Points hole{{2, 2}, {9, 2}, {9, 9}, {2, 9}, {2, 2}};
    const Points equalArms{{0, 0}, {20, 0}, {20, 20}, {15, 20}, {15, 5},
                           {5, 5}, {5, 20}, {0, 20},  {0, 0}};
    // Arms of 2, 2 and 1 over gaps of 1 and 2: exchanges leave the first of the equal arms last.
    const Points threeArms{{0, 0},  {8, 0}, {8, 10}, {7, 10}, {7, 2},  {5, 2}, {5, 10},
                           {3, 10}, {3, 2}, {2, 2},  {2, 10}, {0, 10}, {0, 0}};
    using Case = std::tuple<PointLists, IcommonFunc::ValueLists, Point2DF, Point2DF>;
    const Case cases[] = {
        {{outer, hole}, {{}}, {5, 5}, {1, 5}},
        {{outer, moved(outer, {0, 30})}, {}, {5, 5}, {0, 0}},  // nothing inside between the two
        {{equalArms}, {}, {17.5, 10}, {0, 0}},
        {{threeArms}, {}, {1, 5}, {0, 0}},
        {{outer}, {{0, 0, -1, 0, 0}}, {0, 5}, {0, 5}},  // one meeting, on the boundary
        {{{{0, 0}, {10, 0}, {10, 10}, {0, 10}}}, {}, {10, 5}, {10, 5}},  // not closed
        {{{}, {{3, 4}}}, {}, {0, 0}, {3, 4}},
    };
    for (const auto& [rings, bulges, inRing, inRegion] :
         cases) {  // of the first ring alone, of all
        const Point2DF found =
            geometry.innerPointOfRing(rings[0], bulges.isEmpty() ? Values() : bulges[0]);
        EXPECT_LT(dist(found, inRing), 1e-9) << found.x() << ", " << found.y();
        EXPECT_LT(dist(geometry.innerPointOfRegion(rings, bulges), inRegion), 1e-9) << found.x();
    }
    // A comb of 1,500 teeth, one of them wider: so many meetings that they are sorted another way.
    Points comb{{0, -1}};
    for (int i = 0; i < 1500; ++i) {
        const double left = 2 * i, right = left + (i == 700 ? 1.5 : 1);
        comb.append(Points{{left, 0}, {left, 10}, {right, 10}, {right, 0}});
    }
    comb.append(Points{{2999, -1}, {0, -1}});
    EXPECT_LT(dist(geometry.innerPointOfRing(comb, {}), {1400.75, 4.5}), 1e-9);
    EXPECT_LT(dist(geometry.innerPointOfRegion({comb}, {}), {1400.75, 4.5}), 1e-9);
    // The first triangle of three vertices lies in a notch.
    EXPECT_LT(dist(geometry.innerPointByTriangles({{9, 0}, {3, 3}, {0, 9}, {0, 0}}), {1, 4}), 1e-9);
    EXPECT_EQ(geometry.innerPointByTriangles({{5, 5}, {6, 6}, {7, 7}}), Point2DF());
}

constexpr int kRight = -1;
constexpr int kLeft = 1;

/// Beside a ring that runs counter-clockwise left is inside, at corners of any sharpness.
TEST(PolylineSides, OfRingsAreInsideAndOutside)
{
    std::mt19937 random(114);
    for (int i = 0; i < 300; ++i) {
        const int corners = 4 + i % 9;
        Points ring;
        for (int k = 0; k < corners; ++k) {
            const double angle = (k + uniform(random, 0, 0.8)) * 2 * kPi / corners;
            ring.append(uniform(random, 0.5, k % 2 ? 20 : 2) * direction(angle));
            if (random() % 4 == 0) ring.append(Point2DF(ring.last()));
        }
        ring.append(Point2DF(ring.first()));
        Points reversed = ring;
        geometry.reversePointList(reversed);
        for (int k = 0; k < 60; ++k) {
            const Point2DF p = randomPoint(random, ring[k % ring.size()], k % 3 ? 0.02 : 20);
            if (geometry.pointPolylineDistSquared(p, ring) < 1.1e-6) continue;
            const int side = geometry.pointInPolygon(ring, p) == -1 ? kLeft : kRight;
            ASSERT_EQ(geometry.pointSideOfPolyline(p, ring), side) << i << ", " << k;
            ASSERT_EQ(geometry.pointSideOfPolyline(p, reversed), -side) << i << ", " << k;
            ASSERT_EQ(geometry.pointSideOfBulgePolyline(p, ring, {}), side);
        }
    }
}

/// A chain of arcs that runs in +x throughout has its left above it.
TEST(PolylineSides, OfAChainOfArcsAreAboveAndBelow)
{
    std::mt19937 random(113);
    Points chain{{0, 0}};
    Values bulges;
    for (int k = 0; k < 300; ++k) {
        chain.append(chain.last() + Point2DF(uniform(random, 0.5, 4), uniform(random, -0.3, 0.3)));
        bulges.append(k % 3 ? uniform(random, -0.35, 0.35) : uniform(random, -2e-6, 2e-6));
    }
    for (int k = 1; k < 299; ++k)
        for (double t = 0; t < 1; t += 1.0 / 16)
            for (const double rise : {-0.3, -0.01, 0.01, 0.3}) {
                const Point2DF p =
                    Edge{chain[k], chain[k + 1], bulges[k]}.at(t) + Point2DF(0, rise);
                ASSERT_EQ(
                    geometry.pointSideOfBulgePolyline(p + kSurvey, moved(chain, kSurvey), bulges),
                    rise > 0 ? kLeft : kRight)
                    << k << ", " << t;
            }
}

TEST(PolylineSides, OfSinglePoints)
{
    const Points corner{{0, 0}, {10, 0}, {10, 10}};
    const double y = 4e6 + 0x1p-30;  // the last bit is odd
    const Points repeated{{0, y}, {0, y}, {5, y}, {5, y}, {9, y}, {9, y}};
    const Points chord{{0, 0}, {8, 0}};
    const std::tuple<Points, Values, Point2DF, int> cases[] = {
        {corner, {}, {5, 0.0009}, 0},
        {corner, {}, {5, -0.0011}, kRight},
        {corner, {}, {13, 0}, kRight},   // in line with the first segment
        {corner, {}, {10, -3}, kRight},  // in line with the second
        {corner, {}, {-2, 0}, 0},        // beyond an end, in line and not
        {corner, {}, {-2, 1e-5}, kLeft},
        {{{0, 0}, {10, 0}, {3, 0}}, {}, {12, 0}, 0},  // straight back
        {repeated, {}, {5, y + 2}, kLeft},
        {{{0, 0}, {5e-4, 0}, {5e-4, 9}}, {}, {2, 0}, kRight},  // nearest to the second vertex
        {{{1, 1}}, {}, {5, 5}, 0},
        {{{1, 1}, {1, 1}}, {}, {5, 5}, 0},  // no direction
        {corner, {}, {kNan, 1}, 0},
        {chord, {0.5}, {4, -1}, kLeft},  // between chord and arc
        {chord, {1}, {4, 0}, kLeft},     // the centre
        {{{0, 0}, {8, 0}, {9, 9}}, {kNan, kInfinity}, {4, -1}, 0},
    };
    for (const auto& [polyline, bulges, p, side] : cases) {
        EXPECT_EQ(geometry.pointSideOfBulgePolyline(p, polyline, bulges), side) << p.x();
        if (bulges.isEmpty()) {
            EXPECT_EQ(geometry.pointSideOfPolyline(p, polyline), side) << p.x();
        }
    }
}

TEST(PolylineSides, OfPolylinesAndTheirEnds)
{
    const Points base{{0, 0}, {10, 0}, {10, 10}};
    EXPECT_EQ(geometry.polylineSideOfPolyline({{1, 1}, {5, 0}, {9, 5}}, base), kLeft);
    EXPECT_EQ(geometry.polylineSideOfPolyline({{1, 2}, {1, -1}}, base), 2);
    EXPECT_EQ(geometry.segmentsSideOfPolyline({{1, 2}, {1, -1}}, base), kLeft);
    // All vertices on the line.
    EXPECT_EQ(geometry.polylineSideOfPolyline({{0, 0}, {10, 10}}, base), kLeft);
    EXPECT_EQ(geometry.polylineSideOfPolyline({{2, 0}, {10, 0}, {10, 4}}, base), 0);
    const Points line{{0, 0}, {3, 3}, {5, 1}};
    const Points oneEnd{{0, 0}, {5, 1.00011}};
    const Points loop{{0, 0}, {4, 4}, {0, 0}};
    const Points opposite{{5.00009, 1}, {-0.00009, 0}};
    EXPECT_EQ(geometry.findSameEnds({{}, oneEnd, loop, opposite, line}, line), 3);
    EXPECT_EQ(geometry.findSameEnds({oneEnd, loop, {}}, line), -1);
    EXPECT_TRUE(geometry.haveSameEnds(line, {{0, 0}, {5, 1}}));
}

}  // namespace
