// What the tests of the curves share: figures, plain sampling, a spline from its definition.
#pragma once

#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <utility>
#include <valarray>
#include <vector>

#include <gtest/gtest.h>

#include "common/commonFunc.h"

namespace curves {

using tav::Point2DF;
using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;
using PointLists = IcommonFunc::PointLists;
using Space = std::valarray<double>;  // x, y, z

inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A line with uneven steps; multiples of 1/64, so that moving it far out is exact.
inline Points wanderingLine(int n)
{
    Points points{{0, 0}};
    for (unsigned state = 12345; points.size() < n;) {
        const double step = ((state = state * 1664525u + 1013904223u) >> 16) % 640 / 64.0;
        const double rise = ((state = state * 1664525u + 1013904223u) >> 16) % 1280 / 64.0 - 10;
        points.append(points.last() + Point2DF(step + 0.5, rise));
    }
    return points;
}

inline Points moved(Points points, double dx, double dy)
{
    for (Point2DF& p : points) p += {dx, dy};
    return points;
}

inline double length(const Point2DF& v)
{
    return v.distanceTo({0, 0});
}

/// The counter-clockwise turn from u to v.
inline double turn(const Point2DF& u, const Point2DF& v)
{
    return std::atan2(u.x() * v.y() - u.y() * v.x(), u.x() * v.x() + u.y() * v.y());
}

inline double distanceToLine(const Point2DF& p, const Points& line)
{
    return std::sqrt(commonFunc(0).pointPolylineDistSquared(p, line));
}

/// The slope of a cubic at its end q[0] from its points at steps of d.
inline Point2DF endSlope(const Point2DF* q, int step, double d)
{
    return (step / (6 * d)) * (18 * q[step] - 11 * q[0] - 9 * q[2 * step] + 2 * q[3 * step]);
}

inline void expectNear(const Points& found, const Points& wanted, double tolerance)
{
    ASSERT_EQ(found.size(), wanted.size());
    for (int i = 0; i < found.size(); ++i)
        ASSERT_LE(found[i].distanceTo(wanted[i]), tolerance) << "point " << i;
}

/// Appends the curve from t0 up to, but without, t1, halved while its middle is off the chord's.
inline void sample(const std::function<Space(double)>& curve, double t0, double t1,
                   double tolerance, std::vector<Space>& out)
{
    const double t = (t0 + t1) / 2;
    const Space off = curve(t) - (curve(t0) + curve(t1)) / 2.0;
    if (std::sqrt((off * off).sum()) > tolerance) {
        sample(curve, t0, t, tolerance, out);
        sample(curve, t, t1, tolerance, out);
    } else {
        out.push_back(curve(t0));
    }
}

/// `z` may be empty.
inline void expectNear(const Points& found, const Values& z, const std::vector<Space>& wanted)
{
    Points plan;
    for (const Space& p : wanted) plan.append({p[0], p[1]});
    expectNear(found, plan, 1e-7);
    for (int i = 0; i < z.size(); ++i)
        ASSERT_NEAR(z[i], wanted[static_cast<std::size_t>(i)][2], 1e-7) << "point " << i;
}

/// A spline under tension from its definition: on every span each axis is a + b u + c cosh(su) +
/// d sinh(su); it meets the nodes, has one slope and one bend on both sides of each, and the given
/// slopes at its ends (those of the chords without).
class HyperbolicSpline {
public:
    explicit HyperbolicSpline(const std::vector<Space>& nodes, Space start = {}, Space end = {})
    {
        const std::size_t spans = nodes.size() - 1;
        for (std::size_t i = 0; i < spans; ++i) {
            const Space chord = nodes[i + 1] - nodes[i];
            h_.push_back(std::sqrt((chord * chord).sum()));
            if (i == 0 && start.size() == 0) start = chord / h_[i];
            if (i + 1 == spans && end.size() == 0) end = chord / h_[i];
        }
        const double total = std::accumulate(h_.begin(), h_.end(), 0.0);
        tension_ = 4.5 * static_cast<double>(spans) / total;
        std::vector<Space> rows;  // four unknowns for each span, then the right side of each axis
        const auto demand = [&](std::size_t span, int order, double u, const Space& right) {
            rows.emplace_back(4 * spans + 3);
            for (std::size_t c = 0; c < 4; ++c) rows.back()[4 * span + c] = basis(c, order, u);
            rows.back()[std::slice(4 * spans, 3, 1)] = right;
        };
        demand(0, 1, 0, start);
        demand(spans - 1, 1, h_.back(), end);
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

}  // namespace curves
