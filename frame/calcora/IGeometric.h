// IGeometric: measures on paths with arc segments.
#pragma once

#include "geo/geometry.h"
#include "tavrel/IObject.h"
#include "tavrel/List.h"
#include "tavrel/points.h"

/// Measures, constructions and intersections on paths with arc segments: 48 operations (slots 6 to
/// 53).
///
/// A path is a geo::IPath whose points and arc records are read through geo::IPointCollection.
/// Segment i (0 to n - 2) runs from point i to point i + 1 and is the arc through the point of the
/// first record that names it. Lengths are drawing units, angles radians. "In plan" means by x and
/// y; results in plan have z 0.
///
/// Results: an operation that can fail returns bool, or a code told with it. On false and on the
/// code -1 nothing is written unless said otherwise. A null path, an index that names no segment,
/// and figures that overflow or hold not-a-number fail. Outputs may be the same objects as inputs.
///
/// Objects for the duration of a call (collections, paths, matrices, a second IGeometric) are
/// created through the host. A failed creation is reported with the interface's name, "geometric"
/// and a line, and the operation fails with its failure value (false, 0, -1, -1.0); the code 0 of
/// intersectSegmentArc() among them.
///
/// Operations work through each other as told, by virtual calls, so what overrides one changes all
/// that rest on it. A walk along a path costs time in proportion to its segments. The object holds
/// no state; any thread may call any operation as long as nobody adds to the paths.
class IGeometric : public tav::InterfaceOf<IGeometric> {
public:
    static constexpr const char* kInterfaceName = "IGeometric";

    using Point3DF = tav::Point3DF;
    using PathRef = geo::PathRef;
    using MatrixRef = geo::MatrixRef;
    using PointList = tav::List<tav::Point3DF>;

    /// Slot 6. Direction of the line from a to b in space: segmentDirectionAngle3d() on the path
    /// (a, b).
    virtual bool directionAngle3d(Point3DF a, Point3DF b, double& angle) = 0;

    /// Slot 7. Angle between the x axis and segment i, 0 to 2 pi, both ends included; the angle
    /// beyond pi for a segment that runs towards negative y, or at level y upwards. The plan
    /// direction for a segment of level z.
    ///
    /// False for a bad index and for a segment whose length is 0 or overflows. Comparisons with 0
    /// are exact: (0, 0, 0) to (1, -1e-200, 0) gives 2 pi itself.
    virtual bool segmentDirectionAngle3d(const PathRef& path, int i, double& angle) = 0;

    /// Slot 8. Plan direction of the line from a to b: segmentDirectionAngle2d() on the path (a,
    /// b).
    virtual bool directionAngle2d(Point3DF a, Point3DF b, double& angle) = 0;

    /// Slot 9. Direction of segment i in plan, counter-clockwise from the x axis, 0 to 2 pi, both
    /// ends included (a direction a hair below the x axis gives 2 pi itself).
    ///
    /// False for a bad index and for a segment whose plan length is 0 or overflows.
    virtual bool segmentDirectionAngle2d(const PathRef& path, int i, double& angle) = 0;

    /// Slot 10. Distance of a and b in space: segmentLength3d() on the path (a, b).
    virtual bool distance3d(Point3DF a, Point3DF b, double& length) = 0;

    /// Slot 11. Length in space of segment i: its chord, also for an arc. A length of 0 is a
    /// result.
    ///
    /// False for a bad index and a length that is not finite.
    virtual bool segmentLength3d(const PathRef& path, int i, double& length) = 0;

    /// Slot 12. Slope of the line from a to b: segmentSlopeAngle() on the path (a, b).
    virtual bool slopeAngle3d(Point3DF a, Point3DF b, double& angle) = 0;

    /// Slot 13. Slope of segment i, -pi/2 to pi/2, **positive when the first point is the higher
    /// one**.
    ///
    /// False for a bad index and for a segment whose plan length is 0 or overflows.
    virtual bool segmentSlopeAngle(const PathRef& path, int i, double& angle) = 0;

