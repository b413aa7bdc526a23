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
class IcommonFunc : public tav::InterfaceOf<IcommonFunc>
{
public:
    static constexpr const char* kInterfaceName = "IcommonFunc";

    using Point2DF = tav::Point2DF;
    using Point3DF = tav::Point3DF;
    using RectF = tav::RectF;
    using Points = tav::Vector<tav::Point2DF>;
    using Values = tav::Vector<double>;
    using PointLists = tav::Vector<Points>;
    using ValueLists = tav::Vector<Values>;

    /// Slot 6.
    virtual int polylineRegionRelation(const Points& ring, const Points& polyline) = 0;

    /// Slot 7.
    virtual void intersectBulgePolylines(const Points& a, const Values& aBulges, const Points& b,
                                         const Values& bBulges, Point2DF* outPoints,
                                         double* outParams, int* count) = 0;

    /// Slot 8.
    virtual void intersectArcWithBulgePolyline(const Point2DF& a0, const Point2DF& a1, double bulge,
                                               const Points& polyline, const Values& bulges,
                                               double lo, double extra, Point2DF* outPoints,
                                               double* outParams, int* count) = 0;

    /// Slot 9.
    virtual void intersectLineWithBulgePolyline(const Point2DF& s0, const Point2DF& s1,
                                                const Points& polyline, const Values& bulges,
                                                double lo, double hi, Point2DF* outPoints,
                                                double* outParams, int* count) = 0;

    /// Slot 10.
    virtual void intersectArcSegment(const Point2DF& b0, const Point2DF& b1, double bulge,
                                     const Point2DF& a0, const Point2DF& a1, double loB,
                                     double extraB, double loA, double hiA, Point2DF* outPoints,
                                     double* outParams, int* count) = 0;

    /// Slot 11.
    virtual void intersectArcArc(const Point2DF& a0, const Point2DF& a1, double bulgeA,
                                 const Point2DF& b0, const Point2DF& b1, double bulgeB, double loA,
                                 double extraA, double loB, double extraB, Point2DF* outPoints,
                                 double* outParams, int* count) = 0;

    /// Slot 12.
    virtual void intersectPolylinesToLists(const Points& a, const Points& b, Points& outPoints,
                                           Values& outParams) = 0;

    /// Slot 13.
    virtual void intersectPolylines(const Points& a, const Points& b, Point2DF* outPoints,
                                    double* outParams, int* count) = 0;

    /// Slot 14.
    virtual void intersectSegmentPolyline(const Point2DF& start, const Point2DF& end,
                                          const Points& polyline, double lo, double hi,
                                          Point2DF* outPoints, double* outParams, int* count) = 0;

    /// Slot 15.
    virtual double lineAngle(const Point2DF& from, const Point2DF& to) = 0;

