#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "common/commonFunc.h"
#include "tests/support/arcs.h"

namespace {

using namespace test_support;

commonFunc functions(0);

/// The rule itself, recursive.
void keepPlainly(const Points& points, int first, int last, double tolerance, Points& kept)
{
    double largest = -1;
    int m = 0;
    for (int i = first + 1; i < last; ++i) {
        const double d = functions.pointSegmentDistSquared(points[i], points[first], points[last]);
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
            functions.simplifyPolyline(points, out, tolerance);
            ASSERT_EQ(out, expected);
            functions.simplifyPolylineWithValues(points, none, none, outPoints, a, b, tolerance);
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
        functions.simplifyPolylineWithValues(points, numbers, numbers, out, a, b, tolerance);
        EXPECT_TRUE(a == kept && b == kept && out.size() == kept.size());
    }
}

TEST(Simplification, AppendsOrReplacesAndSkipsWhatIsNoRange)
{
    const Points peak{{0, 0}, {1, 1}, {2, 0}};
    Points out{{7, 7}};
    functions.simplifyPolyline(peak, out, 1.5);
    EXPECT_EQ(out, (Points{{7, 7}, {0, 0}, {2, 0}}));
    functions.simplifyPolyline(out, out, 5e-8);
    EXPECT_EQ(out.size(), 3);

    Values a{1, 2, 3}, b{4, 5, 6};
    functions.simplifyPolylineWithValues(peak, a, b, out, b, a, 5e-8);
    EXPECT_EQ(a, (Values{4, 5, 6}));

    const int ranges[][2] = {{2, 0}, {1, 1}, {-1, 2}, {0, 3}, {0, 1 << 30}};
    tav::Vector<int> kept;
    for (const auto& [first, last] : ranges) functions.simplifyRange(peak, first, last, 0, kept);
    functions.simplifyRange(peak, 0, 2, kNan, kept);
    EXPECT_TRUE(kept.isEmpty());
}

}  // namespace
