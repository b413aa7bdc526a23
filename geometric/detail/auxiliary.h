// The objects that operations make for the duration of a call.
#pragma once

#include <cmath>
#include <optional>

#include "calcora/IGeometric.h"
#include "frame/detail/path_access.h"
#include "tavrel/points.h"

namespace calcora::paths {

/// The name under which this room reports.
inline constexpr const char* kGeometricSource = "geometric";

/// A new object offering I; a failed creation is reported with the caller's line (std::source_location
/// is not in every compiler).
template <class I>
tav::Ref<I> createAuxiliary(int line = __builtin_LINE())
{
    return createOrReport<I>(kGeometricSource, line);
}

/// A straight path through the points; empty when it could not be made, which is reported.
template <class Points>
geo::PathRef pathThrough(const Points& points, int line = __builtin_LINE())
{
    const auto collection = createAuxiliary<geo::IPointCollection>(line);
    if (!collection) return {};
    for (const tav::Point3DF& point : points) collection->addPoint(point);
    return collection.template query<geo::IPath>();
}

/// The path of one segment from a to b, with an arc record when there is an arc point.
inline geo::PathRef segmentPath(const tav::Point3DF& a, const tav::Point3DF& b,
                                const std::optional<tav::Point3DF>& arcPoint = std::nullopt,
                                int line = __builtin_LINE())
{
    const auto collection = createAuxiliary<geo::IPointCollection>(line);
    if (!collection) return {};
    collection->addPoint(a);
    collection->addPoint(b);
    if (arcPoint) collection->addArcRecord(tav::Radian{0, *arcPoint});
    return collection.query<geo::IPath>();
}

/// The sum of the lengths of the segments that `segmentAt(arcs, i)` gives, in the order in which
/// stations run; nothing when it gives nothing or the sum is not finite.
template <class SegmentAt>
std::optional<double> totalLength(const PathView& path, SegmentAt segmentAt)
{
    const ArcIndex arcs(path);
    double total = 0.0;
    for (int i = 0; i + 1 < path.pointCount(); ++i) {
        const auto segment = segmentAt(arcs, i);
        if (!segment) return std::nullopt;
        total += segment->length;
    }
    if (!std::isfinite(total)) return std::nullopt;
    return total;
}

}  // namespace calcora::paths
