// What the tests of the curves share: figures and plain sampling.
#pragma once

#include <functional>
#include <valarray>

#include "tests/support/edges.h"

namespace curves {

using namespace test_support;
using Space = std::valarray<double>;  // x, y, z

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

inline Points reversed(const Points& points)
{
    Points result;
    for (int i = points.size() - 1; i >= 0; --i) result.append(points[i]);
    return result;
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
    return std::sqrt(geometry.pointPolylineDistSquared(p, line));
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

inline double length(const Space& v)
{
    return std::sqrt((v * v).sum());
}

/// Appends the curve from t0 up to, but without, t1, halved while its middle is off the chord's.
///
/// That is all the rule looks at. What it promises between whole parameters, where the curves are
/// smooth: of what mirrors about the middle the mean is no farther off, and where the two do not
/// bend to opposite sides, neither is the curve.
inline void sample(const std::function<Space(double)>& curve, double t0, double t1,
                   double tolerance, std::vector<Space>& out)
{
    const double t = (t0 + t1) / 2;
    const Space middle = (curve(t0) + curve(t1)) / 2.0;
    if (length(curve(t) - middle) > tolerance) {
        sample(curve, t0, t, tolerance, out);
        sample(curve, t, t1, tolerance, out);
        return;
    }
    out.push_back(curve(t0));
    if (std::ceil(t1) - std::floor(t0) > 1) return;
    for (const double part : {0.1, 0.2, 0.3, 0.4}) {
        const double away = part * (t1 - t0);
        const Space mean = (curve(t - away) + curve(t + away)) / 2.0;
        ASSERT_LE(length(mean - middle), tolerance * (1 + 1e-9));
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

}  // namespace curves