    /// Slot 14. Foot of the perpendicular from q on the endless line of segment i, in space; it may
    /// lie beyond the segment's ends.
    ///
    /// False for a bad index, a segment whose length is 0 or overflows, a foot that is not finite.
    virtual bool projectPointToSegmentLine3d(const PathRef& path, int i, const Point3DF& q,
                                             Point3DF& foot) = 0;

    /// Slot 15. Where q falls on segment i, in plan (z of `foot` 0). 1: on the segment, 0: not on
    /// it, -1: bad index, no length, or an arc without a circle.
    ///
    /// Straight: the foot of the perpendicular on the endless line, written with 0 as well as with
    /// 1. It is on the segment up to 1e-6 beyond the end, and at the start within 1e-8, so that q
    /// on the perpendicular through the first point gives 1. Behind the start the result is 0, but
    /// 1 for a segment due west, whose direction from the start to the foot is exactly 0.
    ///
    /// Arc: the ray from q through the centre meets the circle twice; **the far intersection is
    /// taken whenever sameSideOfLine() finds it on the arc's side of the chord**, even when q lies
    /// on the arc: (0.8, 0.6) on a three-quarter arc of the unit circle gives (-0.8, -0.6).
    /// Otherwise the near one by the same test; otherwise 0. With 0 and -1 (also for q at the
    /// centre) `foot` stays.
    virtual short projectPointToSegment(const PathRef& path, int i, const Point3DF& q,
                                        Point3DF& foot) = 0;

    /// Slot 16. Length in space of arc segment i: the radius of circleFrom3Points3d() by the angle
    /// that angleBetweenSegments3d() gives between the radii to the ends. The angle is brought to
    /// the far side of pi when the arc point lies more than 1e-6 farther from the chord than the
    /// radius, to the near side when more than 1e-6 nearer; an angle below 1e-6 is a full circle.
    ///
    /// An arc over a half circle whose arc point lies near one of its ends therefore counts as
    /// minor, and an upright arc in a plane y = const keeps the plan angle of 0 or pi;
    /// polylineLength3d() measures the true arc. Radius 0 gives 0. False for a bad index, a
    /// straight segment and collinear points.
    virtual bool segmentArcLength(const PathRef& path, int i, double& length) = 0;

    /// Slot 17. The place of the path nearest q, in plan: straight segments between their ends,
    /// arcs within their own sweep, records without a circle as chords. For q at the centre of an
    /// arc its start.
    ///
    /// Writes the point (z 0), the segment (ties: the lowest index) and the plan distance. False
    /// for fewer than two points, for a q that is not finite, and when no distance is finite.
    virtual bool nearestPointOnPolyline(const PathRef& path, const Point3DF& q, Point3DF& nearest,
                                        int& segment, double& distance) = 0;

    /// Slot 18. Angle in space between segment i of `a` and segment j of `b`. 1: written, 0: bad
    /// index or a segment without length.
    ///
    /// When both segments have y differences of exactly 0 their plan directions decide, from the
    /// first counter-clockwise to the second, 0 or pi in a plane y = const; a segment without plan
    /// length has direction 0. Otherwise the angle between them in 0 to pi, and 2 pi minus it when
    /// the second segment's z difference is smaller than the first's (the differences as they are,
    /// whatever the lengths).
    virtual short angleBetweenSegments3d(const PathRef& a, int i, const PathRef& b, int j,
                                         double& angle) = 0;

    /// Slot 19. Plan angle between the lines a1 - a2 and b1 - b2: angleBetweenSegments2d() on the
    /// two.
    virtual short angleBetweenLines2d(const Point3DF& a1, const Point3DF& a2, const Point3DF& b1,
                                      const Point3DF& b2, double& angle) = 0;

