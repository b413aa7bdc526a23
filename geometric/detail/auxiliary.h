// The objects that operations make for the duration of a call.
#pragma once

#include <source_location>

#include "calcora/IGeometric.h"
#include "frame/detail/path_access.h"
#include "tavrel/points.h"

namespace calcora::paths {

/// The name under which this room reports.
inline constexpr const char* kGeometricSource = "geometric";

using SourceLine = std::source_location;

/// A new object offering I; a failed creation is reported with the caller's line.
template <class I>
tav::Ref<I> createAuxiliary(SourceLine at = SourceLine::current())
{
    return createOrReport<I>(kGeometricSource, static_cast<int>(at.line()));
}

/// A straight path through the points; empty when it could not be made, which is reported.
template <class Points>
geo::PathRef pathThrough(const Points& points, SourceLine at = SourceLine::current())
{
    const auto collection = createAuxiliary<geo::IPointCollection>(at);
    if (!collection) return {};
    for (const tav::Point3DF& point : points) collection->addPoint(point);
    return collection.template query<geo::IPath>();
}

/// The path of one segment from a to b, with an arc record when there is an arc point.
inline geo::PathRef segmentPath(const tav::Point3DF& a, const tav::Point3DF& b,
                                const std::optional<tav::Point3DF>& arcPoint = std::nullopt,
                                SourceLine at = SourceLine::current())
{
    const auto collection = createAuxiliary<geo::IPointCollection>(at);
    if (!collection) return {};
    collection->addPoint(a);
    collection->addPoint(b);
    if (arcPoint) collection->addArcRecord(tav::Radian{0, *arcPoint});
    return collection.query<geo::IPath>();
}

}  // namespace calcora::paths
