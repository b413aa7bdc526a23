// Cubic spline through points.
//
// Between two vertices each coordinate is a cubic of the chord length, written by its values and
// its tangents m at the ends (Hermite form). With hL and hR the chords on both sides of a vertex
// and dL, dR the differences over them, an equal second derivative on both sides means
//
//     (1 - r) m[i-1] + 2 m[i] + r m[i+1] = 3 ((1 - r) dL / hL + r dR / hR),   r = hL / (hL + hR).
//
// An open curve adds a zero second derivative at both ends, 2 m[0] + m[1] = 3 d / h, and is solved
// by tridiagonal elimination. A closed curve gives a cyclic system: every unknown is eliminated
// down to one, the tangent of the last vertex before the closing one, carrying its factor along.
// (Ahlberg, Nilson and Walsh, The Theory of Splines and Their Applications, 1967, chapter II.)

#include <vector>

#include "common/commonFunc.h"
#include "common/detail/curve_sampling.h"
#include "common/detail/vec.h"

namespace {

using calcora::detail::CurveInput;
using calcora::detail::kMaxHalvings;
using calcora::detail::PointBudget;
using tav::Point2DF;

/// Drawing units: a shorter chord counts as kReplacementChord long in the curve's parameter.
constexpr double kShortestChord = 1e-6;
constexpr double kReplacementChord = 0.01;

/// Drawing units: a span with shorter quarters adds no points to the curve.
constexpr double kShortestQuarter = 1e-6;

using Tangents = std::vector<Point2DF>;

/// Takes out one vertex of each pair of equal neighbours, pair by pair from the front: a run of r
/// equal vertices leaves half of them, rounded up.
std::vector<Point2DF> withoutPairs(const tav::Vector<Point2DF>& points, bool closed)
{
    const int n = points.size();
    const int all = closed && n > 0 ? n + 1 : n;
    const auto vertex = [&](int i) -> const Point2DF& { return points[i < n ? i : 0]; };
    std::vector<Point2DF> kept;
    kept.reserve(static_cast<std::size_t>(all));
    for (int i = 0; i < all; ++i) {
        if (i + 1 < all && vertex(i) == vertex(i + 1)) ++i;
        kept.push_back(vertex(i));
    }
    return kept;
}

/// chords[i] belongs to the span from vertex i to vertex i + 1.
std::vector<double> chordLengths(const std::vector<Point2DF>& vertices)
{
    std::vector<double> chords(vertices.size() - 1);
    for (std::size_t i = 0; i < chords.size(); ++i) {
        const double chord = vertices[i].distanceTo(vertices[i + 1]);
        chords[i] = chord < kShortestChord ? kReplacementChord : chord;
    }
    return chords;
}

/// The equation of one vertex: (1 - after) m[i-1] + 2 m[i] + after m[i+1] = right.
struct Row {
    double after;
    Point2DF right;
};

Row rowBetween(const Point2DF& differenceBefore, double chordBefore,
               const Point2DF& differenceAfter, double chordAfter)
{
    const double after = chordBefore / (chordBefore + chordAfter);
    return {after, 3 * (((1 - after) / chordBefore) * differenceBefore +
                        (after / chordAfter) * differenceAfter)};
}

Tangents naturalTangents(const std::vector<Point2DF>& p, const std::vector<double>& h)
{
    const std::size_t n = p.size();
    std::vector<double> factor(n);  // m[i] = factor[i] m[i+1] + m[i] as stored
    Tangents m(n);
    factor[0] = -0.5;
    m[0] = (1.5 / h[0]) * (p[1] - p[0]);
    for (std::size_t i = 1; i + 1 < n; ++i) {
        const Row row = rowBetween(p[i] - p[i - 1], h[i - 1], p[i + 1] - p[i], h[i]);
        const double pivot = (1 - row.after) * factor[i - 1] + 2;
        factor[i] = -row.after / pivot;
        m[i] = (1 / pivot) * (row.right - (1 - row.after) * m[i - 1]);
    }
    const Point2DF last = (3 / h[n - 2]) * (p[n - 1] - p[n - 2]);
    m[n - 1] = (1 / (2 + factor[n - 2])) * (last - m[n - 2]);
    for (std::size_t i = n - 1; i-- > 0;) m[i] += factor[i] * m[i + 1];
    return m;
}

/// The last vertex repeats the first; with it at least three.
Tangents periodicTangents(const std::vector<Point2DF>& p, const std::vector<double>& h)
{
    const std::size_t n = p.size();
    const std::size_t last = n - 2;  // the vertex whose tangent everything is reduced to
    const auto rowOf = [&](std::size_t vertex) {
        const std::size_t before = vertex == 0 ? last : vertex - 1;
        return rowBetween(p[before + 1] - p[before], h[before], p[vertex + 1] - p[vertex],
                          h[vertex]);
    };
    // m[i] = factor[i] m[i+1] + share[i] m[last] + m[i] as stored; then without the factor.
    std::vector<double> factor(n), share(n);
    Tangents m(n);
    double factorBefore = 0.0;
    double shareBefore = 1.0;
    Point2DF constantBefore;
    for (std::size_t i = 0; i < last; ++i) {
        const Row row = rowOf(i);
        const double before = 1 - row.after;
        const double pivot = before * factorBefore + 2;
        factorBefore = factor[i] = -row.after / pivot;
        shareBefore = share[i] = -before * shareBefore / pivot;
        constantBefore = m[i] = (1 / pivot) * (row.right - before * constantBefore);
    }
    share[last] = 1.0;
    for (std::size_t i = last; i-- > 0;) {
        share[i] += factor[i] * share[i + 1];
        m[i] += factor[i] * m[i + 1];
    }
    const Row row = rowOf(last);
    const double before = 1 - row.after;
    const double pivot = row.after * share[0] + before * share[last - 1] + 2;
    const Point2DF tangent = (1 / pivot) * (row.right - row.after * m[0] - before * m[last - 1]);
    for (std::size_t i = 0; i < last; ++i) m[i] += share[i] * tangent;
    m[last] = tangent;
    m[n - 1] = m[0];
    return m;
}

/// One span in Hermite form over w from 0 to 1.
struct HermiteSpan {
    Point2DF start, end;
    Point2DF startTangent, endTangent;  ///< times the chord

