// Reading bulge lists that may be shorter than their point list.
#pragma once

#include <cmath>

#include "tavrel/Vector.h"

namespace calcora::detail {

/// The bulge of segment i; a missing entry is a straight segment.
inline double bulgeAt(const tav::Vector<double>& bulges, int i)
{
    return i < bulges.size() ? bulges[i] : 0.0;
}

/// Appends zeros until there is a bulge for each of `count` points.
inline void padBulges(tav::Vector<double>& bulges, int count)
{
    if (bulges.size() < count) bulges.resize(count, 0.0);
}

}  // namespace calcora::detail
