// Parallels that keep their distance, against dense samples of figure and parallel.
#include "app/parallels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <random>

#include "app/raw_parallel.h"

namespace {

using namespace calcora::app;
using tav::Point2DF;

class ParallelsTest : public testing::Test {
protected:
    Host host{std::filesystem::path(CALCORA_PLUGIN).parent_path().string()};
    Interrupt interrupt;
    Parallels parallels{host, interrupt, ExactScale()};
    tav::Ref<IcommonFunc> common = host.create<IcommonFunc>();

    static Figure chainOf(Figure figure)
    {
        if (!figure.closed) return figure;
        figure.points.append(Point2DF(std::as_const(figure.points).first()));
        figure.bulges.append(0.0);
        return figure;
    }

    double distance(const Point2DF& point, const Figure& chain)
    {
        return std::sqrt(common->pointBulgePolylineDistSquared(point, chain.points, chain.bulges));
    }

    /// visit(point, direction of travel there) for places along a chain.
    template <class Visit>
    void sample(const Figure& chain, int perSegment, Visit&& visit)
    {
        for (int i = 0; i + 1 < chain.points.size(); ++i) {
            const Point2DF& a = chain.points.at(i);
            const Point2DF& b = chain.points.at(i + 1);
            const double bulge = chain.bulges.at(i);
            for (int k = 1; k < perSegment; ++k) {
                const double share = double(k) / perSegment;
                Point2DF place;
                common->pointOnBulgeSegmentAtRatio(a, b, bulge, share, place);
                visit(place, std::atan2(b.y() - a.y(), b.x() - a.x()) +
                                 2 * std::atan(bulge) * (2 * share - 1));
            }
        }
    }

    /// The parallels, after a look at them: nowhere nearer than the distance, and without a gap
    /// where places of the figure, moved sideways, keep it.
    std::vector<Figure> checked(const Figure& figure, double distanceAsked)
    {
        const Figure chain = chainOf(figure);
        const double size = std::fabs(distanceAsked);
        const bool isRight =
            figure.closed && !common->hasPositiveBulgeArea(chain.points, chain.bulges);
        const double left = isRight ? -distanceAsked : distanceAsked;
        const std::vector<Figure> found = parallels.of(figure, distanceAsked);
        double nearest = 1e9;
        for (const Figure& parallel : found)
            sample(chainOf(parallel), 9, [&](const Point2DF& place, double) {
                nearest = std::min(nearest, distance(place, chain));
            });
        EXPECT_GT(nearest, size * (1 - 1e-6)) << distanceAsked;
        int missing = 0;
        sample(chain, 9, [&](const Point2DF& place, double direction) {
            const Point2DF moved =
                place + left * Point2DF(-std::sin(direction), std::cos(direction));
            if (distance(moved, chain) < size * (1 - 1e-9)) return;
            for (const Figure& parallel : found)
                if (distance(moved, chainOf(parallel)) < 1e-6) return;
            ++missing;
        });
        EXPECT_EQ(missing, 0) << distanceAsked;
        return found;
    }
};

TEST_F(ParallelsTest, OfWindingLines)
{
    std::mt19937 random(4);
    const auto uniform = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int i = 0; i < 60; ++i) {
        Figure line;
        Point2DF place = i % 2 ? Point2DF(5e5, 4e6) : Point2DF();
        double direction = 0;
        for (int k = 0; k < 10 + i % 20; ++k) {
            line.points.append(place);
            line.bulges.append(k % 2 ? uniform(-0.5, 0.5) : 0.0);
            direction += uniform(-0.75, 0.75);
            place = place + uniform(1, 6) * Point2DF(std::cos(direction), std::sin(direction));
        }
        line.bulges.last() = 0;
        checked(line, uniform(0.2, 3.2) * (i % 3 ? 1 : -1));
    }
}

/// Figures that cross, touch and repeat themselves.
TEST_F(ParallelsTest, OfTanglesKeepTheDistanceAndTheSide)
{
    std::mt19937 random(8);
    constexpr double kBulges[] = {0, 0, 0, 1, -0.5, 0.3};
    for (int i = 0; i < 300; ++i) {
        Figure tangle;
        tangle.closed = i % 3 != 0;
        for (unsigned k = 0; k < 3 + random() % 9; ++k) {
            tangle.points.append({double(random() % 7), double(random() % 7)});
            tangle.bulges.append(kBulges[random() % 6]);
        }
        if (!tangle.closed) tangle.bulges.last() = 0;
        const double size = 0.05 + double(random() % 60) / 16;
        const double asked = i % 2 ? size : -size;
        const Figure chain = chainOf(tangle);
        double nearest = INFINITY;
        int wrongSide = 0;
        for (const Figure& parallel : parallels.of(tangle, asked))
            sample(chainOf(parallel), 9, [&](const Point2DF& place, double) {
                nearest = std::min(nearest, distance(place, chain));
                const int side = common->pointInBulgePolygon(chain.points, chain.bulges, place);
                wrongSide += tangle.closed && side * asked < 0 ? 1 : 0;
            });
        EXPECT_GT(nearest, size * (1 - 1e-6) - 1e-9) << i;
        EXPECT_EQ(wrongSide, 0) << i;
    }
}

/// Whether a point lies in one of the tips, deeper than a distance under its sides.
bool isInTip(const std::vector<CornerTip>& tips, const Point2DF& point, double depth)
{
    const auto isUnder = [&](const Point2DF& from, const Point2DF& to, const Point2DF& inner) {
        const Point2DF along = (1 / from.distanceTo(to)) * (to - from);
        const auto side = [&](const Point2DF& p) {
            return along.x() * (p.y() - from.y()) - along.y() * (p.x() - from.x());
        };
        return side(point) * side(inner) > depth * std::fabs(side(inner));
    };
    for (const auto& [vertex, before, tip, after] : tips)
        if (isUnder(before, tip, vertex) && isUnder(tip, after, vertex) &&
            isUnder(vertex, before, tip) && isUnder(vertex, after, tip))
            return true;
    return false;
}

