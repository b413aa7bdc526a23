#include <gtest/gtest.h>

#include "common/commonFunc.h"
#include "tests/support/edges.h"

namespace {

using namespace test_support;

commonFunc geometry(4);

/// Two whole edges, their ends included; repeats are removed.
Found meet(const Edge& a, const Edge& b)
{
    return collect(4, [&](Point2DF* points, double* params, int* count) {
        geometry.intersectBulgePolylines({a.start, a.end}, {a.bulge}, {b.start, b.end}, {b.bulge},
                                         points, params, count);
    });
}

/// Edges of all kinds laid through one point: straight, flat, round, nearly full. The point is found
/// from either side; whatever is found lies on both, where its parameter says.
TEST(Arcs, MeetWhereTheyAreLaidThroughAPoint)
{
    std::mt19937 random(21);
    int seconds = 0;
    for (int i = 0; i < 20000; ++i) {
        const Point2DF place = randomPoint(random, i % 2 ? kSurvey : Point2DF(), 100);
        const double fraction = uniform(random, 0.05, 0.95);
        const auto through = [&](double exponent, double heading) {
            const double bulge = std::pow(10, exponent) * (uniform(random, 0, 1) < 0.5 ? -1 : 1);
            const double turn = (0.5 - fraction) * 4 * std::atan(bulge);  // of the chord
            Edge edge{{0, 0}, uniform(random, 3, 60) * direction(heading + turn), bulge};
            return edge.movedBy(place - edge.at(fraction));
        };
        const auto flat = [&] { return uniform(random, -9.9, -6); };
        const auto round = [&] { return uniform(random, -5, 0.7); };
        const double heading = uniform(random, 0, 7);
        const Edge a = through(i % 3 == 0 ? flat() : round(), heading);
        const double kind = i % 7 < 3 ? -400 : i % 7 == 3 ? flat() : round();
        const Edge b = through(kind, heading + uniform(random, 0.1, 3));
        SCOPED_TRACE(testing::Message() << i << " bulges " << a.bulge << ' ' << b.bulge);
        const Found found[] = {meet(a, b), meet(b, a)};
        ASSERT_EQ(found[0].points.size(), found[1].points.size());
        for (const int side : {0, 1}) {
            double nearest = kInfinity;
            for (std::size_t k = 0; k < found[side].points.size(); ++k) {
                const Point2DF& p = found[side].points[k];
                double twin = kInfinity;
                for (const Point2DF& q : found[1 - side].points) twin = std::min(twin, dist(p, q));
                // A second crossing under a small angle magnifies what rounding leaves.
                const Point2DF named = (side == 0 ? a : b).at(found[side].params[k]);
                ASSERT_LT(twin + dist(p, named), i % 2 ? 4e-6 : 2e-8);
                nearest = std::min(nearest, dist(p, place));
            }
            ASSERT_LT(nearest, i % 2 ? 2e-7 : 1e-8);
        }
        seconds += found[0].points.size() > 1;
    }
    EXPECT_GT(seconds, 500);
}

/// Rounded corners, S-bends, changes of radius: the joint of two edges that touch is met exactly
/// once, bit for bit, and nothing beside it.
TEST(Arcs, MeetTangentialNeighboursInTheirJoint)
{
    std::mt19937 random(22);
    for (int i = 0; i < 20000; ++i) {
        const Point2DF joint = randomPoint(random, i % 2 ? kSurvey : Point2DF(), 100);
        const double heading = i % 7 ? uniform(random, 0, 2 * kPi) : (i % 4) * kPi / 2;
        const auto leave = [&](double ahead) {  // an arc from the joint
            const double bulge =
                uniform(random, 0.05, 1.5) * (uniform(random, 0, 1) < 0.5 ? -1 : 1);
            const double chord = std::pow(10, uniform(random, -0.3, 3.3));
            return Edge{joint, joint + chord * direction(ahead + 2 * std::atan(bulge)), bulge};
        };
        const Edge line{joint - uniform(random, 0.5, 200) * direction(heading), joint};
        const Edge flat{joint, joint + 50 * direction(heading),
                        std::pow(10, uniform(random, -9.9, -6.1))};
        const Edge leaving = leave(heading);
        const Edge arriving = leave(heading + kPi).reversed();
        SCOPED_TRACE(testing::Message() << i << " heading " << heading);
        const std::pair<Edge, Edge> pairs[] = {
            {line, leaving}, {leaving, line}, {arriving, flat}, {flat, arriving}, {line, flat}};
        for (const auto& [first, second] : pairs)
            ASSERT_EQ(meet(first, second).points, std::vector{joint});
        const Found found = meet(arriving, leaving);
        ASSERT_EQ(std::count(found.points.begin(), found.points.end(), joint), 1);
        for (const Point2DF& p : found.points)  // a true second crossing lies well apart
            ASSERT_TRUE(p == joint || dist(p, joint) > 1e-3);
    }
}

TEST(Arcs, MeetAtTheStatedPlaces)
{
    const auto on = [](double from, double sweep, double x = 0) {
        const Arc arc{{x, 0}, 1, from, sweep};
        return Edge{arc.start(), arc.end(), arc.bulge()};
    };
    const Edge upper = on(0, kPi);
    const Edge flat{{0, 0}, {100, 0}, 4e-7};
    const double halfOfFlat = std::tan(std::atan(flat.bulge) / 2);
    const Edge flatHead{flat.start, flat.at(0.5), halfOfFlat};
    const Edge flatTail{flat.at(0.5), flat.end, halfOfFlat};
    const Edge lens{{0, 0}, {3.3, 1.7}, 0.4};
    struct Case {
        const char* what;
        Edge a, b;
        std::vector<double> params;
    };
    const Case cases[] = {
        {"overlap", upper, on(kPi / 2, kPi), {0.5, 1}},
        {"overlap backwards", upper, on(3 * kPi / 2, -kPi), {0.5, 1}},
        {"the same", upper, upper, {0, 1}},
        {"end to start", upper, on(kPi, 1), {1}},
        {"within a thousandth", upper, on(1, 1, 5e-4), {1 / kPi, 2 / kPi}},
        {"flat, a piece", flat, flatTail, {0.5, 1}},
        {"flat pieces, end to start", flatHead, flatTail, {1}},
        {"two circles, both ends", lens, {lens.start, lens.end, -0.3}, {1, 0}},
        {"arc and flat arc, both ends", lens, {lens.end, lens.start, 3e-7}, {1, 0}},
    };
    for (const Point2DF& origin : {Point2DF(), kSurvey}) {
        for (const Case& c : cases) {
            SCOPED_TRACE(testing::Message() << c.what << " at " << origin.x());
            const Found found = meet(c.a.movedBy(origin), c.b.movedBy(origin));
            ASSERT_EQ(found.params.size(), c.params.size());
            for (std::size_t i = 0; i < c.params.size(); ++i)
                EXPECT_NEAR(found.params[i], c.params[i], 1e-3);
        }
    }
}

/// Any values at all: results stay within their bounds, finite, and behind the count nothing moves.
TEST(Arcs, SurviveAnyValues)
{
    std::mt19937 random(24);
    const double odd[] = {0,    1,     -1,   1e-300, 1e300, -1e155, kNan, kInfinity, -kInfinity,
                          1e-7, 5e-11, 5e-7, 2,      4e6,   1e-162, 3,    0.5,       1e17};
    const auto any = [&] { return odd[static_cast<std::size_t>(uniform(random, 0, 17.99))]; };
    for (int i = 0; i < 100000 && !HasFailure(); ++i) {
        const Edge a{{any(), any()}, {any(), any()}, any()};
        const Edge b{i % 3 ? Point2DF(any(), any()) : a.end, {any(), any()}, any()};
        meet(a, b);
    }
}

}  // namespace
