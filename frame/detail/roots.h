// Square roots of arrays.
#pragma once

#include <cmath>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace calcora::detail {

/// The square root of every element from `First` on. (std::sqrt may have to set errno, one at a time.)
template <int First = 0, int N>
inline void takeRoots(double (&values)[N])
{
    int i = First;
#if defined(__SSE2__)
    for (; i + 1 < N; i += 2) _mm_storeu_pd(values + i, _mm_sqrt_pd(_mm_loadu_pd(values + i)));
#endif
    for (; i < N; ++i) values[i] = std::sqrt(values[i]);
}

}  // namespace calcora::detail
