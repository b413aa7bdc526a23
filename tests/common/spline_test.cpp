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
        {{a, b}, false, 2, b},
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
    }
}

}  // namespace
