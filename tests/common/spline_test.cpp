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
            commonFunc(0).splineInterpolate(vertices, out, closed, kInfinity);
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
    const struct {
        std::vector<double> answers;
        int points;
    } cases[] = {{{-1e-9}, 9}, {{below}, 9}, {{kNan}, 9}, {{0.25, below}, 11}};
    const Points even{{0, 0}, {4, 0}, {8, 0}};
    for (const auto& k : cases) {
        Points out;
        Measuring(k.answers).splineInterpolate(even, out, false, 0.5);
        ASSERT_EQ(out.size(), k.points);
        for (int i = 2; i < 9; ++i) EXPECT_EQ(out[i + k.points - 9], Point2DF(i, 0)) << i;
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
        const Points given = moved(wanderingLine(30), away, -away);
        Points asked, known;
        Measuring({}).splineInterpolate(given, asked, true, tolerance);
        commonFunc(0).splineInterpolate(given, known, true, tolerance);
        ASSERT_EQ(asked, known) << away;
    }
}

TEST(Spline, ListRules)
{
    const Point2DF a(0, 0), b(5, 0), c(5, 3), tooShort(5.000002, 0), shortest(5.0000005, 0);
    const struct {
        Points given;
        bool closed;
        int points;
        Point2DF last;
    } cases[] = {
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
    for (const auto& k : cases) {
        Points out{c};
        commonFunc(0).splineInterpolate(k.given, out, k.closed, kInfinity);
        EXPECT_EQ(out.size(), 1 + k.points);
        EXPECT_EQ(out.first(), c);
        EXPECT_EQ(out.last(), k.last);
        if (k.last != shortest) continue;
        EXPECT_NEAR(out[1 + 6].x(), b.x() + 3.8e-6, 0.3e-6);  // overshoots as over 0.01
    }
}

}  // namespace
