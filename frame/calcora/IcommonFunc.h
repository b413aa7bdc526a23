// IcommonFunc: plane geometry on points, arcs, polylines with arcs, and curves.
#pragma once

#include "tavrel/IObject.h"
#include "tavrel/Vector.h"
#include "tavrel/points.h"

/// A folded edge direction and the length that a figure carries in it.
struct CMyAngleLine {
    double direction = 0.0;  ///< radians, folded into (-pi/2, pi/2]
    double length = 0.0;     ///< drawing units
};

/// Plane geometry: 150 operations in fixed slots (6 to 155).
class IcommonFunc : public tav::InterfaceOf<IcommonFunc> {
public:
    static constexpr const char* kInterfaceName = "IcommonFunc";

    using Point2DF = tav::Point2DF;
    using Point3DF = tav::Point3DF;
    using RectF = tav::RectF;
    using Points = tav::Vector<tav::Point2DF>;
    using Values = tav::Vector<double>;
    using PointLists = tav::Vector<Points>;
    using ValueLists = tav::Vector<Values>;

    /// Slot 6. Relation of a polyline to a straight-edged polygon.
    ///
    /// Segment by segment: 0 at once when a segment shares an end with a ring edge exactly, crosses
    /// one, or starts on the boundary (`pointInPolygon`). Otherwise the place of the *start of the
    /// last segment*: -1 inside, 1 outside, -2 for a ring of fewer than 3 vertices. Fewer than two
    /// polyline vertices: -2.
    ///
    /// Only edges between consecutive ring vertices are looked at: repeat the first vertex at the
    /// end to have the closing edge. An edge counts when its box and the segment's meet, touching
    /// included. The crossing goes by slopes: x differences below 1e-6 are vertical; two verticals
    /// and slopes (not angles) within 1e-6 never cross, so a segment along a 1000 long edge at
    /// slope 8e-7 passes for parallel; ends count between two sloped lines, not on a vertical one.
    virtual int polylineRegionRelation(const Points& ring, const Points& polyline) = 0;

    /// Slot 7. Intersections of two polylines with arcs.
    ///
    /// Every edge of a, in order, is walked along b: straight edges by slot 9, arcs (|bulge| >=
    /// 1e-10) by slot 8; repeats within 1e-6 of an earlier result are then removed by slot 71, so a
    /// place that a passes twice is told once, with its first parameter. Parameters are i + place
    /// on edge i of a: share of its length, of its sweep for an arc.
    ///
    /// outPoints and outParams must hold 4 (n - 1)(m - 1) entries for n and m vertices; those
    /// behind *count stay as they were. *count is 0 for fewer than two vertices and for null
    /// arrays. Missing bulges are straight, extra ones are not read; an edge with a bulge that is
    /// not a number meets nothing.
    ///
    /// Edges include their start and, but for the last, exclude their end. In squared length a
    /// straight edge of length l reaches from -max(1e-5, r l) to l^2 + 1e-12 - 2e-6 l (+ on the
    /// last edge), r = 1e-14 of the largest coordinate of the edge and of b, so that no meeting at
    /// a vertex falls between two rounding steps. So a first edge of 0.01 tells a crossing 9e-4
    /// before its start (parameter -0.09), a crossing up to 2e-6 before an inner vertex of a long
    /// edge may belong to no edge, and one just before a right-angled corner may come twice, 7e-6
    /// apart. When the last vertex is given twice, the real last edge is an inner one and a
    /// crossing at its end is lost. Two straight edges whose lengths multiply to less than 1e-3
    /// (0.0316 each) never meet.
    ///
    /// Cost: nearly linear for large figures, whose edges are looked up by boxes; two single
    /// straight edges need no memory.
    virtual void intersectBulgePolylines(const Points& a, const Values& aBulges, const Points& b,
                                         const Values& bBulges, Point2DF* outPoints,
                                         double* outParams, int* count) = 0;

    /// Slot 8. Intersections of an arc with a polyline with arcs, edge by edge: arcs by slot 11,
    /// straight edges by slot 10. Parameters are fractions of the arc's sweep.
    ///
    /// `lo` and `extra` are the arc's range as in slot 10. The polyline's arcs are let in from
    /// -1e-6 to L - 1e-6 of their length (last edge L + 1e-6), straight edges as in slot 14.
    /// Repeats stay. Room for 4 (m - 1) results, not inside the polyline; fewer than two vertices:
    /// *count = 0. Bulge lists as in slot 7.
    virtual void intersectArcWithBulgePolyline(const Point2DF& a0, const Point2DF& a1, double bulge,
                                               const Points& polyline, const Values& bulges,
                                               double lo, double extra, Point2DF* outPoints,
                                               double* outParams, int* count) = 0;

    /// Slot 9. Intersections of a segment with a polyline with arcs, edge by edge: arcs by slot 54,
    /// straight edges by slot 55. Parameters are fractions of the segment.
    ///
    /// `lo` and `hi` are the segment's range in squared length. The polyline's arcs are let in as
    /// in slot 8, straight edges as in slot 14 but from -max(1e-5, r l) on. Repeats stay. Room for
    /// 2 (m - 1) results, not inside the polyline; fewer than two vertices: *count = 0. Bulge lists
    /// as in slot 7.
    virtual void intersectLineWithBulgePolyline(const Point2DF& s0, const Point2DF& s1,
                                                const Points& polyline, const Values& bulges,
                                                double lo, double hi, Point2DF* outPoints,
                                                double* outParams, int* count) = 0;

    /// Slot 10. As slot 54 with the arc first: up to 2 results with their fraction of the sweep as
    /// parameter. An arc of length L lets a fraction f in when loB <= f L <= L + extraB.
    virtual void intersectArcSegment(const Point2DF& b0, const Point2DF& b1, double bulge,
                                     const Point2DF& a0, const Point2DF& a1, double loB,
                                     double extraB, double loA, double hiA, Point2DF* outPoints,
                                     double* outParams, int* count) = 0;

    /// Slot 11. Intersections of two arcs: up to 4 results, with their fraction of arc A's sweep.
    /// Ranges as for the arc of slot 10.
    ///
    /// The circles meet by slot 134, in whose order the points come. Circles that it calls the same
    /// (centres up to 1e-3 apart) meet in ends of the arcs instead: b0 and b1 where A's range lets
    /// them in, then a0 (parameter 0) and a1 (parameter 1) where B's does; so identical arcs give
    /// four results, and arcs that follow each other give their joint twice.
    ///
    /// An end that both arcs have exactly is always one of the two points, bit for bit, and its
    /// mirror image in the line of the centres the other, unless that is within 1e-6 of it:
    /// neighbours that touch meet in their joint. Flat arcs (|bulge| < 1e-6) are met without their
    /// far centre, in the frame of the chord; one whose ends and middle lie within 1e-6 (1e-6 of
    /// the shorter chord if that is less) and rounding of the other's circle is on the same circle.
    /// An arc without length or bulge meets nothing.
    virtual void intersectArcArc(const Point2DF& a0, const Point2DF& a1, double bulgeA,
                                 const Point2DF& b0, const Point2DF& b1, double bulgeB, double loA,
                                 double extraA, double loB, double extraB, Point2DF* outPoints,
                                 double* outParams, int* count) = 0;

    /// Slot 12. Intersections of two straight-edged polylines, appended: as slot 13, but repeats
    /// are removed from the whole lists by slot 72, earlier elements included. Nothing happens when
    /// outParams is shorter than outPoints or a polyline has fewer than two vertices. `outPoints`
    /// may be one of the polylines.
    virtual void intersectPolylinesToLists(const Points& a, const Points& b, Points& outPoints,
                                           Values& outParams) = 0;

    /// Slot 13. Intersections of two straight-edged polylines.
    ///
    /// Every edge of a, in order, is walked along b by slot 14; repeats within 1e-6 of an earlier
    /// result are then removed by slot 71. Parameters are i + fraction of edge i of a. Ranges,
    /// arrays (2 (n - 1)(m - 1) entries), failure and cost as in slot 7, but edges start at
    /// -max(1e-6, r l).
    virtual void intersectPolylines(const Points& a, const Points& b, Point2DF* outPoints,
                                    double* outParams, int* count) = 0;

    /// Slot 14. Intersections of a segment with a straight-edged polyline, edge by edge by slot 55.
    /// Parameters are fractions of the segment; `lo` and `hi` are its range in squared length.
    ///
    /// An edge of length l is let in from -max(1e-6, r l) to l^2 + 1e-12 - 2e-6 l (+ on the last),
    /// r = 1e-14 of the pair's largest coordinate. Repeats stay: a ring's first vertex is met at
    /// its start and at its end. Room for 2 (m - 1) results, not inside the polyline; fewer than
    /// two vertices: *count = 0.
    virtual void intersectSegmentPolyline(const Point2DF& start, const Point2DF& end,
                                          const Points& polyline, double lo, double hi,
                                          Point2DF* outPoints, double* outParams, int* count) = 0;

    /// Slot 15. Direction of the line from `from` to `to`: radians in [0, 2 pi), counter-clockwise
    /// from the x axis.
    ///
    /// An x difference below 1e-12 is vertical. A leading difference below 1e-12 runs backwards,
    /// also on verticals: (0, 0) to (0, 5e-13) is 3 pi / 2, like coincident points. A direction
    /// that rounds up to the full turn is 0.
    virtual double lineAngle(const Point2DF& from, const Point2DF& to) = 0;

