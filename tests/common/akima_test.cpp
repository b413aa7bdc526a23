#include "tests/support/curves.h"

namespace {

using namespace curves;

constexpr int kSamples = 50;

Points akima(const Points& points)
{
    Points out;
    commonFunc(0).akimaCurve(points, out);
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
        expectNear(akima(moved(given, 5e5, 4e6)), moved(out, 5e5, 4e6), 1e-8);
        if (!closed) expectNear(akima(reversed(given)), reversed(out), 1e-9);
    }
}

// Directions that follow from symmetry or from a straight run, near and far out, where rounding
// would otherwise choose them, and where products of differences leave the range of doubles.
TEST(Akima, TangentsOfPlainFigures)
{
    const double s = std::sqrt(3);
    const struct {
        Points given;
        int vertex;
        Point2DF direction;
    } cases[] = {
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
    for (const auto& k : cases) {
        EXPECT_NEAR(turn(k.direction, slopeAt(akima(moved(k.given, 5e5, 4e6)), k.vertex, 1)), 0,
                    1e-6);
        for (const double scale : {1.0, 1e100, 1e-170}) {
            if (scale < 1 && k.given.first() != k.given.last()) continue;  // its ends would meet
            Points given;
            for (const Point2DF& p : k.given) given.append(scale * p);
            const Point2DF slope = (1 / scale) * slopeAt(akima(given), k.vertex, 1);
            EXPECT_NEAR(turn(k.direction, slope), 0, 1e-9) << scale;
        }
    }
}

TEST(Akima, ListRules)
{
    const Point2DF a(0, 0), b(2, 0), c(5, 4), apart(3.17e-4, 0), near(3.16e-4, 0);
    const struct {
        Points given;
        int segments;
        Point2DF last;
    } cases[] = {
        {{a, b}, 0, b},
        {{a, near}, 0, a},
        {{a, b, c}, 2, c},
        {{a, b, c, near}, 3, a},
        {{a, b, c, apart}, 3, apart},
        {{b, b, b, a}, 3, a},
    };
    for (const auto& k : cases) {
        const Points out = akima(k.given);
        EXPECT_EQ(out.size(), 1 + kSamples * k.segments);
        EXPECT_EQ(out.last(), k.last);
        for (const Point2DF& p : out) EXPECT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y()));
    }
    for (const Points& none : {Points{}, Points{a, b, {0, kNan}}, Points{a, b, {1e200, 0}}})
        EXPECT_TRUE(akima(none).isEmpty());
}

}  // namespace
