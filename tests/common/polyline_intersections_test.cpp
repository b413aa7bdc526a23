#include "tests/support/edges.h"

namespace {

using namespace test_support;

Found meet(IcommonFunc& object, const Figure& a, const Figure& b, bool isStraight = false)
{
    const auto room = 4 * static_cast<std::size_t>(a.points.size() * b.points.size());
    return collect(room, [&](Point2DF* points, double* params, int* count) {
        if (isStraight)
            object.intersectPolylines(a.points, b.points, points, params, count);
        else
            object.intersectBulgePolylines(a.points, a.bulges, b.points, b.bulges, points, params,
                                           count);
    });
}

TEST(Polylines, MeetAtTheStatedPlaces)
{
    const double h = std::sqrt(0.75);
    const std::tuple<const char*, Figure, Figure, std::vector<double>> cases[] = {
        {"a vertex of the first", {{{0, 0}, {2, 0}, {4, 1}}, {}}, {{{2, -1}, {2, 1}}, {}}, {1}},
        {"ends", {{{0, 0}, {4, 0}}, {}}, {{{4, 0}, {4, 4}, {0, 4}, {0, 0}}, {}}, {1, 0}},
        {"a ring's start", {{{0, 0}, {4, 0}, {4, 4}, {0, 0}}, {}}, {{{-1, 1}, {1, -1}}, {}}, {0}},
        {"before a vertex",
         {{{0, 0}, {10, 0}, {20, 0}}, {}},
         {{{9.9999985, -1}, {9.9999985, 1}}, {}},
         {}},
        {"a disc",
         {{{-3, 0.5}, {3, 0.5}}, {0}},
         {{{-1, 0}, {1, 0}, {-1, 0}}, {1, 1}},
         {(3 + h) / 6, (3 - h) / 6}},
        {"bulge not a number", {{{0, 0}, {2, 0}}, {kNan}}, {{{1, -5}, {1, 5}}, {}}, {}},
        {"reach", {{{0, 0}, {0.01, 0}, {5, 0}}, {0}}, {{{-9e-4, -9}, {-9e-4, 9}}, {}}, {-0.09}},
    };
    for (const auto& [what, a, b, params] : cases) {
        SCOPED_TRACE(what);
        const Found found = meet(geometry, a, b);
        ASSERT_EQ(found.params.size(), params.size());
        for (std::size_t i = 0; i < params.size(); ++i)
            EXPECT_NEAR(found.params[i], params[i], 1e-12);
        const bool isStraight = a.bulges.isEmpty() && b.bulges.isEmpty();
        EXPECT_TRUE(!isStraight || meet(geometry, a, b, true) == found);
    }
    // The walk of a single segment keeps repeats: a ring's start is met at its start and its end.
    const Points ring{{0, 0}, {4, 0}, {4, 4}, {0, 0}};
    const Found repeats = collect(6, [&](Point2DF* points, double* params, int* count) {
        geometry.intersectSegmentPolyline({-1, 1}, {1, -1}, ring, -1e-6, 9, points, params, count);
    });
    EXPECT_EQ(repeats.params, (std::vector{0.5, 0.5}));
    int count = 7;
    geometry.intersectPolylines(ring, ring, nullptr, nullptr, &count);
    EXPECT_EQ(count, 0);

    Points points{{9, 9}, {9, 9}, {2, 1e-7}};  // a repeat, and a point that a result repeats
    Values params{5, 6, 7};
    geometry.intersectPolylinesToLists({{0, 0}, {4, 0}}, {{1, -1}, {1, 1}, {2, 1}, {2, -1}}, points,
                                       params);
    EXPECT_TRUE(points == (Points{{9, 9}, {2, 1e-7}, {1, 0}}) && params == (Values{5, 7, 0.25}));
    points = ring;
    params = Values{0, 0, 0, 0};
    geometry.intersectPolylinesToLists(points, {{1, -1}, {1, 0.5}}, points, params);
    EXPECT_EQ(points, (Points{{0, 0}, {4, 0}, {4, 4}, {1, 0}}));
}

/// Long edges far from the origin, met at a vertex: exactly once, whichever figure has the vertex.
TEST(Polylines, MeetOnceAtAVertexInSurveyCoordinates)
{
    std::mt19937 random(7);
    for (int i = 0; i < 3000; ++i) {
        const Point2DF vertex = randomPoint(random, kSurvey, 1e4);
        const double angle = uniform(random, 0, 7), turn = uniform(random, 0.3, 2.8);
        const auto ray = [&](double ahead) {
            return vertex + std::pow(10, uniform(random, 0, 4)) * direction(angle + ahead);
        };
        const Figure bent{{ray(0), vertex, ray(kPi + uniform(random, -0.2, 0.2))}, {}};
        const Figure straight{{ray(turn), ray(turn + kPi)}, {}};
        for (const bool byStraight : {false, true}) {
            for (const Found& found : {meet(geometry, bent, straight, byStraight),
                                       meet(geometry, straight, bent, byStraight)}) {
                ASSERT_EQ(found.points.size(), 1u) << i;
                ASSERT_NEAR(dist(found.points[0], vertex), 0, 4e-8) << i;
            }
        }
    }
}

/// Every edge of the first figure is walked by an object that knows no boxes, the plain walk, or by
/// one that may; straight edges are prolonged and arcs let in more where that is asked for.
class OwnWalk : public commonFunc {
public:
    OwnWalk(bool isPlain, bool prolongs) : commonFunc(1), isPlain_(isPlain), prolongs_(prolongs) {}
    void intersectLineWithBulgePolyline(const Point2DF& s0, const Point2DF& s1, const Points& b,
                                        const Values& bulges, double lo, double hi,
                                        Point2DF* points, double* params, int* count) override
    {
        const Point2DF end = prolongs_ ? s1 + 9 * (s1 - s0) : s1;
        if (prolongs_) hi *= 100;
        walker().commonFunc::intersectLineWithBulgePolyline(s0, end, b, bulges, lo, hi, points,
                                                            params, count);
    }
    void intersectArcWithBulgePolyline(const Point2DF& a0, const Point2DF& a1, double bulge,
                                       const Points& b, const Values& bulges, double lo,
                                       double extra, Point2DF* points, double* params,
                                       int* count) override
    {
        if (prolongs_) (bulge > 0 ? lo : extra) += bulge > 0 ? -9 : 9;
        walker().commonFunc::intersectArcWithBulgePolyline(a0, a1, bulge, b, bulges, lo, extra,
                                                           points, params, count);
    }

private:
    commonFunc& walker() { return isPlain_ ? plain_ : *this; }

