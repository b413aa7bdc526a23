#pragma once

#include "calcora/IcommonFunc.h"
#include "common/detail/work_pair.h"
#include "tavrel/PlainObject.h"

namespace calcora::detail {
class CircleMemo;
class EdgeIndex;
}  // namespace calcora::detail

/// The module's toolbox of plane geometry: IcommonFunc implemented, one source file per family.
class commonFunc : public tav::PlainObject<commonFunc, IcommonFunc> {
public:
    static constexpr const char* kClassName = "commonFunc";

    /// `workCapacity` sizes the work arrays at the start; they grow as results need it.
    explicit commonFunc(unsigned workCapacity);
    ~commonFunc() override;

    // Points and vectors: primitives.cpp
    double lineAngle(const Point2DF& from, const Point2DF& to) override;
    double pointDist(const Point2DF& a, const Point2DF& b) override;
    double projectionRatio(const Point2DF& p, const Point2DF& a, const Point2DF& b) override;
    double pointDistSquared(const Point2DF& a, const Point2DF& b) override;
    void reverseDoubleList(Values& values) override;
    void reversePointList(Points& points) override;
    double dotProduct(const Point2DF& u, const Point2DF& v) override;
    double vectorDot(const Point2DF& u, const Point2DF& v) override;
    double innerProduct(const Point2DF& u, const Point2DF& v) override;
    double scalarProduct(const Point2DF& u, const Point2DF& v) override;
    double crossProduct(const Point2DF& u, const Point2DF& v) override;
    double orientation3(const Point2DF& p1, const Point2DF& p2, const Point2DF& p3) override;
    double sweepAngle(const Point2DF& centre, const Point2DF& from, const Point2DF& to) override;
    Point2DF closestPointOnSegment(const Point2DF& p, const Point2DF& a,
                                   const Point2DF& b) override;
    double polygonArea(const Points& points) override;
    double segmentParameter(const Point2DF& p, const Point2DF& a, const Point2DF& b) override;
    void polarPoint(const Point2DF& base, double angle, double distance, Point2DF& out) override;

    // Arcs given by a bulge: bulge_arcs.cpp
    Point2DF arcMidPoint(const Point2DF& p1, const Point2DF& p2, double bulge) override;
    double bulgeFrom3Points(const Point2DF& start, const Point2DF& mid,
                            const Point2DF& end) override;
    bool densifyArc3d(Point3DF p1, Point3DF p2, double bulge, double angleStep, Points& outPoints,
                      Values& outHeights) override;
    double bulgeSegmentArea(const Point2DF& p1, const Point2DF& p2, double bulge) override;
    double bulgeSegmentLength(const Point2DF& p1, const Point2DF& p2, double bulge) override;
    double arcSweepFraction(const Point2DF& p, const Point2DF& centre, const Point2DF& start,
                            const Point2DF& end, bool clockwise) override;
    void pointOnBulgeSegmentAtRatio(const Point2DF& p1, const Point2DF& p2, double bulge, double t,
                                    Point2DF& out) override;
    void pointOnBulgeSegmentAtDistance(const Point2DF& p1, const Point2DF& p2, double bulge,
                                       double distance, Point2DF& out) override;
    double arcLength(const Point2DF& centre, double radius, const Point2DF& from,
                     const Point2DF& to, bool clockwise) override;
    void bulgeArcCenter(const Point2DF& p1, const Point2DF& p2, double bulge, Point2DF& centre,
                        double* radius) override;
    bool circleFrom3Points(const Point2DF& p1, const Point2DF& p2, const Point2DF& p3,
                           Point2DF& centre, double* radius) override;

