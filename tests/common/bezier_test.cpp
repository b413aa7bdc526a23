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
        {{{0, 0}, {1, 1}, {2, -1}, {3, 0}}, 1, 2},   // an S whose halves pass
        {{{0, 0}, {1, 1}, {2, -1}, {3, 0}}, 1e-3, 0},
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

// Away from open ends, whose slopes differ, and but for the turns that make one tangent of two.
TEST(BezierCurveSpans, FollowTheTensionCurveWithOneTangentAtTheirJoints)
{
    Points ring = wanderingLine(6);
    ring.append(ring[0] + Point2DF(0, std::ldexp(1, -24)));  // closed: within 1e-7
    for (const Points& points : {wanderingLine(8), ring}) {
        const bool closed = points == ring;
        const int segments = points.size() - 1;
        PointLists spans, far;
        Points fine, vertices = points;
        if (closed) vertices.removeLast();
        EXPECT_TRUE(commonFunc(0).bezierCurveSpans(points, spans));
        EXPECT_TRUE(commonFunc(0).bezierCurveSpans(moved(points, 5e5, 4e6), far));
        commonFunc(0).tensionCurve(vertices, fine, closed, 0, 0, 1e-4);
        ASSERT_EQ(spans.size(), segments);
        for (int i = 0; i < segments; ++i) {
            expectNear(far[i], moved(spans[i], 5e5, 4e6), 1e-8);
            const Points control{points[i], spans[i][0], spans[i][1], points[i + 1]};
            const bool inner = closed || (i > 0 && i + 1 < segments);
            for (const double t : {0.25, 0.5, 0.75})
                EXPECT_LT(distanceToLine(castel(control, t), fine), inner ? 1 : 3) << i;
            if (!closed && i + 1 == segments) break;
            const Point2DF in = spans[i][1] - points[i + 1];
            const Point2DF out = spans[(i + 1) % segments][0] - points[i + 1];
            EXPECT_NEAR(std::fabs(turn(in, out)), M_PI, 1e-6);
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
        {{a, a}, 0},
        {{a, a, b}, 1},
        {{a, a, b, c, c}, 4},
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
