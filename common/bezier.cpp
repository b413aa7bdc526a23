// Bezier curves: single spans, and the spans of a smooth curve through points.

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/curve_sampling.h"
#include "common/detail/primitives.h"
#include "common/detail/tension_spline.h"

namespace {

using calcora::detail::ChordSampler;
using calcora::detail::CubicDeviation;
using calcora::detail::CurveInput;
using calcora::detail::difference;
using calcora::detail::EndTangents;
using calcora::detail::isFinite;
using calcora::detail::length;
using calcora::detail::lineAngle;
using calcora::detail::plan;
using calcora::detail::Point3DF;
using calcora::detail::scaled;
using calcora::detail::sum;
using calcora::detail::TensionSpan;
using calcora::detail::TensionSpline;
using tav::Point2DF;

using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

// ---- One span

/// A cubic Bezier span relative to its first control point; the elevation runs linearly from z0 to
/// z3.
struct BezierSpan {
    Point2DF c1, c2, c3;
    double z0 = 0.0, z3 = 0.0;

    Point3DF at(double t) const
    {
        const double s = 1 - t;
        const Point2DF p = (3 * t * s * s) * c1 + (3 * t * t * s) * c2 + (t * t * t) * c3;
        return {p, z0 * s + z3 * t};
    }

    CubicDeviation deviation(double tolerance) const
    {
        double size = std::fabs(z0) + std::fabs(z3);
        for (const Point2DF& c : {c1, c2, c3}) size += std::fabs(c.x()) + std::fabs(c.y());
        return {0.75 * (c2 - 2 * c1), 0.75 * (c3 - 3 * (c2 - c1)), tolerance, size, 0.0};
    }
};

/// A span that is evaluated only where a point comes out or rounding may decide.
class HalvedSpan {
public:
    struct Sample {
        double parameter;
    };

    HalvedSpan(const BezierSpan& span, double tolerance)
        : span_(span), tolerance_(tolerance), known_(span.deviation(tolerance))
    {
    }

    bool mustHalve(const Sample& start, const Sample& middle, const Sample& end, int halvings) const
    {
        if (known_.isSurelyWithin(middle.parameter, halvings)) return false;
        return known_.isSurelyBeyond(middle.parameter, halvings) ||
               deviation(start, middle, end) > tolerance_;
    }