    // Polylines with bulges: bulge_polylines.cpp
    double bulgePolylineLength(const Points& points, const Values& bulges, bool closed) override;
    double bulgePolygonArea(const Points& points, const Values& bulges) override;
    void bulgePolylineStations(const Points& points, const Values& bulges,
                               Values& outStations) override;
    bool pointAtStation3d(int unused, const Points& points, const Values& bulges,
                          const Values& heights, const Values& stations, double station,
                          Point3DF& out) override;
    void pointAtStationZ(const Points& points, const Values& bulges, const Values& heights,
                         double station, Point3DF& out) override;
    void pointAtStation(const Points& points, const Values& bulges, double station,
                        Point2DF& out) override;
    void pointAtParameter(const Points& points, const Values& bulges, int index, double parameter,
                          Point2DF& out) override;
    void removeDuplicatePointsRaw(Point2DF* points, double* values, int* count) override;
    void removeDuplicatePoints(Points& points, Values& values) override;
    void reverseBulges(Values& bulges) override;
    void offsetPolyline(const Points& points, double distance, Points& out) override;

    // Point location in polygons and regions: point_location.cpp
    int polylineRegionRelation(const Points& ring, const Points& polyline) override;
    bool isPointOnSegment(const Point2DF& p, const Point2DF& a, const Point2DF& b) override;
    int pointInBulgeRegion(const PointLists& rings, const ValueLists& bulgeLists,
                           const Point2DF& p) override;
    int pointInRegion(const PointLists& rings, const Point2DF& p) override;
    int pointInBulgePolygon(const Points& ring, const Values& bulges, const Point2DF& p) override;
    int pointInPolygon(const Points& ring, const Point2DF& p) override;

    // Intersections of straight segments: segment_intersections.cpp; of polylines:
    // polyline_intersections.cpp
    void intersectPolylinesToLists(const Points& a, const Points& b, Points& outPoints,
                                   Values& outParams) override;
    void intersectPolylines(const Points& a, const Points& b, Point2DF* outPoints,
                            double* outParams, int* count) override;
    void intersectSegmentPolyline(const Point2DF& start, const Point2DF& end,
                                  const Points& polyline, double lo, double hi, Point2DF* outPoints,
                                  double* outParams, int* count) override;
    void intersectAngleLines(const Point2DF& p1, double angle1, const Point2DF& p2, double angle2,
                             Point2DF& out) override;
    void intersectSegments(const Point2DF& p0, const Point2DF& d0, const Point2DF& p1,
                           const Point2DF& d1, double lo0, double hi0, double lo1, double hi1,
                           Point2DF* outPoints, double* outParams, int* count) override;
    void intersectSegmentsAll(const Point2DF& p0, const Point2DF& d0, const Point2DF& p1,
                              const Point2DF& d1, Points& out) override;
    int overlapIntervals(double a0, double a1, double b0, double b1, double* out) override;

    // Distances and nearest points: distances.cpp
    void projectPointOnBulgePolyline(const Point2DF& p, const Points& polyline,
                                     const Values& bulges, int* outIndex,
                                     double* outParam) override;
    double pointSegmentDistSquared(const Point2DF& p, const Point2DF& a,
                                   const Point2DF& b) override;
    double pointLineDistSquared(const Point2DF& p, const Point2DF& a, const Point2DF& b) override;
    double pointLineSignedDist(const Point2DF& p, const Point2DF& a, const Point2DF& b) override;
    double nearestOnBulgePolylineEx(const Point2DF& p, const Points& polyline, Values bulges,
                                    Point2DF& outPoint, int* outIndex, double* outParam) override;
    double nearestOnPolyline(const Point2DF& p, const Points& polyline, Point2DF& outPoint,
                             int* outIndex, double* outParam) override;
    double pointBulgePolylineDistSquared(const Point2DF& p, const Points& polyline,
                                         const Values& bulges) override;
    double pointPolylineDistSquared(const Point2DF& p, const Points& polyline) override;
    double pointBulgeSegmentDistSquared(const Point2DF& p, const Point2DF& a, const Point2DF& b,
                                        double bulge) override;

    // Intersections with circles: circle_intersections.cpp
    void intersectLineCircle(const Point2DF& centre, double radius, const Point2DF& p1,
                             const Point2DF& p2, Point2DF& out1, Point2DF& out2) override;
    int intersectLineCircleEq(const Point2DF& centre, double radius, double a, double b, double c,
                              Point2DF& out1, Point2DF& out2) override;
    int intersectCircles(const Point2DF& c1, double r1, const Point2DF& c2, double r2,
                         Point2DF& out1, Point2DF& out2) override;
    int circleCircleIntersection(const Point2DF& c1, double r1, const Point2DF& c2, double r2,
                                 Point2DF& out1, Point2DF& out2) override;