    Point2DF at(double w) const
    {
        const double u = 1 - w;
        const double w2 = w * w, w3 = w2 * w;
        const double u2 = u * u, u3 = u2 * u;
        return start + ((3 * w2 - 2 * w3) * (end - start) + (u2 - u3) * startTangent -
                        (w2 - w3) * endTangent);
    }
};

struct Sample {
    double w;
    Point2DF point;
};

/// Samples spans until the middle of every pair of chords lies within the tolerance.
class SpanSampler {
public:
    SpanSampler(IcommonFunc& geometry, double tolerance, std::int64_t spans,
                tav::Vector<Point2DF>& out)
        : geometry_(geometry), toleranceSquared_(tolerance * tolerance), budget_(spans), out_(out)
    {
    }

    /// Appends the points of the span after its start.
    void append(const HermiteSpan& span)
    {
        const Sample middle{0.5, span.at(0.5)};
        refine(span, {0.0, span.start}, {0.25, span.at(0.25)}, middle, 0);
        refine(span, middle, {0.75, span.at(0.75)}, {1.0, span.end}, 0);
    }

private:
    void refine(const HermiteSpan& span, const Sample& a, const Sample& middle, const Sample& b,
                int halvings)
    {
        const double deviationSquared =
            geometry_.pointSegmentDistSquared(middle.point, a.point, b.point);
        const bool mayHalve =
            halvings < kMaxHalvings && a.w < middle.w && middle.w < b.w && !budget_.isSpent();
        if (mayHalve && deviationSquared >= toleranceSquared_) {
            const auto between = [&span](const Sample& from, const Sample& to) -> Sample {
                const double w = (from.w + to.w) / 2;
                return {w, span.at(w)};
            };
            refine(span, a, between(a, middle), middle, halvings + 1);
            refine(span, middle, between(middle, b), b, halvings + 1);
            return;
        }
        out_.append(middle.point);
        out_.append(b.point);
        budget_.take(2);
    }

    IcommonFunc& geometry_;
    double toleranceSquared_;
    PointBudget budget_;
    tav::Vector<Point2DF>& out_;
};

}  // namespace

void commonFunc::splineInterpolate(Points points, Points& out, bool closed, double tolerance)
{
    CurveInput input;
    input.add(points);
    if (!input.isUsable()) return;

    const std::vector<Point2DF> vertices = withoutPairs(points, closed);
    if (vertices.size() < 3) {
        for (const Point2DF& vertex : vertices) out.append(vertex);
        return;
    }
    const std::vector<double> chords = chordLengths(vertices);
    const Tangents tangents =
        closed ? periodicTangents(vertices, chords) : naturalTangents(vertices, chords);

    const auto spans = static_cast<std::int64_t>(chords.size());
    calcora::detail::makeRoomFor(out, 4 * spans + 1);
    SpanSampler sampler(*this, input.tolerance(std::fabs(tolerance)), spans, out);
    out.append(vertices[0]);
    for (std::size_t i = 0; i < chords.size(); ++i) {
        if (chords[i] / 4 < kShortestQuarter) continue;
        sampler.append(
            {vertices[i], vertices[i + 1], chords[i] * tangents[i], chords[i] * tangents[i + 1]});
    }
}
