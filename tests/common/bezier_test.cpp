#include "tests/support/hyperbolic_spline.h"

namespace {

using namespace curves;

Point2DF mix(const Point2DF& a, const Point2DF& b, double t)
{
    return a + t * (b - a);
}

/// By repeated interpolation between the control points.
Point2DF castel(const Points& c, double t)
{
    Points p = c;
    for (int left = 3; left > 0; --left)
        for (int i = 0; i < left; ++i) p[i] = mix(p[i], p[i + 1], t);
    return p[0];
}

TEST(BezierSpan, IsHalvedFromItsMiddleOn)
{
    struct Case {
        Points control;
        double tolerance;
        int points;  // 0: as many as the halves make
    };
    std::vector<Case> cases{
        {{{0, 0}, {1, 0}, {2, 0}, {3, 0}}, 1e-9, 2},
        {{{0, 0}, {0, 4}, {4, 4}, {4, 0}}, 3, 3},    // deviates by exactly 3
        {{{0, 0}, {1, 8}, {2, 8}, {3, 0}}, 1.5, 3},  // its halves by exactly 1.5
        {{{0, 0}, {1, 1}, {2, -1}, {3, 0}}, 1, 2},   // an S whose halves pass
        {{{0, 0}, {1, 1}, {2, -1}, {3, 0}}, 1e-3, 0},
    };
    const Points line = wanderingLine(43);
    for (int i = 0; i < 40; ++i)
        cases.push_back(
            {{line[i], 0.1 * line[i + 1], line[i + 2], 0.1 * line[i + 3]}, i % 2 ? 0.2 : 0.002, 0});
    commonFunc f(0);
    for (const auto& k : cases) {
        const Points& c = k.control;
        const auto truth = [&](double t) {
            const Point2DF p = castel(c, t);
            return Space{p.x(), p.y(), 2 + 3 * t};
        };
        std::vector<Space> wanted;
        sample(truth, 0, 0.5, k.tolerance, wanted);
        sample(truth, 0.5, 1, k.tolerance, wanted);
        wanted.push_back(truth(1));
        if (k.points == 2) wanted.erase(wanted.begin() + 1);
        Points out{{9, 9}}, own = c;
        Values z{9};
        EXPECT_TRUE(f.bezierSpanToPolyline3d(c[0], 2, c[1], kNan, c[2], kNan, c[3], 5, out, z,
                                             k.tolerance));
        expectNear(out, z, wanted);
        EXPECT_TRUE(k.points == 0 || out.size() == k.points);
        // A linear elevation deviates nowhere; the control points are those of the list replaced.
        const Point2DF* list = std::as_const(own).data();
        EXPECT_TRUE(f.bezierSpanToPolyline(list[0], list[1], list[2], list[3], own, k.tolerance));
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
        const Points c =
            moved({line[i], line[i + 1], line[i + 2], line[i + 3]}, -line[i].x(), -line[i].y());
        const auto at = [&](double t) {
            double z = 0;
            return commonFunc(0).bezierSpanPoint3d(c[0], 0, c[1], 0, c[2], 0, c[3], 0, z, t);
        };
        const double deviation = length(at(0.25) - 0.5 * (at(0) + at(0.5)));
        for (const double tolerance : {deviation, std::nextafter(deviation, 0)}) {
            Points out;
            commonFunc(0).bezierSpanToPolyline(c[0], c[1], c[2], c[3], out, tolerance);
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
        PointLists spans, far;
        EXPECT_TRUE(commonFunc(0).bezierCurveSpans(points, spans));
        EXPECT_TRUE(commonFunc(0).bezierCurveSpans(moved(points, 5e5, 4e6), far));
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
            expectNear(far[i], moved(spans[i], 5e5, 4e6), 1e-8);
        }
    }
}

TEST(BezierCurveSpans, ListRules)
{
    const Point2DF a(0, 0), b(3, 0), c(5, 4), d(-2, 6);
    const struct {
        Points given;
        int entries;
        bool fitted = true;  // else the handles stand at thirds
    } cases[] = {
        {{}, 0},
        {{a, a}, 0},
        {{a, a, b}, 1},
        {{a, a, b, c, c}, 4},
        {{a, {kNan, 0}, b}, 0},
        {{a, {0, 1e-9}, c, d}, 3},             // two points that nearly meet
        {{a, {1e-8, 0}, c, d, {1e-8, 0}}, 4},  // closed across a point that it meets again
        {{a, b, c, a, {1e-8, 0}}, 4},
        {{a, {1e-170, 0}, c, d}, 3, false},  // a chord whose square vanishes
        {{a, b, a, b}, 3},                   // straight back
    };
    for (const auto& k : cases) {
        PointLists spans{{a, b}, {c, d}};
        EXPECT_TRUE(commonFunc(0).bezierCurveSpans(k.given, spans));
        ASSERT_EQ(spans.size(), k.entries);
        for (int i = 0; i < k.entries; ++i) {
            ASSERT_EQ(spans[i].size(), 2);
            for (const Point2DF& handle : spans[i]) {
                EXPECT_TRUE(std::isfinite(handle.x()) && std::isfinite(handle.y()));
                const bool repeat = k.given[i] == k.given[i + 1];
                EXPECT_TRUE(k.entries == 1 || (handle == k.given[i]) == repeat) << i;
            }
            const double chord = k.given[i].distanceTo(k.given[i + 1]);
            if (k.entries < 3 || chord == 0) continue;
            const double share = k.given[i].distanceTo(spans[i][0]) / chord;
            EXPECT_EQ(std::fabs(share - 0.3333) > 1e-9, k.fitted) << i;
        }
        if (k.entries == 1) {
            EXPECT_EQ(spans[0], (Points{{3 * 0.3333, 0}, {3 * 0.6667, 0}}));
        }
    }
}

}  // namespace
