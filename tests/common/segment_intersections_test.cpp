#include <gtest/gtest.h>

#include "common/commonFunc.h"
#include "tests/support/edges.h"

namespace {

using namespace test_support;

commonFunc geometry(4);

/// A straight edge of a walk: inner ones exclude their end.
struct Segment {
    Point2DF start, end;
    bool isInner = false;
    double hi() const
    {
        const double length = dist(start, end);
        return length * length + 1e-12 + (isInner ? -2e-6 : 2e-6) * length;
    }
};

Found meet(const Segment& a, const Segment& b)
{
    return collect(2, [&](Point2DF* points, double* params, int* count) {
        geometry.intersectSegments(a.start, a.end - a.start, b.start, b.end - b.start, -1e-6,
                                   a.hi(), -1e-6, b.hi(), points, params, count);
    });
}

TEST(Segments, CrossTouchAndOverlap)
{
    constexpr bool kInner = true;
    struct Case {
        const char* what;
        Segment a, b;
        std::vector<double> params;
    };
    const Case cases[] = {
        {"cross", {{0, 0}, {2, 0}}, {{1, -1}, {1, 1}}, {0.5}},
        {"the other's end excluded", {{0, 0}, {2, 0}}, {{1, -1}, {1, 0}, kInner}, {}},
        {"overlap, end excluded", {{0, 0}, {2, 0}, kInner}, {{1, 0}, {3, 0}}, {0.5}},
        {"overlap backwards", {{0, 0}, {4, 2}}, {{6, 3}, {2, 1}}, {0.5, 1}},
        {"head on", {{7, 1}, {11, 1}}, {{14, 1}, {11, 1}}, {1}},
        {"the same", {{0, 0}, {3, 1}, kInner}, {{0, 0}, {3, 1}, kInner}, {0, 1}},
        {"one point twice", {{2, 2}, {2, 2}}, {{2, 2}, {2, 2}}, {0, 1}},
        {"1e-3 apart", {{0, 0}, {9, 0}}, {{0, 1e-3}, {9, 1e-3}}, {}},
        {"from afar", {{0, 0}, {1e5, 0}}, {{5e4, 1e-3}, {9e4, 1e-3}}, {0.5, 0.9}},
        {"too short", {{0, 0}, {0.03, 0}}, {{0.015, -0.015}, {0.015, 0.015}}, {}},
        {"short second reaches back", {{0, 0}, {128, 0}}, {{64, 0.005}, {64, 0.0051}}, {0.5}},
        {"short first does not", {{64, 0.005}, {64, 0.0051}}, {{0, 0}, {128, 0}}, {}},
        {"not a number", {{kNan, 0}, {2, 0}}, {{1, -1}, {1, 1}}, {}},
        {"huge", {{-1e300, 0}, {1e300, 0}}, {{0, -1e300}, {0, 1e300}}, {}},
    };
    for (const Point2DF& origin : {Point2DF(), Point2DF(524288, 4194304)}) {
        for (const Case& c : cases) {
            SCOPED_TRACE(testing::Message() << c.what << " at " << origin.x());
            const Segment a{origin + c.a.start, origin + c.a.end, c.a.isInner};
            const Found found = meet(a, {origin + c.b.start, origin + c.b.end, c.b.isInner});
            ASSERT_EQ(found.params.size(), c.params.size());
            for (std::size_t i = 0; i < c.params.size(); ++i) {
                EXPECT_NEAR(found.params[i], c.params[i], 1e-8);
                EXPECT_NEAR(dist(found.points[i], a.start + c.params[i] * (a.end - a.start)), 0,
                            2e-9);
            }
        }
    }
    double ends[3] = {0, 0, 77};
    EXPECT_EQ(geometry.overlapIntervals(0, 1, 0.5, 3, ends), 2);
    EXPECT_TRUE(ends[0] == 0.5 && ends[1] == 1 && ends[2] == 77);
    EXPECT_EQ(geometry.overlapIntervals(0, 1, kNan, 3, ends), 0);
}

/// What rounding of survey coordinates must not undo: crossings, touches, lines drawn twice.
TEST(Segments, MeetInSurveyCoordinates)
{
    std::mt19937 random(6);
    for (int i = 0; i < 5000; ++i) {
        SCOPED_TRACE(i);
        const Point2DF place = randomPoint(random, kSurvey, 1e4);
        const Point2DF u = direction(uniform(random, 0, 7));
        const Point2DF v = turned(u, uniform(random, 0.05, kPi - 0.05));
        const auto length = [&] { return uniform(random, 0.2, 2000); };

        const Found crossing = meet({place - length() * u, place + length() * u},
                                    {place - length() * v, place + length() * v});
        ASSERT_EQ(crossing.points.size(), 1u);
        ASSERT_NEAR(dist(crossing.points[0], place), 0, 4e-8);

        const Found touch = meet({place - length() * u, place}, {place + length() * u, place});
        ASSERT_EQ(touch.points.size(), 1u);
        ASSERT_NEAR(dist(touch.points[0], place), 0, 2e-9);

        const Point2DF in = place + 60 * u, end = place + 200 * u, out = place + 300 * u;
        const Found overlap = meet({place, end}, {i % 2 ? out : in, i % 2 ? in : out});
        ASSERT_EQ(overlap.points.size(), 2u);
        ASSERT_NEAR(dist(overlap.points[0], in) + dist(overlap.points[1], end), 0, 5e-9);
    }
}

TEST(LinesOfSegments, MeetOrShareAPart)
{
    struct Case {
        const char* what;
        Point2DF p0, d0, p1, d1;
        Points expected;  ///< of a list that held (9, 9)
    };
    const Point2DF kept(9, 9);
    const Case cases[] = {
        {"lines cross off the segments", {0, 0}, {1, 0}, {5, 5}, {0, 1}, {{5, 0}}},
        {"overlap", {0, 0}, {4, 0}, {6, 0}, {-4, 0}, {kept, {2, 0}, {4, 0}}},
        {"first inside second", {2, 0}, {-1, 0}, {0, 0}, {9, 0}, {kept, {2, 0}, {1, 0}}},
        {"near ends merge", {0, 0}, {4, 0}, {5e-5, 0}, {2, 0}, {kept, {2.5e-5, 0}, {2.00005, 0}}},
        {"small gap", {0, 0}, {4, 0}, {-5e-5, 0}, {-2, 0}, {kept, {-2.5e-5, 0}}},
        {"1e-6 beside", {0, 0}, {4, 0}, {1, 9e-7}, {1, 0}, {kept, {1, 9e-7}, {2, 9e-7}}},
        {"2e-6 beside", {0, 0}, {4, 0}, {1, 2e-6}, {1, 0}, {kept}},
        {"short and square", {0, 0}, {5e-4, 0}, {0, 0}, {0, 5e-4}, {kept}},
        {"huge", {0, 0}, {1e300, 0}, {0, 0}, {0, 1e300}, {kept}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Points out{kept};
        geometry.intersectSegmentsAll(c.p0, c.d0, c.p1, c.d1, out);
        ASSERT_EQ(out.size(), c.expected.size());
        for (int i = 0; i < out.size(); ++i)
            EXPECT_NEAR(dist(out.at(i), c.expected.at(i)), 0, 1e-15);
    }
    Points own{{0, 0}, {1, 0}, {5, 5}, {0, 1}};  // the list holds the arguments
    geometry.intersectSegmentsAll(own[0], own[1], own[2], own[3], own);
    EXPECT_EQ(own, (Points{{5, 0}}));
}

TEST(LinesByAngle, MeetAtEveryDirection)
{
    std::mt19937 random(8);
    for (int i = 0; i < 2000; ++i) {
        const double angle1 = i % 3 ? uniform(random, -7, 7) : (i % 4) * kPi / 2;
        const double angle2 = i % 5 ? uniform(random, -7, 7) : angle1 + kPi / 2;
        const double sine = std::fabs(std::sin(angle1 - angle2));
        Point2DF out;
        geometry.intersectAngleLines(kSurvey - 9 * direction(angle1), angle1,
                                     kSurvey + 50 * direction(angle2), angle2, out);
        ASSERT_TRUE(sine < 0.01 || dist(out, kSurvey) < 2e-9 / sine) << i;
    }
    Point2DF out = kUntouched;
    for (const double angle : {3 * kPi, 0.0, kNan})
        geometry.intersectAngleLines({1, 2}, angle, {3, 4}, 0, out);
    EXPECT_EQ(out, kUntouched);
    geometry.intersectAngleLines({1, 2}, kPi - 5e-7, {3, 4}, 0, out);
    EXPECT_EQ(out, Point2DF(2, 3));
}

}  // namespace
