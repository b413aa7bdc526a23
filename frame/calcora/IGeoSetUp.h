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
///
/// The editing operations never change a path in place: they build a new one and put it into the
/// caller's reference, so other holders of the old one still see the old points. On false, and when
/// the new path could not be created, the reference stays as it was. Two points coincide when they
/// differ by less than 1e-6 in x, in y and in z. Points and arc records as in IGeometric.
///
/// Objects are created through the host; a failed creation is reported with the interface's name,
/// "geosetup" and a line of its own, and gives false with the outputs untouched. The object holds
/// no state; one path is edited from one thread at a time.
class IGeoSetUp : public tav::InterfaceOf<IGeoSetUp> {
public:
    static constexpr const char* kInterfaceName = "IGeoSetUp";

    using Point3DF = tav::Point3DF;
    using PathRef = geo::PathRef;
    using ReceiverRef = tav::Ref<geo::IPathReceiver>;

    /// Slot 6. Puts `point` before point `index` of the path, or behind the last for an index equal
    /// to the number of points. Arc records of segments from `index` on move up by one.
    ///
    /// False for an index outside 0 to n, and when `point` coincides with the old point `index` or
    /// `index` + 1. (Its new neighbours are the old points `index` - 1 and `index`: a copy of the
    /// point before passes.)
    virtual bool insertPathPoint(PathRef& path, int index, const Point3DF& point) = 0;

    /// Slot 7. Takes point `index` out of the path. The record of segment `index` is dropped, those
    /// of later segments move down by one.
    ///
    /// False for an index outside 0 to n; **n itself is accepted** and gives a plain copy. Taking
    /// out the last point leaves a record of the segment before it, which then names no segment.
    virtual bool removePathPoint(PathRef& path, int index) = 0;

    /// Slot 8. Makes segment `index` an arc through `arcPoint` from `start` to `end`, which are put
    /// in behind point `index`, in this order, where they do not coincide with the segment's ends.
    /// For the last point as `index` there is no end to coincide with, so `end` is appended.
    ///
    /// The new record names segment `index`, **also when `start` was put in behind point `index`**:
    /// the arc then runs from point `index` to `start`. It comes first; the old records from
    /// segment `index` on follow moved up by the number of points put in.
    ///
    /// False for an index outside 0 to n - 1, for `start` and `end` that coincide, and when both
    /// are the segment's ends and it is an arc already.
    virtual bool setSegmentArc(PathRef& path, int index, const Point3DF& start, const Point3DF& end,
                               const Point3DF& arcPoint) = 0;

    /// Slot 9. Hands every segment of the path, first to last, to the receiver as a straight path
    /// of two points; arc records are not carried over. A piece that could not be created is
    /// reported and left out. A null path or receiver: nothing.
    virtual void splitPathIntoSegments(const PathRef& path, const ReceiverRef& receiver) = 0;

    /// Slot 10. The arc from a to b through c in space by its ends, `start` = a and `end` = b, and
    /// the point half-way along it, on c's side of the chord whatever the sweep.
    ///
    /// False for points of which two are equal (exactly, in x, y and z), for collinear ones (as
    /// IGeometric::circleFrom3Points3d() tells them) and for what is not finite. An upright chord
    /// is an ordinary arc.
    virtual bool arcThrough3Points3d(const Point3DF& a, const Point3DF& b, const Point3DF& c,
                                     Point3DF& start, Point3DF& end, Point3DF& middle) = 0;

    /// Slot 11. The arc through a, b and c in plan by its ends and the point half-way along it, on
    /// c's side of the chord whatever the sweep; all with z 0. **The ends are a and b in the order
    /// in which the arc runs counter-clockwise**: exchanged when c lies to the left of the line
    /// from a to b.
    ///
    /// False for points of which two are equal (exactly, in x and y), when twice the area of the
    /// triangle is below 1e-6 (1 mm by 0.9 mm counts as collinear), and for what is not finite.
    virtual bool arcThrough3Points(const Point3DF& a, const Point3DF& b, const Point3DF& c,
                                   Point3DF& start, Point3DF& end, Point3DF& middle) = 0;

    /// Slot 12. The plan circle on the diameter from a to b: makeCircle() with its middle and half
    /// its length. **Sets z of a and b to 0.**
    ///
    /// Coincident points give true and leave `out` as it was. False, z already 0, when an object
    /// could not be created or the length is not finite.
    virtual bool circleOnDiameter(Point3DF& a, Point3DF& b, GeoCircle& out) = 0;

    /// Slot 13. The plan circle with that centre and radius. **Sets z of `centre` to 0.** False,
    /// both left alone, for a radius that is not above 0.
    virtual bool makeCircle(Point3DF& centre, double radius, GeoCircle& out) = 0;

    /// Slot 14. Turns the path round: its points from last to first, then the point that the
    /// collection closes with (its first point again, so the end is repeated), n + 1 points in all.
    ///
    /// A record of segment i is copied with n - i, which is **not where its segment has gone**
    /// (that is n - 2 - i). A null or empty path stays as it is.
    virtual void reversePath(PathRef& path) = 0;

    /// Slot 15. True.
    virtual bool isAvailable() = 0;
};
