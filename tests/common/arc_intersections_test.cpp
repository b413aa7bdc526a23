#include "tests/support/edges.h"

namespace {

using namespace test_support;

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
    const std::tuple<const char*, Edge, Edge, std::vector<double>> cases[] = {
        {"overlap", upper, on(kPi / 2, kPi), {0.5, 1}},
        {"overlap backwards", upper, on(3 * kPi / 2, -kPi), {0.5, 1}},
        {"the same", upper, upper, {0, 1}},
        {"end to start", upper, on(kPi, 1), {1}},
        {"within a thousandth", upper, on(1, 1, 5e-4), {1 / kPi, 2 / kPi}},
        {"flat, a piece", flat, flatTail, {0.5, 1}},
        {"flat pieces, end to start", flatHead, flatTail, {1}},
        {"two circles, both ends", lens, {lens.start, lens.end, -0.3}, {1, 0}},
        {"arc and flat arc, both ends", lens, {lens.end, lens.start, 3e-7}, {1, 0}},
        {"tangent to a flat arc", {{1, -0x1p-21}, {5, -0x1p-21}}, {{0, 0}, {2, 0}, 0x1p-21}, {0}},
        {"one infinite end", {{0, 0}, {kInfinity, 0}}, {{3, 1}, {kInfinity, 0}, 0.5}, {}},
    };
    for (const Point2DF& origin : {Point2DF(), kSurvey}) {
        for (const auto& [what, a, b, params] : cases) {
            SCOPED_TRACE(testing::Message() << what << " at " << origin.x());
            const Found found = meet(a.movedBy(origin), b.movedBy(origin));
            ASSERT_EQ(found.params.size(), params.size());
            for (std::size_t i = 0; i < params.size(); ++i)
                EXPECT_NEAR(found.params[i], params[i], 1e-3);
        }
    }
}

TEST(LineThroughTwoPoints, MeetsTheCircle)
{
    const auto meet = [&](double radius, double y) {
        Point2DF p[2] = {kUntouched, kUntouched};
        geometry.intersectLineCircle(kSurvey, radius, kSurvey + Point2DF(-2, y),
                                     kSurvey + Point2DF(2, y), p[0], p[1]);
        const int count = (p[0] != kUntouched) + (p[1] != kUntouched);
        for (int k = 0; k < count; ++k) EXPECT_NEAR(dist(p[k], kSurvey), radius, 2e-9) << y;
        EXPECT_TRUE(count < 2 || p[0].x() < p[1].x());
        return count;
    };
    EXPECT_EQ(meet(1, 0.5), 2);
    EXPECT_TRUE(meet(1, -1.0009) == 1 && meet(1, 1.0011) == 0);
    EXPECT_TRUE(meet(-1, 0) == 0 && meet(1, kNan) == 0 && meet(kInfinity, 0) == 0);
}

/// Every slope and scale of coefficients: as many points as the distance says, on both figures.
TEST(LineByEquation, MeetsTheCircle)
{
    std::mt19937 random(2);
    for (int i = 0; i < 20000; ++i) {
        double coefficients[] = {uniform(random, 0.2, 1), uniform(random, -1, -0.2)};
        const double scale = std::pow(10, uniform(random, -4, 4));
        coefficients[i % 2] *= std::pow(10, uniform(random, -9, 0));
        const double a = scale * coefficients[0], b = scale * coefficients[1];
        if (std::fabs(a) < 2e-10 || std::fabs(b) < 2e-10) continue;
        const double norm = std::sqrt(a * a + b * b);
        const double radius = std::pow(10, uniform(random, -2, 4));
        const double distance = radius * uniform(random, 0, 1.5);
        const Point2DF centre = randomPoint(random, {}, 9);
        const double c = distance * norm - a * centre.x() - b * centre.y();
        Point2DF points[2] = {kUntouched, kUntouched};
        const int count =
            geometry.intersectLineCircleEq(centre, radius, a, b, c, points[0], points[1]);
        SCOPED_TRACE(testing::Message() << i << " a " << a << " b " << b << " r " << radius);
        ASSERT_EQ(count, distance < radius ? 2 : 0);
        for (const Point2DF& p : points) {
            ASSERT_EQ(p == kUntouched, count == 0);
            if (count == 0) continue;
            ASSERT_NEAR((a * p.x() + b * p.y() + c) / norm, 0, 1e-14 * (radius + 20));
            ASSERT_NEAR(dist(p, centre), radius, 1e-13 * (radius + 20));
        }
        ASSERT_GE(points[0].y(), points[1].y());
    }
    const std::tuple<double, double, double, int> cases[] = {
        {0, 1, -1, 2},       {0, 1, -2, 1},    {-2, 0, 2, 2},         {1, 0, 0, 1},
        {0.6, 0.8, -2.4, 1}, {1e-6, 1, -3, 0}, {1e-11, -1e-11, 0, 0}, {1, kInfinity, 0, 0}};
    for (const auto& [a, b, c, count] : cases) {
        Point2DF p[2] = {kUntouched, kUntouched};
        ASSERT_EQ(geometry.intersectLineCircleEq({1, 1}, 1, a, b, c, p[0], p[1]), count);
        EXPECT_EQ((p[0] != kUntouched) + (p[1] != kUntouched), count);
        for (int k = 0; k < count; ++k)
            EXPECT_NEAR(std::fabs(a * p[k].x() + b * p[k].y() + c) + dist(p[k], {1, 1}), 1, 1e-9);
    }
}

