// Division of segments at their crossings, and the merging of equal segments.
#include "datageo/CAutoDiv.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "datageo/autob/FuzzyPointSet.h"

namespace {

using calcora::CAutoDiv;
using calcora::SegmentKey;
using tav::Point2DF;

std::vector<SegmentKey> divided(const std::vector<SegmentKey>& segments, bool directed = false)
{
    CAutoDiv divider;
    for (const SegmentKey& segment : segments) divider.addSegment(segment, 1, 0);
    divider.divide(directed);
    return divider.takePieces().segments;
}

TEST(Divider, CutsCrossingsTouchesAndOverlaps)
{
    struct Case {
        const char* what;
        std::vector<SegmentKey> segments;
        std::size_t pieces;
        bool directed = false;
    };
    const std::vector<Case> cases{
        {"X", {{{0, 0}, {2, 2}, 0}, {{0, 2}, {2, 0}, 0}}, 4},
        {"T", {{{0, 0}, {2, 0}, 0}, {{1, 0}, {1, 2}, 0}}, 3},
        {"overlap", {{{0, 0}, {2, 0}, 0}, {{1, 0}, {3, 0}, 0}}, 3},
        {"twice", {{{0, 0}, {2, 0}, 0}, {{2, 0}, {0, 0}, 0}}, 1},
        {"twice, directed", {{{0, 0}, {2, 0}, 0}, {{2, 0}, {0, 0}, 0}}, 2, true},
        {"arc twice", {{{0, 0}, {2, 0}, 0.5}, {{2, 0}, {0, 0}, -0.5}}, 1},
        {"lens", {{{0, 0}, {2, 0}, 0.5}, {{0, 0}, {2, 0}, -0.5}}, 2},
        {"overlapping arcs of one circle",
         {{{1, 0}, {0, 1}, std::tan(M_PI / 8)},
          {{std::cos(M_PI / 4), std::sin(M_PI / 4)},
           {-std::cos(M_PI / 4), std::sin(M_PI / 4)},
           std::tan(M_PI / 8)}},
         3},
        {"too small to cut each other", {{{0, 0}, {0.02, 0.02}, 0}, {{0, 0.02}, {0.02, 0}, 0}}, 2},
    };
    for (const Case& c : cases)
        EXPECT_EQ(divided(c.segments, c.directed).size(), c.pieces) << c.what;
}

TEST(Divider, SharesTheSweepOfACutArc)
{
    // Half circle below the chord, cut by a line at 60 degrees from its start.
    const auto pieces = divided({{{-1, 0}, {1, 0}, 1.0}, {{0, 0}, {-1, -std::sqrt(3.0)}, 0.0}});
    std::vector<double> sweeps;
    for (const SegmentKey& piece : pieces)
        if (piece.bulge != 0) sweeps.push_back(4 * std::atan(piece.bulge));
    std::sort(sweeps.begin(), sweeps.end());
    ASSERT_TRUE(pieces.size() == 4 && sweeps.size() == 2);
    EXPECT_NEAR(sweeps[0], M_PI / 3, 1e-9);
    EXPECT_NEAR(sweeps[0] + sweeps[1], M_PI, 1e-12);
}

TEST(Divider, GivesVerticesBackBitForBit)
{
    // A star of corner-sharing and T-touching segments at survey coordinates.
    std::mt19937 random(3);
    std::uniform_real_distribution<double> along(-500, 500);
    std::vector<Point2DF> vertices;
    for (int i = 0; i < 60; ++i) vertices.emplace_back(5e5 + along(random), 4e6 + along(random));
    std::vector<SegmentKey> segments;
    for (std::size_t i = 0; i + 2 < vertices.size(); i += 2) {
        segments.push_back({vertices[i], vertices[i + 1], 0});
        segments.push_back({vertices[i + 1], vertices[i + 2], 0});
    }
    const auto pieces = divided(segments);
    for (const Point2DF& vertex : vertices)
        for (const SegmentKey& piece : pieces)
            for (const Point2DF& end : {piece.a, piece.b})
                EXPECT_TRUE(vertex == end || vertex.distanceTo(end) >= 1e-6);
}

TEST(Divider, LeavesEverythingAloneWhenCancelled)
{
    bool cancel = true;
    CAutoDiv divider;
    divider.setCancelFlag(&cancel);
    divider.addSegment({{0, 0}, {2, 2}, 0}, 1, 0);
    divider.addSegment({{0, 2}, {2, 0}, 0}, 0, 0);
    divider.divide(false);
    EXPECT_TRUE(divider.pieces().segments.empty());
    cancel = false;
    divider.divide(false);
    EXPECT_EQ(divider.pieces().segments.size(), 2u) << "the second segment cuts without being cut";
}

TEST(FuzzyPointSet, FindsTheEarliestEqualPoint)
{
    for (const double scale : {1.0, 1e-5, 3e4}) {
        std::mt19937 random(11);
        std::uniform_int_distribution<int> step(-40, 40);
        AutoB::FuzzyPointSet set(4.5 * scale);
        std::vector<Point2DF> kept;
        for (int i = 0; i < 2000; ++i) {
            const Point2DF p(step(random) * scale, step(random) * scale);
            std::size_t expected = 0;
            while (expected < kept.size() &&
                   !(std::fabs(kept[expected].x() - p.x()) < 4.5 * scale &&
                     std::fabs(kept[expected].y() - p.y()) < 4.5 * scale))
                ++expected;
            if (expected == kept.size()) kept.push_back(p);
            ASSERT_EQ(set.findOrAdd(p), static_cast<int>(expected));
        }
    }
    AutoB::FuzzyPointSet none(0.0);
    EXPECT_TRUE(none.findOrAdd({1, 1}) == 0 && none.findOrAdd({1, 1}) == 1);
    AutoB::FuzzyPointSet huge(1e-5);
    EXPECT_EQ(huge.findOrAdd({1e300, -1e300}), 0);
    EXPECT_EQ(huge.findOrAdd({1e300, -1e300}), 0);
}

TEST(SegmentOrder, AgreesWithAnOrderedInsertion)
{
    // Where the fuzzy order is transitive (coordinates on a coarse grid with jitter below the
    // tolerance) the merged list is what inserting into an ordered set gives.
    std::mt19937 random(5);
    std::uniform_int_distribution<int> cell(0, 4);
    std::uniform_real_distribution<double> jitter(-2e-6, 2e-6);
    for (int round = 0; round < 200; ++round) {
        std::vector<SegmentKey> segments;
        for (int i = 0; i < 40; ++i)
            segments.push_back({{cell(random) + jitter(random), cell(random) + jitter(random)},
                                {cell(random) + jitter(random), cell(random) + jitter(random)},
                                0.25 * (cell(random) - 2)});
        for (const bool directed : {false, true}) {
            const auto comparePoints = [](const Point2DF& p, const Point2DF& q) {
                if (std::fabs(p.x() - q.x()) >= 1e-5) return p.x() < q.x() ? -1 : 1;
                if (std::fabs(p.y() - q.y()) >= 1e-5) return p.y() < q.y() ? -1 : 1;
                return 0;
            };
            const auto turned = [&](SegmentKey s) {
                if (!directed && comparePoints(s.b, s.a) < 0) s = {s.b, s.a, -s.bulge};
                return s;
            };
            const auto compare = [&](const SegmentKey& s, const SegmentKey& t) {
                const SegmentKey u = turned(s), v = turned(t);
                if (const int c = comparePoints(u.a, v.a)) return c;
                if (const int c = comparePoints(u.b, v.b)) return c;
                if (std::fabs(u.bulge - v.bulge) < 1e-7) return 0;
                return u.bulge < v.bulge ? -1 : 1;
            };
            std::vector<SegmentKey> expected;
            for (const SegmentKey& s : segments) {
                auto place = expected.begin();
                while (place != expected.end() && compare(*place, s) < 0) ++place;
                if (place == expected.end() || compare(*place, s) != 0) expected.insert(place, s);
            }
            const auto merged = calcora::mergeEqualSegments(segments, directed).segments;
            ASSERT_EQ(merged.size(), expected.size());
            for (std::size_t i = 0; i < merged.size(); ++i) {
                EXPECT_TRUE(merged[i].a == expected[i].a && merged[i].b == expected[i].b);
                EXPECT_EQ(merged[i].bulge, expected[i].bulge);
            }
        }
    }
}

}  // namespace
