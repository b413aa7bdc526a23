// Vector arithmetic on points of the plane.
#pragma once

#include <cmath>

#include "tavrel/points.h"

namespace calcora::detail {

using tav::Point2DF;

inline double dot(const Point2DF& u, const Point2DF& v)
{
    return u.x() * v.x() + u.y() * v.y();
}

/// Positive when v lies counter-clockwise of u.
inline double cross(const Point2DF& u, const Point2DF& v)
{
    return u.x() * v.y() - u.y() * v.x();
}

inline double lengthSquared(const Point2DF& v)
{
    return dot(v, v);
}

inline double length(const Point2DF& v)
{
    return std::sqrt(lengthSquared(v));
}

/// The middle of a and b, without the overflow and the loss of (a + b) / 2.
inline Point2DF midpoint(const Point2DF& a, const Point2DF& b)
{
    return {a.x() + (b.x() - a.x()) / 2, a.y() + (b.y() - a.y()) / 2};
}

/// v turned by a quarter counter-clockwise.
inline Point2DF leftNormal(const Point2DF& v)
{
    return {-v.y(), v.x()};
}

inline bool isFinite(const Point2DF& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y());
}

}  // namespace calcora::detail
