// The point primitives that IcommonFunc and IDataGeo both offer, as plain functions.
#pragma once

#include <cmath>
#include <numbers>
#include <utility>

#include "common/detail/vec.h"
#include "tavrel/Vector.h"

namespace calcora::detail {

inline constexpr double kPi = std::numbers::pi;
inline constexpr double kTwoPi = 2 * std::numbers::pi;

/// Drawing units: a line whose x difference is smaller is vertical, a direction whose leading
/// difference is smaller runs backwards. lineAngle().
inline constexpr double kVerticalTolerance = 1e-12;

inline double pointDistSquared(const Point2DF& a, const Point2DF& b)
{
    const double dx = a.x() - b.x();
    const double dy = a.y() - b.y();
    return dx * dx + dy * dy;
}

/// Direction of the line from `from` to `to` in [0, 2 pi); coincident points give 3 pi / 2.
inline double lineAngle(const Point2DF& from, const Point2DF& to)
{
    double angle = kPi / 2;
    double ahead = to.y() - from.y();
    if (!(std::fabs(from.x() - to.x()) < kVerticalTolerance)) {
        angle = std::atan((to.y() - from.y()) / (to.x() - from.x()));
        ahead = to.x() - from.x();
    }
    if (ahead < kVerticalTolerance) angle += kPi;
    if (angle < 0) angle += kTwoPi;
    // A direction a hair below the x axis rounds up to the full turn.
    return angle >= kTwoPi ? 0.0 : angle;
}

/// The counter-clockwise turn from direction `from` to direction `to`, both in [0, 2 pi).
inline double turnBetween(double from, double to)
{
    const double turn = to - from;
    return turn < 0 ? turn + kTwoPi : turn;
}

inline Point2DF polarPoint(const Point2DF& base, double angle, double distance)
{
    return {base.x() + std::cos(angle) * distance, base.y() + std::sin(angle) * distance};
}

inline void reverseValues(tav::Vector<double>& values)
{
    const int n = values.size();
    for (int i = 0; i < n / 2; ++i) std::swap(values[i], values[n - 1 - i]);
}

/// Swaps the coordinates; each element keeps its place in the list.
inline void reversePoints(tav::Vector<Point2DF>& points)
{
    const int n = points.size();
    for (int i = 0; i < n / 2; ++i) {
        Point2DF& front = points[i];
        Point2DF& back = points[n - 1 - i];
        const Point2DF kept = front;
        front.setX(back.x());
        front.setY(back.y());
        back.setX(kept.x());
        back.setY(kept.y());
    }
}

/// Bulges of the same line, at least two, run the other way: reversed and negated, the closing bulge
/// kept last.
inline void reverseBulges(tav::Vector<double>& bulges)
{
    const int n = bulges.size();
    tav::Vector<double> reversed;
    reversed.reserve(n);
    for (int i = n - 2; i >= 0; --i) reversed.append(-std::as_const(bulges)[i]);
    reversed.append(-std::as_const(bulges)[n - 1]);
    bulges = std::move(reversed);
}

}  // namespace calcora::detail
