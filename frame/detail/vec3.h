// Vector arithmetic in space, and when three points count as collinear.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "tavrel/points.h"

namespace calcora::paths {

/// A vector of space, or a point told from a local origin. A plan figure has z = 0.
struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    friend constexpr Vec3 operator+(const Vec3& a, const Vec3& b)
    {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend constexpr Vec3 operator-(const Vec3& a, const Vec3& b)
    {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend constexpr Vec3 operator-(const Vec3& v) { return {-v.x, -v.y, -v.z}; }
    friend constexpr Vec3 operator*(double k, const Vec3& v) { return {k * v.x, k * v.y, k * v.z}; }
    friend constexpr Vec3 operator/(const Vec3& v, double k) { return {v.x / k, v.y / k, v.z / k}; }
};

constexpr double dot(const Vec3& u, const Vec3& v)
{
    return u.x * v.x + u.y * v.y + u.z * v.z;
}

constexpr Vec3 cross(const Vec3& u, const Vec3& v)
{
    return {u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
}

/// The plan cross product: positive when v lies counter-clockwise of u.
constexpr double planCross(const Vec3& u, const Vec3& v)
{
    return u.x * v.y - u.y * v.x;
}

inline double length(const Vec3& v)
{
    return std::sqrt(dot(v, v));
}

inline bool isFinite(const Vec3& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

inline bool isFinite(const tav::Point3DF& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y()) && std::isfinite(p.z());
}

/// A length that divides: not 0 (nor so by underflow), finite, and a number.
inline bool isUsableLength(double value)
{
    return value > 0 && std::isfinite(value);
}

/// The vector from a to b.
constexpr Vec3 between(const tav::Point3DF& a, const tav::Point3DF& b)
{
    return {b.x() - a.x(), b.y() - a.y(), b.z() - a.z()};
}

/// The plan vector from a to b.
constexpr Vec3 planBetween(const tav::Point3DF& a, const tav::Point3DF& b)
{
    return {b.x() - a.x(), b.y() - a.y(), 0.0};
}

constexpr tav::Point3DF moved(const tav::Point3DF& p, const Vec3& v)
{
    return {p.x() + v.x, p.y() + v.y, p.z() + v.z};
}

constexpr tav::Point3DF toPoint(const Vec3& v)
{
    return {v.x, v.y, v.z};
}

/// The point with height 0.
constexpr tav::Point3DF inPlan(const tav::Point3DF& p)
{
    return {p.x(), p.y(), 0.0};
}

/// acos and asin for a cosine or sine that rounding may have pushed past 1.
inline double clampedAcos(double cosine)
{
    return std::acos(std::clamp(cosine, -1.0, 1.0));
}
inline double clampedAsin(double sine)
{
    return std::asin(std::clamp(sine, -1.0, 1.0));
}

/// The largest coordinate of the points in size.
inline double largestCoordinate(const tav::Point3DF& a, const tav::Point3DF& b,
                                const tav::Point3DF& c)
{
    double largest = 0.0;
    for (const tav::Point3DF* p : {&a, &b, &c})
        largest = std::max({largest, std::fabs(p->x()), std::fabs(p->y()), std::fabs(p->z())});
    return largest;
}

/// Share of the largest coordinate that a point may lie beside a line and still be on it: what is
/// left of a collinear triple once its coordinates are rounded to doubles.
inline constexpr double kCollinearShare = 4 * std::numeric_limits<double>::epsilon();

/// True when no circle goes through the three points: they lie on one line as far as their
/// coordinates can tell, or are not all finite.
inline bool areCollinear(const tav::Point3DF& a, const tav::Point3DF& b, const tav::Point3DF& m)
{
    const Vec3 u = between(a, b);
    const Vec3 v = between(a, m);
    const double area = length(cross(u, v));
    const double bound = kCollinearShare * largestCoordinate(a, b, m) * (length(u) + length(v));
    return !(area > bound && std::isfinite(area));
}

}  // namespace calcora::paths