    /// Slot 20. Folded plan angle between segment i of `a` and segment j of `b`. 1: written, 0: bad
    /// index or a segment without plan length.
    ///
    /// An acute angle comes out as it is, whatever the turning sense, **an obtuse one as 2 pi minus
    /// it**. Only perpendicular segments (cosine below 1e-6) are told apart by sense: pi/2
    /// counter-clockwise, 3/2 pi clockwise. Opposite directions give pi.
    virtual short angleBetweenSegments2d(const PathRef& a, int i, const PathRef& b, int j,
                                         double& angle) = 0;

    /// Slot 21. Plan distance of q from the endless line of segment i, positive to the left of its
    /// direction, negative to the right.
    ///
    /// Evaluated from the segment's first point, so survey coordinates cost no digits. False for a
    /// bad index, a segment whose plan length is 0 or overflows, an offset that is not finite.
    virtual bool pointOffsetFromSegmentLine2d(const PathRef& path, int i, Point3DF q,
                                              double& offset) = 0;

    /// Slot 22. Distance in space of q from the endless line of segment i, as the area of their
    /// parallelogram by its base, which stays exact for points near the line.
    ///
    /// False for a bad index, a segment whose length is 0 or overflows, a distance that is not
    /// finite.
    virtual bool pointDistToSegmentLine3d(const PathRef& path, int i, Point3DF q,
                                          double& distance) = 0;

    /// Slot 23. Where the chord of segment i of `a` meets the chord of segment j of `b` in space;
    /// arc records are not consulted.
    ///
    /// 1: they come within 1e-6 of each other (ends included) at one place, `point` is that place
    /// on segment i. 2: they run together within 1e-6 for more than 1e-6, `point` is the first
    /// common point seen from the start of segment i. 0: neither (skew, parallel, apart). -1: bad
    /// index or a segment whose length is 0 or overflows. With 0 and -1 `point` stays.
    virtual short intersectSegments3d(const PathRef& a, int i, const PathRef& b, int j,
                                      Point3DF& point) = 0;

    /// Slot 24. Where the endless line of segment i of `a` meets arc segment j of `b`, in plan (z
    /// 0). The number of points, 0 to 2, of which only those counted are written; -1 for a bad
    /// index or a straight segment j.
    ///
    /// The points of lineCircleIntersections() that sameSideOfLine() finds on the arc's side of its
    /// chord; the first one kept goes to `p1`. Whether they lie between the ends of segment i is
    /// not looked at. An arc without a circle, or with radius 0, gives 0.
    virtual short intersectSegmentArc(const PathRef& a, int i, const PathRef& b, int j,
                                      Point3DF& p1, Point3DF& p2) = 0;

    /// Slot 25. Where arc segment i of `a` meets arc segment j of `b`, in plan (z 0). The number of
    /// points, 0 to 2, in order along arc i, of which only those counted are written. 3: both lie
    /// on one circle (centres and radii within 1e-6); nothing is written. -1: bad index, a straight
    /// segment, an arc without a circle.
    ///
    /// Points are kept that sameSideOfLine() finds on each arc's side of its chord. Circles that
    /// touch within 1e-6 have one point. Unlike intersectCircles() the points are placed truly on
    /// either side of the first centre.
    virtual short intersectArcs(const PathRef& a, int i, const PathRef& b, int j, Point3DF& p1,
                                Point3DF& p2) = 0;

    /// Slot 26. Where arc segment i of the path meets the circle round `centre`, in plan (z 0). The
    /// number of points, 0 to 2, in order along the arc, of which only those counted are written;
    /// as intersectArcs(). -1: bad index, a straight segment, an arc without a circle, a radius not
    /// above 0, the arc's own circle.
    virtual short segmentArcIntersections(const PathRef& path, int i, const Point3DF& centre,
                                          double radius, Point3DF& p1, Point3DF& p2) = 0;

    /// Slot 27. The image of p under the 4 x 4 matrix m: the first three elements of m (x, y, z,
    /// 1). There is no division by the fourth.
    ///
    /// False for a null matrix, another shape, an image that is not finite.
    virtual bool transformPoint3d(const Point3DF& p, MatrixRef m, Point3DF& result) = 0;

