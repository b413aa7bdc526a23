#include <string_view>

#include "tests/support/curves.h"

namespace {

using namespace curves;

// Meeting the points as piecewise cubics with continuous slope and bend, and the end conditions,
// is all that there is to this curve: nothing else does.
TEST(Spline, IsTheTwiceContinuousCubic)
{
    for (const bool closed : {false, true}) {
        for (const int n : {3, 4, 12}) {
            Points out, vertices = wanderingLine(n);
            geometry.splineInterpolate(vertices, out, closed, kInfinity);
            if (closed) vertices.append(vertices.first());
            const int spans = vertices.size() - 1;
            ASSERT_EQ(out.size(), 4 * spans + 1);
            std::vector<Point2DF> slopes[2], bends[2];  // at the starts and at the ends
            for (int i = 0; i < spans; ++i) {
                const Point2DF* q = &std::as_const(out)[4 * i];
                EXPECT_EQ(q[0], vertices[i]);
                EXPECT_EQ(q[4], vertices[i + 1]);
                EXPECT_LT(length(q[0] - 4 * q[1] + 6 * q[2] - 4 * q[3] + q[4]), 1e-12);
                const double d = q[0].distanceTo(q[4]) / 4;
                for (const int end : {0, 1}) {
                    const int s = 1 - 2 * end;
                    const Point2DF* e = q + 4 * end;
                    slopes[end].push_back(endSlope(e, s, d));
                    bends[end].push_back((1 / d / d) *
                                         (2 * e[0] - 5 * e[s] + 4 * e[2 * s] - e[3 * s]));
                }
            }
            for (std::size_t i = 0; i < slopes[0].size(); ++i) {
                const std::size_t before = i > 0 ? i - 1 : slopes[0].size() - 1;
                if (i == 0 && !closed) {
                    EXPECT_LT(length(bends[0][i]) + length(bends[1][before]), 1e-10);
                } else {
                    EXPECT_LT(length(slopes[0][i] - slopes[1][before]), 1e-11);
                    EXPECT_LT(length(bends[0][i] - bends[1][before]), 1e-10);
                }
            }
        }
    }
}

/// Answers for the distance of a point from a segment: given ones, the last again and again, or
/// the true one.
struct Measuring : commonFunc {
    explicit Measuring(std::vector<double> given) : commonFunc(0), answers(std::move(given)) {}

    double pointSegmentDistSquared(const Point2DF& p, const Point2DF& a, const Point2DF& b) override
    {
        if (answers.empty()) return commonFunc::pointSegmentDistSquared(p, a, b);
        return answers[std::min(asked++, answers.size() - 1)];
    }

