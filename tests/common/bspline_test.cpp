#include "tests/support/curves.h"

namespace {

using namespace curves;

/// The basis functions by the whole recursion over all knots.
double basis(const std::vector<double>& knots, std::size_t i, std::size_t order, double u)
{
    if (order == 1) return knots[i] <= u && u < knots[i + 1];
    const double left = knots[i + order - 1] - knots[i];
    const double right = knots[i + order] - knots[i + 1];
    return (left != 0 ? (u - knots[i]) / left * basis(knots, i, order - 1, u) : 0) +
           (right != 0 ? (knots[i + order] - u) / right * basis(knots, i + 1, order - 1, u) : 0);
}

TEST(BSpline, IsTheSumOverAllBasisFunctions)
{
    for (const std::size_t n : {3u, 4u, 5u, 12u}) {
        for (const double height : {0.0, 1.0}) {
            const Points controls = wanderingLine(static_cast<int>(n));
            std::vector<Space> nodes;
            Values z;
            for (const Point2DF& p : controls) {
                z.append(height * std::fmod(3.7 * p.x(), 9));
                nodes.push_back({p.x(), p.y(), z.last()});
            }
            const std::size_t order = n < 4 ? n : 4;
            std::vector<double> knots(order, 0.0);
            while (knots.size() <= n) knots.push_back(knots.back() + 1);
            knots.resize(n + order, knots.back());
            const auto truth = [&](double u) {
                if (u == knots.back()) return nodes.back();
                Space p(3);
                for (std::size_t i = 0; i < n; ++i) p += basis(knots, i, order, u) * nodes[i];
                return p;
            };
            std::vector<Space> wanted;
            sample(truth, 0, knots.back(), 0.002, wanted);
            wanted.push_back(nodes.back());
            Points out, flat;
            Values outZ;
            EXPECT_TRUE(commonFunc(0).bsplineToPolyline3d(controls, z, out, outZ, 3, 0.002));
            EXPECT_TRUE(commonFunc(0).bsplineToPolyline(controls, flat, 3, 0.002));
            expectNear(out, outZ, wanted);
            if (height == 0) {
                EXPECT_EQ(flat, out);
            }
        }
    }
}

TEST(BSpline, StaysInTheHullAndLeavesAlongTheFirstSide)
{
    const Points controls = wanderingLine(9);
    Points out;
    EXPECT_TRUE(commonFunc(0).bsplineToPolyline(controls, out, 3, 1e-6));
    for (double angle = 0; angle < 6.3; angle += 0.1) {
        const auto farthest = [&](const Points& points) {
            double most = -kInfinity;
            for (const Point2DF& p : points)
                most = std::max(most, p.x() * std::cos(angle) + p.y() * std::sin(angle));
            return most;
        };
        EXPECT_LE(farthest(out), farthest(controls) + 1e-12);
    }
    EXPECT_NEAR(turn(controls[1] - controls[0], out[1] - out[0]), 0, 0.01);

    Points arch;  // deviates by exactly 3
    EXPECT_TRUE(commonFunc(0).bsplineToPolyline({{0, 0}, {0, 4}, {4, 4}, {4, 0}}, arch, 3, 3));
    EXPECT_EQ(arch, (Points{{0, 0}, {4, 0}}));
}

TEST(BSpline, MakesNoMorePointsThanACallMay)
{
    Points round, out;
    for (int i = 0; i < 400; ++i) round.append({std::cos(i), std::sin(i)});
    EXPECT_TRUE(commonFunc(0).bsplineToPolyline(round, out, 3, 0));
    EXPECT_NEAR(out.size(), 4'194'304 + 64 * 397, 100);
    EXPECT_EQ(out.last(), round.last());
}

TEST(BSpline, ListRules)
{
    const Points some{{0, 0}, {0, 10}, {10, -10}, {10, 0}};
    const struct {
        Points controls;
        Values z;
        int degree;
        bool made;
        int points;
    } cases[] = {
        {some, {1, 2, 3, 4}, 2, false, 0},
        {some, {1, 2, 3, 4}, 4, false, 0},
        {some, {1, 2, 3, kInfinity}, 3, false, 0},
        {{{0, 0}, {kNan, 0}}, {1, 2}, 3, false, 0},
        {{{1, 2}, {3, 4}}, {5, 6, kNan}, 3, true, 2},
        {some, {0, 0, 0, 0, kNan}, 3, true, 2},  // symmetric about a point: its ends
    };
    for (const auto& k : cases) {
        Points out = k.controls;  // behind the input itself
        Values z = k.z;
        EXPECT_EQ(commonFunc(0).bsplineToPolyline3d(out, z, out, z, k.degree, 0.001), k.made);
        const int n = k.controls.size();
        ASSERT_EQ(out.size(), n + k.points);
        ASSERT_EQ(z.size(), k.z.size() + k.points);
        if (k.points == 0) continue;
        EXPECT_EQ(out[n], k.controls[0]);
        EXPECT_EQ(out.last(), k.controls[n - 1]);
        EXPECT_EQ(z.last(), k.z[n - 1]);
    }
}

}  // namespace
