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
#include "common/detail/plain_functions.h"
#include "common/detail/vec.h"

namespace {

using calcora::detail::CubicDeviation;
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
    CubicDeviation deviation(double tolerance, double largestCoordinate) const
    {
        const Point2DF chord = end - start;
        double size = 0.0;
        for (const Point2DF& v : {chord, startTangent, endTangent})
            size += std::fabs(v.x()) + std::fabs(v.y());
        return {0.75 * chord - 0.5 * startTangent - 0.25 * endTangent,
                0.75 * (startTangent + endTangent) - 1.5 * chord, tolerance, size,
                largestCoordinate};
    }
};

/// Samples spans until the middle of every pair of chords lies within the tolerance. `Functions`
/// has the squared distance of a point from a segment.
template <class Functions>
class SpanSampler {
public:
    SpanSampler(Functions& functions, double tolerance, double largestCoordinate,
                std::int64_t spans, tav::Vector<Point2DF>& out)
        : functions_(functions),
          tolerance_(tolerance),
          largestCoordinate_(largestCoordinate),
          budget_(spans),
          out_(out)
    {
    }

    /// Appends the points of the span after its start.
    void append(const HermiteSpan& hermite)
    {
        const Span span{hermite, hermite.deviation(tolerance_, largestCoordinate_)};
        const Point2DF middle = hermite.at(0.5);
        refine(span, 0.0, hermite.start, hermite.at(0.25), 0.5, middle, 1);
        refine(span, 0.5, middle, hermite.at(0.75), 1.0, hermite.end, 1);
    }

private:
    struct Span {
        HermiteSpan curve;
        CubicDeviation deviation;
    };

    /// Appends the piece from a, at wa, to b, at wb, with the curve's point in its middle. A half
    /// is the result of one halving; the parameters stay exact down to the last.
    void refine(const Span& span, double wa, Point2DF a, Point2DF middle, double wb, Point2DF b,
                int halvings)
    {
        const double w = (wa + wb) / 2;
        if (halvings <= kMaxHalvings && !budget_.isSpent() &&
            deviates(span, a, middle, b, w, halvings)) {
            const HermiteSpan& curve = span.curve;
            refine(span, wa, a, curve.at((wa + w) / 2), w, middle, halvings + 1);
            refine(span, w, middle, curve.at((w + wb) / 2), wb, b, halvings + 1);
            return;
        }
        out_.append(middle);
        out_.append(b);
        budget_.take(2);
    }

    /// The distance from the segment is at most that from its middle.
    bool deviates(const Span& span, const Point2DF& a, const Point2DF& middle, const Point2DF& b,
                  double w, int halvings)
    {
        if (Functions::kIsPlain && span.deviation.isSurelyWithin(w, halvings)) return false;
        return functions_.pointSegmentDistSquared(middle, a, b) >= tolerance_ * tolerance_;
    }

    Functions& functions_;
    double tolerance_;
    double largestCoordinate_;
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
    out.append(vertices[0]);
    calcora::detail::withFunctionsOf(*this, [&](auto& functions) {
        SpanSampler sampler(functions, input.tolerance(std::fabs(tolerance)),
                            input.largestCoordinate(), spans, out);
        for (std::size_t i = 0; i < chords.size(); ++i) {
            if (chords[i] / 4 < kShortestQuarter) continue;
            sampler.append({vertices[i], vertices[i + 1], chords[i] * tangents[i],
                            chords[i] * tangents[i + 1]});
        }
    });
}
