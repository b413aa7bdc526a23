// Line work in two steps: segments divided at their crossings, equal ones merged; and loops of the
// pieces, in agreement with the plain formulation of the walk.
#include "datageo/autob/CAutoLoop.h"

#include <map>
#include <set>

#include "datageo/CAutoDiv.h"
#include "datageo/autob/FuzzyPointSet.h"
#include "tests/support/edges.h"

namespace {

using namespace test_support;
using AutoB::CAutoLoop;
using calcora::CAutoDiv;
using calcora::SegmentKey;
using Loop = std::vector<Point2DF>;

std::vector<Loop> loopsOf(const CAutoLoop& builder)
{
    std::vector<Loop> loops;
    for (const auto& loop : builder.loops()) loops.emplace_back(loop.begin(), loop.end());
    return loops;
}

/// The walk in its plain form: node lists that shrink, recursion over the path, no blocks.
/// Straight edges between points of a whole grid only.
class PlainBuilder {
public:
    PlainBuilder(const std::vector<SegmentKey>& edges, bool keepDirection)
    {
        for (const SegmentKey& edge : edges) {
            const auto [a, b] =
                keepDirection ? std::pair(edge.a, edge.b) : std::pair(edge.b, edge.a);
            insert({a, b, false}, keepDirection);
            insert({b, a, true}, keepDirection);
        }
    }