    /// Slot 16.
    virtual double pointDist(const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 17.
    virtual double projectionRatio(const Point2DF& p, const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 18.
    virtual double pointDistSquared(const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 19.
    virtual void reverseDoubleList(Values& values) = 0;

    /// Slot 20.
    virtual void reversePointList(Points& points) = 0;

    /// Slot 21.
    virtual double dotProduct(const Point2DF& u, const Point2DF& v) = 0;

    /// Slot 22.
    virtual double vectorDot(const Point2DF& u, const Point2DF& v) = 0;

    /// Slot 23.
    virtual double innerProduct(const Point2DF& u, const Point2DF& v) = 0;

    /// Slot 24.
    virtual double scalarProduct(const Point2DF& u, const Point2DF& v) = 0;

    /// Slot 25.
    virtual double crossProduct(const Point2DF& u, const Point2DF& v) = 0;

    /// Slot 26.
    virtual Point2DF arcMidPoint(const Point2DF& p1, const Point2DF& p2, double bulge) = 0;

    /// Slot 27.
    virtual double bulgeFrom3Points(const Point2DF& start, const Point2DF& mid,
                                    const Point2DF& end) = 0;

    /// Slot 28.
    virtual double orientation3(const Point2DF& p1, const Point2DF& p2, const Point2DF& p3) = 0;

    /// Slot 29.
    virtual double sweepAngle(const Point2DF& centre, const Point2DF& from, const Point2DF& to) = 0;

    /// Slot 30.
    virtual bool densifyArc3d(Point3DF p1, Point3DF p2, double bulge, double angleStep,
                              Points& outPoints, Values& outHeights) = 0;

    /// Slot 31.
    virtual Point2DF closestPointOnSegment(const Point2DF& p, const Point2DF& a,
                                           const Point2DF& b) = 0;

    /// Slot 32.
    virtual double polygonArea(const Points& points) = 0;

    /// Slot 33.
    virtual double bulgeSegmentArea(const Point2DF& p1, const Point2DF& p2, double bulge) = 0;

    /// Slot 34.
    virtual double bulgePolylineLength(const Points& points, const Values& bulges, bool closed) = 0;

    /// Slot 35.
    virtual double bulgeSegmentLength(const Point2DF& p1, const Point2DF& p2, double bulge) = 0;

    /// Slot 36.
    virtual double bulgePolygonArea(const Points& points, const Values& bulges) = 0;

    /// Slot 37.
    virtual double segmentParameter(const Point2DF& p, const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 38.
    virtual double arcSweepFraction(const Point2DF& p, const Point2DF& centre,
                                    const Point2DF& start, const Point2DF& end, bool clockwise) = 0;

    /// Slot 39.
    virtual void bulgePolylineStations(const Points& points, const Values& bulges,
                                       Values& outStations) = 0;

    /// Slot 40.
    virtual bool pointAtStation3d(int reserved, const Points& points, const Values& bulges,
                                  const Values& heights, const Values& stations, double station,
                                  Point3DF& out) = 0;

    /// Slot 41.
    virtual void pointAtStationZ(const Points& points, const Values& bulges, const Values& heights,
                                 double station, Point3DF& out) = 0;

    /// Slot 42.
    virtual void pointAtStation(const Points& points, const Values& bulges, double station,
                                Point2DF& out) = 0;

    /// Slot 43.
    virtual void pointAtParameter(const Points& points, const Values& bulges, int index,
                                  double parameter, Point2DF& out) = 0;

    /// Slot 44.
    virtual void pointOnBulgeSegmentAtRatio(const Point2DF& p1, const Point2DF& p2, double bulge,
                                            double t, Point2DF& out) = 0;

    /// Slot 45.
    virtual void projectPointOnBulgePolyline(const Point2DF& p, const Points& polyline,
                                             const Values& bulges, int* outIndex,
                                             double* outParam) = 0;

    /// Slot 46.
    virtual void pointOnBulgeSegmentAtDistance(const Point2DF& p1, const Point2DF& p2, double bulge,
                                               double distance, Point2DF& out) = 0;

    /// Slot 47.
    virtual double arcLength(const Point2DF& centre, double radius, const Point2DF& from,
                             const Point2DF& to, bool clockwise) = 0;

    /// Slot 48.
    virtual void bulgeArcCenter(const Point2DF& p1, const Point2DF& p2, double bulge,
                                Point2DF& centre, double* radius) = 0;

    /// Slot 49.
    virtual bool circleFrom3Points(const Point2DF& p1, const Point2DF& p2, const Point2DF& p3,
                                   Point2DF& centre, double* radius) = 0;

    /// Slot 50.
    virtual void intersectLineCircle(const Point2DF& centre, double radius, const Point2DF& p1,
                                     const Point2DF& p2, Point2DF& out1, Point2DF& out2) = 0;

    /// Slot 51.
    virtual int intersectLineCircleEq(const Point2DF& centre, double radius, double a, double b,
                                      double c, Point2DF& out1, Point2DF& out2) = 0;

    /// Slot 52.
    virtual int intersectCircles(const Point2DF& c1, double r1, const Point2DF& c2, double r2,
                                 Point2DF& out1, Point2DF& out2) = 0;

    /// Slot 53.
    virtual void intersectAngleLines(const Point2DF& p1, double angle1, const Point2DF& p2,
                                     double angle2, Point2DF& out) = 0;

    /// Slot 54.
    virtual void intersectSegmentArc(const Point2DF& a0, const Point2DF& a1, const Point2DF& b0,
                                     const Point2DF& b1, double bulge, double loA, double hiA,
                                     double loB, double extraB, Point2DF* outPoints,
                                     double* outParams, int* count) = 0;

    /// Slot 55.
    virtual void intersectSegments(const Point2DF& p0, const Point2DF& d0, const Point2DF& p1,
                                   const Point2DF& d1, double lo0, double hi0, double lo1,
                                   double hi1, Point2DF* outPoints, double* outParams,
                                   int* count) = 0;

    /// Slot 56.
    virtual void intersectSegmentsAll(const Point2DF& p0, const Point2DF& d0, const Point2DF& p1,
                                      const Point2DF& d1, Points& out) = 0;

    /// Slot 57.
    virtual int overlapIntervals(double a0, double a1, double b0, double b1, double* out) = 0;

    /// Slot 58.
    virtual bool isPointOnSegment(const Point2DF& p, const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 59.
    virtual int pointInBulgeRegion(const PointLists& rings, const ValueLists& bulgeLists,
                                   const Point2DF& p) = 0;

    /// Slot 60.
    virtual int pointInRegion(const PointLists& rings, const Point2DF& p) = 0;

    /// Slot 61.
    virtual int pointInBulgePolygon(const Points& ring, const Values& bulges,
                                    const Point2DF& p) = 0;

    /// Slot 62.
    virtual int pointInPolygon(const Points& ring, const Point2DF& p) = 0;

    /// Slot 63.
    virtual double pointSegmentDistSquared(const Point2DF& p, const Point2DF& a,
                                           const Point2DF& b) = 0;

    /// Slot 64.
    virtual double pointLineDistSquared(const Point2DF& p, const Point2DF& a,
                                        const Point2DF& b) = 0;

    /// Slot 65.
    virtual double pointLineSignedDist(const Point2DF& p, const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 66.
    virtual double nearestOnBulgePolylineEx(const Point2DF& p, const Points& polyline,
                                            Values bulges, Point2DF& outPoint, int* outIndex,
                                            double* outParam) = 0;

    /// Slot 67.
    virtual double nearestOnPolyline(const Point2DF& p, const Points& polyline, Point2DF& outPoint,
                                     int* outIndex, double* outParam) = 0;

    /// Slot 68.
    virtual double pointBulgePolylineDistSquared(const Point2DF& p, const Points& polyline,
                                                 const Values& bulges) = 0;

    /// Slot 69.
    virtual double pointPolylineDistSquared(const Point2DF& p, const Points& polyline) = 0;

    /// Slot 70.
    virtual double pointBulgeSegmentDistSquared(const Point2DF& p, const Point2DF& a,
                                                const Point2DF& b, double bulge) = 0;

    /// Slot 71.
    virtual void removeDuplicatePointsRaw(Point2DF* points, double* values, int* count) = 0;

    /// Slot 72.
    virtual void removeDuplicatePoints(Points& points, Values& values) = 0;

    /// Slot 73.
    virtual void reverseBulges(Values& bulges) = 0;

    /// Slot 74.
    virtual void polarPoint(const Point2DF& base, double angle, double distance, Point2DF& out) = 0;

    /// Slot 75.
    virtual void offsetPolyline(const Points& points, double distance, Points& out) = 0;

    /// Slot 76.
    virtual void splineInterpolate(Points points, Points& out, bool closed, double tolerance) = 0;

    /// Slot 77.
    virtual void tensionCurve(Points points, Points& out, bool closed, unsigned from, unsigned to,
                              double tolerance) = 0;

    /// Slot 78.
    virtual bool tensionCurveRaw(Points points, PointLists& spans, bool closed, unsigned from,
                                 unsigned to, double tolerance) = 0;

    /// Slot 79.
    virtual void tensionCurveZ(Points points, Values values, Points& out, Values& outValues,
                               bool closed, unsigned from, unsigned to, double tolerance) = 0;

    /// Slot 80.
    virtual bool tensionCurveZRaw(Points points, Values values, PointLists& spans,
                                  ValueLists& spanValues, bool closed, unsigned from, unsigned to,
                                  double tolerance) = 0;

    /// Slot 81.
    virtual bool bezierSpanToPolyline3d(const Point2DF& p0, double z0, const Point2DF& p1,
                                        double z1, const Point2DF& p2, double z2,
                                        const Point2DF& p3, double z3, Points& outPoints,
                                        Values& outZ, double tolerance) = 0;

    /// Slot 82.
    virtual bool bezierSpanToPolyline(const Point2DF& p0, const Point2DF& p1, const Point2DF& p2,
                                      const Point2DF& p3, Points& outPoints, double tolerance) = 0;

    /// Slot 83.
    virtual Point2DF bezierSpanPoint3d(const Point2DF& p0, double z0, const Point2DF& p1, double z1,
                                       const Point2DF& p2, double z2, const Point2DF& p3, double z3,
                                       double& z, double t) = 0;

    /// Slot 84.
    virtual bool bezierCurveSpans(Points points, PointLists& spans) = 0;

    /// Slot 85.
    virtual void akimaCurve(Points points, Points& out) = 0;

    /// Slot 86.
    virtual void simplifyRange(Points points, int first, int last, double toleranceSquared,
                               tav::Vector<int>& kept) = 0;

    /// Slot 87.
    virtual void simplifyPolylineWithValues(const Points& points, const Values& valuesA,
                                            const Values& valuesB, Points& outPoints, Values& outA,
                                            Values& outB, double tolerance) = 0;

    /// Slot 88.
    virtual void simplifyPolyline(const Points& points, Points& out, double tolerance) = 0;

    /// Slot 89.
    virtual Point2DF ringCentroid(const Points& ring) = 0;

    /// Slot 90.
    virtual bool hasPositiveBulgeArea(const Points& points, Values bulges) = 0;

    /// Slot 91.
    virtual void bulgeArcExtents(const Point2DF& p1, const Point2DF& p2, double bulge,
                                 Point2DF& minCorner, Point2DF& maxCorner) = 0;

    /// Slot 92.
    virtual void bulgePolylineExtents(const Points& points, Values bulges, bool closed,
                                      Point2DF& minCorner, Point2DF& maxCorner, double margin) = 0;

    /// Slot 93.
    virtual bool offsetBulgePolyline(Points points, Values bulges, double distance,
                                     Points& outPoints, Values& outBulges) = 0;

    /// Slot 94.
    virtual void parallelSegment(Point2DF a, Point2DF b, Point2DF& outA, Point2DF& outB,
                                 double distance) = 0;

    /// Slot 95.
    virtual double bulgeFromRadius(Point2DF centre, Point2DF start, Point2DF end, double radius,
                                   bool clockwise) = 0;

    /// Slot 96.
    virtual void bulgePolylineSection(const Point2DF& cutA, const Point2DF& cutB,
                                      const Points& points, Values bulges, const Values& values,
                                      PointLists& outPoints, ValueLists& outBulges,
                                      ValueLists& outValues, bool flag) = 0;

    /// Slot 97.
    virtual void densifyBulgesByAngle(const Points& points, const Values& bulges,
                                      const Values& values, double stepDegrees, Points& outPoints,
                                      Values& outBulges, Values& outValues) = 0;

    /// Slot 98.
    virtual void bulgeArcToChords(Point2DF p1, Point2DF p2, double bulge, double tolerance,
                                  Points& out) = 0;

    /// Slot 99.
    virtual void bulgeArcToChords3d(Point3DF a, Point3DF b, double bulge, double tolerance,
                                    Points& out, Values& outZ) = 0;

    /// Slot 100.
    virtual void bulgePolylineToChords(const Points& points, const Values& bulges, double tolerance,
                                       Points& out) = 0;

    /// Slot 101.
    virtual void bulgePolylineToChords3d(const Points& points, const Values& bulges,
                                         const Values& z, double tolerance, Points& out,
                                         Values& outZ) = 0;

    /// Slot 102.
    virtual double dominantEdgeDirection(const PointLists& rings) = 0;

    /// Slot 103.
    virtual void intersectDirectionLines(Point2DF p1, double angle1, Point2DF p2, double angle2,
                                         Point2DF& out) = 0;

    /// Slot 104.
    virtual int lowerLeftPointIndex(const Points& points) = 0;

    /// Slot 105.
    virtual bool isParallelDirection(Point2DF a, Point2DF b, Point2DF c) = 0;

    /// Slot 106.
    virtual void removeCollinearPoints(Points& ring) = 0;

    /// Slot 107.
    virtual const CMyAngleLine* lookupAngleLine(tav::Vector<CMyAngleLine> lines,
                                                double direction) = 0;

    /// Slot 108.
    virtual bool isClockwiseRing(const Points& ring) = 0;

    /// Slot 109.
    virtual void squareRings(const PointLists& rings, PointLists& out) = 0;

    /// Slot 110.
    virtual bool bsplineToPolyline3d(const Points& controls, const Values& z, Points& outPoints,
                                     Values& outZ, int degree, double tolerance) = 0;

    /// Slot 111.
    virtual bool bsplineToPolyline(const Points& controls, Points& outPoints, int degree,
                                   double tolerance) = 0;

    /// Slot 112.
    virtual void convexHull(Points& points, Points& hull) = 0;

    /// Slot 113.
    virtual int pointSideOfBulgePolyline(const Point2DF& p, const Points& polyline,
                                         Values bulges) = 0;

    /// Slot 114.
    virtual short pointSideOfPolyline(const Point2DF& p, const Points& polyline) = 0;

    /// Slot 115.
    virtual int segmentsSideOfPolyline(const Points& a, const Points& b) = 0;

    /// Slot 116.
    virtual int polylineSideOfPolyline(const Points& a, const Points& b) = 0;

    /// Slot 117.
    virtual int segmentMidpointInRing(const Points& ring, const Point2DF& p1,
                                      const Point2DF& p2) = 0;

    /// Slot 118.
    virtual int polylineRingRelation(const Points& polyline, const Values& polylineBulges,
                                     const Points& ring, const Values& ringBulges) = 0;

    /// Slot 119.
    virtual int polylinePartsInRing(const Points& ring, const Points& polyline) = 0;

    /// Slot 120.
    virtual void polylinesExtents(const PointLists& lists, double& minX, double& minY, double& maxX,
                                  double& maxY) = 0;

    /// Slot 121.
    virtual int pointsExtents(const Points& points, double& minX, double& minY, double& maxX,
                              double& maxY) = 0;

    /// Slot 122.
    virtual RectF polylinesRect(const PointLists& lists) = 0;

    /// Slot 123.
    virtual RectF pointsRect(const Points& points) = 0;

    /// Slot 124.
    virtual void degreesToDms(double degrees, int& d, int& m, double& s) = 0;

    /// Slot 125.
    virtual void radiansToDms(double radians, int& d, int& m, double& s) = 0;

    /// Slot 126.
    virtual double dmsToRadians(int d, int m, double s) = 0;

    /// Slot 127.
    virtual void translatePolylines(const PointLists& lists, double dx, double dy,
                                    PointLists& out) = 0;

    /// Slot 128.
    virtual int translatePoints(const Points& points, double dx, double dy, Points& out) = 0;

    /// Slot 129.
    virtual int centerPointsOnBox(const Points& points, double& cx, double& cy, Points& out) = 0;

    /// Slot 130.
    virtual double normalizeAngle(const double& angle) = 0;

    /// Slot 131.
    virtual double vectorAngle(const double& x1, const double& y1, const double& x2,
                               const double& y2) = 0;

    /// Slot 132.
    virtual void polarFromCoordinates(const double& x1, const double& y1, const double& x2,
                                      const double& y2, double& angle, double& distance) = 0;

    /// Slot 133.
    virtual void coordinatesFromPolar(double& x, double& y, const double& x0, const double& y0,
                                      const double& distance, const double& angle) = 0;

    /// Slot 134.
    virtual int circleCircleIntersection(const Point2DF& c1, double r1, const Point2DF& c2,
                                         double r2, Point2DF& out1, Point2DF& out2) = 0;

    /// Slot 135.
    virtual double bulgeSegmentsLength(const Points& points, const Values& bulges) = 0;

    /// Slot 136.
    virtual double polylineLength(const Points& points) = 0;

    /// Slot 137.
    virtual bool anyBulgeInLists(const ValueLists& bulgeLists) = 0;

    /// Slot 138.
    virtual bool hasBulges(const Values& bulges) = 0;

    /// Slot 139.
    virtual bool haveSameEnds(const Points& a, const Points& b) = 0;

    /// Slot 140.
    virtual int findSameEnds(const PointLists& lists, const Points& a) = 0;

    /// Slot 141.
    virtual double angleBetweenDirections(const Point2DF& a, const Point2DF& b,
                                          const Point2DF& c) = 0;

    /// Slot 142.
    virtual bool squareCorner(const Point2DF& a, Point2DF& b, const Point2DF& c) = 0;

    /// Slot 143.
    virtual bool squareCorners(Points& ring, double toleranceDegrees) = 0;

    /// Slot 144.
    virtual double triangleArea(const Point2DF& a, const Point2DF& b, const Point2DF& c) = 0;

    /// Slot 145.
    virtual Point2DF triangleCentroid(const Point2DF& a, const Point2DF& b, const Point2DF& c) = 0;

    /// Slot 146.
    virtual bool labelPoint(const Points& ring, const Values& bulges, Point2DF& out) = 0;

    /// Slot 147.
    virtual Point2DF innerPointByTriangles(const Points& ring) = 0;

    /// Slot 148.
    virtual Point2DF innerPointOfRegion(const PointLists& rings, const ValueLists& bulgeLists) = 0;

    /// Slot 149.
    virtual Point2DF innerPointOfRing(const Points& ring, const Values& bulges) = 0;

    /// Slot 150.
    virtual Point2DF pointsBoxCenterPoint(const Points& points) = 0;

    /// Slot 151.
    virtual void pointsBoxCenter(const Points& points, double& cx, double& cy) = 0;

    /// Slot 152.
    virtual Point2DF polylinesMeanPoint(const PointLists& rings) = 0;

    /// Slot 153.
    virtual Point2DF ringMeanPoint(const Points& ring) = 0;

    /// Slot 154.
    virtual void ringMean(const Points& ring, double& x, double& y) = 0;

    /// Slot 155.
    virtual void sortPointsByKey(Points& points, Values& keys) = 0;
};
