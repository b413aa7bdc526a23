// Arrays of doubles treated lane by lane, and rectangles kept in such arrays.
//
// The loops are written for compilers that treat several lanes at once. Three things no compiler
// does so by itself; they have a form of their own for processors with SSE2. Both forms give the
// same bits.
#pragma once

#include <bit>
#include <cmath>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "detail/roots.h"
#include "rtree/detail/rects.h"

namespace calcora::rtree {

/// N rectangles side by side, one array for each coordinate.
template <int N>
struct RectLanes {
    double minX[N];
    double minY[N];
    double maxX[N];
    double maxY[N];

    RTreeRect at(int i) const { return {minX[i], minY[i], maxX[i], maxY[i]}; }
    void set(int i, const RTreeRect& r)
    {
        minX[i] = r.minX;
        minY[i] = r.minY;
        maxX[i] = r.maxX;
        maxY[i] = r.maxY;
    }
};

/// sphericalVolume(combineRect(rect, lane)) of every lane from `First` on.
template <int First = 0, int N>
inline void combinedVolumes(const RectLanes<N>& lanes, const RTreeRect& rect, double (&volume)[N])
{
    const RTreeRect r = rect;
    for (int i = First; i < N; ++i)
        volume[i] = squaredRadius(smaller(lanes.minX[i], r.minX), smaller(lanes.minY[i], r.minY),
                                  larger(lanes.maxX[i], r.maxX), larger(lanes.maxY[i], r.maxY));
    detail::takeRoots<First>(volume);
    for (int i = First; i < N; ++i) volume[i] = volume[i] * volume[i] * kUnitSphereVolume;
}

/// The least lane, or `start` when none is less; a not-a-number is less than nothing.
template <int N>
inline double leastOf(const double (&values)[N], double start)
{
    double even = start;
    double odd = start;
    int i = 0;
    for (; i + 1 < N; i += 2) {
        even = values[i] < even ? values[i] : even;
        odd = values[i + 1] < odd ? values[i + 1] : odd;
    }
    if constexpr (N % 2 == 1) even = values[i] < even ? values[i] : even;
    return smaller(even, odd);
}

/// The largest lane from `First` on, or `start` when none is larger; a not-a-number is larger than
/// nothing.
template <int First = 0, int N>
inline double largestOf(const double (&values)[N], double start)
{
    double even = start;
    double odd = start;
    int i = First;
    for (; i + 1 < N; i += 2) {
        even = values[i] > even ? values[i] : even;
        odd = values[i + 1] > odd ? values[i + 1] : odd;
    }
    if constexpr ((N - First) % 2 == 1) even = values[i] > even ? values[i] : even;
    return larger(even, odd);
}

/// Comparisons for maskOf; none holds for a not-a-number.
struct AtMost {
    static bool holds(double a, double b) { return a <= b; }
#if defined(__SSE2__)
    static __m128d holds(__m128d a, __m128d b)
    {
        return _mm_cmple_pd(a, b);
    }
#endif
};
struct Below {
    static bool holds(double a, double b) { return a < b; }
#if defined(__SSE2__)
    static __m128d holds(__m128d a, __m128d b)
    {
        return _mm_cmplt_pd(a, b);
    }
#endif
};
struct Equal {
    static bool holds(double a, double b) { return a == b; }
#if defined(__SSE2__)
    static __m128d holds(__m128d a, __m128d b)
    {
        return _mm_cmpeq_pd(a, b);
    }
#endif
};

/// One bit for each lane from `First` on that compares with `bound` like that.
template <class Comparison, int First = 0, int N>
inline unsigned maskOf(const double (&values)[N], double bound)
{
    unsigned mask = 0;
    int i = First;
#if defined(__SSE2__)
    const __m128d bounds = _mm_set1_pd(bound);
    for (; i + 1 < N; i += 2) {
        const __m128d pair = Comparison::holds(_mm_loadu_pd(values + i), bounds);
        mask |= static_cast<unsigned>(_mm_movemask_pd(pair)) << i;
    }
#endif
    for (; i < N; ++i) mask |= static_cast<unsigned>(Comparison::holds(values[i], bound)) << i;
    return mask;
}

/// One bit for each lane of which nothing exceeds the query's bounds: neither the query's minimum
/// the lane's `low` nor the lane's `high` the query's maximum, on either axis. A not-a-number
/// exceeds nothing.
template <int N>
inline unsigned boundedMask(const double (&lowX)[N], const double (&lowY)[N],
                            const double (&highX)[N], const double (&highY)[N],
                            const RTreeRect& query)
{
    const RTreeRect q = query;
    unsigned exceeding = 0;
    int i = 0;
#if defined(__SSE2__)
    const __m128d minX = _mm_set1_pd(q.minX);
    const __m128d minY = _mm_set1_pd(q.minY);
    const __m128d maxX = _mm_set1_pd(q.maxX);
    const __m128d maxY = _mm_set1_pd(q.maxY);
    for (; i + 1 < N; i += 2) {
        const __m128d x = _mm_or_pd(_mm_cmpgt_pd(minX, _mm_loadu_pd(lowX + i)),
                                    _mm_cmpgt_pd(_mm_loadu_pd(highX + i), maxX));
        const __m128d y = _mm_or_pd(_mm_cmpgt_pd(minY, _mm_loadu_pd(lowY + i)),
                                    _mm_cmpgt_pd(_mm_loadu_pd(highY + i), maxY));
        exceeding |= static_cast<unsigned>(_mm_movemask_pd(_mm_or_pd(x, y))) << i;
    }
#endif
    for (; i < N; ++i) {
        const unsigned x =
            static_cast<unsigned>(q.minX > lowX[i]) | static_cast<unsigned>(highX[i] > q.maxX);
        const unsigned y =
            static_cast<unsigned>(q.minY > lowY[i]) | static_cast<unsigned>(highY[i] > q.maxY);
        exceeding |= (x | y) << i;
    }
    return ~exceeding & ((1u << N) - 1);
}

/// One bit for each lane that overlaps `query`; touching edges overlap.
template <int N>
inline unsigned overlapMask(const RectLanes<N>& lanes, const RTreeRect& query)
{
    return boundedMask(lanes.maxX, lanes.maxY, lanes.minX, lanes.minY, query);
}

/// One bit for each lane that lies inside `query`; shared edges count as inside.
template <int N>
inline unsigned containedMask(const RectLanes<N>& lanes, const RTreeRect& query)
{
    return boundedMask(lanes.minX, lanes.minY, lanes.maxX, lanes.maxY, query);
}

}  // namespace calcora::rtree