    /// The distance between the middles of a piece and of its chord.
    double deviation(const Sample& start, const Sample& middle, const Sample& end) const
    {
        const Point3DF ends = sum(span_.at(start.parameter), span_.at(end.parameter));
        return length(difference(span_.at(middle.parameter), scaled(0.5, ends)));
    }

private:
    const BezierSpan& span_;
    double tolerance_;
    CubicDeviation known_;
};

/// Replaces the lists by the span cut into chords; `outZ` may be null.
///
/// The curve's middle is a point of the result whatever its deviation; it goes again when the
/// halves add nothing and it lies closer than the tolerance to the chord's middle.
void sampleSpan(const BezierSpan& span, const Point2DF& p0, const Point2DF& p3, double tolerance,
                Points& outPoints, Values* outZ)
{
    using Sample = HalvedSpan::Sample;
    const auto append = [&](const Point2DF& p, double z) {
        outPoints.append(p);
        if (outZ) outZ->append(z);
    };
    const auto emit = [&](const Sample& sample) {
        const Point3DF p = span.at(sample.parameter);
        append(p0 + plan(p), p.z());
    };
    const HalvedSpan curve(span, tolerance);
    const Sample first{0.0}, middle{0.5}, last{1.0};

    outPoints.clear();
    if (outZ) outZ->clear();
    ChordSampler sampler(1);
    append(p0, span.z0);
    sampler.run(curve, first, middle, 1, emit);
    emit(middle);
    sampler.run(curve, middle, last, 1, emit);
    if (outPoints.size() == 2 && tolerance > curve.deviation(first, middle, last)) {
        outPoints.removeLast();
        if (outZ) outZ->removeLast();
    }
    append(p3, span.z3);
}

/// Both sampling operations; `z0` and `z3` count only with `outZ`. The control points are taken by
/// value: they may be elements of the list that is replaced.
void spanToPolyline(Point2DF p0, double z0, Point2DF p1, Point2DF p2, Point2DF p3, double z3,
                    Points& outPoints, Values* outZ, double tolerance)
{
    CurveInput input;
    for (const Point2DF& p : {p0, p1, p2, p3}) input.add(p);
    if (outZ) {
        input.addElevation(z0);
        input.addElevation(z3);
    }
    if (!input.isUsable()) {
        outPoints = {p0, p3};
        if (outZ) *outZ = {z0, z3};
        return;
    }
    const BezierSpan span{p1 - p0, p2 - p0, p3 - p0, outZ ? z0 : 0.0, outZ ? z3 : 0.0};
    sampleSpan(span, p0, p3, input.tolerance(tolerance), outPoints, outZ);
}

// ---- Spans of a smooth curve through points

/// Drawing units: ends of a line that lie closer make a closed figure.
constexpr double kClosureDistance = 1e-7;

/// Where the handles of a single segment stand on its chord.
constexpr double kFirstThird = 0.3333;
constexpr double kSecondThird = 0.6667;

/// How many nodes a closed figure runs on across its closing point on either side.
constexpr std::size_t kRunOn = 3;

/// The handles of one segment, each relative to the end that it belongs to.
struct Handles {
    Point2DF leaving;   ///< from the segment's first point
    Point2DF arriving;  ///< from the segment's last point
};

/// The nodes with three more on either side, taken around the figure. A node that coincides with
/// the one it would follow is passed over: where the figure's last point is not exactly its first
/// one, either may be met again across the joint.
std::vector<Point3DF> runOnNodes(const std::vector<Point3DF>& nodes)
{
    const std::size_t last = nodes.size() - 1;
    std::array<Point3DF, kRunOn> before;
    std::size_t k = 0;
    for (std::size_t found = 0; found < kRunOn;) {
        const Point3DF& joined = found == 0 ? nodes[0] : before[found - 1];
        k = k == 0 ? last - 1 : k - 1;
        if (nodes[k] != joined) before[found++] = nodes[k];
    }
    std::vector<Point3DF> extended;
    extended.reserve(nodes.size() + 2 * kRunOn);
    extended.assign(before.rbegin(), before.rend());
    extended.insert(extended.end(), nodes.begin(), nodes.end());
    k = last;
    while (extended.size() < nodes.size() + 2 * kRunOn) {
        k = k == last ? 1 : k + 1;
        if (nodes[k] != extended.back()) extended.push_back(nodes[k]);
    }
    return extended;
}

/// Unit tangent at p0 of the parabola through p0, p1 and p2, whose parameter at p1 is t = a/(a + b)
/// with the chords a and b.
///
/// Its middle control point is B = (p1 - (1-t)^2 p0 - t^2 p2) / (2t(1-t)). With the unit vectors u
/// and v of the two chords that makes 2 (B - p0) = (2a + b) u - a v, which neither cancels nor
/// divides by the vanishing 1 - t of very unequal chords. Where a chord has no length it is the
/// direction of the first one.
Point3DF endTangent(const Point3DF& p0, const Point3DF& p1, const Point3DF& p2)
{
    const Point3DF first = difference(p1, p0);
    const Point3DF second = difference(p2, p1);
    const double a = length(first), b = length(second);
    if (!(a > 0)) return {};
    const Point3DF u = scaled(1 / a, first);
    if (!(b > 0)) return u;
    const Point3DF tangent = difference(scaled(2 * a + b, u), scaled(a / b, second));
    return scaled(1 / length(tangent), tangent);
}

/// The spline under tension through the nodes, leaving and arriving along the parabolas through
/// the outermost three.
std::optional<TensionSpline> fitThrough(std::vector<Point3DF> nodes)
{
    const std::size_t n = nodes.size();
    const EndTangents ends{endTangent(nodes[0], nodes[1], nodes[2]),
                           scaled(-1, endTangent(nodes[n - 1], nodes[n - 2], nodes[n - 3]))};
    return TensionSpline::fit(std::move(nodes), ends);
}

/// The handles of the cubic that meets the span at both ends and at its thirds q1 and q2.
Handles handlesThrough(const TensionSpan& span)
{
    const Point2DF q1 = plan(span.offset(1.0 / 3));
    const Point2DF q2 = plan(span.offset(2.0 / 3));
    const Point2DF q3 = plan(span.chord());
    return {(1.0 / 6) * (18 * q1 - 9 * q2 + 2 * q3), (1.0 / 6) * (18 * q2 - 9 * q1 - 11 * q3)};
}

/// Turns the handles at a joint into one line through it, its direction the mean of theirs weighted
/// with their lengths, which they keep.
void smoothJoint(Point2DF& arriving, Point2DF& leaving)
{
    const Point2DF joint;
    const double lengthIn = calcora::detail::length(arriving);
    const double lengthOut = calcora::detail::length(leaving);
    if (!(lengthIn + lengthOut > 0)) return;
    double in = lineAngle(arriving, joint);
    double out = lineAngle(joint, leaving);
    if (out - in > calcora::detail::kPi)
        out -= calcora::detail::kTwoPi;
    else if (in - out > calcora::detail::kPi)
        in -= calcora::detail::kTwoPi;
    const double angle = (in * lengthIn + out * lengthOut) / (lengthIn + lengthOut);
    arriving = calcora::detail::polarPoint(joint, angle, -lengthIn);
    leaving = calcora::detail::polarPoint(joint, angle, lengthOut);
}

/// The two handles of each segment between the points, which are at least three and of which no
/// neighbours are equal.
std::vector<Points> smoothSpans(const std::vector<Point2DF>& points)
{
    const std::size_t segments = points.size() - 1;
    const Point2DF origin = points[0];
    std::vector<Point3DF> nodes;
    nodes.reserve(points.size());
    for (const Point2DF& p : points) nodes.emplace_back(p, 0.0);
    const bool closed = points.back().distanceTo(origin) < kClosureDistance;
    const std::optional<TensionSpline> fit =
        fitThrough(closed ? runOnNodes(nodes) : std::move(nodes));

    std::vector<Handles> handles(segments);
    for (std::size_t i = 0; i < segments; ++i) {
        if (fit) handles[i] = handlesThrough(fit->span(closed ? i + kRunOn : i));
        if (!fit || !isFinite(handles[i].leaving) || !isFinite(handles[i].arriving)) {
            const Point2DF chord = points[i + 1] - points[i];
            handles[i] = {kFirstThird * chord, (kSecondThird - 1) * chord};
        }
    }
    for (std::size_t i = 0; i + 1 < segments; ++i)
        smoothJoint(handles[i].arriving, handles[i + 1].leaving);
    Point2DF end = points.back();
    if (closed) {
        handles.back().arriving += end - origin;
        end = origin;
        smoothJoint(handles.back().arriving, handles.front().leaving);
    }
    std::vector<Points> spans(segments);
    for (std::size_t i = 0; i < segments; ++i)
        spans[i] = {points[i] + handles[i].leaving,
                    (i + 1 < segments ? points[i + 1] : end) + handles[i].arriving};
    return spans;
}

}  // namespace