    // Intersections of polylines with bulges: polyline_intersections.cpp; of arcs:
    // arc_intersections.cpp
    void intersectBulgePolylines(const Points& a, const Values& aBulges, const Points& b,
                                 const Values& bBulges, Point2DF* outPoints, double* outParams,
                                 int* count) override;
    void intersectArcWithBulgePolyline(const Point2DF& a0, const Point2DF& a1, double bulge,
                                       const Points& polyline, const Values& bulges, double lo,
                                       double extra, Point2DF* outPoints, double* outParams,
                                       int* count) override;
    void intersectLineWithBulgePolyline(const Point2DF& s0, const Point2DF& s1,
                                        const Points& polyline, const Values& bulges, double lo,
                                        double hi, Point2DF* outPoints, double* outParams,
                                        int* count) override;
    void intersectArcSegment(const Point2DF& b0, const Point2DF& b1, double bulge,
                             const Point2DF& a0, const Point2DF& a1, double loB, double extraB,
                             double loA, double hiA, Point2DF* outPoints, double* outParams,
                             int* count) override;
    void intersectArcArc(const Point2DF& a0, const Point2DF& a1, double bulgeA, const Point2DF& b0,
                         const Point2DF& b1, double bulgeB, double loA, double extraA, double loB,
                         double extraB, Point2DF* outPoints, double* outParams,
                         int* count) override;
    void intersectSegmentArc(const Point2DF& a0, const Point2DF& a1, const Point2DF& b0,
                             const Point2DF& b1, double bulge, double loA, double hiA, double loB,
                             double extraB, Point2DF* outPoints, double* outParams,
                             int* count) override;

    // Point lists: simplification.cpp, convex_hull.cpp, point_lists.cpp
    void simplifyRange(Points points, int first, int last, double toleranceSquared,
                       tav::Vector<int>& kept) override;
    void simplifyPolylineWithValues(const Points& points, const Values& valuesA,
                                    const Values& valuesB, Points& outPoints, Values& outA,
                                    Values& outB, double tolerance) override;
    void simplifyPolyline(const Points& points, Points& out, double tolerance) override;
    Point2DF ringCentroid(const Points& ring) override;
    int lowerLeftPointIndex(const Points& points) override;
    bool isClockwiseRing(const Points& ring) override;
    void convexHull(Points& points, Points& hull) override;
    void polylinesExtents(const PointLists& lists, double& minX, double& minY, double& maxX,
                          double& maxY) override;
    int pointsExtents(const Points& points, double& minX, double& minY, double& maxX,
                      double& maxY) override;
    RectF polylinesRect(const PointLists& lists) override;
    RectF pointsRect(const Points& points) override;
    void translatePolylines(const PointLists& lists, double dx, double dy,
                            PointLists& out) override;
    int translatePoints(const Points& points, double dx, double dy, Points& out) override;
    int centerPointsOnBox(const Points& points, double& cx, double& cy, Points& out) override;
    double polylineLength(const Points& points) override;
    double triangleArea(const Point2DF& a, const Point2DF& b, const Point2DF& c) override;
    Point2DF triangleCentroid(const Point2DF& a, const Point2DF& b, const Point2DF& c) override;
    Point2DF pointsBoxCenterPoint(const Points& points) override;
    void pointsBoxCenter(const Points& points, double& cx, double& cy) override;
    Point2DF polylinesMeanPoint(const PointLists& rings) override;
    Point2DF ringMeanPoint(const Points& ring) override;
    void ringMean(const Points& ring, double& x, double& y) override;
    void sortPointsByKey(Points& points, Values& keys) override;

    // Cubic spline: spline.cpp
    void splineInterpolate(Points points, Points& out, bool closed, double tolerance) override;

