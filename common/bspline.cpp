// Clamped B-spline over control points.
//
// The knots are k - 1 zeros, 0, 1, ... up to n - k + 1, and k - 1 repeats of the last, for n
// control points and the order k. The basis functions follow the recursion of Cox and de Boor,
//
//     N(i,1) = 1 on [t[i], t[i+1]), else 0;
//     N(i,m) = (u - t[i]) / (t[i+m-1] - t[i]) N(i,m-1) + (t[i+m] - u) / (t[i+m] - t[i+1])
//     N(i+1,m-1),
//
// without the terms whose denominator is 0. Between two knots only k of them are not 0, and those
// alone are formed, so that a point costs the same over four control points and over a million.
// (M. G. Cox, The numerical evaluation of B-splines, 1972; C. de Boor, On calculating with
// B-splines, Journal of Approximation Theory 6, 1972.)

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/curve_sampling.h"

namespace {

using calcora::detail::ChordSampler;
using calcora::detail::CurveInput;
using calcora::detail::CurveSample;
using calcora::detail::difference;
using calcora::detail::SampledCurve;
using calcora::detail::scaled;
using calcora::detail::sum;
using tav::Point3DF;

using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

/// The only degree on offer; fewer control points lower it.
constexpr int kDegree = 3;
constexpr int kMaxOrder = kDegree + 1;

/// A clamped B-spline over at least three control points, relative to the first of them.
class ClampedSpline {
public:
    explicit ClampedSpline(std::vector<Point3DF> controls)
        : controls_(std::move(controls)),
          count_(static_cast<int>(controls_.size())),
          order_(std::min(kMaxOrder, count_))
    {
    }

    int spans() const { return count_ - order_ + 1; }
    double lastKnot() const { return spans(); }

    /// The curve at u from 0 up to, but without, the last knot, where every basis function is 0.
    Point3DF at(double u) const
    {
        const auto interval = static_cast<int>(u);  // of the knots apart from the repeated ones
        const std::array<double, kMaxOrder> basis = basisOn(interval, u);
        const Point3DF* active = controls_.data() + interval;
        Point3DF point;
        for (std::size_t j = 0; j < static_cast<std::size_t>(order_); ++j)
            point = sum(point, scaled(basis[j], active[j]));
        return point;
    }

private:
    double knot(int i) const { return std::clamp(i - (order_ - 1), 0, spans()); }

    /// The basis functions of the control points interval to interval + order - 1, which are the
    /// ones that are not 0 from knot interval + order - 1 on up to the next.
    std::array<double, kMaxOrder> basisOn(int interval, double u) const
    {
        const auto k = static_cast<std::size_t>(order_);
        std::array<double, 2 * std::size_t{kMaxOrder}>
            t{};  // the knots that they reach over, from `interval`
        for (std::size_t j = 0; j < 2 * k; ++j) t[j] = knot(interval + static_cast<int>(j));
        std::array<double, kMaxOrder> basis{};  // entry j is N(interval + j, m), first m = 1
        basis[k - 1] = 1.0;
        for (std::size_t m = 2; m <= k; ++m) {
            for (std::size_t j = k - m; j < k; ++j) {
                double value = 0.0;
                if (const double width = t[j + m - 1] - t[j]; width != 0)
                    value += (u - t[j]) / width * basis[j];
                if (const double width = t[j + m] - t[j + 1]; width != 0 && j + 1 < k)
                    value += (t[j + m] - u) / width * basis[j + 1];
                basis[j] = value;
            }
        }
        return basis;
    }

    std::vector<Point3DF> controls_;
    int count_;
    int order_;
};

/// `z` and `outZ` may be null together: the elevations are 0 then. The outputs may be the inputs,
/// which are not read any more when the first point is appended.
bool curveToPolyline(const Points& controls, const Values* z, Points& outPoints, Values* outZ,
                     int degree, double tolerance)
{
    const int n = controls.size();
    if (degree != kDegree || (z && z->size() < n)) return false;
    CurveInput input;
    input.add(controls);
    if (z) input.addElevations(*z, n);
    if (!input.isUsable()) return false;

    std::vector<Point3DF> nodes;
    nodes.reserve(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) nodes.emplace_back(controls[i], z ? (*z)[i] : 0.0);
    const auto append = [&](const Point3DF& p) {
        outPoints.append(calcora::detail::plan(p));
        if (outZ) outZ->append(p.z());
    };
    if (n < 3) {
        for (const Point3DF& node : nodes) append(node);
        return true;
    }
    const Point3DF first = nodes.front(), last = nodes.back();
    for (Point3DF& node : nodes) node = difference(node, first);
    const ClampedSpline spline(std::move(nodes));

    const auto at = [&spline](double u) { return spline.at(u); };
    const CurveSample<Point3DF> start{0.0, Point3DF()};
    const CurveSample<Point3DF> end{spline.lastKnot(), difference(last, first)};
    ChordSampler sampler(spline.spans());
    append(first);
    sampler.run(SampledCurve(at, input.tolerance(tolerance)), start, end, 0,
                [&](const auto& sample) { append(sum(first, sample.point)); });
    append(last);
    return true;
}

}  // namespace

bool commonFunc::bsplineToPolyline3d(const Points& controls, const Values& z, Points& outPoints,
                                     Values& outZ, int degree, double tolerance)
{
    return curveToPolyline(controls, &z, outPoints, &outZ, degree, tolerance);
}

bool commonFunc::bsplineToPolyline(const Points& controls, Points& outPoints, int degree,
                                   double tolerance)
{
    return curveToPolyline(controls, nullptr, outPoints, nullptr, degree, tolerance);
}
