#include "tests/support/curves.h"

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
    const struct {
        Points control;
        double tolerance;
        int points;  // 0: as many as the halves make
    } cases[] = {
        {{{0, 0}, {1, 0}, {2, 0}, {3, 0}}, 1e-9, 2},
        {{{0, 0}, {0, 4}, {4, 4}, {4, 0}}, 3, 3},    // deviates by exactly 3
        {{{0, 0}, {1, 8}, {2, 8}, {3, 0}}, 1.5, 3},  // its halves by exactly 1.5
        {{{0, 0}, {0, 4}, {4, 4}, {4, 0}}, 3.5, 2},
        {{{0, 0}, {1, 1}, {2, -1}, {3, 0}}, 1, 2},  // an S whose halves pass
        {{{0, 0}, {1, 1}, {2, -1}, {3, 0}}, 1e-3, 0},
        {{{-7, 2}, {40, 3}, {-30, 9}, {5, 5}}, 1e-4, 0},
    };
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
            EXPECT_NEAR(height, truth(t)[2], 1e-12);
        }
    }
}

/// The handles before their joints are smoothed: meeting the spline under tension at the thirds,
/// whose end tangents are those of the parabolas through three points.
PointLists roughHandles(const Points& points, bool closed)
{
    std::vector<Space> nodes;
    const auto add = [&](const Point2DF& p) { nodes.push_back({p.x(), p.y(), 0}); };
    for (int i = closed ? points.size() - 4 : 0; i + 1 < points.size() && closed; ++i)
        add(points[i]);
    for (const Point2DF& p : points) add(p);
    for (int i = 1; i < 4 && closed; ++i) add(points[i]);
    const auto tangent = [](const Space& p, const Space& q, const Space& r) -> Space {
        const double a = std::sqrt(((q - p) * (q - p)).sum());
        const double b = std::sqrt(((r - q) * (r - q)).sum());
        const Space v = (a + b) / (a * b) * (q - p) - a / (b * (a + b)) * (r - p);
        return v / std::sqrt((v * v).sum());
    };
    const std::size_t n = nodes.size();
    const HyperbolicSpline truth(nodes, tangent(nodes[0], nodes[1], nodes[2]),
                                 -tangent(nodes[n - 1], nodes[n - 2], nodes[n - 3]));
    PointLists handles;
    for (int i = 0; i + 1 < points.size(); ++i) {
        const auto at = [&](double w) {
            const Space p = truth.at(static_cast<std::size_t>(closed ? i + 3 : i), w);
            return Point2DF(p[0], p[1]);
        };
        const Point2DF p0 = points[i], q1 = at(1.0 / 3), q2 = at(2.0 / 3), p3 = points[i + 1];
        // Lagrange's cubic through the four: its derivatives at the ends, a third of each.
        handles.append({p0 + (1.0 / 3) * (9 * q1 - 5.5 * p0 - 4.5 * q2 + p3),
                        p3 - (1.0 / 3) * (5.5 * p3 - 9 * q2 + 4.5 * q1 - p0)});
    }
    return handles;
}

TEST(BezierCurveSpans, SmoothTheJointsOfTheTensionFit)
{
    Points ring = wanderingLine(6);
    ring.append(ring[0] + Point2DF(0, std::ldexp(1, -24)));  // closed: within 1e-7
    for (const Points& points : {wanderingLine(3), wanderingLine(8), ring}) {
        const bool closed = points == ring;
        const PointLists rough = roughHandles(points, closed);
        PointLists spans{{{1, 1}}}, far;
        EXPECT_TRUE(commonFunc(0).bezierCurveSpans(points, spans));
        EXPECT_TRUE(commonFunc(0).bezierCurveSpans(moved(points, 5e5, 4e6), far));
        const int segments = points.size() - 1;
        ASSERT_EQ(spans.size(), segments);
        for (int i = 0; i < segments; ++i) {
            expectNear(far[i], moved(spans[i], 5e5, 4e6), 1e-8);
            const Point2DF at = closed && i + 1 == segments ? points[0] : points[i + 1];
            const Point2DF in = spans[i][1] - at, roughIn = rough[i][1] - at;
            if (!closed && i + 1 == segments) {
                EXPECT_LT(in.distanceTo(roughIn), 1e-9);
                EXPECT_LT(spans[0][0].distanceTo(rough[0][0]), 1e-9);
                break;
            }
            const int next = (i + 1) % segments;
            const Point2DF out = spans[next][0] - at, roughOut = rough[next][0] - at;
            EXPECT_NEAR(length(in), length(roughIn), 1e-9);
            EXPECT_NEAR(length(out), length(roughOut), 1e-9);
            EXPECT_NEAR(std::fabs(turn(in, out)), M_PI, 1e-9);
            // Each has turned by an amount in the inverse ratio of the lengths.
            EXPECT_NEAR(turn(roughIn, in) * length(in), -turn(roughOut, out) * length(out), 1e-8);
        }
    }
}

TEST(BezierCurveSpans, ListRules)
{
    const Point2DF a(0, 0), b(3, 0), c(5, 4), d(-2, 6);
    const struct {
        Points given;
        int entries;
    } cases[] = {
        {{}, 0},
        {{a}, 0},
        {{a, a}, 0},
        {{a, a, b}, 1},
        {{a, b, b, c}, 3},
        {{a, a, b, c, c}, 4},
        {{a, b, a}, 2},
        {{a, {kNan, 0}, b}, 0},
        {{a, {0, 1e-9}, c, d}, 3},             // two points that nearly meet
        {{a, {1e-8, 0}, c, d, {1e-8, 0}}, 4},  // closed across a point that it meets again
        {{a, {1e-170, 0}, c, d}, 3},           // a chord whose square vanishes
        {{a, b, a, b}, 3},                     // straight back
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
        }
        if (k.entries == 1) {
            EXPECT_EQ(spans[0], (Points{{3 * 0.3333, 0}, {3 * 0.6667, 0}}));
        }
    }
}

}  // namespace
