// The sense of rotation of three points, decided without rounding (J. Shewchuk 1997).
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "common/detail/vec.h"

namespace calcora::detail {

/// A sum of doubles without loss: its terms do not overlap and grow in size, so that the last one
/// has the sign of the sum.
template <std::size_t Capacity>
class ExactSum {
public:
    void add(double value)
    {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < count_; ++i) {
            const double sum = value + terms_[i];
            const double taken = sum - value;
            const double lost = (value - (sum - taken)) + (terms_[i] - taken);
            if (lost != 0) terms_[kept++] = lost;
            value = sum;
        }
        if (value != 0) terms_[kept++] = value;
        count_ = kept;
    }

    void addProduct(double a, double b)
    {
        const double product = a * b;
        add(std::fma(a, b, -product));
        add(product);
    }

    int sign() const
    {
        if (count_ == 0) return 0;
        return terms_[count_ - 1] > 0 ? 1 : -1;
    }

private:
    std::array<double, Capacity> terms_{};
    std::size_t count_ = 0;
};

/// a - b without loss, as a double and what rounding took from it.
struct ExactDifference {
    ExactDifference(double a, double b) : high(a - b)
    {
        const double taken = a - high;
        low = (a - (high + taken)) + (taken - b);
    }

    double high;
    double low;
};

/// More than what rounding can do to (a.x - c.x)(b.y - c.y) - (b.x - c.x)(a.y - c.y), computed from
/// left to right.
inline double orientationNoise(const Point2DF& a, const Point2DF& b, const Point2DF& c)
{
    constexpr double kRelative = 4e-16;  // three roundings of 2^-53 each, and a little
    return kRelative * (std::fabs((a.x() - c.x()) * (b.y() - c.y())) +
                        std::fabs((b.x() - c.x()) * (a.y() - c.y())));
}

/// 1 when a, b, c turn counter-clockwise, -1 when clockwise, 0 when they lie on one line.
///
/// Exact for coordinates that are 0 or between 1e-100 and 1e150 in size; beyond that products
/// leave the range of a double.
inline int orientationSign(const Point2DF& a, const Point2DF& b, const Point2DF& c)
{
    const double area = (a.x() - c.x()) * (b.y() - c.y()) - (b.x() - c.x()) * (a.y() - c.y());
    if (std::fabs(area) > orientationNoise(a, b, c)) return area > 0 ? 1 : -1;
    const ExactDifference ax(a.x(), c.x());
    const ExactDifference ay(a.y(), c.y());
    const ExactDifference bx(b.x(), c.x());
    const ExactDifference by(b.y(), c.y());
    ExactSum<16> sum;
    for (const double x : {ax.low, ax.high})
        for (const double y : {by.low, by.high}) sum.addProduct(x, y);
    for (const double x : {bx.low, bx.high})
        for (const double y : {ay.low, ay.high}) sum.addProduct(-x, y);
    return sum.sign();
}

}  // namespace calcora::detail
