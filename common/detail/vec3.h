// Vector arithmetic on points in space, for curves that carry an elevation.
#pragma once

#include <cmath>

#include "tavrel/points.h"

namespace calcora::detail {

using tav::Point3DF;

inline Point3DF sum(const Point3DF& u, const Point3DF& v)
{
    return {u.x() + v.x(), u.y() + v.y(), u.z() + v.z()};
}

inline Point3DF difference(const Point3DF& u, const Point3DF& v)
{
    return {u.x() - v.x(), u.y() - v.y(), u.z() - v.z()};
}

inline Point3DF scaled(double factor, const Point3DF& v)
{
    return {factor * v.x(), factor * v.y(), factor * v.z()};
}

inline double lengthSquared(const Point3DF& v)
{
    return v.x() * v.x() + v.y() * v.y() + v.z() * v.z();
}

inline double length(const Point3DF& v)
{
    return std::sqrt(lengthSquared(v));
}

inline bool isFinite(const Point3DF& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y()) && std::isfinite(p.z());
}

inline tav::Point2DF plan(const Point3DF& p)
{
    return {p.x(), p.y()};
}

}  // namespace calcora::detail
