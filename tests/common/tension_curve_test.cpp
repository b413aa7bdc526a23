#include "tests/support/hyperbolic_spline.h"

namespace {

using namespace curves;
using ValueLists = IcommonFunc::ValueLists;

struct Curve {
    bool made = false;
    Points points;
    Values values;
};

/// With values when there are any.
Curve curve(const Points& given, const Values& values, bool closed, unsigned from, unsigned to,
            double tolerance)
{
    commonFunc f(0);
    Curve c;
    PointLists spans{{{-1, -1}}};
    ValueLists spanValues{{-1}};
    if (values.isEmpty()) {
        f.tensionCurve(given, c.points, closed, from, to, tolerance);
        c.made = f.tensionCurveRaw(given, spans, closed, from, to, tolerance);
    } else {
        f.tensionCurveZ(given, values, c.points, c.values, closed, from, to, tolerance);
        c.made = f.tensionCurveZRaw(given, values, spans, spanValues, closed, from, to, tolerance);
    }
    // The flat form is the lists end to end; refused, both leave everything as it was.
    Points flat;
    for (const Points& span : spans) flat.append(span);
    EXPECT_EQ(flat, c.made ? c.points : (Points{{-1, -1}}));
    EXPECT_EQ(c.made, !c.points.isEmpty());
    return c;
}

// Against the curve's definition, solved with another basis.
TEST(TensionCurve, IsTheHyperbolicSpline)
{
    constexpr double kTolerance = 1e-4;
    const Values some{3, 1, 4, 1, 1, 1, 2, 6, 5, 3, 5};
    for (const bool closed : {false, true}) {
        for (const Values& values : {Values(), some}) {
            for (const std::size_t n : {3u, 5u, 10u}) {
                Points given = wanderingLine(static_cast<int>(n));
                if (n == 5) given[2] = given[1] + Point2DF(0.25, 0);
                if (n == 10) {  // so short that series are used
                    given[4] = given[3] + Point2DF(0.0125, 0);
                    given[5] = given[4] + Point2DF(0, 0.0125);
                }
                std::vector<Space> nodes;
                for (int i = 0; i < given.size(); ++i)
                    nodes.push_back({given[i].x(), given[i].y(), values.isEmpty() ? 0 : values[i]});
                if (closed) {
                    nodes.push_back(nodes[0]);
                    nodes.insert(nodes.begin(), {nodes[n - 2], nodes[n - 1]});
                    nodes.insert(nodes.end(), {nodes[3], nodes[4]});
                }
                const Space chord = nodes[1] - nodes[0];
                const Space lastChord = nodes.back() - nodes[nodes.size() - 2];
                const HyperbolicSpline truth(nodes, chord / length(chord),
                                             lastChord / length(lastChord));
                std::vector<Space> wanted;
                const std::size_t first = closed ? 2 : 0, last = closed ? n + 2 : n - 1;
                for (std::size_t i = first; i < last; ++i)
                    sample([&](double w) { return truth.at(i, w); }, 0, 1, kTolerance, wanted);
                wanted.push_back(nodes[last]);
                const Curve c = curve(given, values, closed, 0, 0, kTolerance);
                expectNear(c.points, c.values, wanted);
            }
        }
    }
}

TEST(TensionCurve, RangeClosingAndWhatIsRefused)
{
    const Points open = wanderingLine(5);
    Points ring = open;
    ring.append(open[0]);
    const Points line{{0, 0}, {1, 5}, {2, 0}}, doubled{{0, 0}, {0, 0}, {1, 5}, {2, 0}};
    const std::tuple<Points, Values, bool, unsigned, unsigned, int, int> cases[] = {
        {open, {}, false, 0, 0, 0, 4},
        {open, {}, false, 1, 2, 1, 2},
        {open, {}, false, 2, 5, 2, 4},
        {open, {}, false, 3, 2, -1, -1},
        {open, {}, false, 4, 0, -1, -1},
        {open, {}, true, 0, 4, 0, 0},
        {ring, {}, true, 4, 5, 4, 0},
        {line, {1, 2, 3, kNan}, false, 0, 0, 0, 2},
        {line, {1, 2}, false, 0, 0, -1, -1},
        {{{0, 0}, {kNan, 0}}, {}, false, 0, 0, -1, -1},
        {doubled, {}, false, 2, 3, -1, -1},  // a chord without length, if outside the range
        {doubled, {1, 1, 3, 4}, false, 0, 0, -1, -1},
        {doubled, {1, 2, 3, 4}, false, 0, 0, 0, 3},  // one above the other
    };
    for (const auto& [given, values, closed, from, to, first, last] : cases) {
        const Curve c = curve(given, values, closed, from, to, 0.01);
        ASSERT_EQ(c.made, first >= 0) << given.size() << from << to;
        if (!c.made) continue;
        EXPECT_EQ(c.points.first(), given[first]);
        EXPECT_EQ(c.points.last(), given[last]);
    }
    // The last vertex is closed by its place; its value is its own.
    EXPECT_EQ(curve(ring, {1, 2, 3, 4, 5, 7}, true, 0, 0, 0.01).values.last(), 7);

    // Only the last list has its last vertex; the lists take the place of what was there.
    PointLists even{{{9, 9}}};
    EXPECT_TRUE(geometry.tensionCurveRaw({{0, 0}, {1, 0}, {2, 0}}, even, false, 0, 0, 0.1));
    EXPECT_EQ(even, (PointLists{{{0, 0}}, {{1, 0}, {2, 0}}}));

    // Two vertices are a chord, behind what is there, whatever else is asked.
    PointLists spans{{{9, 9}}};
    EXPECT_TRUE(geometry.tensionCurveRaw({{0, 0}, {1, 0}}, spans, true, 7, 3, 0.1));
    EXPECT_EQ(spans, (PointLists{{{9, 9}}, {{0, 0}, {1, 0}}}));
}

// Chords so short that everything cancels, and one so long that its hyperbolic sine overflows; the
// curve strays from the line by the reach of its stiffness at most.
TEST(TensionCurve, HoldsOnExtremeChords)
{
    const Points tiny{{0, 0}, {1e-9, 1e-9}, {3e-9, -1e-8}, {1e-6, 0}, {1e-3, 0.5}};
    for (const double longest : {10.0, 1e7}) {
        Points uneven = tiny;
        uneven.append(moved(wanderingLine(400), {1, 1}));
        uneven.append(uneven.last() + Point2DF(longest, 0));
        const Curve all = curve(uneven, {}, false, 0, 0, longest / 1e5);
        ASSERT_TRUE(all.made);
        EXPECT_GT(all.points[all.points.size() - 2].x(), uneven[uneven.size() - 2].x());
        for (const Point2DF& p : all.points)
            ASSERT_LT(distanceToLine(p, uneven), 10 + longest / 1800);
    }
}

// Short chords in the midst of long ones bend alike whatever their length.
TEST(TensionCurve, ShortChordsKeepTheirShape)
{
    std::vector<Points> shapes;
    for (const double h : {1e-4, 1e-7}) {
        const Points given{{0, 0}, {7, 1}, {7 + h, 1}, {7 + h, 1 + h}, {14, -3}, {20, 0}};
        PointLists spans;
        EXPECT_TRUE(geometry.tensionCurveRaw(given, spans, false, 1, 3, 0.04 * h));
        shapes.emplace_back();
        for (const Points& span : spans)
            for (const Point2DF& p : span) shapes.back().append((1 / h) * (p - given[1]));
    }
    EXPECT_GT(shapes[0].size(), 3);
    expectNear(shapes[0], shapes[1], 1e-3);
}

}  // namespace