    /// Slot 28. Where the endless line of segment i meets the circle round `centre`, in plan (z 0).
    /// -1: bad index, a radius not above 0, coordinates that are not finite; nothing is written.
    /// Otherwise both points are written, (0, 0, 0) for those there are not.
    ///
    /// 1: the line touches within 1e-6, `p1` is the foot of the centre on the line. 2: `p1` lies
    /// from the foot towards the segment's first point, `p2` away from it; when the foot is the
    /// first point (within 1e-8), `p1` lies towards the segment's end. 0: the line misses, or the
    /// segment has no length.
    ///
    /// The foot comes from projectPointToSegment(), the distance from
    /// pointOffsetFromSegmentLine2d(), both on a path told from the segment's first point.
    virtual short lineCircleIntersections(const PathRef& path, int i, const Point3DF& centre,
                                          double radius, Point3DF& p1, Point3DF& p2) = 0;

    /// Slot 29. Where two circles meet, in plan (z 0). 3: the same circle (all differences below
    /// 1e-6, also of equal negative radii). -1: a radius not above 0, concentric circles, input
    /// that is not finite. With 3 and -1 nothing is written; otherwise both points are, (0, 0, 0)
    /// for those there are not.
    ///
    /// 1: they touch, from outside within 1e-6, from inside within 1e-6 and only where the larger
    /// radius is at least twice the smaller (other inner touchings give 0, or 2 nearly equal
    /// points). 2: first the point to the right of the line of centres, then that to the left. 0:
    /// apart, or one inside the other. Heights count in the test for the same centre only.
    ///
    /// **The points are placed on the second centre's side of the first.** Where the true ones lie
    /// behind it (r2^2 > r1^2 + d^2) these are their mirror images; exchanging the circles gives
    /// the true ones.
    virtual short intersectCircles(const Point3DF& c1, double r1, const Point3DF& c2, double r2,
                                   Point3DF& p1, Point3DF& p2) = 0;

    /// Slot 30. Plan circle of arc segment i: circleFrom3Points2d() on its ends and arc point.
    /// False for a bad index and a straight segment too.
    virtual bool segmentArcCircle2d(const PathRef& path, int i, Point3DF& centre,
                                    double& radius) = 0;

    /// Slot 31. Circle through three points in plan; z of `centre` is 0.
    ///
    /// When a and b agree within 1e-6 in x and in y it is a full circle with m opposite: centre
    /// half-way from a to m. Otherwise the centre solves three equations told from a. False for
    /// collinear points: those whose triangle is smaller than what the rounding of their
    /// coordinates makes of it (4 * 2.2e-16 of the largest coordinate beside the line), so that
    /// triples of decimals on a line have no circle of radius 1e16.
    virtual bool circleFrom3Points2d(const Point3DF& a, const Point3DF& b, const Point3DF& m,
                                     Point3DF& centre, double& radius) = 0;

    /// Slot 32. Circle in space of arc segment i: circleFrom3Points3d() on its ends and arc point.
    /// False for a bad index and a straight segment too.
    virtual bool segmentArcCircle3d(const PathRef& path, int i, Point3DF& centre,
                                    double& radius) = 0;

    /// Slot 33. Circle through three points in space; as circleFrom3Points2d().
    ///
    /// **The test for a full circle compares x and y only**, so an upright chord is taken for one,
    /// and the centre lies half-way from a to m. polylineLength3d(), arcSegmentOp34() and
    /// pathArcOp52() use the true circle.
    virtual bool circleFrom3Points3d(const Point3DF& a, const Point3DF& b, const Point3DF& m,
                                     Point3DF& centre, double& radius) = 0;

    /// Slot 34. The point half-way along arc segment i in space, however long the arc; the arc
    /// point itself for a full circle (ends within 1e-6 in x, y and z).
    ///
    /// False for a bad index, a straight segment and collinear points.
    virtual bool arcSegmentOp34(const PathRef& path, int i, Point3DF& middle) = 0;

