// IGeoSetUp: path editing and circle construction.
#pragma once

#include "geo/geometry.h"
#include "tavrel/IObject.h"
#include "tavrel/List.h"
#include "tavrel/points.h"

/// A circle in plan.
struct GeoCircle {
    tav::Point3DF centre;  ///< z is 0
    double radius = 0.0;   ///< above 0 once set
};

/// Path editing and circle construction: 10 operations (slots 6 to 15).
class IGeoSetUp : public tav::InterfaceOf<IGeoSetUp>
{
public:
    static constexpr const char* kInterfaceName = "IGeoSetUp";

    using Point3DF = tav::Point3DF;
    using PathRef = geo::PathRef;
    using ReceiverRef = tav::Ref<geo::IPathReceiver>;

    /// Slot 6.
    virtual bool insertPathPoint(PathRef& path, int index, const Point3DF& point) = 0;

    /// Slot 7.
    virtual bool removePathPoint(PathRef& path, int index) = 0;

    /// Slot 8.
    virtual bool setSegmentArc(PathRef& path, int index, const Point3DF& start, const Point3DF& end,
                               const Point3DF& arcPoint) = 0;

    /// Slot 9.
    virtual void splitPathIntoSegments(const PathRef& path, const ReceiverRef& receiver) = 0;

    /// Slot 10.
    virtual bool arcThrough3Points3d(const Point3DF& a, const Point3DF& b, const Point3DF& c,
                                     Point3DF& start, Point3DF& end, Point3DF& middle) = 0;

    /// Slot 11.
    virtual bool arcThrough3Points(const Point3DF& a, const Point3DF& b, const Point3DF& c,
                                   Point3DF& start, Point3DF& end, Point3DF& middle) = 0;

    /// Slot 12.
    virtual bool circleOnDiameter(Point3DF& a, Point3DF& b, GeoCircle& out) = 0;

    /// Slot 13.
    virtual bool makeCircle(Point3DF& centre, double radius, GeoCircle& out) = 0;

    /// Slot 14.
    virtual void reversePath(PathRef& path) = 0;

    /// Slot 15.
    virtual bool isAvailable() = 0;
};