/// What is left of the parallel of every segment, carried on to the tips, is what is nowhere nearer
/// than the distance and in no tip: found here by asking for each place, without index or cuts.
TEST_F(ParallelsTest, OfJaggedRingsAreWhatIsFarEnoughAndInNoTip)
{
    std::mt19937 random(6);
    const auto uniform = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int i = 0; i < 60; ++i) {
        Figure ring;
        ring.closed = true;
        const int corners = 20 + 20 * (i % 9);
        for (int k = 0; k < corners; ++k) {
            const double angle = k * 2 * std::acos(-1) / corners;
            ring.points.append(uniform(18, 24) * Point2DF(std::cos(angle), std::sin(angle)));
            ring.bulges.append(0.0);
        }
        const double size = std::pow(2.0, uniform(-2, 3.5));
        const double asked = i % 2 ? -size : size;
        const Figure chain = chainOf(ring);
        const std::vector<Figure> found = parallels.of(ring, asked);
        const auto isOnParallel = [&](const Point2DF& place) {
            return std::any_of(found.begin(), found.end(), [&](const Figure& parallel) {
                return distance(place, chainOf(parallel)) < 1e-6 * size;
            });
        };
        // The ring is counter-clockwise: its outside is on the right.
        const RawParallel raw =
            rawParallel(*common, SegmentIndex(chain.points, chain.bulges), true, -asked);
        int missing = 0;
        for (const Segment& segment : raw.segments) {
            Figure moved;
            moved.points = {segment.from, segment.to};
            moved.bulges = {segment.bulge, 0};
            sample(moved, 9, [&](const Point2DF& place, double) {
                const int side = common->pointInBulgePolygon(chain.points, chain.bulges, place);
                const bool isThere = side * asked > 0 &&
                                     distance(place, chain) > size * (1 - 1e-9) &&
                                     !isInTip(raw.tips, place, -1e-6 * size);
                missing += isThere && !isOnParallel(place) ? 1 : 0;
            });
        }
        EXPECT_EQ(missing, 0) << i;
        int tooMuch = 0;
        for (const Figure& parallel : found) {
            ASSERT_TRUE(parallel.closed);
            sample(chainOf(parallel), 9, [&](const Point2DF& place, double) {
                tooMuch += distance(place, chain) < size * (1 - 1e-6) ||
                                   isInTip(raw.tips, place, 1e-6 * size)
                               ? 1
                               : 0;
            });
        }
        EXPECT_EQ(tooMuch, 0) << i;
    }
}

/// Their teeth are as high as each other: the parallels of the tops lie on one line, over each other.
TEST_F(ParallelsTest, OfCombsAreRectangles)
{
    for (const int teeth : {3, 40})
        for (const double asked : {0.5, 1.5, 30.0}) {
            Figure comb;
            comb.closed = true;
            for (int i = 0; i < teeth; ++i)
                for (const auto& [x, y] : {std::pair(0, 0), {0, 9}, {2, 9}, {2, 0}})
                    comb.points.append({4.0 * i + x, 1.0 * y});
            const double width = 4.0 * teeth - 2;
            comb.points.append({width, -3});
            comb.points.append({0, -3});
            for (int i = 0; i < comb.points.size(); ++i) comb.bulges.append(0.0);
            const std::vector<Figure> found = checked(comb, asked);
            ASSERT_EQ(found.size(), 1u) << asked;
            const double slots = asked < 1 ? (teeth - 1) * (2 - 2 * asked) * 9 : 0;
            EXPECT_NEAR(common->bulgePolygonArea(found[0].points, found[0].bulges),
                        (width + 2 * asked) * (12 + 2 * asked) - slots, 1e-3)
                << asked;
        }
}

TEST_F(ParallelsTest, OpenLinesStopAtTheirOtherSide)
{
    const auto figure = [](const Points& points, const Values& bulges) {
        Figure line;
        line.points = points;
        line.bulges = bulges;
        return line;
    };
    const Figure hook = figure({{0, 0}, {14, 0}, {14, 8}, {5, 8}, {5, 3.5}}, {0, 1, 0, 0, 0});
    struct Case {
        const char* name;
        Figure line;
        double distance;
        std::vector<double> lengths;
    };
    const double apart = std::sqrt(2.5 * 2.5 - 1);  // where the hook's end is 1 above the parallel
    const Case cases[] = {
        {"a single segment", figure({{0, 0}, {3, 4}}, {0, 0}), 1, {5}},
        {"past a hook's end", hook, 1.5, {14 + 2.5 * std::acos(-1) + 9 - 1.5 + 4.5 - 1.5}},
        {"under a hook's end",
         hook,
         2.5,
         {5 - apart, 9 - apart + 1.5 * std::acos(-1) + 9 - 2.5 + 4.5 - 2.5}},
        {"a needle, whose tip is rounded",
         figure({{0, 0}, {9, 0}, {0, 0.9}}, {0, 0, 0}),
         -1,
         {9 + std::hypot(9, 0.9) + std::acos(-1) - std::atan(0.1)}},
    };
    for (const auto& [name, line, distanceAsked, lengths] : cases) {
        const std::vector<Figure> found = checked(line, distanceAsked);
        ASSERT_EQ(found.size(), lengths.size()) << name;
        for (std::size_t k = 0; k < found.size(); ++k)
            EXPECT_NEAR(common->bulgePolylineLength(found[k].points, found[k].bulges, false),
                        lengths[k], 1e-5)
                << name;
    }
}

}  // namespace