    // Curves under tension: tension_curve.cpp
    void tensionCurve(Points points, Points& out, bool closed, unsigned from, unsigned to,
                      double tolerance) override;
    bool tensionCurveRaw(Points points, PointLists& spans, bool closed, unsigned from, unsigned to,
                         double tolerance) override;
    void tensionCurveZ(Points points, Values values, Points& out, Values& outValues, bool closed,
                       unsigned from, unsigned to, double tolerance) override;
    bool tensionCurveZRaw(Points points, Values values, PointLists& spans, ValueLists& spanValues,
                          bool closed, unsigned from, unsigned to, double tolerance) override;

    // Bezier, Akima and B-spline curves: bezier.cpp, akima.cpp, bspline.cpp
    bool bezierSpanToPolyline3d(const Point2DF& p0, double z0, const Point2DF& p1, double z1,
                                const Point2DF& p2, double z2, const Point2DF& p3, double z3,
                                Points& outPoints, Values& outZ, double tolerance) override;
    bool bezierSpanToPolyline(const Point2DF& p0, const Point2DF& p1, const Point2DF& p2,
                              const Point2DF& p3, Points& outPoints, double tolerance) override;
    Point2DF bezierSpanPoint3d(const Point2DF& p0, double z0, const Point2DF& p1, double z1,
                               const Point2DF& p2, double z2, const Point2DF& p3, double z3,
                               double& z, double t) override;
    bool bezierCurveSpans(Points points, PointLists& spans) override;
    void akimaCurve(Points points, Points& out) override;
    bool bsplineToPolyline3d(const Points& controls, const Values& z, Points& outPoints,
                             Values& outZ, int degree, double tolerance) override;
    bool bsplineToPolyline(const Points& controls, Points& outPoints, int degree,
                           double tolerance) override;

    // Extents, chords and sidewise moves of polylines with bulges: bulge_extents.cpp,
    // bulge_offset.cpp, bulge_section.cpp, bulge_chords.cpp
    bool hasPositiveBulgeArea(const Points& points, Values bulges) override;
    void bulgeArcExtents(const Point2DF& p1, const Point2DF& p2, double bulge, Point2DF& minCorner,
                         Point2DF& maxCorner) override;
    void bulgePolylineExtents(const Points& points, Values bulges, bool closed, Point2DF& minCorner,
                              Point2DF& maxCorner, double margin) override;
    bool offsetBulgePolyline(Points points, Values bulges, double distance, Points& outPoints,
                             Values& outBulges) override;
    void parallelSegment(Point2DF a, Point2DF b, Point2DF& outA, Point2DF& outB,
                         double distance) override;
    double bulgeFromRadius(Point2DF centre, Point2DF start, Point2DF end, double radius,
                           bool clockwise) override;
    void bulgePolylineSection(const Point2DF& cutA, const Point2DF& cutB, const Points& points,
                              Values bulges, const Values& values, PointLists& outPoints,
                              ValueLists& outBulges, ValueLists& outValues, bool flag) override;
    void densifyBulgesByAngle(const Points& points, const Values& bulges, const Values& values,
                              double stepDegrees, Points& outPoints, Values& outBulges,
                              Values& outValues) override;
    void bulgeArcToChords(Point2DF p1, Point2DF p2, double bulge, double tolerance,
                          Points& out) override;
    void bulgeArcToChords3d(Point3DF a, Point3DF b, double bulge, double tolerance, Points& out,
                            Values& outZ) override;
    void bulgePolylineToChords(const Points& points, const Values& bulges, double tolerance,
                               Points& out) override;
    void bulgePolylineToChords3d(const Points& points, const Values& bulges, const Values& z,
                                 double tolerance, Points& out, Values& outZ) override;
    double bulgeSegmentsLength(const Points& points, const Values& bulges) override;
    bool anyBulgeInLists(const ValueLists& bulgeLists) override;
    bool hasBulges(const Values& bulges) override;