    bool isPlain_, prolongs_;
    commonFunc plain_{1};
};

/// A figure that tries what a box could lose: tiny and repeated edges, edges of `other` and others
/// on their lines, long ones a hair apart, flat, round and nearly full arcs, wild coordinates.
Figure randomFigure(std::mt19937& random, const Point2DF& origin, int size, double arcs,
                    bool isWild, const Points& other)
{
    Figure figure;
    const auto add = [&](const Point2DF& p, bool mayBend = true) {
        const double bulge = std::pow(10, uniform(random, -11, 2));
        const bool isArc = mayBend && uniform(random, 0, 1) < arcs;
        figure.points.append(p);
        figure.bulges.append(isArc ? (figure.points.size() % 2 ? -bulge : bulge) : 0.0);
    };
    const double wild[] = {kNan, kInfinity, 1e300, -1e200, 1e12};
    add(origin);
    while (figure.points.size() < size) {
        const int kind = static_cast<int>(uniform(random, 0, isWild ? 9.02 : 9));
        const int edge = static_cast<int>(uniform(random, 0, other.size() - 1.001));
        const auto along = [&](double t) {
            return other.at(edge) + t * (other.at(edge + 1) - other.at(edge));
        };
        const Point2DF last = figure.points.last();
        if (kind < 4) {
            add(randomPoint(random, origin, std::pow(10, uniform(random, 0, 2))));
        } else if (kind < 6 && std::isfinite(last.x()) && std::fabs(last.x()) < 1e9) {
            add(randomPoint(random, last, std::pow(10, uniform(random, -7, 0))));
        } else if (kind == 6) {
            add(origin + Point2DF(uniform(random, -1e4, 0), uniform(random, 0, 0.004)), false);
            add(origin + Point2DF(uniform(random, 0, 1e4), uniform(random, 0, 0.004)));
        } else if (kind == 7) {
            add(along(0), false);
            add(along(1));
        } else if (kind == 8) {
            add(along(uniform(random, -3, 3)), false);
            add(randomPoint(random, along(uniform(random, -3, 3)), 1e-6));
        } else if (kind == 9) {
            add({wild[edge % 5], 0});
        }
    }
    return figure;
}

TEST(Polylines, GiveWithBoxesWhatThePlainWalkGives)
{
    std::mt19937 random(12);
    std::size_t total = 0;
    commonFunc indexed(1);
    OwnWalk plain(true, false), prolonged(false, true), plainProlonged(true, true);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        const Point2DF origin = round % 2 ? kSurvey : Point2DF();
        const double arcs = (round % 3) * 0.3;
        const Figure b = randomFigure(random, origin, 40, arcs, round % 5 == 0, {origin, {0, 1}});
        const Figure a = randomFigure(random, origin, 25, arcs, round % 5 == 0, b.points);
        const Found found = meet(indexed, a, b);
        ASSERT_TRUE(found == meet(plain, a, b));
        ASSERT_TRUE(meet(prolonged, a, b) == meet(plainProlonged, a, b));
        total += found.points.size();
    }
    EXPECT_GT(total, 10000u);
}

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
    const std::tuple<const char*, Segment, Segment, std::vector<double>> cases[] = {
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
        for (const auto& [what, first, second, params] : cases) {
            SCOPED_TRACE(testing::Message() << what << " at " << origin.x());
            const auto placed = [&origin](const Segment& s) {
                return Segment{origin + s.start, origin + s.end, s.isInner};
            };
            const Segment a = placed(first);
            const Found found = meet(a, placed(second));
            ASSERT_EQ(found.params.size(), params.size());
            for (std::size_t i = 0; i < params.size(); ++i) {
                EXPECT_NEAR(found.params[i], params[i], 1e-8);
                EXPECT_NEAR(dist(found.points[i], a.start + params[i] * (a.end - a.start)), 0,
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
    const Point2DF kept(9, 9);
    const std::tuple<const char*, Point2DF, Point2DF, Point2DF, Point2DF, Points> cases[] = {
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
    for (const auto& [what, p0, d0, p1, d1, expected] : cases) {
        SCOPED_TRACE(what);
        Points out{kept};
        geometry.intersectSegmentsAll(p0, d0, p1, d1, out);
        ASSERT_EQ(out.size(), expected.size());
        for (int i = 0; i < out.size(); ++i) EXPECT_NEAR(dist(out.at(i), expected.at(i)), 0, 1e-15);
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
