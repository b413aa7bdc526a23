#include "tests/support/hyperbolic_spline.h"

namespace {

using namespace curves;

/// By repeated interpolation between the control points.
Point2DF castel(const Points& c, double t)
{
    Points p = c;
    for (int left = 3; left > 0; --left)
        for (int i = 0; i < left; ++i) p[i] += t * (p[i + 1] - p[i]);
    return p[0];
}

TEST(BezierSpan, IsHalvedFromItsMiddleOn)
{
    std::vector<std::tuple<Points, double, int>> cases{
        // 0 points: as many as the halves make
        {{{0, 0}, {1, 0}, {2, 0}, {3, 0}}, 1e-9, 2},
        {{{0, 0}, {0, 4}, {4, 4}, {4, 0}}, 3, 3},    // deviates by exactly 3
        {{{0, 0}, {1, 8}, {2, 8}, {3, 0}}, 1.5, 3},  // its halves by exactly 1.5
        {{{0, 0}, {1, 1}, {2, -1}, {3, 0}}, 1, 2},   // an S whose halves pass
        {{{0, 0}, {1, 1}, {2, -1}, {3, 0}}, 1e-3, 0},
    };
    const Points line = wanderingLine(43);
    for (int i = 0; i < 40; ++i)
        cases.emplace_back(Points{line[i], 0.1 * line[i + 1], line[i + 2], 0.1 * line[i + 3]},
                           i % 2 ? 0.2 : 0.002, 0);
    commonFunc f(0);
    for (const auto& [c, tolerance, points] : cases) {
        const auto truth = [&](double t) {
            const Point2DF p = castel(c, t);
            return Space{p.x(), p.y(), 2 + 3 * t};
        };
        std::vector<Space> wanted;
        sample(truth, 0, 0.5, tolerance, wanted);
        sample(truth, 0.5, 1, tolerance, wanted);
        wanted.push_back(truth(1));
        if (points == 2) wanted.erase(wanted.begin() + 1);
        Points out{{9, 9}}, own = c;
        Values z{9};
        EXPECT_TRUE(
            f.bezierSpanToPolyline3d(c[0], 2, c[1], kNan, c[2], kNan, c[3], 5, out, z, tolerance));
        expectNear(out, z, wanted);
        EXPECT_TRUE(points == 0 || out.size() == points);
        // A linear elevation deviates nowhere; the control points are those of the list replaced.
        const Point2DF* list = std::as_const(own).data();
        EXPECT_TRUE(f.bezierSpanToPolyline(list[0], list[1], list[2], list[3], own, tolerance));
        EXPECT_EQ(own, out);
        for (const double t : {-1.5, 0.0, 0.3, 1.0, 2.0}) {
            double height = 0;
            const Point2DF p =
                f.bezierSpanPoint3d(c[0], 2, c[1], kNan, c[2], kNan, c[3], 5, height, t);
            EXPECT_LT(p.distanceTo(castel(c, t)), 1e-11);
            EXPECT_TRUE(t != 1 || p == c[3]);
            EXPECT_NEAR(height, truth(t)[2], 1e-12);
        }
    }
}

// What is known without evaluating the curve never decides otherwise than its points.
TEST(BezierSpan, PointsDecideToTheLastBit)
{
    const Points line = wanderingLine(103);
    for (int i = 0; i < 100; ++i) {
        const Points c = moved({line[i], line[i + 1], line[i + 2], line[i + 3]}, -1 * line[i]);
        const auto at = [&](double t) {
            double z = 0;
            return geometry.bezierSpanPoint3d(c[0], 0, c[1], 0, c[2], 0, c[3], 0, z, t);
        };
        const double deviation = length(at(0.25) - 0.5 * (at(0) + at(0.5)));
        for (const double tolerance : {deviation, std::nextafter(deviation, 0)}) {
            Points out;
            geometry.bezierSpanToPolyline(c[0], c[1], c[2], c[3], out, tolerance);
            const bool halved = std::find(out.cbegin(), out.cend(), at(0.25)) != out.cend();
            EXPECT_EQ(halved, tolerance < deviation) << i;
        }
    }
}

/// The direction at p0 of the parabola that meets the three over their chord lengths.
Space parabolaSlope(const Space& p0, const Space& p1, const Space& p2)
{
    const double a = length(p1 - p0), b = length(p2 - p1);
    const Space slope = (p1 - p0) / a - a / (a + b) * ((p2 - p1) / b - (p1 - p0) / a);
    return slope / length(slope);
}

/// Slopes of each segment's cubic at its ends: it meets the tension curve at the thirds.
struct EndSlopes {
    Point2DF start, end;
};
std::vector<EndSlopes> fittedSlopes(const Points& points, bool closed)
{
    std::vector<Space> nodes;
    for (const Point2DF& p : points) nodes.push_back({p.x(), p.y(), 0});
    if (closed) {
        const std::vector<Space> once(nodes.begin(), nodes.end() - 1);
        nodes.insert(nodes.begin(), once.end() - 3, once.end());
        nodes.insert(nodes.end(), once.begin() + 1, once.begin() + 4);
    }
    const std::size_t n = nodes.size(), first = closed ? 3 : 0;
    const HyperbolicSpline truth(nodes, parabolaSlope(nodes[0], nodes[1], nodes[2]),
                                 -parabolaSlope(nodes[n - 1], nodes[n - 2], nodes[n - 3]));
    std::vector<EndSlopes> slopes;
    for (std::size_t i = first; i + 1 + first < n; ++i) {
        Point2DF q[4];
        for (int third = 0; third < 4; ++third) {
            const Space p = truth.at(i, third / 3.0);
            q[third] = {p[0], p[1]};
        }
        slopes.push_back({endSlope(q, 1, 1.0 / 3), endSlope(q + 3, -1, 1.0 / 3)});
    }
    // The last handle belongs to the first point.
    if (closed) slopes.back().end += 3 * (points.first() - points.last());
    return slopes;
}

TEST(BezierCurveSpans, MeetTheTensionCurveAndShareTheirTangents)
{
    Points ring = wanderingLine(6);
    ring.append(ring[0] + Point2DF(0, std::ldexp(1, -24)));  // closed: within 1e-7
    for (const Points& points : {wanderingLine(3), wanderingLine(8), ring}) {
        const bool closed = points == ring;
        PointLists spans;
        EXPECT_TRUE(geometry.bezierCurveSpans(points, spans));
        std::vector<EndSlopes> slopes = fittedSlopes(points, closed);
        const std::size_t segments = slopes.size();
        for (std::size_t i = 0; i + !closed < segments; ++i) {  // each joint
            Point2DF& in = slopes[i].end;
            Point2DF& out = slopes[(i + 1) % segments].start;
            const double sizeIn = length(in), sizeOut = length(out);
            const double angle = turn({1, 0}, in) + turn(in, out) * sizeOut / (sizeIn + sizeOut);
            in = sizeIn * Point2DF(std::cos(angle), std::sin(angle));
            out = sizeOut * Point2DF(std::cos(angle), std::sin(angle));
        }
        ASSERT_EQ(spans.size(), static_cast<int>(segments));
        for (int i = 0; i < spans.size(); ++i) {
            const EndSlopes& slope = slopes[static_cast<std::size_t>(i)];
            const Point2DF& end = closed && i + 1 == spans.size() ? points[0] : points[i + 1];
            expectNear(spans[i], {points[i] + 1.0 / 3 * slope.start, end - 1.0 / 3 * slope.end},
                       1e-9);
        }
    }
}

TEST(BezierCurveSpans, ListRules)
{
    const Point2DF a(0, 0), b(3, 0), c(5, 4), d(-2, 6);
    const Points almostFlat{a, {1e-170, 0}, a, c};  // chords whose squares vanish: at thirds
    const std::pair<Points, int> cases[] = {
        {{}, 0},
        {{a, a}, 0},
        {{a, a, b}, 1},
        {{a, a, b, c, c}, 4},
        {{a, {kNan, 0}, b}, 0},
        {{a, {0, 1e-9}, c, d}, 3},             // two points that nearly meet
        {{a, {1e-8, 0}, c, d, {1e-8, 0}}, 4},  // closed across a point that it meets again
        {{a, b, c, a, {1e-8, 0}}, 4},
        {almostFlat, 3},
        {{a, b, a, b}, 3},  // straight back
    };
    for (const auto& [given, entries] : cases) {
        PointLists spans{{a, b}, {c, d}};
        EXPECT_TRUE(geometry.bezierCurveSpans(given, spans));
        ASSERT_EQ(spans.size(), entries);
        for (int i = 0; i < entries; ++i) {
            ASSERT_EQ(spans[i].size(), 2);
            for (const Point2DF& handle : spans[i]) {
                EXPECT_TRUE(std::isfinite(handle.x()) && std::isfinite(handle.y()));
                const bool repeat = given[i] == given[i + 1];
                EXPECT_TRUE(entries == 1 || (handle == given[i]) == repeat) << i;
            }
            const double chord = given[i].distanceTo(given[i + 1]);
            if (entries < 3 || chord == 0) continue;
            const double share = given[i].distanceTo(spans[i][0]) / chord;
            EXPECT_EQ(std::fabs(share - 0.3333) > 1e-9, given != almostFlat) << i;
        }
        if (entries == 1) {
            EXPECT_EQ(spans[0], (Points{{3 * 0.3333, 0}, {3 * 0.6667, 0}}));
        }
    }
}

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
            EXPECT_TRUE(geometry.bsplineToPolyline3d(controls, z, out, outZ, 3, 0.002));
            EXPECT_TRUE(geometry.bsplineToPolyline(controls, flat, 3, 0.002));
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
    EXPECT_TRUE(geometry.bsplineToPolyline(controls, out, 3, 1e-6));
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
    EXPECT_TRUE(geometry.bsplineToPolyline({{0, 0}, {0, 4}, {4, 4}, {4, 0}}, arch, 3, 3));
    EXPECT_EQ(arch, (Points{{0, 0}, {4, 0}}));
}

