// Curves under tension through points, with and without a value for each point.

#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/curve_sampling.h"
#include "common/detail/tension_spline.h"

namespace {

using calcora::detail::ChordSampler;
using calcora::detail::CurveInput;
using calcora::detail::CurveSample;
using calcora::detail::plan;
using calcora::detail::SampledCurve;
using calcora::detail::sum;
using calcora::detail::TensionSpan;
using calcora::detail::TensionSpline;
using tav::Point3DF;

using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

/// The vertices with their values as elevations, and the spans that are wanted.
struct Figure {
    std::vector<Point3DF> vertices;
    unsigned from = 0;
    unsigned to = 0;
};

/// Vertices that close() adds at most.
constexpr std::size_t kMostAddedByClosing = 5;

/// Applies the rules of the range; false when no span is left.
bool chooseRange(Figure& figure)
{
    const auto n = static_cast<unsigned>(figure.vertices.size());
    if (figure.to == 0 || figure.to >= n) figure.to = n - 1;
    return figure.from < figure.to;
}

/// Repeats the first vertex at the end where it is missing, then lets the line run on by two
/// vertices on either side, so that the curve has no free end at the closing vertex.
void close(Figure& figure)
{
    std::vector<Point3DF>& v = figure.vertices;
    if (plan(v.back()) != plan(v.front())) {
        if (figure.to == v.size() - 1) ++figure.to;
        v.push_back(Point3DF(v.front()));
    }
    const std::size_t last = v.size() - 1;
    const Point3DF before[] = {v[last - 2], v[last - 1]}, after[] = {v[1], v[2]};
    v.insert(v.begin(), std::begin(before), std::end(before));
    v.insert(v.end(), std::begin(after), std::end(after));
    figure.from += 2;
    figure.to += 2;
}

/// The points of a curve, span by span, and beside them their values where they are wanted.
class SpanLists {
public:
    explicit SpanLists(bool valued) : valued_(valued) {}

    void reserve(int spans)
    {
        points.reserve(spans);
        if (valued_) values.reserve(spans);
    }
    void begin(const Point3DF& first)
    {
        points.append(Points());
        if (valued_) values.append(Values());
        append(first);
    }
    void append(const Point3DF& p)
    {
        points.last().append(plan(p));
        if (valued_) values.last().append(p.z());
    }

    IcommonFunc::PointLists points;
    IcommonFunc::ValueLists values;

private:
    bool valued_;
};

enum class Outcome {
    kRefused,   ///< nothing may be written
    kStraight,  ///< too few vertices: the chords, to be added to what is there
    kCurve,     ///< to replace what is there
};

/// The chords between fewer than three vertices.
void straightSpans(const std::vector<Point3DF>& vertices, SpanLists& spans)
{
    for (std::size_t i = 1; i < vertices.size(); ++i) {
        spans.begin(vertices[i - 1]);
        spans.append(vertices[i]);
    }
}

/// Each span from its first vertex up to, but without, its last; only the last span is complete.
void sampleSpans(const TensionSpline& spline, const Figure& figure, double tolerance,
                 SpanLists& spans)
{
    const auto count = static_cast<int>(figure.to - figure.from);
    spans.reserve(count);
    ChordSampler sampler(count);
    for (unsigned k = figure.from; k < figure.to; ++k) {
        const TensionSpan span = spline.span(k);
        const Point3DF& origin = spline.node(k);
        const auto at = [&span](double w) { return span.offset(w); };
        const CurveSample<Point3DF> start{0.0, Point3DF()}, end{1.0, span.chord()};
        spans.begin(origin);
        sampler.run(SampledCurve(at, tolerance), start, end, 0,
                    [&](const auto& sample) { spans.append(sum(origin, sample.point)); });
    }
    spans.append(spline.node(figure.to));
}

/// `values` may be null: every value is 0 then.
Outcome tensionSpans(const Points& points, const Values* values, bool closed, unsigned from,
                     unsigned to, double tolerance, SpanLists& out)
{
    const int n = points.size();
    if (values && values->size() < n) return Outcome::kRefused;
    CurveInput input;
    input.add(points);
    if (values) input.addElevations(*values, n);
    if (!input.isUsable()) return Outcome::kRefused;

    Figure figure{{}, from, to};
    figure.vertices.reserve(static_cast<std::size_t>(n) + kMostAddedByClosing);
    for (int i = 0; i < n; ++i) figure.vertices.push_back({points[i], values ? (*values)[i] : 0.0});
    if (n < 3) {
        straightSpans(figure.vertices, out);
        return Outcome::kStraight;
    }
    if (!chooseRange(figure)) return Outcome::kRefused;
    if (closed) close(figure);
    const std::optional<TensionSpline> spline = TensionSpline::fit(std::move(figure.vertices));
    if (!spline) return Outcome::kRefused;
    sampleSpans(*spline, figure, input.tolerance(tolerance), out);
    return Outcome::kCurve;
}

template <class List>
void deliver(const List& found, Outcome outcome, List& target)
{
    if (outcome == Outcome::kStraight)
        target.append(found);
    else
        target = found;
}

}  // namespace

void commonFunc::tensionCurve(Points points, Points& out, bool closed, unsigned from, unsigned to,
                              double tolerance)
{
    PointLists spans;
    if (!tensionCurveRaw(points, spans, closed, from, to, tolerance)) return;
    for (const Points& span : std::as_const(spans)) out.append(span);
}

bool commonFunc::tensionCurveRaw(Points points, PointLists& spans, bool closed, unsigned from,
                                 unsigned to, double tolerance)
{
    SpanLists found(false);
    const Outcome outcome = tensionSpans(points, nullptr, closed, from, to, tolerance, found);
    if (outcome == Outcome::kRefused) return false;
    deliver(found.points, outcome, spans);
    return true;
}

void commonFunc::tensionCurveZ(Points points, Values values, Points& out, Values& outValues,
                               bool closed, unsigned from, unsigned to, double tolerance)
{
    PointLists spans;
    ValueLists spanValues;
    if (!tensionCurveZRaw(points, values, spans, spanValues, closed, from, to, tolerance)) return;
    for (const Points& span : std::as_const(spans)) out.append(span);
    for (const Values& span : std::as_const(spanValues)) outValues.append(span);
}

bool commonFunc::tensionCurveZRaw(Points points, Values values, PointLists& spans,
                                  ValueLists& spanValues, bool closed, unsigned from, unsigned to,
                                  double tolerance)
{
    SpanLists found(true);
    const Outcome outcome = tensionSpans(points, &values, closed, from, to, tolerance, found);
    if (outcome == Outcome::kRefused) return false;
    deliver(found.points, outcome, spans);
    deliver(found.values, outcome, spanValues);
    return true;
}