bool commonFunc::bezierSpanToPolyline3d(const Point2DF& p0, double z0, const Point2DF& p1, double,
                                        const Point2DF& p2, double, const Point2DF& p3, double z3,
                                        Points& outPoints, Values& outZ, double tolerance)
{
    spanToPolyline(p0, z0, p1, p2, p3, z3, outPoints, &outZ, tolerance);
    return true;
}

bool commonFunc::bezierSpanToPolyline(const Point2DF& p0, const Point2DF& p1, const Point2DF& p2,
                                      const Point2DF& p3, Points& outPoints, double tolerance)
{
    spanToPolyline(p0, 0.0, p1, p2, p3, 0.0, outPoints, nullptr, tolerance);
    return true;
}

tav::Point2DF commonFunc::bezierSpanPoint3d(const Point2DF& p0, double z0, const Point2DF& p1,
                                            double, const Point2DF& p2, double, const Point2DF& p3,
                                            double z3, double& z, double t)
{
    const BezierSpan span{p1 - p0, p2 - p0, p3 - p0, z0, z3};
    const Point3DF p = span.at(t);
    z = p.z();
    return t == 1 ? p3 : p0 + plan(p);
}

bool commonFunc::bezierCurveSpans(Points points, PointLists& spans)
{
    const Points& given = points;
    CurveInput input;
    input.add(given);
    spans.clear();
    if (!input.isUsable() || given.isEmpty()) return true;

    std::vector<Point2DF> distinct;
    distinct.reserve(static_cast<std::size_t>(given.size()));
    distinct.push_back(given[0]);
    for (int i = 1; i < given.size(); ++i)
        if (given[i] != given[i - 1]) distinct.push_back(given[i]);
    if (distinct.size() < 2) return true;
    if (distinct.size() == 2) {
        const Point2DF chord = distinct[1] - distinct[0];
        spans.append(Points{distinct[0] + kFirstThird * chord, distinct[0] + kSecondThird * chord});
        return true;
    }
    std::vector<Points> fitted = smoothSpans(distinct);
    spans.reserve(given.size() - 1);
    std::size_t next = 0;
    for (int i = 1; i < given.size(); ++i) {
        if (given[i] == given[i - 1])
            spans.append(Points{given[i], given[i]});
        else
            spans.append(std::move(fitted[next++]));
    }
    return true;
}
