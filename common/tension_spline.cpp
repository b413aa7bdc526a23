// The spline under tension.
//
// Between two nodes each coordinate v satisfies v'''' = s^2 v'' over the chord length, with the
// tension s. With M = v'' / s^2 at the nodes, h the chord and u the length from the first node,
//
//     v(u) = M0 sinh(s(h-u))/sinh(sh) + M1 sinh(su)/sinh(sh) + (v0 - M0)(h-u)/h + (v1 - M1) u/h.
//
// The end slopes of a span are the chord's slope minus (f M0 + e M1) at its start and plus
// (e M0 + f M1) at its end, where e = 1/h - s/sinh(sh) and f = s/tanh(sh) - 1/h. One slope on both
// sides of every inner node gives the tridiagonal system
//
//     e[i-1] M[i-1] + (f[i-1] + f[i]) M[i] + e[i] M[i+1] = slope[i] - slope[i-1],
//
// closed by given slopes at both ends. Its diagonal outweighs the rest (f > 2e), so plain
// elimination without pivoting is safe. (D. G. Schweikert, An interpolation curve using a spline in
// tension, Journal of Mathematics and Physics 45, 1966; A. K. Cline, Scalar- and planar-valued
// curve fitting using splines under tension, Communications of the ACM 17, 1974.)
//
// Where sh is small e, f and the brackets of v cancel, and where it is large sinh overflows; both
// ends are written so that they hold all digits that the data have.

#include "common/detail/tension_spline.h"

#include <cmath>
#include <utility>

namespace calcora::detail {

namespace {

/// The tension spread over the length of the whole line.
constexpr double kTensionOfLine = 4.5;

/// Tension times chord: below it the first two terms of the series are exact to about 1e-10, above
/// it the closed forms are.
constexpr double kSeriesBelow = 0.01;

/// Tension times chord: sinh overflows a little above.
constexpr double kExponentialsAbove = 700.0;

/// The entries of the system that belong to one span: e and f.
struct SpanTerms {
    double coupling;
    double diagonal;
};

SpanTerms spanTerms(double chord, double tension)
{
    const double x = tension * chord;
    if (x < kSeriesBelow)
        return {tension * x / 6 * (1 - 7 * x * x / 60), tension * x / 3 * (1 - x * x / 15)};
    return {1 / chord - tension / std::sinh(x), tension / std::tanh(x) - 1 / chord};
}

}  // namespace

TensionSpan::TensionSpan(const Point3DF& chord, const Point3DF& bendStart, const Point3DF& bendEnd,
                         double stiffness)
    : chord_(chord),
      bendStart_(bendStart),
      bendEnd_(bendEnd),
      stiffness_(stiffness),
      sinhStiffness_(stiffness > kExponentialsAbove ? 0.0 : std::sinh(stiffness))
{
}

/// sinh(wx) / sinh(x) - w.
double TensionSpan::bend(double w) const
{
    const double x = stiffness_;
    if (x < kSeriesBelow) {
        const double second = x * x / 6;
        const double fourth = x * x * x * x / 120;
        return w * (w * w - 1) * (second + (w * w + 1) * fourth) / (1 + second + fourth);
    }
    if (x > kExponentialsAbove)
        return std::exp((w - 1) * x) * std::expm1(-2 * w * x) / std::expm1(-2 * x) - w;
    return std::sinh(w * x) / sinhStiffness_ - w;
}

Point3DF TensionSpan::offset(double w) const
{
    const double fromStart = bend(1 - w);
    const double fromEnd = bend(w);
    return sum(sum(scaled(fromStart, bendStart_), scaled(fromEnd, bendEnd_)), scaled(w, chord_));
}

std::optional<TensionSpline> TensionSpline::fit(std::vector<Point3DF> nodes,
                                                const std::optional<EndTangents>& ends)
{
    TensionSpline spline;
    spline.nodes_ = std::move(nodes);
    if (!spline.measure()) return std::nullopt;
    spline.solve(ends);
    for (const Point3DF& bend : spline.bends_)
        if (!isFinite(bend)) return std::nullopt;
    return spline;
}

TensionSpan TensionSpline::span(std::size_t i) const
{
    return {difference(nodes_[i + 1], nodes_[i]), bends_[i], bends_[i + 1], tension_ * chords_[i]};
}

/// Chords and tension; false when a chord has no length.
bool TensionSpline::measure()
{
    chords_.resize(nodes_.size() - 1);
    double total = 0.0;
    for (std::size_t i = 0; i < chords_.size(); ++i) {
        chords_[i] = length(difference(nodes_[i + 1], nodes_[i]));
        if (!(chords_[i] > 0)) return false;
        total += chords_[i];
    }
    tension_ = kTensionOfLine * static_cast<double>(chords_.size()) / total;
    return true;
}

void TensionSpline::solve(const std::optional<EndTangents>& ends)
{
    const std::size_t last = nodes_.size() - 1;
    const auto slope = [this](std::size_t i) {
        return scaled(1 / chords_[i], difference(nodes_[i + 1], nodes_[i]));
    };
    std::vector<double> upper(nodes_.size());
    bends_.resize(nodes_.size());
    SpanTerms before{0.0, 0.0};
    Point3DF slopeBefore = ends ? ends->start : slope(0);
    for (std::size_t i = 0; i <= last; ++i) {
        const SpanTerms after = i < last ? spanTerms(chords_[i], tension_) : SpanTerms{0.0, 0.0};
        const Point3DF slopeAfter = i < last ? slope(i) : ends ? ends->end : slopeBefore;
        Point3DF right = difference(slopeAfter, slopeBefore);
        double pivot = before.diagonal + after.diagonal;
        if (i > 0) {
            pivot -= before.coupling * upper[i - 1];
            right = difference(right, scaled(before.coupling, bends_[i - 1]));
        }
        upper[i] = after.coupling / pivot;
        bends_[i] = scaled(1 / pivot, right);
        before = after;
        slopeBefore = slopeAfter;
    }
    for (std::size_t i = last; i-- > 0;)
        bends_[i] = difference(bends_[i], scaled(upper[i], bends_[i + 1]));
}

}  // namespace calcora::detail