    std::vector<double> answers;
    std::size_t asked = 0;
};

TEST(Spline, HalvesByThePointsDistanceFromTheSegment)
{
    const double below = std::nextafter(0.25, 0);
    const std::pair<std::vector<double>, int> cases[] = {
        {{-1e-9}, 9}, {{below}, 9}, {{kNan}, 9}, {{0.25, below}, 11}};
    const Points even{{0, 0}, {4, 0}, {8, 0}};
    for (const auto& [answers, points] : cases) {
        Points out;
        Measuring(answers).splineInterpolate(even, out, false, 0.5);
        ASSERT_EQ(out.size(), points);
        for (int i = 2; i < 9; ++i) EXPECT_EQ(out[i + points - 9], Point2DF(i, 0)) << i;
    }
    // Without end: the first quarter halved 32 times, and no more points than a call may make.
    Points out;
    Measuring({1.0}).splineInterpolate(even, out, false, 0.5);
    EXPECT_NEAR(out[1].x(), std::ldexp(1.0, -32), 1e-15);
    EXPECT_NEAR(out.size(), 4'194'304 + 64 * 2, 100);
    EXPECT_EQ(out.last(), even.last());
}

// What is known without asking never decides otherwise.
TEST(Spline, IsTheSameWhetherDistancesAreAskedForOrKnown)
{
    const double places[][2] = {{0, 0.1}, {0, 1e-4}, {4e6, 1e-4}, {1e11, 0}, {1e12, 0}};
    for (const auto [away, tolerance] : places) {
        const Points given = moved(wanderingLine(30), {away, -away});
        Points asked, known;
        Measuring({}).splineInterpolate(given, asked, true, tolerance);
        geometry.splineInterpolate(given, known, true, tolerance);
        ASSERT_EQ(asked, known) << away;
    }
}

TEST(Spline, ListRules)
{
    const Point2DF a(0, 0), b(5, 0), c(5, 3), tooShort(5.000002, 0), shortest(5.0000005, 0);
    const std::tuple<Points, bool, int, Point2DF> cases[] = {
        {{}, true, 0, c},
        {{a}, true, 1, a},
        {{a, b}, false, 2, b},
        {{a, a, b}, false, 2, b},
        {{a, b}, true, 9, a},
        {{a, a, a, a, a}, false, 9, a},  // every second one of equal neighbours stays
        {{a, b, c, a}, true, 13, a},     // the closing copy is a repeat
        {{a, b, tooShort}, false, 5, b},
        {{a, b, shortest}, false, 9, shortest},  // counts as 0.01
    };
    for (const auto& [given, closed, points, last] : cases) {
        Points out{c};
        geometry.splineInterpolate(given, out, closed, kInfinity);
        EXPECT_EQ(out.size(), 1 + points);
        EXPECT_EQ(out.first(), c);
        EXPECT_EQ(out.last(), last);
        if (last != shortest) continue;
        EXPECT_NEAR(out[1 + 6].x(), b.x() + 3.8e-6, 0.3e-6);  // overshoots as over 0.01
    }
}

constexpr int kSamples = 50;

Points akima(const Points& points)
{
    Points out;
    geometry.akimaCurve(points, out);
    return out;
}

/// The derivative of a segment's cubic where it leaves (step 1) or arrives (step -1) at a vertex.
Point2DF slopeAt(const Points& out, int vertex, int step)
{
    return endSlope(out.constData() + kSamples * vertex, step, 0.02);
}

TEST(Akima, MeetsItsPointsWithOneTangentAndTheSpeedOfTheChord)
{
    Points ring = wanderingLine(7);
    ring.append(ring[0] + Point2DF(0, 3e-4));  // closed: near enough, and left out
    for (const Points& given : {wanderingLine(9), ring}) {
        const bool closed = given == ring;
        const Points out = akima(given);
        const int segments = given.size() - 1;
        ASSERT_EQ(out.size(), kSamples * segments + 1);
        for (int i = 0; i < segments; ++i) {
            EXPECT_EQ(out[kSamples * i], given[i]);
            const Point2DF end = closed && i + 1 == segments ? given[0] : given[i + 1];
            const Point2DF arriving = slopeAt(out, i + 1, -1);
            EXPECT_NEAR(length(arriving), given[i].distanceTo(end), 1e-9);
            EXPECT_NEAR(length(slopeAt(out, i, 1)), given[i].distanceTo(end), 1e-9);
            if (!closed && i + 1 == segments) break;
            EXPECT_NEAR(turn(arriving, slopeAt(out, (i + 1) % segments, 1)), 0, 1e-9);
        }
        if (!closed) expectNear(akima(reversed(given)), reversed(out), 1e-9);
    }
}

// Directions that follow from symmetry or from a straight run, near and far out, where rounding
// would otherwise choose them, and where products of differences leave the range of doubles.
TEST(Akima, TangentsOfPlainFigures)
{
    const double s = std::sqrt(3);
    const std::tuple<Points, int, Point2DF> cases[] = {
        // a straight run goes on straight to its last point
        {{{0, 0}, {3, 1}, {6, 2}, {12, 4}, {6, 9}, {0, 6}, {0, 0}}, 3, {3, 1}},
        // a corner between two straight runs is cut evenly
        {{{0, 0}, {1.1, 3.3}, {2.2, 6.6}, {5.5, 5.5}, {8.8, 4.4}}, 2, {2, 1}},
        // (2, 1) before a turn of 3 and (1, 3) behind a turn of 1
        {{{0, 0}, {1, 0}, {3, 1}, {4, 4}, {3, 4}}, 2, {7, 6}},
        // a parabola in even steps runs on as one beyond its end
        {{{0, 0}, {1, 1}, {2, 4}, {3, 9}, {4, 16}}, 0, {1, 0}},
        // a regular hexagon: across the radius
        {{{2, 0}, {1, s}, {-1, s}, {-2, 0}, {-1, -s}, {1, -s}, {2, 0}}, 0, {0, 1}},
        // doubling back: the chord after
        {{{0, 0}, {1, 0}, {0, 0}, {1, 0}, {0, 0}, {1, 0}}, 2, {1, 0}},
    };
    for (const auto& [given, vertex, direction] : cases) {
        EXPECT_NEAR(turn(direction, slopeAt(akima(moved(given, kSurvey)), vertex, 1)), 0, 1e-6);
        for (const double scale : {1.0, 1e100, 1e-170}) {
            if (scale < 1 && given.first() != given.last()) continue;  // its ends would meet
            Points scaled;
            for (const Point2DF& p : given) scaled.append(scale * p);
            const Point2DF slope = (1 / scale) * slopeAt(akima(scaled), vertex, 1);
            EXPECT_NEAR(turn(direction, slope), 0, 1e-9) << scale;
        }
    }
}

TEST(Akima, ListRules)
{
    const Point2DF a(0, 0), b(2, 0), c(5, 4), apart(3.17e-4, 0), near(3.16e-4, 0);
    const std::tuple<Points, int, Point2DF> cases[] = {
        {{a, b}, 0, b},
        {{a, near}, 0, a},
        {{a, b, c}, 2, c},
        {{a, b, c, near}, 3, a},
        {{a, b, c, apart}, 3, apart},
        {{b, b, b, a}, 3, a},
    };
    for (const auto& [given, segments, last] : cases) {
        const Points out = akima(given);
        EXPECT_EQ(out.size(), 1 + kSamples * segments);
        EXPECT_EQ(out.last(), last);
        for (const Point2DF& p : out) EXPECT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y()));
    }
    for (const Points& none : {Points{}, Points{a, b, {0, kNan}}, Points{a, b, {1e200, 0}}})
        EXPECT_TRUE(akima(none).isEmpty());
}

