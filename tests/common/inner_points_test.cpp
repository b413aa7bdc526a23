#include <gtest/gtest.h>

#include "common/commonFunc.h"
#include "tests/support/arcs.h"

namespace {

using namespace test_support;
using tav::Point2DF;
using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

struct Figure {
    Points ring;
    Values bulges;
};

void expectLabelInside(const Figure& figure, const Point2DF& origin)
{
    commonFunc geometry(10);
    Point2DF label = kUntouched;
    ASSERT_TRUE(geometry.labelPoint(moved(figure.ring, origin), figure.bulges, label));
    Values bulges = figure.bulges;
    bulges.resize(figure.ring.size());
    const Points boundary = sampledRing(geometry, figure.ring, bulges, 400);
    EXPECT_EQ(geometry.pointInPolygon(boundary, label - origin), -1);
    EXPECT_EQ(geometry.pointInBulgePolygon(moved(figure.ring, origin), figure.bulges, label), -1);
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
            figure.ring.append({uniform(random, 0, 50), uniform(random, 0, 50)});
            figure.bulges.append(k % 2 ? uniform(random, -1.5, 1.5) : 0.0);
        }
        expectLabelInside(figure, i % 2 ? kSurvey : Point2DF());
    }
}

TEST(InnerPoints, RingsWithoutAreaHaveNoLabel)
{
    commonFunc geometry(10);
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
    struct Case {
        IcommonFunc::PointLists rings;
        IcommonFunc::ValueLists bulges;
        Point2DF inRing;  ///< of the first ring alone
        Point2DF inRegion;
    };
    const Case cases[] = {
        {{outer, hole}, {{}}, {5, 5}, {1, 5}},
        {{outer, moved(outer, {0, 30})}, {}, {5, 5}, {0, 0}},  // nothing inside between the two
        {{equalArms}, {}, {17.5, 10}, {0, 0}},
        {{outer}, {{0, 0, -1, 0, 0}}, {0, 5}, {0, 5}},  // one meeting, on the boundary
        {{{{0, 0}, {10, 0}, {10, 10}, {0, 10}}}, {}, {10, 5}, {10, 5}},  // not closed
        {{{}, {{3, 4}}}, {}, {0, 0}, {3, 4}},
    };
    commonFunc geometry(10);
    for (const auto& [rings, bulges, inRing, inRegion] : cases) {
        const Point2DF found =
            geometry.innerPointOfRing(rings[0], bulges.isEmpty() ? Values() : bulges[0]);
        EXPECT_LT(dist(found, inRing), 1e-9) << found.x() << ", " << found.y();
        EXPECT_LT(dist(geometry.innerPointOfRegion(rings, bulges), inRegion), 1e-9) << found.x();
    }
    // The first triangle of three vertices lies in a notch.
    EXPECT_LT(dist(geometry.innerPointByTriangles({{9, 0}, {3, 3}, {0, 9}, {0, 0}}), {1, 4}), 1e-9);
    EXPECT_EQ(geometry.innerPointByTriangles({{5, 5}, {6, 6}, {7, 7}}), Point2DF());
}

}  // namespace