TEST(BSpline, ListRules)
{
    const Points some{{0, 0}, {0, 10}, {10, -10}, {10, 0}};
    const std::tuple<Points, Values, int, bool, int> cases[] = {
        {some, {1, 2, 3, 4}, 2, false, 0},
        {some, {1, 2, 3, 4}, 4, false, 0},
        {some, {1, 2, 3, kInfinity}, 3, false, 0},
        {{{0, 0}, {kNan, 0}}, {1, 2}, 3, false, 0},
        {{{1, 2}, {3, 4}}, {5, 6, kNan}, 3, true, 2},
        {some, {0, 0, 0, 0, kNan}, 3, true, 2},  // symmetric about a point: its ends
    };
    for (const auto& [controls, heights, degree, made, points] : cases) {
        Points out = controls;  // behind the input itself
        Values z = heights;
        EXPECT_EQ(geometry.bsplineToPolyline3d(out, z, out, z, degree, 0.001), made);
        const int n = controls.size();
        ASSERT_EQ(out.size(), n + points);
        ASSERT_EQ(z.size(), heights.size() + points);
        if (points == 0) continue;
        EXPECT_EQ(out[n], controls[0]);
        EXPECT_EQ(out.last(), controls[n - 1]);
        EXPECT_EQ(z.last(), heights[n - 1]);
    }
}

}  // namespace
