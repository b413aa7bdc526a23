// Boxes of stretches of vertices, so that walks along a figure may pass over what is far away.
#pragma once

#include <algorithm>
#include <cmath>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "common/detail/vec.h"

namespace calcora::detail {

/// Edges that share a box.
inline constexpr int kEdgesInBox = 16;

struct VertexBox {
    Point2DF low;
    Point2DF high;
    bool isSound = false;  ///< every coordinate is a number

    /// Takes in a box that is as sound as this one.
    void include(const VertexBox& other)
    {
        low = {std::min(low.x(), other.low.x()), std::min(low.y(), other.low.y())};
        high = {std::max(high.x(), other.high.x()), std::max(high.y(), other.high.y())};
    }

    /// How far the box lies from p at least, along x and along y.
    Point2DF gapTo(const Point2DF& p) const
    {
        return {std::max({low.x() - p.x(), p.x() - high.x(), 0.0}),
                std::max({low.y() - p.y(), p.y() - high.y(), 0.0})};
    }

    /// At least the distance from p of every point in the box.
    double reachFrom(const Point2DF& p) const
    {
        return std::max(std::fabs(low.x() - p.x()), std::fabs(high.x() - p.x())) +
               std::max(std::fabs(low.y() - p.y()), std::fabs(high.y() - p.y()));
    }
};

/// The box of the vertices first to last, both included.
inline VertexBox boxOf(const Point2DF* vertex, int first, int last)
{
    VertexBox box;
#if defined(__SSE2__)
    static_assert(sizeof(Point2DF) == sizeof(__m128d));
    const auto load = [vertex](int i) {
        return _mm_loadu_pd(reinterpret_cast<const double*>(vertex + i));
    };
    __m128d low = load(first);
    __m128d high = low;
    __m128d unordered = _mm_cmpunord_pd(low, low);
    for (int i = first + 1; i <= last; ++i) {
        const __m128d v = load(i);
        low = _mm_min_pd(v, low);
        high = _mm_max_pd(v, high);
        unordered = _mm_or_pd(unordered, _mm_cmpunord_pd(v, v));
    }
    _mm_storeu_pd(reinterpret_cast<double*>(&box.low), low);
    _mm_storeu_pd(reinterpret_cast<double*>(&box.high), high);
    box.isSound = _mm_movemask_pd(unordered) == 0;
#else
    box = {vertex[first], vertex[first], true};
    for (int i = first; i <= last; ++i) {
        const auto [x, y] = std::pair(vertex[i].x(), vertex[i].y());
        box.low = {std::min(box.low.x(), x), std::min(box.low.y(), y)};
        box.high = {std::max(box.high.x(), x), std::max(box.high.y(), y)};
        if (std::isnan(x) || std::isnan(y)) box.isSound = false;
    }
#endif
    return box;
}

/// Coordinates up to which squares of lengths and products of two fit a double.
inline constexpr double kFarOut = 1e70;

/// Share of its distance from a point by which a computed distance from an edge may be wrong, with
/// room to spare: three roundings of products that large.
inline constexpr double kDistanceRounding = 1e-14;

/// At most what any formula for the distance of p from an edge with both ends in the box comes to;
/// negative when nothing can be said.
inline double computedDistanceAtLeast(const VertexBox& box, const Point2DF& p)
{
    const double reach = box.reachFrom(p);
    if (!(box.isSound && reach < kFarOut)) return -1.0;
    return length(box.gapTo(p)) * (1 - kDistanceRounding) - kDistanceRounding * reach;
}

}  // namespace calcora::detail
