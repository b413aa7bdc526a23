// Rectangles of the tree: covers and the measure of size.
#pragma once

#include <cmath>

#include "calcora/ICRTree.h"

namespace calcora::rtree {

/// Volume of the unit sphere in two dimensions, to the six decimals that every comparison of
/// rectangle sizes rests on.
inline constexpr double kUnitSphereVolume = 3.141593;

inline double smaller(double a, double b)
{
    return b < a ? b : a;
}

inline double larger(double a, double b)
{
    return a < b ? b : a;
}

/// The smallest rectangle over both.
inline RTreeRect combineRect(const RTreeRect& a, const RTreeRect& b)
{
    return {smaller(a.minX, b.minX), smaller(a.minY, b.minY), larger(a.maxX, b.maxX),
            larger(a.maxY, b.maxY)};
}

/// Square of half the diagonal between two opposite corners.
inline double squaredRadius(double minX, double minY, double maxX, double maxY)
{
    const double halfWidth = (maxX - minX) * 0.5;
    const double halfHeight = (maxY - minY) * 0.5;
    return halfWidth * halfWidth + halfHeight * halfHeight;
}

/// The size of a rectangle: the disc through its corners. The root is taken and squared again
/// because ties between sizes are decided by the last bit.
inline double sphericalVolume(const RTreeRect& r)
{
    const double radius = std::sqrt(squaredRadius(r.minX, r.minY, r.maxX, r.maxY));
    return radius * radius * kUnitSphereVolume;
}

}  // namespace calcora::rtree
