// The primitives of commonFunc as plain functions, for loops over objects that override none.
#pragma once

#include <cmath>

#include "common/commonFunc.h"
#include "common/detail/primitives.h"
#include "detail/exact_class.h"

namespace calcora::detail {

/// Squared distance from p to the closed segment from a to b. `functions` has the scalar product.
template <class Functions>
double pointSegmentDistSquared(Functions& functions, const Point2DF& p, const Point2DF& a,
                               const Point2DF& b)
{
    const double toStart = pointDistSquared(p, a);
    const double toEnd = pointDistSquared(p, b);
    // Seen from the end that is nearer to p (from b on ties).
    const bool fromStart = toEnd > toStart;
    const Point2DF along = fromStart ? b - a : a - b;
    const Point2DF toPoint = fromStart ? p - a : p - b;
    const double ahead = functions.scalarProduct(along, toPoint);
    if (ahead <= 0) return fromStart ? toStart : toEnd;
    const double alongSquared = lengthSquared(along);
    if (ahead >= alongSquared) return toEnd;
    // As a cross product it is never negative, which |toPoint|^2 - (projection)^2 would be by rounding.
    const double area = cross(along, toPoint);
    const double areaSquared = area * area;
    const bool isInRange = areaSquared > 0 && std::isfinite(areaSquared);
    return isInRange ? areaSquared / alongSquared : area * (area / alongSquared);
}

/// Square drawing units: a point nearer to a segment's line than the root of this is on it.
inline constexpr double kOnSegmentSquared = 1e-8;
/// Square drawing units along a segment: rounding allowed at its ends, with its share of length.
inline constexpr double kSegmentEndSlack = 1e-12;
inline constexpr double kSegmentEndSlackPerLength = 2e-14;

/// Whether p lies within 1e-4 of the segment from a to b, seen from its nearer end.
inline bool isPointOnSegment(const Point2DF& p, const Point2DF& a, const Point2DF& b)
{
    const bool isNearerToA = pointDistSquared(p, a) < pointDistSquared(p, b);
    const Point2DF& near = isNearerToA ? a : b;
    const Point2DF& far = isNearerToA ? b : a;
    const Point2DF v = far - near;
    const Point2DF w = p - near;
    const double along = dot(v, w);
    const double chordSquared = lengthSquared(v);
    if (!(chordSquared > 0 && along >= -kSegmentEndSlack &&
          along <= chordSquared + kSegmentEndSlackPerLength * std::sqrt(chordSquared) +
                       kSegmentEndSlack))
        return false;
    // From the cross product: |w|^2 - along^2 / |v|^2 is all rounding on a long segment.
    const double across = cross(v, w);
    return across * across / chordSquared < kOnSegmentSquared;
}

/// What an object of class commonFunc itself does, without the virtual calls.
struct PlainFunctions {
    static constexpr bool kIsPlain = true;

    static double pointDistSquared(const Point2DF& a, const Point2DF& b)
    {
        return detail::pointDistSquared(a, b);
    }
    static double pointDist(const Point2DF& a, const Point2DF& b)
    {
        return std::sqrt(detail::pointDistSquared(a, b));
    }
    static bool isPointOnSegment(const Point2DF& p, const Point2DF& a, const Point2DF& b)
    {
        return detail::isPointOnSegment(p, a, b);
    }
    static double scalarProduct(const Point2DF& u, const Point2DF& v) { return dot(u, v); }
    static double orientation3(const Point2DF& p1, const Point2DF& p2, const Point2DF& p3)
    {
        return cross(p1 - p3, p2 - p3);
    }
    static double pointSegmentDistSquared(const Point2DF& p, const Point2DF& a, const Point2DF& b)
    {
        const PlainFunctions functions;
        return detail::pointSegmentDistSquared(functions, p, a, b);
    }
};

/// The same operations, as the object has them.
class VirtualFunctions {
public:
    static constexpr bool kIsPlain = false;

    explicit VirtualFunctions(IcommonFunc& object) : object_(object) {}

    double pointDistSquared(const Point2DF& a, const Point2DF& b)
    {
        return object_.pointDistSquared(a, b);
    }
    double pointDist(const Point2DF& a, const Point2DF& b) { return object_.pointDist(a, b); }
    bool isPointOnSegment(const Point2DF& p, const Point2DF& a, const Point2DF& b)
    {
        return object_.isPointOnSegment(p, a, b);
    }
    double orientation3(const Point2DF& p1, const Point2DF& p2, const Point2DF& p3)
    {
        return object_.orientation3(p1, p2, p3);
    }
    double pointSegmentDistSquared(const Point2DF& p, const Point2DF& a, const Point2DF& b)
    {
        return object_.pointSegmentDistSquared(p, a, b);
    }

private:
    IcommonFunc& object_;
};

/// work(functions) with the plain functions, or with the object where it may override some: loops
/// written once for both.
template <class Work>
decltype(auto) withFunctionsOf(commonFunc& object, Work&& work)
{
    if (isExactly(object)) {
        PlainFunctions functions;
        return work(functions);
    }
    VirtualFunctions functions(object);
    return work(functions);
}

}  // namespace calcora::detail