/// Circles of any two sizes through one point, also an enormous and a small one.
TEST(TwoCircles, MeetOnBoth)
{
    std::mt19937 random(4);
    for (int i = 0; i < 5000; ++i) {
        const Point2DF c1 = i % 2 ? kSurvey : Point2DF();
        const double r1 = std::pow(10, uniform(random, -1, 3));
        const double angle = i % 5 ? uniform(random, 0, 7) : (i % 4) * kPi / 2;
        const double turn = uniform(random, 0.1, 3);
        const Point2DF place = c1 + r1 * direction(angle + turn);  // to the left of c1 -> c2
        const double d = i % 3 ? r1 * uniform(random, 0.1, 3) : std::pow(10, uniform(random, 3, 9));
        const Point2DF c2 = c1 + d * direction(angle);
        const double r2 = dist(place, c2);
        const double slack = (i % 2 ? 1e-8 : 1e-13) * (1 + r1) + 1e-14 * d;
        SCOPED_TRACE(testing::Message() << i << " r " << r1 << ' ' << r2 << " d " << d);
        Point2DF p[6];
        ASSERT_EQ(geometry.circleCircleIntersection(c1, r1, c2, r2, p[0], p[1]), 2);
        ASSERT_EQ(geometry.circleCircleIntersection(c2, r2, c1, r1, p[2], p[3]), 2);
        ASSERT_EQ(geometry.intersectCircles(c2, r2, c1, r1, p[4], p[5]), 2);
        ASSERT_NEAR(dist(p[0], place), 0, 200 * slack);
        ASSERT_NEAR(dist(p[3], place), 0, 200 * slack);
        for (const Point2DF& q : p) {
            ASSERT_NEAR(dist(q, c1), r1, i % 2 ? 3e-9 : 1e-13 * (1 + r1));
            ASSERT_NEAR(dist(q, c2), r2, slack);
        }
        const bool isVertical = std::fabs(c2.x() - c1.x()) < 1e-10;
        ASSERT_TRUE(isVertical ? p[4].x() >= p[5].x() : p[4].y() >= p[5].y());
    }
}

TEST(TwoCircles, TouchOrCoincide)
{
    const std::tuple<const char*, double, Point2DF, double, int, int, Point2DF> cases[] = {
        {"outside", 1, {0, -2}, 1, 1, 1, {0, -1}},
        {"outside, a little into", 1, {1.9999995, 0}, 1, 2, 1, {1, 0}},
        {"inside", 5, {1.8, 2.4}, 2, 2, 2, {3, 4}},
        {"same", 1, {0, 0}, 1, -1, -1, kUntouched},
        {"nearly the same", 1, {9e-4, 0}, 1 + 9e-7, 2, -1, kUntouched},
        {"touching from inside, nearly the same", 1, {5e-11, 0}, 1 + 1.4e-10, 2, -1, kUntouched},
        {"a point on the circle", 5, {3, 4}, 0, 1, 1, {3, 4}},
        {"infinite", 1, {1, 0}, kInfinity, 0, 0, kUntouched},
        {"negative", -1, {1, 0}, 1, 0, 0, kUntouched},
        {"not a number", 1, {kNan, 0}, 1, 0, 0, kUntouched},
    };
    for (const auto& [what, r1, c2, r2, chord, meeting, first] : cases) {
        SCOPED_TRACE(what);
        Point2DF p[4] = {kUntouched, kUntouched, kUntouched, kUntouched};
        EXPECT_EQ(geometry.intersectCircles({0, 0}, r1, c2, r2, p[0], p[1]), chord);
        EXPECT_EQ(geometry.circleCircleIntersection({0, 0}, r1, c2, r2, p[2], p[3]), meeting);
        EXPECT_TRUE((p[1] == kUntouched) == (chord < 1) && (p[3] == kUntouched) == (meeting < 2));
        EXPECT_NEAR(dist(p[2], first), 0, 1e-6);
        EXPECT_TRUE(p[0] == p[1] || chord == 2);
    }
    std::mt19937 random(9);
    for (int i = 0; i < 500; ++i) {  // not lost to the rounding of survey coordinates
        const double r1 = uniform(random, 1, 500), r2 = uniform(random, 1, 500);
        const Point2DF u = direction(uniform(random, 0, 7));
        Point2DF touch, other;
        ASSERT_EQ(geometry.circleCircleIntersection(kSurvey, r1, kSurvey + (r1 + r2) * u, r2, touch,
                                                    other),
                  1);
        ASSERT_NEAR(dist(touch, kSurvey + r1 * u), 0, 2e-9);
    }
}

}  // namespace