    /// Slot 16. Distance of a and b: the square root of `pointDistSquared`, so it overflows to
    /// infinity beyond about 1e154.
    virtual double pointDist(const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 17. t of the foot a + t (b - a) of p on the line through a and b: ((p - a) . (b - a)) /
    /// |b - a|^2, not limited to [0, 1]. Coincident a and b give not-a-number (or an infinity).
    virtual double projectionRatio(const Point2DF& p, const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 18. Squared distance of a and b.
    virtual double pointDistSquared(const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 19. Reverses the list in place.
    virtual void reverseDoubleList(Values& values) = 0;

    /// Slot 20. Reverses the list in place. Coordinates are swapped, elements stay where they are.
    virtual void reversePointList(Points& points) = 0;

    /// Slot 21. Dot product of two vectors.
    virtual double dotProduct(const Point2DF& u, const Point2DF& v) = 0;

    /// Slot 22. Dot product; as slot 21, an operation of its own.
    virtual double vectorDot(const Point2DF& u, const Point2DF& v) = 0;

    /// Slot 23. Dot product; as slot 21, an operation of its own.
    virtual double innerProduct(const Point2DF& u, const Point2DF& v) = 0;

    /// Slot 24. Dot product; as slot 21, an operation of its own.
    virtual double scalarProduct(const Point2DF& u, const Point2DF& v) = 0;

    /// Slot 25. Cross product u.x v.y - u.y v.x: positive when v lies counter-clockwise of u.
    /// Formed by slot 21.
    virtual double crossProduct(const Point2DF& u, const Point2DF& v) = 0;

    /// Slot 26. Middle point of the arc from p1 to p2. A positive bulge lies to the right of the
    /// direction p1 to p2, a negative one to the left; bulge 0 gives the chord's middle.
    virtual Point2DF arcMidPoint(const Point2DF& p1, const Point2DF& p2, double bulge) = 0;

    /// Slot 27. Bulge of the arc from `start` through `mid` to `end`: positive counter-clockwise.
    ///
    /// 0 when twice the area of the triangle (`orientation3`) is below 1e-6, an absolute limit: a
    /// half circle over a chord of 1e-3 counts as straight. 0 also when no circle can be computed.
    virtual double bulgeFrom3Points(const Point2DF& start, const Point2DF& mid,
                                    const Point2DF& end) = 0;

    /// Slot 28. Twice the signed area of the triangle, positive when p1, p2, p3 turn
    /// counter-clockwise.
    virtual double orientation3(const Point2DF& p1, const Point2DF& p2, const Point2DF& p3) = 0;

    /// Slot 29. Counter-clockwise angle at the centre from `from` to `to`: radians in [0, 2 pi).
    /// The same direction gives 0; so does a turn that is negative by rounding alone.
    virtual double sweepAngle(const Point2DF& centre, const Point2DF& from, const Point2DF& to) = 0;

    /// Slot 30. Cuts an arc into steps of about `angleStep` radians (its sign does not count).
    ///
    /// Appends n + 1 points and heights, n the integer part of |sweep / angleStep|: points at equal
    /// distances along the arc, heights linear from p1.z to p2.z. Returns true. Returns false and
    /// appends nothing for |bulge| <= 1e-6, n = 0, a step of 0 or not-a-number, n above 1,000,000,
    /// or an arc whose length is not finite.
    ///
    /// The last distance may exceed the arc's length by rounding; the last sample then repeats the
    /// one before it. Set p2 yourself where the end must be exact.
    virtual bool densifyArc3d(Point3DF p1, Point3DF p2, double bulge, double angleStep,
                              Points& outPoints, Values& outHeights) = 0;

    /// Slot 31. Nearest point to p on the segment from a to b: a or b themselves beyond the ends.
    /// Coincident a and b give a.
    virtual Point2DF closestPointOnSegment(const Point2DF& p, const Point2DF& a,
                                           const Point2DF& b) = 0;

    /// Slot 32. Area, without sign, of the closed straight-edged polygon. Fewer than 2 points: 0.
    /// Overlapping parts of a self-crossing ring count with their winding.
    virtual double polygonArea(const Points& points) = 0;

    /// Slot 33. Area between an arc and its chord, never negative: r^2 / 2 (sweep - |sin sweep|).
    ///
    /// Up to a half circle this is the segment of the circle. Beyond it, the triangle chord-centre
    /// is *subtracted* all the same, so the value is not the area between chord and arc there (a
    /// three-quarter circle of radius 1 gives 3 pi / 4 - 1 / 2): cut such arcs first, as slot 36
    /// does. |bulge| < 1e-12 and coincident ends: 0.
    virtual double bulgeSegmentArea(const Point2DF& p1, const Point2DF& p2, double bulge) = 0;

    /// Slot 34. Length of a polyline with bulges, with the closing segment if `closed`. Sums slot
    /// 35. -1.0 for fewer than 2 points or a bulge list that is not exactly as long as the points.
    virtual double bulgePolylineLength(const Points& points, const Values& bulges, bool closed) = 0;

    /// Slot 35. Length of the segment: the arc's for |bulge| >= 1e-6, else the chord's. Coincident
    /// ends: 0.
    virtual double bulgeSegmentLength(const Point2DF& p1, const Point2DF& p2, double bulge) = 0;

    /// Slot 36. Signed area of the closed ring with bulges: positive for a clockwise ring, negative
    /// for a counter-clockwise one. Parts that overlap count with their winding.
    ///
    /// The closing segment takes bulge n - 1. Bulges below 1e-6, missing ones and those of segments
    /// without length count as 0. Arcs are cut at the extreme points of their circles first, so
    /// that any sweep is right. No points: 0.
    virtual double bulgePolygonArea(const Points& points, const Values& bulges) = 0;

    /// Slot 37. As slot 17, an operation of its own.
    virtual double segmentParameter(const Point2DF& p, const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 38. Place of p along an arc by its direction from the centre, as a fraction of the
    /// sweep from `start` to `end`: 0 at the start, 1 at the end, negative or above 1 outside,
    /// where the gap's middle parts the two. The distance from the centre does not count.
    ///
    /// `start` and `end` in one direction: 0 when p lies in that direction too, otherwise
    /// +infinity. Not-a-number also gives +infinity, so that every range test refuses it.
    virtual double arcSweepFraction(const Point2DF& p, const Point2DF& centre,
                                    const Point2DF& start, const Point2DF& end, bool clockwise) = 0;

    /// Slot 39. Appends the n stations of the vertices: 0, then the running sums of slot 35. A
    /// missing bulge is straight; no points, nothing appended. `outStations` may be the bulge list.
    virtual void bulgePolylineStations(const Points& points, const Values& bulges,
                                       Values& outStations) = 0;

    /// Slot 40. Point and height at a station, by stations measured before (slot 39). `reserved` is
    /// not read.
    ///
    /// A station within 1e-4 of 0 is (vertex 0, height 0). Otherwise the first segment with
    /// stations[i] < station <= stations[i + 1] decides, so repeated stations are passed over; the
    /// point is placed as in slot 42, the height is linear in the station. False and `out`
    /// untouched when there is no such segment or a list lacks the entries needed.
    virtual bool pointAtStation3d(int reserved, const Points& points, const Values& bulges,
                                  const Values& heights, const Values& stations, double station,
                                  Point3DF& out) = 0;

    /// Slot 41. Point and height at a station: as slot 42, the height linear along the segment.
    /// `out` stays untouched when the station is not on the line or a height needed is missing.
    virtual void pointAtStationZ(const Points& points, const Values& bulges, const Values& heights,
                                 double station, Point3DF& out) = 0;

    /// Slot 42. Point at a station, the distance along the line from vertex 0.
    ///
    /// A station within 1e-4 of 0 is vertex 0. Segments are measured by slot 35, but placed as
    /// straight for |bulge| < 0.001: on such a flat arc the point lies on the chord's direction, at
    /// the arc's distance. The length that slot 34 gives for the open line finds the last vertex; a
    /// station beyond it by a hair, or before -1e-4, writes nothing.
    virtual void pointAtStation(const Points& points, const Values& bulges, double station,
                                Point2DF& out) = 0;

    /// Slot 43. Point at a vertex parameter: fraction f = parameter - index of segment `index`.
    ///
    /// f within 1e-6 of 1: vertex index + 1. Otherwise a parameter below 1e-6 is vertex 0 whatever
    /// the index, an index at or past the last vertex is the last vertex, and else slot 44 decides,
    /// which writes nothing for f outside [0, 1]. Untouched too for a negative index, for f near 1
    /// at the last vertex, and for no points.
    virtual void pointAtParameter(const Points& points, const Values& bulges, int index,
                                  double parameter, Point2DF& out) = 0;

    /// Slot 44. Point at fraction t of the segment or arc. t from -1e-6 to 1.000001, outside
    /// nothing is written. Straight for |bulge| < 1e-10. Coincident ends give that point.
    virtual void pointOnBulgeSegmentAtRatio(const Point2DF& p1, const Point2DF& p2, double bulge,
                                            double t, Point2DF& out) = 0;

    /// Slot 45. Index of the nearest segment of a polyline with arcs, and index + place on it: for
    /// a straight segment (|bulge| < 1e-6) the projection of p, not clamped, for an arc the
    /// fraction of p's direction (slot 38), below 0 or above 1 beyond its ends. Read it with the
    /// index: (3, -1) beside (0, 0), (2, 0), (2, 2) is index 0, parameter 1.5.
    ///
    /// The first of equally near segments wins. A segment without length is its vertex, fraction 0;
    /// one whose distance is not a number is passed over. Fewer than two vertices: outputs
    /// untouched, which may also be null.
    virtual void projectPointOnBulgePolyline(const Point2DF& p, const Points& polyline,
                                             const Values& bulges, int* outIndex,
                                             double* outParam) = 0;

    /// Slot 46. Point at a distance along the segment or arc, straight for |bulge| < 1e-6.
    ///
    /// |distance| <= 1e-6 gives p1 itself, also on a segment without length. A distance beyond slot
    /// 35's length writes nothing. A negative distance runs back before p1 on the same line or
    /// circle (nothing on a segment without length).
    virtual void pointOnBulgeSegmentAtDistance(const Point2DF& p1, const Point2DF& p2, double bulge,
                                               double distance, Point2DF& out) = 0;

    /// Slot 47. Arc length: radius times the sweep from `from` to `to` about the centre. Equal
    /// directions give 0, never the full circle.
    virtual double arcLength(const Point2DF& centre, double radius, const Point2DF& from,
                             const Point2DF& to, bool clockwise) = 0;

    /// Slot 48. Centre and radius of an arc. `radius` may be null; `centre` may be p1 or p2.
    ///
    /// Bulge 0 (or not-a-number): the chord's middle and a radius that is not finite. Coincident
    /// ends with a bulge: that point and radius 0. The flatter the arc the farther the centre: for
    /// |bulge| below about 1e-3 do not place points by it.
    virtual void bulgeArcCenter(const Point2DF& p1, const Point2DF& p2, double bulge,
                                Point2DF& centre, double* radius) = 0;

    /// Slot 49. Circle through three points. False, and nothing written, when four times the
    /// triangle's area is below 1e-10 (collinear or coincident points) or the circle is not finite.
    /// `radius` may be null; `centre` may be one of the points.
    virtual bool circleFrom3Points(const Point2DF& p1, const Point2DF& p2, const Point2DF& p3,
                                   Point2DF& centre, double* radius) = 0;

    /// Slot 50. Where the line through p1 and p2 meets a circle.
    ///
    /// Within 0.001 of touching, out1 is the point of the circle nearest to the line; out2 stays as
    /// it is. A crossing sets both, with centre + r at theta + alpha + pi/2 and theta - alpha +
    /// pi/2, theta the line's direction, alpha = acos(d / r), d the signed distance of slot 65.
    /// Otherwise, for a negative radius and for values that are not finite, both stay. Every line
    /// through a circle of radius below 0.0005 touches it. Coincident p1 and p2: the points above
    /// and below the centre.
    virtual void intersectLineCircle(const Point2DF& centre, double radius, const Point2DF& p1,
                                     const Point2DF& p2, Point2DF& out1, Point2DF& out2) = 0;

    /// Slot 51. Where the line a x + b y + c = 0 meets a circle: 0, 1 or 2 points, in order the one
    /// with the larger y, on a horizontal line (|a| < 1e-10) the one with the larger x. Only as
    /// many outputs as points are written.
    ///
    /// Axis-parallel lines touch when the squared distance is exactly r^2. Others touch when D =
    /// a^2 ((a^2 + b^2) r^2 - c'^2) is within 1e-10 of 0 and r^2 - d^2 within 1e-10 max(1, r), d
    /// the distance from the centre; otherwise the sign of r^2 - d^2 decides. |a| and |b| both
    /// below 1e-10, or values that are not finite: 0.
    virtual int intersectLineCircleEq(const Point2DF& centre, double radius, double a, double b,
                                      double c, Point2DF& out1, Point2DF& out2) = 0;

    /// Slot 52. Where two circles meet: 0 apart or one in the other (slack 1e-10), 1 touching from
    /// outside, 2 otherwise, -1 the same (centres and radii within 1e-10).
    ///
    /// 1 and 2 write both points, equal ones when the circles touch from outside or inside; 0 and
    /// -1 write nothing. The larger y comes first, on a vertical line of centres the larger x.
    virtual int intersectCircles(const Point2DF& c1, double r1, const Point2DF& c2, double r2,
                                 Point2DF& out1, Point2DF& out2) = 0;

    /// Slot 53. Where two lines, each by a point and a direction (radians), meet. Directions that
    /// differ by pi within 1e-6 give the middle of p1 and p2; differences are not folded, 3 pi is
    /// not pi. Parallel lines (|sin| of the difference below 1e-12) and values that are not finite
    /// leave `out` untouched.
    virtual void intersectAngleLines(const Point2DF& p1, double angle1, const Point2DF& p2,
                                     double angle2, Point2DF& out) = 0;

    /// Slot 54. Intersections of a segment with an arc: up to 2 results, with their fraction of the
    /// segment, in the order of slot 51.
    ///
    /// Let in are points with loA <= t |a1 - a0|^2 <= hiA on the segment and loB <= f L <= L +
    /// extraB on the arc, t the fraction, f that of the sweep, L the arc's length.
    ///
    /// An end that both have exactly is always one of the two points, bit for bit, and its mirror
    /// image in the foot of the centre on the line the other, unless that is within 1e-6 of it: a
    /// line meets the arc that it runs into in their joint. Flat arcs (|bulge| < 1e-6) are met in
    /// the frame of their chord, without their far centre. A segment without length, an arc without
    /// length or bulge and values that are not finite meet nothing; null arrays: *count = 0.
    virtual void intersectSegmentArc(const Point2DF& a0, const Point2DF& a1, const Point2DF& b0,
                                     const Point2DF& b1, double bulge, double loA, double hiA,
                                     double loB, double extraB, Point2DF* outPoints,
                                     double* outParams, int* count) = 0;

    /// Slot 55. Intersections of the segments p0 + s d0 and p1 + t d1: up to 2 results with
    /// parameter s. Let in are lo0 <= s |d0|^2 <= hi0, lo1 <= t |d1|^2 <= hi1 and, for a crossing,
    /// s >= -0.1.
    ///
    /// In this order: equal p0, d0 and p1, d1 give p0 (0) and p0 + d0 (1), whatever the ranges and
    /// the length. |d0|^2 |d1|^2 < 1e-6 gives nothing: crossing segments of 0.03 each do not meet.
    /// Directions within an angle of 1e-6 are parallel: then the ends of the common part (slot 57)
    /// in the direction of d0, one point where the segments only touch. Lines are the same when p1
    /// lies within an angle of 1e-6 of the first, seen from p0, or within rounding (1e-14 of the
    /// largest coordinate): lines 1e-3 apart are one if their starts are 1000 apart or more, and
    /// are not if these lie side by side.
    ///
    /// A range includes its bounds; a crossing up to 1e-6 / |d1| before p1 passes lo1 = -1e-6,
    /// which is far for a short segment. Null arrays: *count = 0. Robust form with a squared
    /// epsilon of 1e-12 after Schneider and Eberly, Geometric Tools for Computer Graphics.
    virtual void intersectSegments(const Point2DF& p0, const Point2DF& d0, const Point2DF& p1,
                                   const Point2DF& d1, double lo0, double hi0, double lo1,
                                   double hi1, Point2DF* outPoints, double* outParams,
                                   int* count) = 0;

    /// Slot 56. Where the lines of two segments cross, or what the segments have in common.
    ///
    /// |d0 x d1| >= 1e-6: `out` becomes the one crossing of the lines (nothing changes when |d0|^2
    /// |d1|^2 < 1e-6). Below, which includes short segments at any angle: when both ends of segment
    /// 1 lie within 1e-6 of line 0, the ends of the common part are appended in the direction of
    /// d0; ends of the two segments closer than 1e-4 become their middle, and a common part or a
    /// gap shorter than that is one point. Identical segments append p0 and p0 + d0. No length, or
    /// values that are not finite: nothing. `out` may hold the arguments.
    virtual void intersectSegmentsAll(const Point2DF& p0, const Point2DF& d0, const Point2DF& p1,
                                      const Point2DF& d1, Points& out) = 0;

    /// Slot 57. Common part of [a0, a1] and [b0, b1], each in order: 0 none, 1 one value when they
    /// only touch, 2 its ends. Only the entries returned are written; values that are not numbers:
    /// 0.
    virtual int overlapIntervals(double a0, double a1, double b0, double b1, double* out) = 0;

    /// Slot 58. Whether p lies on the segment: within 1e-4 of its line and between its ends, which
    /// have no tolerance beyond rounding. So a point diagonally outside a corner by 0.7e-4 is on
    /// neither edge. False for a segment without length, also at its point.
    virtual bool isPointOnSegment(const Point2DF& p, const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 59. As slot 60 for rings with arcs: ring i by slot 61 when bulge list i is there and
    /// not empty, else by slot 62. A ring's orientation is that of its vertices alone (slot 108): a
    /// disc of two vertices is always an outer ring.
    virtual int pointInBulgeRegion(const PointLists& rings, const ValueLists& bulgeLists,
                                   const Point2DF& p) = 0;

    /// Slot 60. Place of p in a region: -1 inside, 0 on a boundary, 1 outside.
    ///
    /// Rings in order. Counter-clockwise rings are holes: inside one is 1 at once, whatever
    /// follows, so an island inside a hole is outside. Clockwise rings are outer boundaries: once p
    /// was inside one, further outer rings are not looked at, nor their boundaries. Rings of fewer
    /// than 3 vertices are passed over.
    virtual int pointInRegion(const PointLists& rings, const Point2DF& p) = 0;

    /// Slot 61. Place of p in a ring with arcs: -1 inside, 0 on the boundary, 1 outside; -2 for
    /// fewer than 2 vertices. The closing edge takes bulge n - 1. An empty bulge list is slot 62;
    /// missing bulges are 0.
    ///
    /// Straight edges (|bulge| < 1e-6) as in slot 62. On an arc: its circle within 1e-6 and its
    /// sweep within a millionth. Arcs are cut at the extreme points of their circles; an extreme
    /// within a millionth of an edge's end is left out. Pieces shorter than 1e-4 count as short
    /// edges.
    virtual int pointInBulgePolygon(const Points& ring, const Values& bulges,
                                    const Point2DF& p) = 0;

    /// Slot 62. Place of p in a closed straight-edged polygon, by the even-odd rule: -1 inside, 0 on
    /// the boundary (slot 58: within 1e-4), 1 outside; -2 for fewer than 3 vertices.
    ///
    /// Edges shorter than 1e-4 have no boundary but count as crossed like any other, so that a
    /// vertex repeated nearly changes nothing.
    virtual int pointInPolygon(const Points& ring, const Point2DF& p) = 0;

    /// Slot 63. Squared distance from p to the closed segment. Taken from the end nearer to p (b on
    /// ties), by the cross product, so that it is never negative. Coincident ends: that point.
    virtual double pointSegmentDistSquared(const Point2DF& p, const Point2DF& a,
                                           const Point2DF& b) = 0;

    /// Slot 64. Squared distance from p to the line through a and b, never negative. Coincident a
    /// and b: the squared distance to that point.
    virtual double pointLineDistSquared(const Point2DF& p, const Point2DF& a,
                                        const Point2DF& b) = 0;

    /// Slot 65. Distance from p to the line through a and b, positive on the right of a to b.
    /// Coincident a and b: 0.
    virtual double pointLineSignedDist(const Point2DF& p, const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 66. Nearest point of a polyline with arcs: its squared distance as result, the point,
    /// the segment's index and index + place as in slot 45.
    ///
    /// On an arc the nearest point lies in the direction of p from the centre when that is within
    /// the arc, ends included, otherwise it is the nearer end, the start on ties. First segment,
    /// segments without length, fewer than two vertices and null outputs as in slots 67 and 45.
    /// `outPoint` may be p.
    virtual double nearestOnBulgePolylineEx(const Point2DF& p, const Points& polyline,
                                            Values bulges, Point2DF& outPoint, int* outIndex,
                                            double* outParam) = 0;

    /// Slot 67. Nearest point of a straight-edged polyline: its squared distance as result, the
    /// point, the segment's index and index + `segmentParameter`, which is not clamped: beyond an
    /// end it is outside [index, index + 1].
    ///
    /// The first of equally near segments wins. A segment without length is its vertex, fraction 0;
    /// one whose distance is not a number is passed over. Fewer than two vertices: 0, outputs
    /// untouched; outIndex and outParam may be null. `outPoint` may be p.
    virtual double nearestOnPolyline(const Point2DF& p, const Points& polyline, Point2DF& outPoint,
                                     int* outIndex, double* outParam) = 0;

    /// Slot 68. Smallest squared distance to a polyline with arcs: straight segments (|bulge| <
    /// 1e-6, a missing bulge) by slot 63; an arc is as far as its circle where p's direction from
    /// the centre is within it, ends included, else as its nearer end. Fewer than two vertices, or
    /// no segment that can be measured: 0.
    virtual double pointBulgePolylineDistSquared(const Point2DF& p, const Points& polyline,
                                                 const Values& bulges) = 0;

    /// Slot 69. Smallest squared distance to a straight-edged polyline, by slot 63. Fewer than two
    /// vertices, or no distance that is a number: 0.
    virtual double pointPolylineDistSquared(const Point2DF& p, const Points& polyline) = 0;

    /// Slot 70. Squared distance to one segment with a bulge: slot 68 of the polyline a, b.
    virtual double pointBulgeSegmentDistSquared(const Point2DF& p, const Point2DF& a,
                                                const Point2DF& b, double bulge) = 0;

    /// Slot 71. Slot 72 on arrays of *count points and values: survivors move to the front, *count
    /// becomes their number, entries behind it stay. A null pointer or *count <= 0: nothing.
    virtual void removeDuplicatePointsRaw(Point2DF* points, double* values, int* count) = 0;

    /// Slot 72. Removes every point closer than 1e-6 (strictly) to an earlier point that stays,
    /// wherever in the list, with its value. Order is kept; values beyond the last point follow on.
    /// A value list shorter than the points: nothing changes. Linear time.
    virtual void removeDuplicatePoints(Points& points, Values& values) = 0;

    /// Slot 73. Bulges of the same polyline run backwards: b0 ... b(n-1) becomes -b(n-2) ... -b0,
    /// -b(n-1), the closing segment's last. Fewer than 2 entries stay as they are.
    virtual void reverseBulges(Values& bulges) = 0;

    /// Slot 74. The point at `distance` from `base` in direction `angle` (radians). `out` may be
    /// `base`.
    virtual void polarPoint(const Point2DF& base, double angle, double distance, Point2DF& out) = 0;

    /// Slot 75. Appends the parallel of an open straight-edged polyline: n points, none for n < 2.
    /// A positive distance lies to the left of the direction of travel. `out` may be `points`.
    ///
    /// Each inner vertex moves to the corner of its neighbours' parallels, distance / sin(half the
    /// corner) away, without limit at sharp corners; where the line turns straight back, to the
    /// parallel of the incoming segment. A repeated vertex takes the direction 3 pi / 2 of
    /// coincident points and spoils its corner: remove repeats first (slot 72). The ends of a
    /// closed list are not joined.
    virtual void offsetPolyline(const Points& points, double distance, Points& out) = 0;

    /// Slot 76. Appends a cubic spline through the vertices, sampled: natural ends when open,
    /// periodic when closed (only the flag closes; the first vertex comes out again at the end).
    /// The parameter is the chord length; tangents from a tridiagonal or cyclic system (J. H.
    /// Ahlberg, E. N. Nilson, J. L. Walsh 1967).
    ///
    /// Equal neighbours are taken out pair by pair: a run of r leaves ceil(r / 2). With fewer than
    /// three vertices left those are appended as they are. A chord below 1e-6 counts as 0.01, which
    /// may draw a loop of about 1.5e-3. A chord from 1e-6 to below 4e-6 adds no points, not even
    /// its end vertex: (0,0), (5,0), (5.000002,0) ends at (5,0). Every other span ends on its
    /// vertex exactly.
    ///
    /// Each span is cut into quarters; a pair of them is halved again until its middle point is
    /// closer than |tolerance| (strictly) to the chord of the pair, measured by
    /// pointSegmentDistSquared.
    ///
    /// Tolerance of every curve operation (slots 76 to 82, 110, 111), in drawing units: the finest
    /// is F = 1e-10 times the larger side of the input's box (elevations or values that take part
    /// are one more side) plus 1e-15 times the largest coordinate, at least 1e-150. One that is not
    /// a number, zero, negative or below F counts as F; +infinity accepts every piece.
    ///
    /// Bounds of every curve operation: a piece is halved at most 32 times; it stays when no
    /// parameter lies between those of its ends, when its deviation is not a number, and once the
    /// call has made 4,194,304 + 64 points for each span.
    ///
    /// Unusable input of every curve operation: a number that takes part is not finite or exceeds
    /// 1e150 in size. Here nothing is appended then. Cost is linear in the points that come out.
    virtual void splineInterpolate(Points points, Points& out, bool closed, double tolerance) = 0;

    /// Slot 77. Appends to `out` the span lists of tensionCurveRaw one after another: the curve
    /// from vertex `from` to vertex `to` without repeats. Nothing where that gives false.
    virtual void tensionCurve(Points points, Points& out, bool closed, unsigned from, unsigned to,
                              double tolerance) = 0;

    /// Slot 78. A spline under tension through the vertices, span by span (D. G. Schweikert 1966,
    /// A. K. Cline 1974): stiffer than the cubic spline, without overshoot on uneven spacing. The
    /// tension is 4.5 (n - 1) over the length of the line.
    ///
    /// `from`, `to`: the spans wanted, span k running from vertex k to k + 1, from <= k < to; a
    /// `to` of 0 or beyond the last vertex is the last vertex. from >= to gives false; that is
    /// decided before closing, so the closing span alone can be asked for only when the list
    /// repeats its first vertex. A `to` at the last vertex always includes the closing span.
    ///
    /// `closed` adds the first vertex where the last one differs from it, and lets the line run on
    /// by two vertices on either side. That is not a periodic curve: the tangents at the closing
    /// vertex may differ by about 2 degrees. An open curve leaves and arrives along its first and
    /// last chord.
    ///
    /// `spans` is replaced: one list for each span with its first but without its last vertex; only
    /// the last list ends with vertex `to`. Fewer than three vertices instead add their chord as a
    /// list of two points behind what `spans` holds; true whatever the range, and never closed.
    ///
    /// A piece is halved while the curve at its middle parameter lies farther than `tolerance` (in
    /// drawing units, see slot 76; equality accepts) from the middle of its chord. Only that is
    /// looked at: a span that is symmetric about its middle, such as the middle one of (0,0),
    /// (10,0), (0,5), (10,5), stays one chord although the curve bends.
    ///
    /// False with `spans` untouched: from >= to; unusable input (slot 76); a chord without length
    /// anywhere in the closed list (remove repeats first); chords so unequal, about 1 : 1e150, that
    /// the solution leaves the range of doubles. Bounds as in slot 76.
    virtual bool tensionCurveRaw(Points points, PointLists& spans, bool closed, unsigned from,
                                 unsigned to, double tolerance) = 0;

    /// Slot 79. Slot 77 with a value for each vertex: appends the lists of tensionCurveZRaw to
    /// `out` and `outValues`; nothing where that gives false.
    virtual void tensionCurveZ(Points points, Values values, Points& out, Values& outValues,
                               bool closed, unsigned from, unsigned to, double tolerance) = 0;

    /// Slot 80. Slot 78 with a value for each vertex (a height, say), smoothed like a third
    /// coordinate: chords and deviations are measured in space, and `spanValues` gets a list beside
    /// each list of `spans`. Closing compares positions alone: a last vertex at the place of the
    /// first with another value counts as closed and keeps its value.
    ///
    /// Fewer values than points: false, nothing written. Surplus values are ignored. A chord counts
    /// as without length when position and value are equal.
    virtual bool tensionCurveZRaw(Points points, Values values, PointLists& spans,
                                  ValueLists& spanValues, bool closed, unsigned from, unsigned to,
                                  double tolerance) = 0;

    /// Slot 81. Replaces the lists by a cubic Bezier span cut into chords, from exactly p0, z0 to
    /// exactly p3, z3; always true. The elevation runs linearly from z0 to z3 in the curve's
    /// parameter; z1 and z2 take no part.
    ///
    /// The middle of the curve is always a point at first; then every piece is halved while the
    /// curve at its middle parameter lies farther than `tolerance` (in space; see slot 76 for it
    /// and for the bounds) from the middle of its chord. Three points become two when the first
    /// middle lay closer than the tolerance, strictly. Deviations of an S cancel in the middle: it
    /// may come out as two points at a tolerance that its halves pass.
    ///
    /// Unusable input (slot 76) gives [p0, p3] and [z0, z3]. The control points may be elements of
    /// `outPoints`.
    virtual bool bezierSpanToPolyline3d(const Point2DF& p0, double z0, const Point2DF& p1,
                                        double z1, const Point2DF& p2, double z2,
                                        const Point2DF& p3, double z3, Points& outPoints,
                                        Values& outZ, double tolerance) = 0;

    /// Slot 82. Slot 81 in the plane, without elevations.
    virtual bool bezierSpanToPolyline(const Point2DF& p0, const Point2DF& p1, const Point2DF& p2,
                                      const Point2DF& p3, Points& outPoints, double tolerance) = 0;

    /// Slot 83. The point of a cubic Bezier span at parameter t, any t: the polynomial continues
    /// outside [0, 1]; exactly p0 at 0 and p3 at 1. `z` becomes z0 (1 - t) + z3 t; z1 and z2 take
    /// no part. What overflows comes out as infinity or not a number.
    virtual Point2DF bezierSpanPoint3d(const Point2DF& p0, double z0, const Point2DF& p1, double z1,
                                       const Point2DF& p2, double z2, const Point2DF& p3, double z3,
                                       double& z, double t) = 0;

    /// Slot 84. Replaces `spans` by the Bezier handles of a smooth curve through the points: for
    /// each segment the two inner control points; always true.
    ///
    /// A spline under tension is fitted (tension as in slot 78) whose end tangents are those of the
    /// parabolas through the outermost three points; each segment is the cubic that meets it at the
    /// ends and at the thirds of the chord. Then the handles at each joint are turned into one
    /// line, its direction their mean weighted with their lengths, which they keep. Ends closer
    /// than 1e-7 (not squared, unlike slot 85) make the figure closed: fitted across the joint and
    /// smoothed at the first point, where the last segment's second handle is set too.
    ///
    /// A point equal to the one before it is left out of the fit and its segment gets two copies of
    /// it. With two different points the handles stand at 0.3333 and 0.6667 of the chord, with
    /// fewer there are none, and repeats get no entries then: [A, A, B] gives one. Where the fit is
    /// not defined (chords that vanish against the figure) a segment takes handles at 0.3333 and
    /// 0.6667 of its chord before the smoothing. Unusable input (slot 76): `spans` is cleared.
    virtual bool bezierCurveSpans(Points points, PointLists& spans) = 0;

    /// Slot 85. Appends an Akima curve through the points (H. Akima 1970), 50 samples for each
    /// segment from its start on, then one last point: the first point of a closed figure, else the
    /// last.
    ///
    /// Ends whose SQUARED distance is below 1e-7, that is ends closer than 3.16e-4, make the figure
    /// closed: the last point is left out and a segment leads back to the first. With fewer than
    /// three points after that only the one last point is appended: [A, B] gives B.
    ///
    /// A turn weighs nothing when it is not larger than the rounding of the coordinates (|p x q| <=
    /// 1e-15 (|p| + |q|) times the largest coordinate), so that straight runs stay straight in
    /// survey coordinates. Where both weights or the weighted sum vanish (a corner between two
    /// straight runs, a repeated point, doubling back) both chords count alike; where their sum is
    /// 0, the one after, then the one before; the tangent is 0 when both are. Empty or unusable
    /// input (slot 76), or more points than a list holds: nothing.
    virtual void akimaCurve(Points points, Points& out) = 0;

    /// Slot 86. Collects the vertices that a simplified polyline keeps between two of its vertices
    /// (D. Douglas, T. Peucker 1973).
    ///
    /// While the ends are less than 1e-5 apart, `last` goes back by one vertex, which is kept too.
    /// Then the vertex farthest from the segment (not the line) between the ends is kept when its
    /// squared distance exceeds `toleranceSquared`, and both halves are treated the same way. A
    /// vertex at exactly the tolerance is dropped, unlike in simplifyPolyline.
    ///
    /// Appends indices to `kept` in no particular order; `first` and `last` are not among them.
    /// Nothing is appended unless 0 <= first < last < size, and for a tolerance that is not a
    /// number. An explicit stack takes the place of recursion, so the halves do not come back
    /// through this slot.
    virtual void simplifyRange(Points points, int first, int last, double toleranceSquared,
                               tav::Vector<int>& kept) = 0;

    /// Slot 87. Simplifies a polyline together with two lists of values, one per vertex.
    ///
    /// Keeps the first and the last vertex, of a closed ring also the last vertex before it that is
    /// 1e-5 or more away from the first, and what simplifyRange keeps between them. When all
    /// vertices lie within 1e-5 of the first, all are kept.
    ///
    /// Appends to the three outputs. Fewer than three points, or a tolerance below 1e-7 or not a
    /// number: the outputs are replaced by copies of the inputs. A value list shorter than the
    /// points: nothing is appended when there is something to simplify. Any output may be any
    /// input.
    virtual void simplifyPolylineWithValues(const Points& points, const Values& valuesA,
                                            const Values& valuesB, Points& outPoints, Values& outA,
                                            Values& outB, double tolerance) = 0;

    /// Slot 88. Simplifies a polyline (D. Douglas, T. Peucker 1973): every vertex left out lies
    /// nearer than `tolerance` to the segment that replaces it. A vertex at exactly the tolerance
    /// stays.
    ///
    /// Appends to `out`. Fewer than three points, or a tolerance below 1e-7 or not a number: `out`
    /// is replaced by a copy. `out` may be the input. Ends that coincide need no care here:
    /// distances are to the segment, which is then a point.
    virtual void simplifyPolyline(const Points& points, Points& out, double tolerance) = 0;

    /// Slot 89. Centroid of the area that a ring encloses, whether its first vertex is repeated or
    /// not and whichever way it runs. It is summed over the areas between the edges and the x axis.
    ///
    /// A part that would bring the running weight of its side within 1e-10 of 0 is left out with
    /// its moment: (-1,-1), (1,1), (-1,1) gives (0, 0) instead of (-1/3, 1/3). With any coordinate
    /// beyond 1e4 the sums are those of the triangles over vertex 0 instead: figures far out keep
    /// their digits, and nothing is left out.
    ///
    /// An empty ring gives (0, 0); a ring without area (within 2e-15 of the sum of its parts, their
    /// rounding), or one whose sums overflow, the centre of its box.
    virtual Point2DF ringCentroid(const Points& ring) = 0;

    /// Slot 90. Whether the ring is clockwise by the area of slot 36, which is positive then:
    /// greater than 0. The last bulge belongs to the closing segment; on a ring whose first vertex
    /// is repeated at the end that segment has no length, and its bulge does not count. Missing
    /// bulges are 0.
    virtual bool hasPositiveBulgeArea(const Points& points, Values bulges) = 0;

    /// Slot 91. Box of a segment, its arc included: replaces both corners, which may be p1 and p2.
    ///
    /// Straight, and so the chord's box, for |bulge| < 1e-6. An extreme of the arc's circle counts
    /// strictly inside the arc by slot 38, and only widens the box. Coincident ends: that point.
    virtual void bulgeArcExtents(const Point2DF& p1, const Point2DF& p2, double bulge,
                                 Point2DF& minCorner, Point2DF& maxCorner) = 0;

    /// Slot 92. Box of a polyline, arcs included, by slot 91; if `closed` with the closing segment,
    /// which has the last bulge. It is grown on all sides by `margin`, shrunk by a negative one
    /// (the corners may then cross). Fewer than two points: nothing is written. Missing bulges are
    /// 0.
    virtual void bulgePolylineExtents(const Points& points, Values bulges, bool closed,
                                      Point2DF& minCorner, Point2DF& maxCorner, double margin) = 0;

    /// Slot 93. The parallel of a polyline with arcs at `distance`, to the left of the direction of
    /// travel when it is positive. Arcs stay arcs about their centre, with radius r - distance for
    /// a positive bulge and r + distance for a negative one. Replaces both outputs.
    ///
    /// True: `outBulges` is as long as `outPoints`, its last entry 0; a closed result repeats its
    /// first vertex exactly. False, and outputs untouched: fewer than two points, or fewer than two
    /// distinct ones; a figure that has vanished; a number that is not finite, or a result that is
    /// not. Distance 0 gives the figure itself. Missing bulges are 0; |bulge| < 1e-6 is straight.
    ///
    /// Closed is a figure whose ends are less than 1e-4 apart, and only that: a ring that does not
    /// repeat its first vertex is an open figure. A vertex less than 1e-3 from the one before it is
    /// taken out with the bulge of the segment between them.
    ///
    /// Joints, in this order, lengths in units of max(1, |distance|): moved ends within 1e-6 of
    /// each other meet half-way. Else lines and circles are intersected, of two points the one
    /// nearer to the vertex, without limit at sharp corners. Where these do not meet, an outer
    /// corner (one that turns away from the parallel) gets an arc of radius |distance| about its
    /// vertex, the shorter way round; a line that turns straight back gets a half circle round its
    /// tip. At an inner corner the piece that lies within reach of the other, the shorter one
    /// rather, is dropped; where neither does they are connected by such an arc too.
    ///
    /// Pieces, connecting arcs among them, vanish whose radius is no longer positive, or that their
    /// joints overrun (1e-9 is nothing left). They are taken out one by one, the most overrun for
    /// its length first, and their neighbours are joined: where both are cut short, else where
    /// nearest. Of the two sides of a strip that is used up, the one stays of which more is left.
    /// Lines that go on from each other across a gap (within 0.05 of one direction), or meet
    /// farther than 10 |distance| beyond their ends, are joined by a straight line from end to end.
    /// A closed figure also has vanished when both the turns and the area of what is left have the
    /// other sign. So every point of the result is |distance| from the line or circle of its
    /// segment, but for such straight lines; where far parts of the figure come closer to each
    /// other than twice that, the result crosses itself. An open figure ends at the moved ends of
    /// the first and the last piece that are left.
    ///
    /// Cost: n log n. Points lie relative to the first vertex, so far coordinates cost no digits.
    virtual bool offsetBulgePolyline(Points points, Values bulges, double distance,
                                     Points& outPoints, Values& outBulges) = 0;

    /// Slot 94. Both ends of a segment moved sideways, to its left for a positive distance, by
    /// slots 15 and 74. Coincident ends have the direction 3 pi / 2: both move towards +x. The
    /// outputs may be anything; they are written last.
    virtual void parallelSegment(Point2DF a, Point2DF b, Point2DF& outA, Point2DF& outB,
                                 double distance) = 0;

    /// Slot 95. Bulge of the arc from `start` to `end` about `centre`: negative when `clockwise`.
    ///
    /// The size comes from half the chord h and the radius alone, the centre only tells the long
    /// way round from the short one (the turn about it is beyond pi, or below it for clockwise;
    /// exactly pi is short); whether the ends lie on the circle is not looked at. h >= radius, a
    /// negative radius too, gives a half circle, 1 or -1. Coincident ends and values that are not
    /// finite: 0.
    ///
    /// Near a half circle one rounding step of the chord moves the bulge by 1e-8.
    virtual double bulgeFromRadius(Point2DF centre, Point2DF start, Point2DF end, double radius,
                                   bool clockwise) = 0;

    /// Slot 96. Cuts a polyline with arcs, and values of its vertices, at two places, in either
    /// order.
    ///
    /// Appends three lists to each output: head, middle and tail. Each bulge list is as long as its
    /// point list and ends with 0; a part of an arc gets the bulge of its share of the sweep;
    /// values at a cut are linear in the share of the segment. A piece without length is the one
    /// point. With no `values` the three value lists are empty. `flag` has no effect.
    ///
    /// A cut is at the nearest point by slot 66, not where it was given, and past an open end at
    /// that end. Within 1e-6 of a vertex, as share of the segment, it is the vertex, which is not
    /// doubled. Missing bulges are 0. Nothing is appended for fewer than two points, for values
    /// fewer than points (but not none), and when no place can be found.
    virtual void bulgePolylineSection(const Point2DF& cutA, const Point2DF& cutB,
                                      const Points& points, Values bulges, const Values& values,
                                      PointLists& outPoints, ValueLists& outBulges,
                                      ValueLists& outValues, bool flag) = 0;

    /// Slot 97. Replaces arcs by chords: m of them for an arc of m times `stepDegrees` degrees, m
    /// the whole part of that ratio, so that a chord spans the step or more: an arc of 15 degrees
    /// by steps of 10 is one chord. An arc below the step stays an arc. Ratios a billionth below a
    /// whole number are that number. Vertices lie on the arc at equal distances (slot 46), with
    /// linear values.
    ///
    /// Replaces the three outputs, which may be the inputs. Straight are |bulge| <= 1e-6; the
    /// closing bulge, if there is one, is copied. A negative step counts by its size; 0 or not
    /// finite, or no bulges: copies. An arc gets at most 65,536 chords, and stays when the result
    /// would exceed 4,194,304 + 64 n points or its length is not finite. Bulges fewer than n - 1,
    /// or values fewer than n (but not none): outputs untouched.
    virtual void densifyBulgesByAngle(const Points& points, const Values& bulges,
                                      const Values& values, double stepDegrees, Points& outPoints,
                                      Values& outBulges, Values& outValues) = 0;

    /// Slot 98. Appends the vertices of an arc cut into chords, from exactly p1 to exactly p2. It
    /// is halved until the chords' sagitta |chord bulge| / 2 is below `tolerance` (equality
    /// halves), so there are 2^k equal chords. Any bulge counts as an arc, 0 has sagitta 0.
    ///
    /// The finest tolerance is F = 1e-10 times the larger side of the arc's box (slot 91) plus
    /// 1e-15 times the largest coordinate; one below, zero, negative or not a number is F,
    /// +infinity accepts the chord. Points of one call: 4,194,304 + 64 for each point given; an arc
    /// that needs more is one chord. Middles are those of slot 26, so flat arcs keep their side and
    /// place. Coincident ends: p1 and p2. A number that is not finite, or a sagitta that is not:
    /// nothing is appended.
    virtual void bulgeArcToChords(Point2DF p1, Point2DF p2, double bulge, double tolerance,
                                  Points& out) = 0;

    /// Slot 99. Slot 98 in plan, with elevations appended to `outZ`: a middle has the mean of its
    /// ends. The tolerance does not look at elevations; one that is not finite: nothing is
    /// appended.
    virtual void bulgeArcToChords3d(Point3DF a, Point3DF b, double bulge, double tolerance,
                                    Points& out, Values& outZ) = 0;

    /// Slot 100. A polyline cut into chords: each |bulge| > 1e-6 by slot 98, with the finest
    /// tolerance of the whole figure (F of slot 98 with its box); vertices stay. No closing
    /// segment.
    ///
    /// Replaces `out`, which may be the input: with nothing for fewer than two points, with a copy
    /// for no bulges. An arc that would bring the result above 4,194,304 + 64 n points is one
    /// chord. Bulges fewer than n - 1 (but not none), or a number that is not finite: `out`
    /// untouched.
    virtual void bulgePolylineToChords(const Points& points, const Values& bulges, double tolerance,
                                       Points& out) = 0;

    /// Slot 101. Slot 100 with elevations, by slot 99. Fewer elevations than points (but not none),
    /// or one that is not finite: outputs untouched.
    ///
    /// With no elevations `outZ` is not parallel to `out`: arcs give zeros, twice where two arcs
    /// meet, straight segments nothing (two arcs of 3 points each: 5 points, 6 zeros). Use slot 100
    /// then.
    virtual void bulgePolylineToChords3d(const Points& points, const Values& bulges,
                                         const Values& z, double tolerance, Points& out,
                                         Values& outZ) = 0;

    /// Slot 102. The direction that carries most of the length of several rings, in radians,
    /// undirected and folded into (-pi/2, pi/2]; 0 without edges.
    ///
    /// No closing edges are added. An edge joins the earliest direction within 0.001 of its own,
    /// which keeps the direction it began with; the greatest total length wins, of equal ones the
    /// smallest direction. A direction up to 0.001 below the x axis folds to 0, one above it does
    /// not; beyond that directions are compared as numbers, so pi/2 - 0.0003 and -pi/2 + 0.0003 are
    /// two, unless they lie within 1e-9 of half a turn (vertical edges whose x differs by
    /// rounding).
    ///
    /// A repeated point counts as an edge of direction pi/2 and no length. Edges that are not
    /// finite are passed over.
    virtual double dominantEdgeDirection(const PointLists& rings) = 0;

    /// Slot 103. Where the line through `p1` in direction `angle1` meets that through `p2` in
    /// direction `angle2`.
    ///
    /// A line within 0.001 of pi/2 counts as exactly vertical (the first of two), one near -pi/2
    /// does not. `out` stays untouched when the sine between the lines is below 1e-12, when both
    /// lie within 1e-12 of pi/2, and when the result is not finite.
    virtual void intersectDirectionLines(Point2DF p1, double angle1, Point2DF p2, double angle2,
                                         Point2DF& out) = 0;

    /// Slot 104. Index of the point with the smallest x + y, the first of several; 0 for an empty
    /// list. A sum that is not a number is passed over.
    virtual int lowerLeftPointIndex(const Points& points) = 0;

    /// Slot 105. Whether b lies in line with a and c: the folded directions of a-b and b-c differ
    /// by less than 0.001, compared as in dominantEdgeDirection. True also where the line turns
    /// straight back.
    virtual bool isParallelDirection(Point2DF a, Point2DF b, Point2DF c) = 0;

    /// Slot 106. Leaves the true corners of a ring, in place: drops a point less than 0.001 from
    /// the one before it and the middle one of any three that isParallelDirection finds in line,
    /// the first and the last point included. A last point within 0.001 of the first closes the
    /// ring; it becomes a copy of the new first point. With fewer than three points (the closing
    /// one not counted) only near points are dropped.
    virtual void removeCollinearPoints(Points& ring) = 0;

    /// Slot 107. The first entry whose direction is less than 1e-6 from `direction`; null when
    /// there is none. The pointer leads into the storage that `lines` shares with the caller's list
    /// and is valid while the caller keeps that list unchanged.
    virtual const CMyAngleLine* lookupAngleLine(tav::Vector<CMyAngleLine> lines,
                                                double direction) = 0;

    /// Slot 108. Whether a ring runs clockwise (y up). Its first vertex may be repeated at the end.
    /// Summed relative to vertex 0. True for a ring of no area, one point and no point; false when
    /// a coordinate is not a number.
    virtual bool isClockwiseRing(const Points& ring) = 0;

    /// Slot 109. Squares outlines: every edge is turned to run along the dominant direction of all
    /// rings or across it.
    ///
    /// A ring comes out clockwise and closed, beginning near its lower left corner, with one vertex
    /// per corner. Each edge in turn is swung about its start to the nearer of the two directions,
    /// but across when the edge after it runs along (so a slight kink before such an edge becomes a
    /// step), and the vertex slides along the edge after it. The last edge takes the direction that
    /// the closing edge leaves. Edges within 0.001 of the dominant direction stay as they are. A
    /// vertex in line with its neighbours, or one whose edges would meet farther away than the two
    /// are long, is no corner and goes.
    ///
    /// Appends to `out`, which may be the input. A ring with fewer than four vertices (the closing
    /// one not counted), before or after, or with a coordinate that is not finite is appended
    /// unchanged.
    virtual void squareRings(const PointLists& rings, PointLists& out) = 0;

    /// Slot 110. Appends a clamped cubic B-spline over the control points, cut into chords (M. G.
    /// Cox 1972, C. de Boor 1972): from exactly the first to exactly the last control point, inside
    /// their convex hull, with an elevation for each point. Three control points make it quadratic;
    /// fewer are appended as they are.
    ///
    /// `degree` other than 3: false, nothing written. A piece, at first the whole curve, is halved
    /// while the curve at its middle parameter lies farther than `tolerance` (in space; see slot 76
    /// for it and for the bounds) from the middle of its chord. No first middle is forced: a
    /// control polygon symmetric about a point, such as (0,0), (0,10), (10,-10), (10,0), gives its
    /// two ends at any tolerance.
    ///
    /// Fewer elevations than control points, or unusable input (slot 76): false, nothing written.
    /// Surplus elevations are ignored. The outputs may be the inputs. The cost of a point does not
    /// depend on the number of control points.
    virtual bool bsplineToPolyline3d(const Points& controls, const Values& z, Points& outPoints,
                                     Values& outZ, int degree, double tolerance) = 0;

    /// Slot 111. Slot 110 in the plane, without elevations.
    virtual bool bsplineToPolyline(const Points& controls, Points& outPoints, int degree,
                                   double tolerance) = 0;

    /// Slot 112. Convex hull of a point set (R. Graham 1972).
    ///
    /// `points` is cleaned and reordered: a point less than 1e-3 from one that stays before it is
    /// removed; the lowest point (of several the leftmost) comes first, the others follow
    /// counter-clockwise as seen from it, on a common ray the nearer first.
    ///
    /// The hull is appended to `hull`, whose former contents stay and are not looked at. It starts
    /// at the lowest point, runs counter-clockwise, is not closed and has no collinear points on
    /// its edges. Points on one line give the two ends; fewer than three points are their own hull.
    /// With a coordinate that is not finite, or beyond 1e150 in size, both lists stay untouched.
    /// Where only rounding puts three points in line the middle one of them may go too; the hull is
    /// convex all the same.
    virtual void convexHull(Points& points, Points& hull) = 0;

    /// Slot 113. Slot 114 for a polyline with arcs. On an arc the direction of travel at the
    /// nearest point counts, not the chord: between a left turning arc and its chord is left.
    /// Nearest point by slot 66; bulges below 1e-6 and missing ones are straight.
    virtual int pointSideOfBulgePolyline(const Point2DF& p, const Points& polyline,
                                         Values bulges) = 0;

    /// Slot 114. The side of a polyline that p lies on, seen in its direction of travel: 1 left, -1
    /// right, 0 on it (nearer than 1e-3). So beside a simple ring 1 is inside a counter-clockwise
    /// and outside a clockwise one.
    ///
    /// Judged at the nearest point (slot 67) by the segment there. Within 1e-3 of a vertex (the
    /// nearer one of a short segment) by the corner: of the segments before and after it, the one
    /// whose line makes the larger angle with the direction to p; that keeps one value on each side
    /// of corners of any sharpness, and p in line with one segment is judged by the other. Segments
    /// without length are passed over. When the last point equals the first exactly, the corner
    /// there wraps round.
    ///
    /// 0 also for a p in line (within 1e-6 radians) with both segments, or, beyond an open end,
    /// with the one there; for fewer than two vertices; for a p that is not a number.
    virtual short pointSideOfPolyline(const Point2DF& p, const Points& polyline) = 0;

    /// Slot 115. The side of b (slot 114) that the midpoints of a's segments lie on: -1 or 1
    /// whatever else lies on b, 2 for both sides, 0 when all lie on b or a has no segment.
    virtual int segmentsSideOfPolyline(const Points& a, const Points& b) = 0;

    /// Slot 116. As slot 115 for the vertices of a; when all of them lie on b, slot 115 decides.
    /// The segments between vertices on one side may cross b unnoticed.
    virtual int polylineSideOfPolyline(const Points& a, const Points& b) = 0;

    /// Slot 117. Place of the middle of a segment in a straight-edged ring: slot 62 of it, but 2
    /// for a ring of fewer than four points, also for a triangle without its first vertex repeated.
    virtual int segmentMidpointInRing(const Points& ring, const Point2DF& p1,
                                      const Point2DF& p2) = 0;

    /// Slot 118. How a polyline with arcs runs with respect to a ring with arcs.
    ///
    /// -1: some of it inside, nothing outside (it may touch the ring or run along it); 1: some of
    /// it outside, nothing inside; 2: both, it passes through; 0: all of it on the ring; -2: fewer
    /// than two vertices, or a ring for which slot 61 has -2. The polyline is not closed; the ring
    /// is, whether or not it repeats its first vertex.
    ///
    /// The polyline is cut at its vertices and where its edges meet the ring's (slot 7, edge by
    /// edge), and every piece has the place of its middle (slot 61; for an arc the middle of its
    /// sweep). Pieces shorter than 1e-3 are passed over (when there is none longer the
    /// longest decides), and so are edges that are not finite.
    ///
    /// Of edges in a row that keep clear of the ring only the first is asked for. Cost: nearly
    /// linear, and a point location for each such row and each piece of an edge that comes near.
    virtual int polylineRingRelation(const Points& polyline, const Values& polylineBulges,
                                     const Points& ring, const Values& ringBulges) = 0;

    /// Slot 119. Slot 118 for straight edges, with the ring first: edges meet by slot 13, places
    /// are those of slot 117. -2 for a ring of fewer than four points, counted as given.
    virtual int polylinePartsInRing(const Points& ring, const Points& polyline) = 0;

    /// Slot 120. Box of several point lists. An empty first list gives zeros whatever follows; an
    /// empty later list counts as the point (0, 0) and so pulls the box to the origin.
    virtual void polylinesExtents(const PointLists& lists, double& minX, double& minY, double& maxX,
                                  double& maxY) = 0;

    /// Slot 121. Box of a point list; the result is the number of points. An empty list gives
    /// zeros. A coordinate that is not a number counts only in the first point.
    virtual int pointsExtents(const Points& points, double& minX, double& minY, double& maxX,
                              double& maxY) = 0;

    /// Slot 122. The box of polylinesExtents as RectF(minX, minY, width, height): `right()` is the
    /// width and `bottom()` the height.
    virtual RectF polylinesRect(const PointLists& lists) = 0;

    /// Slot 123. The box of pointsExtents as RectF(minX, minY, width, height): `right()` is the
    /// width and `bottom()` the height.
    virtual RectF pointsRect(const Points& points) = 0;

    /// Slot 124. Splits an angle in degrees into whole degrees, whole minutes and seconds,
    /// truncating towards zero. Below -1e-10 the three parts are the magnitudes of the angle's
    /// parts and the caller keeps the sign; -5e-11 still gives seconds of -1.8e-7.
    ///
    /// Nothing is rounded or carried: 10.1 gives 10, 5, 59.99999..., and 30 degrees that arrive as
    /// 29.999999999999996 give 29, 59, 59.99... Whoever prints the seconds rounds. Nothing is
    /// written from 2^31 degrees on, for infinity and for not-a-number.
    virtual void degreesToDms(double degrees, int& d, int& m, double& s) = 0;

    /// Slot 125. degreesToDms of the magnitude of an angle in radians: the sign is dropped.
    virtual void radiansToDms(double radians, int& d, int& m, double& s) = 0;

    /// Slot 126. Radians of degrees, minutes and seconds. Negative degrees make minutes and seconds
    /// count downwards, so (-10, 30, 0) is -10.5 and (-10, -30, 0) is -9.5 degrees; with zero
    /// degrees they keep their own sign, so minus half a degree is (0, -30, 0).
    virtual double dmsToRadians(int d, int m, double s) = 0;

    /// Slot 127. translatePoints for each list; `out` is replaced and may be the input.
    virtual void translatePolylines(const PointLists& lists, double dx, double dy,
                                    PointLists& out) = 0;

    /// Slot 128. Moves the origin to (dx, dy): the offset is subtracted. `out` is replaced and may
    /// be the input; the result is the number of points.
    virtual int translatePoints(const Points& points, double dx, double dy, Points& out) = 0;

    /// Slot 129. Moves the centre of the points' box to the origin and tells where it was. `out` is
    /// replaced and may be the input; the result is the number of points. An empty list gives (0,
    /// 0).
    virtual int centerPointsOnBox(const Points& points, double& cx, double& cy, Points& out) = 0;

    /// Slot 130. Adds a turn to a negative angle or takes one from an angle above 2 pi, once: 2 pi
    /// stays 2 pi, 4 pi + 1 becomes 2 pi + 1.
    virtual double normalizeAngle(const double& angle) = 0;

    /// Slot 131. Direction from (x1, y1) to (x2, y2) in [0, 2 pi], 2 pi itself for a direction a
    /// hair below the x axis. A difference in x below 1e-10 in size is taken for 1e-10 on its side,
    /// so equal points have direction 0.
    virtual double vectorAngle(const double& x1, const double& y1, const double& x2,
                               const double& y2) = 0;

    /// Slot 132. Direction in [0, 2 pi] and distance from (x1, y1) to (x2, y2). A difference in x
    /// below 1e-12 in size is taken for 1e-12 on its side, for the direction only. The outputs may
    /// be inputs.
    virtual void polarFromCoordinates(const double& x1, const double& y1, const double& x2,
                                      const double& y2, double& angle, double& distance) = 0;

    /// Slot 133. The point at `distance` from (x0, y0) in direction `angle`. The outputs may be
    /// inputs.
    virtual void coordinatesFromPolar(double& x, double& y, const double& x0, const double& y0,
                                      const double& distance, const double& angle) = 0;

    /// Slot 134. Where two circles meet: the number of points written, 0, 1 or 2, or -1 for the
    /// same circle, which writes nothing.
    ///
    /// The same: centres closer than 1e-3 and radii within 1e-6, although such circles do cross.
    /// Touching: circles that overlap from outside by less than 1e-6 have the one point c1 + (c2 -
    /// c1) r1 / d; circles apart by any more than rounding (8 steps of the largest quantity) have
    /// none. Touching from inside is 2 equal points. Otherwise out1 lies to the left of c1 to c2,
    /// out2 to the right. A negative radius and values that are not finite: 0.
    virtual int circleCircleIntersection(const Point2DF& c1, double r1, const Point2DF& c2,
                                         double r2, Point2DF& out1, Point2DF& out2) = 0;

    /// Slot 135. Length of the segments without a closing one: the sum of slot 35. Fewer than two
    /// points, or fewer than n - 1 bulges: 0.
    virtual double bulgeSegmentsLength(const Points& points, const Values& bulges) = 0;

    /// Slot 136. Length of a polyline, the sum of the pointDist of its edges; 0 for fewer than two
    /// points. No closing edge is added.
    virtual double polylineLength(const Points& points) = 0;

    /// Slot 137. Whether any list has an arc by slot 138.
    virtual bool anyBulgeInLists(const ValueLists& bulgeLists) = 0;

    /// Slot 138. Whether any bulge is above 1e-6 in size, strictly; not-a-number is not.
    virtual bool hasBulges(const Values& bulges) = 0;

    /// Slot 139. Whether two lines begin and end at the same points, within 1e-4, in the same or in
    /// opposite direction. False when one of them is empty.
    virtual bool haveSameEnds(const Points& a, const Points& b) = 0;

    /// Slot 140. The index of the first list that has the same ends as a (slot 139), or -1.
    virtual int findSameEnds(const PointLists& lists, const Points& a) = 0;

    /// Slot 141. The angle at b between the directions to a and to c, without sign, in [0, pi]. A
    /// point equal to b has direction 0 along the y axis.
    virtual double angleBetweenDirections(const Point2DF& a, const Point2DF& b,
                                          const Point2DF& c) = 0;

    /// Slot 142. Moves b so that a-b-c is a right angle: to the nearest point of the circle over
    /// a-c, on b's side. False, with b untouched, when b lies on the line a-c or higher over it
    /// than half its length, and for coincident a and c.
    virtual bool squareCorner(const Point2DF& a, Point2DF& b, const Point2DF& c) = 0;

    /// Slot 143. Squares the corners of a ring that differ from a right angle by 1e-6 radians or
    /// more and by at most `toleranceDegrees`, in place, by squareCorner.
    ///
    /// Corners are taken in order, round and round, until a whole lap moves none; corners with a
    /// repeated point are passed over. Moving one changes its neighbours, and rings of dozens of
    /// corners need not come to rest: after 1,000,000 + 20 n corners what was reached stays. Only a
    /// ring whose last vertex equals its first has a corner there, and both copies move together;
    /// an open list keeps its ends.
    ///
    /// False for fewer than three vertices, else true. A negative tolerance or one that is not a
    /// number moves nothing.
    virtual bool squareCorners(Points& ring, double toleranceDegrees) = 0;

    /// Slot 144. Area of a triangle, without sign.
    virtual double triangleArea(const Point2DF& a, const Point2DF& b, const Point2DF& c) = 0;

    /// Slot 145. Centroid of a triangle.
    virtual Point2DF triangleCentroid(const Point2DF& a, const Point2DF& b, const Point2DF& c) = 0;

    /// Slot 146. A point inside a ring with arcs, to put a label: one that slot 61 calls inside,
    /// and so not nearer than 1e-4 to a straight edge. It need not be far from the boundary.
    ///
    /// Tried in turn, each by slot 61: the 64 largest of the centroids of the triangles at vertices
    /// and of the middles between arcs and their chords; the widest inner stretch on up to 64 lines
    /// half way between heights of vertices and arc extremes; the same on 64 lines spread evenly
    /// over the height. False, with `out` untouched, when none is inside: for a ring without area,
    /// one thinner than 2e-4, and too few vertices.
    ///
    /// The ring may repeat its first vertex; its closing edge has bulge n - 1. Missing bulges are
    /// straight; without any, fewer than three vertices are too few. Cost: nearly linear.
    virtual bool labelPoint(const Points& ring, const Values& bulges, Point2DF& out) = 0;

    /// Slot 147. The first centroid of three vertices in a row that lies inside the ring (slot 62).
    /// Triangles over the closing edge are not tried. (0, 0) when there is none, which may also be
    /// a true result. Up to n point locations.
    virtual Point2DF innerPointByTriangles(const Points& ring) = 0;

    /// Slot 148. A point inside a region of rings with arcs: as slot 149, with the scan line
    /// through the middle of the box of all vertices, 1e-4 longer at both ends, its meetings with
    /// all rings together, and places by slot 59.
    ///
    /// When nothing on the line is inside: the first point of the first ring that has one; without
    /// any, (0, 0). A single counter-clockwise ring is a hole, and two rings one above the other
    /// have the line between them: both end there. A missing bulge list is empty.
    virtual Point2DF innerPointOfRegion(const PointLists& rings, const ValueLists& bulgeLists) = 0;

    /// Slot 149. A point of a ring with arcs, inside where that is easily had; use slot 146 for one
    /// that certainly is.
    ///
    /// A horizontal line through the middle of the box of the vertices, from side to side, is met
    /// with the ring as given (slot 7 when slot 138 finds a bulge, else slot 13). The only meeting
    /// is the result; otherwise the middle of the longest piece between meetings that is inside
    /// (slot 61 or 62); otherwise the first vertex. An empty ring: (0, 0).
    ///
    /// The box is that of the vertices, so with outward arcs the line may end inside the figure and
    /// the result be a boundary point: (0, 5) for a square of side 10 whose right side is a half
    /// circle outwards. A disc of two vertices one above the other gives the first. The closing
    /// edge is met only when the first vertex is repeated: the square without gives (10, 5).
    ///
    /// Meetings are ordered by distance and pieces by length by exchanging each with every later
    /// one that is strictly smaller, which decides between equal pieces; above 2,000 of them equal
    /// ones keep their order instead.
    virtual Point2DF innerPointOfRing(const Points& ring, const Values& bulges) = 0;

    /// Slot 150. Centre of the points' box, (0, 0) for an empty list.
    virtual Point2DF pointsBoxCenterPoint(const Points& points) = 0;

    /// Slot 151. Centre of the points' box in `cx`, `cy`, both 0 for an empty list.
    virtual void pointsBoxCenter(const Points& points, double& cx, double& cy) = 0;

    /// Slot 152. Mean of the vertices of several rings together, each vertex counting once. A last
    /// vertex that equals the first exactly is not counted, so a ring of one point counts nothing.
    /// When nothing counts: the first point of the first ring that has one, else (0, 0).
    virtual Point2DF polylinesMeanPoint(const PointLists& rings) = 0;

    /// Slot 153. The point of ringMean; (0, 0) for an empty ring.
    virtual Point2DF ringMeanPoint(const Points& ring) = 0;

    /// Slot 154. Mean of the vertices of a ring (not its centroid). A last vertex that equals the
    /// first exactly in both coordinates is not counted; a single point gives itself. An empty ring
    /// leaves `x` and `y` untouched.
    virtual void ringMean(const Points& ring, double& x, double& y) = 0;

    /// Slot 155. Sorts points and their keys by key, ascending. Equal keys (0.0 and -0.0 are equal)
    /// keep their order; keys that are not a number go last in theirs. Keys beyond the number of
    /// points stay as they are; with fewer keys than points nothing changes.
    virtual void sortPointsByKey(Points& points, Values& keys) = 0;
};
