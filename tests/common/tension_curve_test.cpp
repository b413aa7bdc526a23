#include <numeric>

#include "tests/support/curves.h"

namespace {

using namespace curves;
using ValueLists = IcommonFunc::ValueLists;

/// A spline under tension from its definition: on every span each axis is a + b u + c cosh(su) +
/// d sinh(su); it meets the nodes, has one slope and one bend on both sides of each, and the slopes
/// of the chords at its ends.
class HyperbolicSpline {
public:
    explicit HyperbolicSpline(const std::vector<Space>& nodes)
    {
        const std::size_t spans = nodes.size() - 1;
        for (std::size_t i = 0; i < spans; ++i) {
            const Space chord = nodes[i + 1] - nodes[i];
            h_.push_back(std::sqrt((chord * chord).sum()));
        }
        const double total = std::accumulate(h_.begin(), h_.end(), 0.0);
        tension_ = 4.5 * static_cast<double>(spans) / total;
        std::vector<Space> rows;  // four unknowns for each span, then the right side of each axis
        const auto demand = [&](std::size_t span, int order, double u, const Space& right) {
            rows.emplace_back(4 * spans + 3);
            for (std::size_t c = 0; c < 4; ++c) rows.back()[4 * span + c] = basis(c, order, u);
            rows.back()[std::slice(4 * spans, 3, 1)] = right;
        };
        demand(0, 1, 0, (nodes[1] - nodes[0]) / h_[0]);
        demand(spans - 1, 1, h_.back(), (nodes[spans] - nodes[spans - 1]) / h_.back());
        for (std::size_t i = 0; i < spans; ++i) {
            demand(i, 0, 0, nodes[i]);
            demand(i, 0, h_[i], nodes[i + 1]);
            for (int order = 1; i > 0 && order <= 2; ++order) {
                demand(i - 1, order, h_[i - 1], Space(3));
                for (std::size_t c = 0; c < 4; ++c) rows.back()[4 * i + c] = -basis(c, order, 0);
            }
        }
        for (std::size_t c = 0; c < rows.size(); ++c) {
            for (std::size_t r = c + 1; r < rows.size(); ++r)
                if (std::fabs(rows[r][c]) > std::fabs(rows[c][c])) std::swap(rows[r], rows[c]);
            rows[c] /= double{rows[c][c]};
            for (std::size_t r = 0; r < rows.size(); ++r)
                if (r != c && rows[r][c] != 0) rows[r] -= double{rows[r][c]} * rows[c];
        }
        for (const Space& row : rows) coefficients_.push_back(row[std::slice(4 * spans, 3, 1)]);
    }

    /// At the fraction w of span i.
    Space at(std::size_t i, double w) const
    {
        Space p(3);
        for (std::size_t c = 0; c < 4; ++c) p += basis(c, 0, w * h_[i]) * coefficients_[4 * i + c];
        return p;
    }

private:
    double basis(std::size_t c, int order, double u) const
    {
        if (c < 2) return order == 0 ? std::pow(u, c) : order == 1 && c == 1;
        const double su = tension_ * u;
        return std::pow(tension_, order) *
               ((c == 2) == (order % 2 == 0) ? std::cosh(su) : std::sinh(su));
    }

    std::vector<Space> coefficients_;
    std::vector<double> h_;
    double tension_ = 0;
};

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
    const Values some{3, 1, 4, 1, 5, 9, 2, 6, 5, 3, 5};
    for (const bool closed : {false, true}) {
        for (const Values& values : {Values(), some}) {
            for (const std::size_t n : {3u, 5u, 10u}) {
                const double shortest = n == 10 ? 1.0 / 64 : 4;
                Points given = wanderingLine(static_cast<int>(n));
                given[1] = given[0] + Point2DF(shortest, 0);  // so short that a series is used
                std::vector<Space> nodes;
                for (int i = 0; i < given.size(); ++i)
                    nodes.push_back({given[i].x(), given[i].y(), values.isEmpty() ? 0 : values[i]});
                if (closed) {
                    nodes.push_back(nodes[0]);
                    nodes.insert(nodes.begin(), {nodes[n - 2], nodes[n - 1]});
                    nodes.insert(nodes.end(), {nodes[3], nodes[4]});
                }
                const HyperbolicSpline truth(nodes);
                std::vector<Space> wanted;
                const std::size_t first = closed ? 2 : 0, last = closed ? n + 2 : n - 1;
                for (std::size_t i = first; i < last; ++i)
                    sample([&](double w) { return truth.at(i, w); }, 0, 1, 0.003, wanted);
                wanted.push_back(nodes[last]);
                const Curve c = curve(given, values, closed, 0, 0, 0.003);
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
    const struct {
        Points given;
        Values values;
        bool closed;
        unsigned from, to;
        int first, last;  // of the vertices; -1: refused
    } cases[] = {
        {open, {}, false, 0, 0, 0, 4},
        {open, {}, false, 1, 2, 1, 2},
        {open, {}, false, 2, 99, 2, 4},
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
    for (const auto& k : cases) {
        const Curve c = curve(k.given, k.values, k.closed, k.from, k.to, 0.01);
        ASSERT_EQ(c.made, k.first >= 0) << &k - cases;
        if (!c.made) continue;
        EXPECT_EQ(c.points.first(), k.given[k.first]);
        EXPECT_EQ(c.points.last(), k.given[k.last]);
    }
    // The last vertex is closed by its place; its value is its own.
    EXPECT_EQ(curve(ring, {1, 2, 3, 4, 5, 7}, true, 0, 0, 0.01).values.last(), 7);

    // Two vertices are a chord, behind what is there, whatever else is asked.
    PointLists spans{{{9, 9}}};
    EXPECT_TRUE(commonFunc(0).tensionCurveRaw({{0, 0}, {1, 0}}, spans, true, 7, 3, 0.1));
    EXPECT_EQ(spans, (PointLists{{{9, 9}}, {{0, 0}, {1, 0}}}));
}

// Chords so short that everything cancels, and one so long that its hyperbolic sine overflows; the
// curve strays from the line by the reach of its stiffness at most.
TEST(TensionCurve, HoldsOnExtremeChords)
{
    const Points tiny{{0, 0}, {1e-9, 1e-9}, {3e-9, -1e-8}, {1e-6, 0}, {1e-3, 0.5}};
    for (const double longest : {10.0, 1e7}) {
        Points uneven = tiny;
        uneven.append(moved(wanderingLine(400), 1, 1));
        uneven.append(uneven.last() + Point2DF(longest, 0));
        const Curve all = curve(uneven, {}, false, 0, 0, longest / 1e5);
        const Curve start = curve(uneven, {}, false, 0, 4, 1e-12);
        ASSERT_TRUE(all.made && start.made);
        EXPECT_GT(all.points[all.points.size() - 2].x(), uneven[uneven.size() - 2].x());
        for (const Point2DF& p : all.points)
            ASSERT_LT(distanceToLine(p, uneven), 10 + longest / 1800);
        for (const Point2DF& p : start.points) ASSERT_LT(distanceToLine(p, tiny), 0.2);
    }
}

}  // namespace