    // Angles, degrees-minutes-seconds and polar coordinates: angles.cpp
    void degreesToDms(double degrees, int& d, int& m, double& s) override;
    void radiansToDms(double radians, int& d, int& m, double& s) override;
    double dmsToRadians(int d, int m, double s) override;
    double normalizeAngle(const double& angle) override;
    double vectorAngle(const double& x1, const double& y1, const double& x2,
                       const double& y2) override;
    void polarFromCoordinates(const double& x1, const double& y1, const double& x2,
                              const double& y2, double& angle, double& distance) override;
    void coordinatesFromPolar(double& x, double& y, const double& x0, const double& y0,
                              const double& distance, const double& angle) override;
    double angleBetweenDirections(const Point2DF& a, const Point2DF& b, const Point2DF& c) override;

    // Sides and ends of polylines: polyline_sides.cpp; their parts in a ring: ring_relations.cpp;
    // inner points of rings: inner_points.cpp
    int pointSideOfBulgePolyline(const Point2DF& p, const Points& polyline, Values bulges) override;
    short pointSideOfPolyline(const Point2DF& p, const Points& polyline) override;
    int segmentsSideOfPolyline(const Points& a, const Points& b) override;
    int polylineSideOfPolyline(const Points& a, const Points& b) override;
    int segmentMidpointInRing(const Points& ring, const Point2DF& p1, const Point2DF& p2) override;
    int polylineRingRelation(const Points& polyline, const Values& polylineBulges,
                             const Points& ring, const Values& ringBulges) override;
    int polylinePartsInRing(const Points& ring, const Points& polyline) override;
    bool haveSameEnds(const Points& a, const Points& b) override;
    int findSameEnds(const PointLists& lists, const Points& a) override;
    bool labelPoint(const Points& ring, const Values& bulges, Point2DF& out) override;
    Point2DF innerPointByTriangles(const Points& ring) override;
    Point2DF innerPointOfRegion(const PointLists& rings, const ValueLists& bulgeLists) override;
    Point2DF innerPointOfRing(const Points& ring, const Values& bulges) override;

    // Edge directions and squaring of rings: edge_directions.cpp, squaring.cpp
    double dominantEdgeDirection(const PointLists& rings) override;
    void intersectDirectionLines(Point2DF p1, double angle1, Point2DF p2, double angle2,
                                 Point2DF& out) override;
    bool isParallelDirection(Point2DF a, Point2DF b, Point2DF c) override;
    void removeCollinearPoints(Points& ring) override;
    const CMyAngleLine* lookupAngleLine(tav::Vector<CMyAngleLine> lines, double direction) override;
    void squareRings(const PointLists& rings, PointLists& out) override;
    bool squareCorner(const Point2DF& a, Point2DF& b, const Point2DF& c) override;
    bool squareCorners(Points& ring, double toleranceDegrees) override;

    /// Whether p lies on the segment or arc from a to b; see the operation of the same purpose for
    /// straight segments, isPointOnSegment. For |bulge| >= 1e-6 the arc's centre and radius are
    /// written in any case; otherwise both stay untouched.
    bool isPointOnBulgeSegment(const Point2DF& p, const Point2DF& a, const Point2DF& b,
                               double bulge, Point2DF& centre, double* radius);

    /// For who intersects the same arcs again and again: the circles of arcs are kept there from now
    /// on. The caller owns it; it must outlast this object's use. Null ends that.
    void keepCirclesIn(calcora::detail::CircleMemo* circles) { circles_ = circles; }

private:
    /// Walks all edges of a straight polyline along another and gathers what they meet, repeats
    /// included; returns how many results the work pair then holds.
    int gatherPolylines(const Points& a, const Points& b, calcora::detail::WorkPair& work);

    // Work arrays of the walks that merge repeated results before they hand them out, so that an
    // outer walk's partial results survive the inner one.
    calcora::detail::WorkPair bulgePolylineWork_;  ///< edges of two polylines with arcs
    calcora::detail::WorkPair polylineWork_;       ///< edges of two straight polylines

    /// The index over the polyline that the walk in progress walks along, if it has one.
    const calcora::detail::EdgeIndex* walkedEdges_ = nullptr;

    calcora::detail::CircleMemo* circles_ = nullptr;  ///< see keepCirclesIn()
};