constexpr std::string_view kKinds[] = {"spline",         "closed spline",  "tension",
                                       "closed tension", "valued tension", "span",
                                       "span in space",  "b-spline",       "b-spline in space"};

Points draw(std::string_view kind, const Points& p, double t)
{
    const int n = p.size();
    const Point2DF a = p[0], b = p[1], c = p[n - 2], d = p[n - 1];
    const Values heights{3, 1, 4, 1, 5, 1, 4, 1, 3};  // the same from both ends of a ring
    commonFunc f(0);
    Points out;
    Values z;
    if (kind == "spline") f.splineInterpolate(p, out, false, t);
    if (kind == "closed spline") f.splineInterpolate(p, out, true, t);
    if (kind == "tension") f.tensionCurve(p, out, false, 0, 0, t);
    if (kind == "closed tension") f.tensionCurve(p, out, true, 0, 0, t);
    if (kind == "valued tension") f.tensionCurveZ(p, heights, out, z, false, 0, 0, t);
    if (kind == "span") f.bezierSpanToPolyline(a, b, c, d, out, t);
    if (kind == "span in space") f.bezierSpanToPolyline3d(a, 1, b, 0, c, 0, d, 7, out, z, t);
    if (kind == "b-spline") f.bsplineToPolyline(p, out, 3, t);
    if (kind == "b-spline in space") f.bsplineToPolyline3d(p, heights, out, z, 3, t);
    return out;
}

TEST(Curves, StayWithinTheirToleranceAndTurnWithTheirPoints)
{
    const Points given = wanderingLine(8);
    // Bends one way: elsewhere a piece that bends both ways is judged by its middle all the same.
    const Points hill{{0, 0}, {1, 9}, {3, 13}, {9, 17}, {12, 16}, {20, 9}, {21, 6}, {22, -4}};
    Points ring = given, line;
    ring.append(ring[0]);
    for (const double s : {0.0, 1.0, 1.5, 4.0, 4.25, 9.0, 20.0, 21.0}) line.append({3 * s, 4 * s});
    for (const std::string_view kind : kKinds) {
        SCOPED_TRACE(kind);
        const Points fine = draw(kind, hill, 1e-4);
        int most = fine.size();
        for (const double tolerance : {0.01, 0.1, 1.0}) {
            const Points out = draw(kind, hill, tolerance);
            EXPECT_LE(out.size(), most);
            most = out.size();
            for (const Point2DF& p : fine) ASSERT_LT(distanceToLine(p, out), 1.02 * tolerance);
            expectNear(draw(kind, reversed(ring), tolerance), reversed(draw(kind, ring, tolerance)),
                       1e-9);
        }
        for (const Point2DF& p : draw(kind, line, 0.01)) EXPECT_NEAR(4 * p.x(), 3 * p.y(), 1e-12);
    }
}

TEST(Curves, AreBoundedWhateverTheyAreGiven)
{
    const Points given = wanderingLine(4);
    for (const std::string_view kind : kKinds) {
        SCOPED_TRACE(kind);
        const Points finest = draw(kind, given, 0);
        EXPECT_GT(finest.size(), 10'000);
        EXPECT_LT(finest.size(), 2'000'000);
        const double least = 1e-10 * given.last().x();  // the larger side
        for (const double tolerance : {-1e-300, 0.8 * least, kNan})
            EXPECT_EQ(draw(kind, given, tolerance), finest);
        EXPECT_LT(draw(kind, given, 1.2 * least).size(), finest.size());
        const bool squares = kind == "spline" || kind == "closed spline";
        EXPECT_EQ(draw(kind, given, -0.1), squares ? draw(kind, given, 0.1) : finest);
        EXPECT_LE(draw(kind, given, kInfinity).size(), 4 * 4 + 1);
        // Far out the finest tolerance is a rounding of the coordinates, here a thousandth.
        const int farOut = draw(kind, moved(given, {1e12, 0}), 0).size();
        EXPECT_LT(farOut, draw(kind, given, 0.5e-3).size());
        EXPECT_GT(farOut, draw(kind, given, 2e-3).size());
        for (const double bad : {kNan, kInfinity, -1.1e150}) {
            Points spoilt = given;
            spoilt[1].setY(bad);
            EXPECT_EQ(draw(kind, spoilt, 0.1).size(), kind.starts_with("span") ? 2 : 0);
        }
        for (const Point2DF& p :
             draw(kind, {{1e150, 0}, {-1e150, 1}, {1, 1e150}, {-1e150, -1e150}}, 0))
            ASSERT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y()));
    }
    Points zigzag;  // more than a call may make
    for (int i = 0; i < 400; ++i) zigzag.append({double(i % 2), double(i % 3)});
    EXPECT_NEAR(draw("b-spline", zigzag, 0).size(), 4'194'304 + 64 * 397, 100);
}

}  // namespace
