// Loop extraction end to end: tables of figures, and properties of random line work.
#include <numeric>

#include "datageo/DataGeo.h"
#include "tests/support/edges.h"

namespace {

using namespace test_support;

struct Loops {
    DataGeo::PointLists points;
    DataGeo::ValueLists bulges;
};

struct Lines : Loops {
    Lines& add(const Points& line, const Values& lineBulges = {})
    {
        points.append(line);
        Values padded = lineBulges;
        padded.resize(line.size());
        bulges.append(padded);
        return *this;
    }
};

/// Signed area, counter-clockwise positive: of the polygon and of the pieces between chord and arc.
double areaOf(const Points& loop, const Values& bulges)
{
    double twice = 0;
    for (int i = 0; i < loop.size(); ++i) {
        const Point2DF a = loop[i] - loop[0], b = loop[(i + 1) % loop.size()] - loop[0];
        const double sweep = 4 * std::atan(bulges[i]);
        const double radius = bulges[i] == 0 ? 0 : a.distanceTo(b) / 2 / std::sin(sweep / 2);
        twice += a.x() * b.y() - b.x() * a.y() + radius * radius * (sweep - std::sin(sweep));
    }
    return twice / 2;
}

Loops extract(const Lines& lines, bool outlines = false, double snap = 0)
{
    Loops loops;
    DataGeo(0).buildRegions(lines.points, lines.bulges, loops.points, loops.bulges, outlines,
                            nullptr, snap);
    return loops;
}

std::vector<double> areasOf(const Loops& loops)
{
    std::vector<double> areas;
    for (int i = 0; i < loops.points.size(); ++i)
        areas.push_back(areaOf(loops.points[i], loops.bulges[i]));
    return areas;
}

Lines square(double x, double y, double side, Lines lines = {})
{
    const Points corners{{x, y}, {x + side, y}, {x + side, y + side}, {x, y + side}, {x, y}};
    for (int i = 0; i < 4; ++i) lines.add({corners[i], corners[i + 1]});
    return lines;
}

TEST(Regions, OfFiguresByHand)
{
    struct Case {
        const char* what;
        Lines lines;
        std::vector<double> regions;
        std::vector<double> outlines;
        double snap = 0;
    };
    const double quarter = std::tan(M_PI / 8);
    const std::vector<Case> cases{
        {"square with a diagonal", square(0, 0, 2).add({{0, 0}, {2, 2}}), {2, 2}, {-4}},
        {"apart, smaller first", square(9, 9, 1, square(0, 0, 2)), {1, 4}, {-1, -4}},
        {"joined by a bridge",
         square(9, 0, 1, square(0, 0, 2)).add({{2, 1}, {9, 0.5}}),
         {1, 4},
         {-1, -4}},
        {"touching at a vertex", square(2, 2, 1, square(0, 0, 2)), {1, 4}, {-1, -4}},
        {"island", square(2, 2, 1, square(0, 0, 5)), {1, 25}, {-1, -25}},
        {"with a dangle", square(0, 0, 2).add({{1, 2}, {1, 5}}).add({{1, 2}, {1, 1}}), {4}, {-4}},
        {"drawn twice", square(0, 0, 2, square(0, 0, 2)).add({{2, 0}, {0, 0}}), {4}, {-4}},
        {"disc and chord",
         Lines().add({{-1, 0}, {1, 0}, {-1, 0}}, {1, 1}).add({{-1, 0}, {1, 0}}),
         {M_PI / 2, M_PI / 2},
         {-M_PI}},
        {"rounded square cut by a line through two tangent points",
         Lines()
             .add({{1, 0}, {9, 0}, {10, 1}, {10, 9}, {9, 10}, {1, 10}, {0, 9}, {0, 1}, {1, 0}},
                  {0, quarter, 0, quarter, 0, quarter, 0, quarter})
             .add({{1, -5}, {1, 15}}),
         {8 + M_PI / 2, 92 - (4 - M_PI) - M_PI / 2},
         {-100 + (4 - M_PI)}},
        {"gap below the snap tolerance",
         Lines().add({{0, 0}, {2, 0}, {2, 2}}).add({{2, 2.01}, {0, 2}, {0, 0.01}}),
         {4},
         {-4},
         0.05},
        {"gap above the snap tolerance",
         Lines().add({{0, 0}, {2, 0}, {2, 2}}).add({{2, 2.01}, {0, 2}, {0, 0.01}}),
         {},
         {},
         0.005},
        {"too short, unlike lists, no number",
         Lines().add({{0, 0}, {5e-8, 0}}).add({{0, 0}}).add({{NAN, 0}, {1, 1}, {1, INFINITY}}),
         {},
         {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        for (const bool outlines : {false, true}) {
            const auto& expected = outlines ? c.outlines : c.regions;
            const auto areas = areasOf(extract(c.lines, outlines, c.snap));
            ASSERT_EQ(areas.size(), expected.size());
            for (std::size_t i = 0; i < areas.size(); ++i)
                EXPECT_NEAR(areas[i], expected[i], c.snap > 0 ? 0.05 : 3e-6);
        }
    }
}

/// Figures of which some meet: how many pairs, and into how many parts all hang together.
struct Meetings {
    int pairs = 0;
    int parts = 0;

    template <class Meet>
    Meetings(std::size_t count, Meet meet) : parts(static_cast<int>(count))
    {
        std::vector<std::size_t> part(count);
        std::iota(part.begin(), part.end(), std::size_t{0});
        for (std::size_t i = 0; i < count; ++i)
            for (std::size_t j = 0; j < i; ++j) {
                if (!meet(i, j)) continue;
                ++pairs;
                const std::size_t mine = part[i], other = part[j];
                parts -= mine != other;
                std::replace(part.begin(), part.end(), other, mine);
            }
    }
};

TEST(Regions, OfDiscsAndLinesObeyEuler)
{
    std::mt19937 random(99);
    std::uniform_real_distribution<double> at(0, 60);
    for (int round = 0; round < 8; ++round) {
        SCOPED_TRACE(round);
        std::vector<std::pair<Point2DF, double>> discs;  // centre and radius
        for (int i = 0; i < 25; ++i)
            discs.push_back({{at(random), at(random)}, 2 + at(random) / 10});
        Lines lines;
        for (const auto& [c, r] : discs)
            lines.add({{c.x() - r, c.y()}, {c.x() + r, c.y()}, {c.x() - r, c.y()}}, {1, 1});
        const Meetings truth(discs.size(), [&](std::size_t i, std::size_t j) {
            const auto& [a, r] = discs[i];
            const auto& [b, s] = discs[j];
            return a.distanceTo(b) < r + s && a.distanceTo(b) > std::fabs(r - s);
        });
        // Two vertices and two edges per circle, and per pair two crossings, each of which adds one
        // vertex and two edges.
        const Loops regions = extract(lines);
        EXPECT_EQ(regions.points.size(), 2 * truth.pairs + truth.parts);
        for (const double area : areasOf(regions)) EXPECT_GT(area, 0);
    }
}

TEST(Regions, OfOneLongRingNeedNoDeepStack)
{
    constexpr int kVertices = 300000;
    Points ring;
    for (int i = 0; i <= kVertices; ++i) {
        const double angle = 2 * M_PI * (i % kVertices) / kVertices;
        ring.append({2e6 * std::cos(angle), 2e6 * std::sin(angle)});
    }
    const Loops loops = extract(Lines().add(ring));
    ASSERT_EQ(loops.points.size(), 1);
    EXPECT_EQ(loops.points[0].size(), kVertices);
    const double area = 0.5 * kVertices * 4e12 * std::sin(2 * M_PI / kVertices);
    EXPECT_NEAR(areasOf(loops)[0] / area, 1, 1e-9);
}

TEST(DirectedRegions, AreTheGapsBetweenFigures)
{
    const auto extractGaps = [](const Lines& lines) {
        Loops loops;
        DataGeo(0).buildDirectedRegions(lines.points, lines.bulges, loops.points, loops.bulges,
                                        nullptr);
        return areasOf(loops);
    };
    const auto rectangle = [](double x0, double y0, double x1, double y1, bool reversed) {
        Points corners{{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
        if (reversed) std::reverse(corners.begin(), corners.end());
        return corners;
    };
    // Four bars around a hole of 6 by 4, in either orientation, open or closed.
    Lines frame;
    frame.add(rectangle(0, 0, 10, 1, false)).add(rectangle(0, 5, 10, 6, true));
    frame.add(rectangle(0, 1, 2, 5, true)).add(rectangle(8, 1, 10, 5, false));
    ASSERT_EQ(extractGaps(frame).size(), 1u);
    EXPECT_NEAR(extractGaps(frame)[0], 24, 1e-9);
    EXPECT_TRUE(extractGaps(Lines().add(rectangle(0, 0, 10, 1, false))).empty());
}

}  // namespace