    std::vector<Loop> build(bool directed, bool acceptNotNegative)
    {
        directed_ = directed;
        acceptNotNegative_ = acceptNotNegative;
        std::vector<Key> order;
        for (const auto accepts :
             {+[](std::size_t d) { return d > 2; }, +[](std::size_t d) { return d == 2; },
              +[](std::size_t d) { return d == 1; }})
            for (const auto& [key, list] : nodes_)
                if (accepts(list.size())) order.push_back(key);
        for (const Key& node : order) {
            for (std::size_t i = 0; i < nodes_[node].size();) {
                const Half half = nodes_[node][i];
                if (directed && !half.against) {
                    ++i;
                    continue;
                }
                ++walk_;
                start_ = node;
                path_ = {half};
                if (step() == Result::Nothing)
                    ++i;
                else
                    nodes_[node].erase(nodes_[node].begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        return loops_;
    }

private:
    using Key = std::pair<double, double>;
    enum class Result { Closed, Dead, Nothing };

    struct Half {
        Point2DF from, to;
        bool against;
        double angle() const { return std::atan2(to.y() - from.y(), to.x() - from.x()); }
    };

    static Key keyOf(const Point2DF& p) { return {p.x(), p.y()}; }

    void insert(const Half& half, bool keepDirection)
    {
        auto& list = nodes_[keyOf(half.from)];
        auto place = list.begin();
        for (; place != list.end(); ++place) {
            if (std::fabs(half.angle() - place->angle()) < 1e-7) {
                if (half.against != !keepDirection) break;
            } else if (half.angle() > place->angle()) {
                break;
            }
        }
        list.insert(place, half);
    }

    Result step()
    {
        const Half last = path_.back();
        const Key at = keyOf(last.to);
        if (at == start_) {
            Loop loop;
            double area = 0;
            for (const Half& half : path_) {
                loop.push_back(half.from);
                area += (half.from.x() + half.to.x()) / 2 * (half.from.y() - half.to.y());
            }
            if ((area > -1e-20) == acceptNotNegative_) loops_.push_back(loop);
            return Result::Closed;
        }
        if (stamps_[at] == walk_) {
            path_.pop_back();
            return Result::Nothing;
        }
        stamps_[at] = walk_;
        double back = std::atan2(last.from.y() - last.to.y(), last.from.x() - last.to.x());
        if (directed_) back = (back < -M_PI + 1e-7 ? back + 2 * M_PI : back) - 1e-7;
        auto& list = nodes_[at];
        const auto first =
            static_cast<std::size_t>(std::find_if(list.begin(), list.end(),
                                                  [&](const Half& h) { return h.angle() < back; }) -
                                     list.begin());
        for (std::size_t k = 0; k < list.size(); ++k) {
            const std::size_t i = (first + k) % list.size();
            const Half candidate = list[i];
            if (keyOf(candidate.to) == start_ && candidate.to == last.from) continue;
            if (directed_ && !candidate.against) {
                list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
                return Result::Dead;
            }
            path_.push_back(candidate);
            const Result result = step();
            if (result == Result::Nothing) continue;
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
            return result;
        }
        path_.pop_back();
        return Result::Nothing;
    }

    std::map<Key, std::vector<Half>> nodes_;
    std::map<Key, int> stamps_;
    std::vector<Half> path_;
    std::vector<Loop> loops_;
    Key start_;
    int walk_ = 0;
    bool directed_ = false;
    bool acceptNotNegative_ = false;
};

/// A random part of a grid with one diagonal per cell at most (planar), or random chords between
/// its points (not planar, as when tolerances leave crossings uncut).
std::vector<SegmentKey> randomEdges(std::mt19937& random, bool planar)
{
    const int size = 2 + static_cast<int>(random() % 4);
    const auto at = [](int x, int y) { return Point2DF(x, y); };
    std::vector<SegmentKey> edges;
    const auto maybe = [&](Point2DF a, Point2DF b) {
        if (random() % 4 == 0) return;
        if (random() % 2) std::swap(a, b);
        edges.push_back({a, b, 0.0});
    };
    for (int x = 0; x < size; ++x)
        for (int y = 0; y < size; ++y) {
            if (x + 1 < size) maybe(at(x, y), at(x + 1, y));
            if (y + 1 < size) maybe(at(x, y), at(x, y + 1));
            if (x + 1 < size && y + 1 < size && random() % 2) maybe(at(x, y + 1), at(x + 1, y));
        }
    if (!planar) {
        std::set<std::pair<int, int>> used;
        for (int i = 0; i < size; ++i) {
            const int a = static_cast<int>(random() % static_cast<unsigned>(size * size));
            const int b = static_cast<int>(random() % static_cast<unsigned>(size * size));
            // Far enough apart not to run along a grid edge or another chord.
            if (std::abs(a / size - b / size) < 2 || std::abs(a % size - b % size) < 1) continue;
            if (used.insert({std::min(a, b), std::max(a, b)}).second)
                edges.push_back({at(a / size, a % size), at(b / size, b % size), 0.0});
        }
    }
    std::shuffle(edges.begin(), edges.end(), random);
    return edges;
}

TEST(LoopBuilder, FindsWhatThePlainWalkFinds)
{
    std::mt19937 random(7);
    for (int round = 0; round < 600; ++round) {
        SCOPED_TRACE(round);
        const auto edges = randomEdges(random, round % 3 != 0);
        for (const int mode : {0, 1}) {
            CAutoLoop builder;
            for (const SegmentKey& edge : edges) builder.addSegment(edge, true, 0);
            builder.buildLoops(mode);
            EXPECT_EQ(loopsOf(builder), PlainBuilder(edges, true).build(false, mode == 1));
        }
        CAutoLoop directed;
        for (const SegmentKey& edge : edges) directed.addSegment(edge, false, 0);
        directed.buildDirectedLoops();
        EXPECT_EQ(loopsOf(directed), PlainBuilder(edges, false).build(true, false));
    }
}

TEST(LoopBuilder, OrdersManyHalfEdgesOfANodeAsInsertionDoes)
{
    // Wheels with 150 spokes, one or two in each direction: the hub's list is built by sorting.
    for (const int wheels : {1, 2}) {
        std::vector<SegmentKey> edges;
        const auto rim = [](int i, int size) {
            const Point2DF p = 1e4 * direction(i * M_PI / 75);
            return size * Point2DF(std::round(p.x()), std::round(p.y()));
        };
        for (int i = 0; i < 150 * wheels; ++i)
            edges.push_back(
                {rim(i, 1 + i / 150), rim(i / 150 * 150 + (i + 1) % 150, 1 + i / 150), 0.0});
        for (int i = 0; i < 150 * wheels; ++i) {
            const Point2DF end = rim(i * 7 % 150, 1 + i / 150), hub;
            edges.push_back(i % 4 ? SegmentKey{end, hub, 0.0} : SegmentKey{hub, end, 0.0});
        }
        CAutoLoop builder;
        for (const SegmentKey& edge : edges) builder.addSegment(edge, true, 0);
        builder.buildLoops(0);
        EXPECT_EQ(loopsOf(builder), PlainBuilder(edges, true).build(false, false));
    }
}

TEST(LoopBuilder, KeepsShapesAndTagsOfPolylines)
{
    // A closed polyline is two halves; a two-segment polyline keeps its middle point and its arc.
    CAutoLoop builder;
    builder.addPolyline({{0, 0}, {4, 0}, {4, 4}, {0, 0}}, {0, 0, 0, 0}, true, 9);
    builder.addPolyline({{10, 0}, {14, 0}, {14, 4}}, {0, 0.5, 0}, true, 3);
    builder.addPolyline({{14, 4}, {10, 0}}, {0, 0}, false, 5);
    builder.addPolyline({{20, 0}, {20, 1e-8}}, {0, 0}, true, 1);
    builder.buildLoops(0);
    ASSERT_EQ(builder.loops().size(), 2u);
    EXPECT_EQ(builder.loops()[0].size(), 3);
    EXPECT_EQ(builder.loopTags()[0], (CAutoLoop::Tags{0, 0}));
    ASSERT_EQ(builder.loops()[1].size(), 3);
    const auto& bulges = builder.loopBulges()[1];
    EXPECT_EQ(std::count(bulges.begin(), bulges.end(), 0.5), 1);
    EXPECT_EQ(std::set<unsigned>(builder.loopTags()[1].begin(), builder.loopTags()[1].end()),
              (std::set<unsigned>{3, 5}));
}

TEST(LoopBuilder, TakesSetsAndSegmentsTogether)
{
    const auto setOf = [](const std::vector<SegmentKey>& segments) {
        return calcora::mergeEqualSegments({segments.begin(), segments.end()}, false,
                                           calcora::CancelCheck(nullptr));
    };
    CAutoLoop builder;
    builder.addSegments(setOf({{{0, 0}, {4, 0}, 0}}), true);
    builder.addSegments(setOf({{{4, 1e-8}, {4, 4}, 0}}), true);
    builder.addSegment({{4, 4}, {1e-8, 0}, 0}, true, 0);
    builder.buildLoops(0);
    ASSERT_EQ(builder.loops().size(), 1u);
    EXPECT_EQ(builder.loops()[0].size(), 3);
}

TEST(LoopBuilder, LocatesPointsByTheHalfOpenRule)
{
    const std::tuple<double, double, int> cases[] = {
        {1, 1, -1}, {-1, 1, 1}, {-1, 0, 1}, {0.5, 0.5, 0}, {1.5, 0.5 + 2e-6, -1}, {NAN, 1, 1}};
    for (const auto& [x, y, place] : cases)
        EXPECT_EQ(CAutoLoop::pointInPolygon({{1, 0}, {2, 1}, {1, 2}, {0, 1}}, x, y), place) << x;
    // A long oblique edge far from the origin still knows the points on it.
    const CAutoLoop::Points far{{5e5, 4e6}, {5e5 + 871, 4e6 + 491}, {5e5, 4e6 + 1000}};
    for (int i = 1; i < 100; ++i)
        EXPECT_EQ(CAutoLoop::pointInPolygon(far, 5e5 + 8.71 * i, 4e6 + 4.91 * i), 0) << i;
}

auto divided(const std::vector<SegmentKey>& segments, bool directed = false)
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
    std::vector<Point2DF> vertices;
    while (vertices.size() < 60) vertices.push_back(randomPoint(random, kSurvey, 500));
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

TEST(Divider, CutsWithSegmentsThatStayWhole)
{
    CAutoDiv divider;
    divider.addSegment({{0, 0}, {2, 2}, 0}, 1, 0);
    divider.addSegment({{0, 2}, {2, 0}, 0}, 0, 0);
    divider.divide(false);
    EXPECT_EQ(divider.pieces().segments.size(), 2u) << "the second cuts without being cut";
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
    const auto cell = [&] { return static_cast<int>(random() % 5); };
    const auto any = [&] { return cell() + uniform(random, -2e-6, 2e-6); };
    for (int round = 0; round < 200; ++round) {
        std::vector<SegmentKey> segments;
        for (int i = 0; i < 40; ++i)
            segments.push_back({{any(), any()}, {any(), any()}, 0.25 * (cell() - 2)});
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
            const auto less = [&](const SegmentKey& s, const SegmentKey& t) {
                return compare(s, t) < 0;
            };
            const std::set<SegmentKey, decltype(less)> expected(segments.begin(), segments.end(),
                                                                less);
            const auto merged = calcora::mergeEqualSegments(segments, directed).segments;
            ASSERT_EQ(merged.size(), expected.size());
            const auto same = [](const SegmentKey& s, const SegmentKey& t) {
                return s.a == t.a && s.b == t.b && s.bulge == t.bulge;
            };
            EXPECT_TRUE(std::equal(merged.begin(), merged.end(), expected.begin(), same));
        }
    }
}

}  // namespace
