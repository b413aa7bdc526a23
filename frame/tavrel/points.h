// Points, rectangles and the arc record of a path.
#pragma once

#include <cmath>
#include <cstdint>

#include "tavrel/export.h"

namespace tav {

/// A point or vector of the plane; doubles in drawing units.
class TAV_TEMPLATE_API Point2DF {
public:
    constexpr Point2DF() = default;
    constexpr Point2DF(double x, double y) : x_(x), y_(y) {}

    constexpr double x() const { return x_; }
    constexpr double y() const { return y_; }
    constexpr void setX(double x) { x_ = x; }
    constexpr void setY(double y) { y_ = y; }

    /// Euclidean distance.
    double distanceTo(const Point2DF& other) const
    {
        const double dx = x_ - other.x_;
        const double dy = y_ - other.y_;
        return std::sqrt(dx * dx + dy * dy);
    }

    constexpr Point2DF& operator+=(const Point2DF& other)
    {
        x_ += other.x_;
        y_ += other.y_;
        return *this;
    }
    constexpr Point2DF& operator-=(const Point2DF& other)
    {
        x_ -= other.x_;
        y_ -= other.y_;
        return *this;
    }

    /// Exact comparison of both coordinates (so a not-a-number equals nothing).
    friend constexpr bool operator==(const Point2DF& a, const Point2DF& b) = default;

private:
    double x_ = 0.0;
    double y_ = 0.0;
};

constexpr Point2DF operator+(Point2DF a, const Point2DF& b)
{
    return a += b;
}
constexpr Point2DF operator-(Point2DF a, const Point2DF& b)
{
    return a -= b;
}
constexpr Point2DF operator*(double factor, const Point2DF& v)
{
    return {factor * v.x(), factor * v.y()};
}

/// A point or vector in space; doubles in drawing units.
class TAV_TEMPLATE_API Point3DF {
public:
    constexpr Point3DF() = default;
    constexpr Point3DF(double x, double y, double z) : x_(x), y_(y), z_(z) {}
    constexpr Point3DF(const Point2DF& plan, double z) : x_(plan.x()), y_(plan.y()), z_(z) {}

    constexpr double x() const { return x_; }
    constexpr double y() const { return y_; }
    constexpr double z() const { return z_; }
    constexpr void setX(double x) { x_ = x; }
    constexpr void setY(double y) { y_ = y; }
    constexpr void setZ(double z) { z_ = z; }

    /// Exact comparison of all three coordinates.
    friend constexpr bool operator==(const Point3DF& a, const Point3DF& b) = default;

private:
    double x_ = 0.0;
    double y_ = 0.0;
    double z_ = 0.0;
};

/// Four values, handed back as they were given. Which of top and bottom is the larger is the
/// business of whoever fills it.
class TAV_TEMPLATE_API RectF {
public:
    constexpr RectF() = default;
    constexpr RectF(double left, double top, double right, double bottom)
        : left_(left), top_(top), right_(right), bottom_(bottom)
    {
    }

    constexpr double left() const { return left_; }
    constexpr double top() const { return top_; }
    constexpr double right() const { return right_; }
    constexpr double bottom() const { return bottom_; }

    friend constexpr bool operator==(const RectF& a, const RectF& b) = default;

private:
    double left_ = 0.0;
    double top_ = 0.0;
    double right_ = 0.0;
    double bottom_ = 0.0;
};

/// Arc record of a path: segment `segmentIndex` is the circular arc from its first point through
/// `arcPoint` to its second.
struct TAV_TEMPLATE_API Radian {
    std::int32_t segmentIndex = 0;
    Point3DF arcPoint;

    friend constexpr bool operator==(const Radian& a, const Radian& b) = default;
};

}  // namespace tav