    /// Slot 35. Plan unit tangent of arc segment i at point q of its circle: the radius to q turned
    /// a quarter **counter-clockwise, for clockwise arcs too**.
    ///
    /// False without a plan circle, when q is not on the arc's side of its chord by
    /// sameSideOfLine(), and for q within 1e-6 of the centre.
    virtual bool arcTangentAtPoint(const PathRef& path, int i, const Point3DF& q, double& tx,
                                   double& ty) = 0;

    /// Slot 36. Length of the polyline through the points: polylineLength2d() on a path of them.
    virtual double pointListLength2d(const PointList& points) = 0;

    /// Slot 37. Plan length of the path, arcs by their true sweep: the radius of
    /// segmentArcCircle2d() by the angle of angleBetweenSegments2d() between the radii to the ends,
    /// unfolded by the side of the chord on which centre and arc point lie. An arc whose ends agree
    /// within 1e-6 is a full circle; one without a circle counts as its chord.
    ///
    /// -1.0 for fewer than two points, a null path, a total that is not finite. The stations
    /// (pointDistFromPolyline()) measure some arcs differently.
    virtual double polylineLength2d(const PathRef& path) = 0;

    /// Slot 38. Length of the path in space, arcs by their true sweep from start through arc point
    /// to end in their plane. A full circle (ends within 1e-6 in x, y and z) has the arc point
    /// opposite; collinear points count as their chord.
    ///
    /// -1.0 for fewer than two points, a null path, a total that is not finite. The stations
    /// (pointDistFromPolyline3d()) measure some arcs differently.
    virtual double polylineLength3d(const PathRef& path) = 0;

    /// Slot 39. The point at a running length along the polyline through the points:
    /// pointDistFromPolyline() on a path of them.
    virtual bool pointDistFromPointList(const PointList& points, double distance,
                                        Point3DF& point) = 0;

    /// Slot 40. The plan point (z 0) at running plan length `distance` from the path's first point.
    ///
    /// **How segments count.** Straight ones by their plan length. Arcs by the bulge that the angle
    /// of angleBetweenSegments2d() between their radii gives; that angle never counts beyond pi, so
    /// an arc over a half circle is stationed with its complement (a three-quarter arc of radius 1
    /// counts pi/2). An arc without a bulge (twice the triangle's area below 1e-6, equal ends, no
    /// angle) counts as its chord, a full circle therefore 0. The arc runs from its start the way
    /// the bulge's sign says, which is the arc's own way when the arc point is its middle; for
    /// other arc points it may be the other way.
    ///
    /// A station within 1e-6 of a segment's end is that end. A negative station extrapolates the
    /// first segment that has a length. False beyond the end, for fewer than two points, and when a
    /// length on the way is not finite.
    virtual bool pointDistFromPolyline(const PathRef& path, double distance, Point3DF& point) = 0;

    /// Slot 41. The point at running length `distance` from the path's first point, in space. A
    /// station within 1e-6 of 0 gives the first point, also of a path of one point.
    ///
    /// **How segments count.** Straight ones by their length. Arcs by the radius of
    /// circleFrom3Points3d() and the angle of angleBetweenSegments3d() between their radii: level
    /// arcs over a half circle count folded, an arc that ends lower than it starts counts 2 pi
    /// minus its angle, a full circle 0, an upright arc in a plane y = const 0 or pi times its
    /// radius ((-50, y, 0) to (50, y, 0) through (0, y, 10) counts 408.4 instead of 102.6).
    /// segmentArcLength() mends all but the last. Collinear points count as their chord. The point
    /// on an arc always runs from the start through the arc point.
    ///
    /// A station within 1e-6 of an arc's end is that end (of a straight segment's only up to it). A
    /// negative station is false on straight segments; the first arc takes it and extrapolates
    /// back. False beyond the end and when a length on the way is not finite.
    ///
    /// Writes debug lines under the name "CGeometric::pointDistFromPolyline3d":
    /// "pointDistFromPolyline3d:1" and ":2" before and after the path is opened (an empty path ends
    /// there), ":3" after its points were read; for a station of 0 then ":4", ":5", the first point
    /// as "x:%f y:%f z:%f" with six decimals and at most 511 characters, and ":6".
    virtual bool pointDistFromPolyline3d(const PathRef& path, double distance, Point3DF& point) = 0;

