#include <gtest/gtest.h>

#include "common/commonFunc.h"
#include "tests/support/edges.h"

namespace {

using namespace test_support;

commonFunc geometry(4);

struct Figure {
    std::vector<Point2DF> points;
    std::vector<double> bulges;
};

Found meet(IcommonFunc& object, const Figure& a, const Figure& b, bool isStraight = false)
{
    const Points aPoints(a.points.begin(), a.points.end()),
        bPoints(b.points.begin(), b.points.end());
    const Values aBulges(a.bulges.begin(), a.bulges.end()),
        bBulges(b.bulges.begin(), b.bulges.end());
    return collect(4 * a.points.size() * b.points.size(),
                   [&](Point2DF* points, double* params, int* count) {
                       if (isStraight)
                           object.intersectPolylines(aPoints, bPoints, points, params, count);
                       else
                           object.intersectBulgePolylines(aPoints, aBulges, bPoints, bBulges,
                                                          points, params, count);
                   });
}

TEST(Polylines, MeetAtTheStatedPlaces)
{
    struct Case {
        const char* what;
        Figure a, b;
        std::vector<double> params;
    };
    const double h = std::sqrt(0.75);
    const Case cases[] = {
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
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const Found found = meet(geometry, c.a, c.b);
        ASSERT_EQ(found.params.size(), c.params.size());
        for (std::size_t i = 0; i < c.params.size(); ++i)
            EXPECT_NEAR(found.params[i], c.params[i], 1e-12);
        const bool isStraight = c.a.bulges.empty() && c.b.bulges.empty();
        EXPECT_TRUE(!isStraight || meet(geometry, c.a, c.b, true) == found);
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

/// The plain walk: every edge of the first figure is walked by an object that knows no boxes.
class PlainWalk : public commonFunc {
public:
    PlainWalk() : commonFunc(1), edge_(1) {}
    void intersectLineWithBulgePolyline(const Point2DF& s0, const Point2DF& s1, const Points& b,
                                        const Values& bulges, double lo, double hi,
                                        Point2DF* points, double* params, int* count) override
    {
        edge_.intersectLineWithBulgePolyline(s0, s1, b, bulges, lo, hi, points, params, count);
    }
    void intersectArcWithBulgePolyline(const Point2DF& a0, const Point2DF& a1, double bulge,
                                       const Points& b, const Values& bulges, double lo,
                                       double extra, Point2DF* points, double* params,
                                       int* count) override
    {
        edge_.intersectArcWithBulgePolyline(a0, a1, bulge, b, bulges, lo, extra, points, params,
                                            count);
    }

private:
    commonFunc edge_;
};

/// A figure that tries what a box could lose: tiny and repeated edges, edges of `other` and others
/// on their lines, long ones a hair apart, flat, round and nearly full arcs, wild coordinates.
Figure randomFigure(std::mt19937& random, const Point2DF& origin, std::size_t size, double arcs,
                    bool isWild, const std::vector<Point2DF>& other)
{
    Figure figure;
    const auto add = [&](const Point2DF& p, bool mayBend = true) {
        const double bulge = std::pow(10, uniform(random, -11, 2));
        const bool isArc = mayBend && uniform(random, 0, 1) < arcs;
        figure.points.push_back(p);
        figure.bulges.push_back(isArc ? (figure.points.size() % 2 ? -bulge : bulge) : 0.0);
    };
    const double wild[] = {kNan, kInfinity, 1e300, -1e200, 1e12};
    add(origin);
    while (figure.points.size() < size) {
        const int kind = static_cast<int>(uniform(random, 0, isWild ? 9.02 : 9));
        const auto edge =
            static_cast<std::size_t>(uniform(random, 0, double(other.size()) - 1.001));
        const auto along = [&](double t) {
            return other.at(edge) + t * (other.at(edge + 1) - other.at(edge));
        };
        const Point2DF last = figure.points.back();
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
    PlainWalk plain;
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        const Point2DF origin = round % 2 ? kSurvey : Point2DF();
        const double arcs = (round % 3) * 0.3;
        const Figure b = randomFigure(random, origin, 40, arcs, round % 5 == 0, {origin, {0, 1}});
        const Figure a = randomFigure(random, origin, 25, arcs, round % 5 == 0, b.points);
        const Found found = meet(indexed, a, b);
        ASSERT_TRUE(found == meet(plain, a, b));
        total += found.points.size();
    }
    EXPECT_GT(total, 10000u);
}

}  // namespace