    /// Slot 42. The point at a share of the length of the polyline through the points:
    /// pointRatioFromPolyline() on a path of them.
    virtual bool pointRatioFromPointList(const PointList& points, double ratio,
                                         Point3DF& point) = 0;

    /// Slot 43. The plan point (z 0) at `ratio` of the path's plan length, as
    /// pointDistFromPolyline() counts it: ratio 0 is the first point, 1 the last.
    ///
    /// False for a ratio outside 0 to 1, before the path is looked at; for fewer than two points;
    /// for a length that is not finite.
    virtual bool pointRatioFromPolyline(const PathRef& path, double ratio, Point3DF& point) = 0;

    /// Slot 44. The point at `ratio` of the path's length in space, as pointDistFromPolyline3d()
    /// counts it. False as slot 43.
    virtual bool pointRatioFromPolyline3d(const PathRef& path, double ratio, Point3DF& point) = 0;

    /// Slot 45. Centre of area of the polygon through the points: polygonCentroid() on a path of
    /// them.
    virtual bool polygonCentroidOfPointList(const PointList& points, Point3DF& centroid) = 0;

    /// Slot 46. Centre of area in plan (z 0) of a closed polygon; arc records are not consulted,
    /// either sense of the ring will do.
    ///
    /// The last point must equal the first exactly, in z too. False, `centroid` untouched, for an
    /// open ring, an empty path, and a ring without an area beyond the rounding of its terms. **A
    /// single point is written, and the result is false.**
    virtual bool polygonCentroid(const PathRef& path, Point3DF& centroid) = 0;

    /// Slot 47. The point half-way along the polyline through the points: midPointOfPolyline() on a
    /// path of them.
    virtual bool midPointOfPointList(const PointList& points, Point3DF& point) = 0;

    /// Slot 48. The plan point half-way along the path: pointRatioFromPolyline() with 0.5.
    virtual bool midPointOfPolyline(const PathRef& path, Point3DF& point) = 0;

    /// Slot 49. The point at `distance` from `base` in direction `angle`, at the height of `base`.
    /// `result` may be `base`. Evaluated in the quadrant of the angle; angles outside 0 to 2 pi
    /// will do. What is not a number stays so.
    virtual void polarPoint(const Point3DF& base, double angle, double distance,
                            Point3DF& result) = 0;

    /// Slot 50. The point at `distance` from `base` along `direction`, in space. A direction
    /// shorter than 1e-6, or whose length is not a finite number, gives `base`.
    virtual void pointAlongVector(const Point3DF& base, const Point3DF& direction, double distance,
                                  Point3DF& result) = 0;

    /// Slot 51. p raised by dz.
    virtual void raisePoint(const Point3DF& p, double dz, Point3DF& result) = 0;

    /// Slot 52. The path with its arcs as chords, without records. Vertices keep their bits; an arc
    /// becomes k chords of equal sweep with points on the arc in space, k the smallest number for
    /// which no chord lies farther than `sagitta` from the arc, at least 1 (3 for a full circle),
    /// at most 10000. Collinear points give one chord.
    ///
    /// False, `result` untouched, for a sagitta not above 0, a null path, fewer than two points,
    /// and when more than 2^24 vertices would have to be added. `result` may be `path`.
    virtual bool pathArcOp52(const PathRef& path, double sagitta, PathRef& result) = 0;

    /// Slot 53. Whether p and q lie on the same side of the line through a and b, in plan. A point
    /// whose triangle with a and b has **twice its area** within 1e-6 (included) is on the line and
    /// so on either side: on a chord of 1 mm a point 1 mm away, on one of 10 km none 1e-9 away.
    /// Coincident a and b: true. False for what is not a number.
    virtual bool sameSideOfLine(const Point3DF& a, const Point3DF& b, const Point3DF& p,
                                const Point3DF& q) = 0;
};
