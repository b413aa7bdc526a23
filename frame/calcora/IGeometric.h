// IGeometric: measures on paths with arc segments.
#pragma once

#include "geo/geometry.h"
#include "tavrel/IObject.h"
#include "tavrel/List.h"
#include "tavrel/points.h"

/// Measures, constructions and intersections on paths with arc segments: 48 operations (slots 6 to
/// 53).
class IGeometric : public tav::InterfaceOf<IGeometric>
{
public:
    static constexpr const char* kInterfaceName = "IGeometric";

    using Point3DF = tav::Point3DF;
    using PathRef = geo::PathRef;
    using MatrixRef = geo::MatrixRef;
    using PointList = tav::List<tav::Point3DF>;

    /// Slot 6.
    virtual bool directionAngle3d(Point3DF a, Point3DF b, double& angle) = 0;

    /// Slot 7.
    virtual bool segmentDirectionAngle3d(const PathRef& path, int i, double& angle) = 0;

    /// Slot 8.
    virtual bool directionAngle2d(Point3DF a, Point3DF b, double& angle) = 0;

    /// Slot 9.
    virtual bool segmentDirectionAngle2d(const PathRef& path, int i, double& angle) = 0;

    /// Slot 10.
    virtual bool distance3d(Point3DF a, Point3DF b, double& length) = 0;

    /// Slot 11.
    virtual bool segmentLength3d(const PathRef& path, int i, double& length) = 0;

    /// Slot 12.
    virtual bool slopeAngle3d(Point3DF a, Point3DF b, double& angle) = 0;

    /// Slot 13.
    virtual bool segmentSlopeAngle(const PathRef& path, int i, double& angle) = 0;

    /// Slot 14.
    virtual bool projectPointToSegmentLine3d(const PathRef& path, int i, const Point3DF& q,
                                             Point3DF& foot) = 0;

    /// Slot 15.
    virtual short projectPointToSegment(const PathRef& path, int i, const Point3DF& q,
                                        Point3DF& foot) = 0;

    /// Slot 16.
    virtual bool segmentArcLength(const PathRef& path, int i, double& length) = 0;

    /// Slot 17.
    virtual bool nearestPointOnPolyline(const PathRef& path, const Point3DF& q, Point3DF& nearest,
                                        int& segment, double& distance) = 0;

    /// Slot 18.
    virtual short angleBetweenSegments3d(const PathRef& a, int i, const PathRef& b, int j,
                                         double& angle) = 0;

    /// Slot 19.
    virtual short angleBetweenLines2d(const Point3DF& a1, const Point3DF& a2, const Point3DF& b1,
                                      const Point3DF& b2, double& angle) = 0;

    /// Slot 20.
    virtual short angleBetweenSegments2d(const PathRef& a, int i, const PathRef& b, int j,
                                         double& angle) = 0;

    /// Slot 21.
    virtual bool pointOffsetFromSegmentLine2d(const PathRef& path, int i, Point3DF q,
                                              double& offset) = 0;

    /// Slot 22.
    virtual bool pointDistToSegmentLine3d(const PathRef& path, int i, Point3DF q,
                                          double& distance) = 0;

    /// Slot 23.
    virtual short intersectSegments3d(const PathRef& a, int i, const PathRef& b, int j,
                                      Point3DF& point) = 0;

    /// Slot 24.
    virtual short intersectSegmentArc(const PathRef& a, int i, const PathRef& b, int j,
                                      Point3DF& p1, Point3DF& p2) = 0;

    /// Slot 25.
    virtual short intersectArcs(const PathRef& a, int i, const PathRef& b, int j, Point3DF& p1,
                                Point3DF& p2) = 0;

    /// Slot 26.
    virtual short segmentArcIntersections(const PathRef& path, int i, const Point3DF& centre,
                                          double radius, Point3DF& p1, Point3DF& p2) = 0;

    /// Slot 27.
    virtual bool transformPoint3d(const Point3DF& p, MatrixRef m, Point3DF& result) = 0;

    /// Slot 28.
    virtual short lineCircleIntersections(const PathRef& path, int i, const Point3DF& centre,
                                          double radius, Point3DF& p1, Point3DF& p2) = 0;

    /// Slot 29.
    virtual short intersectCircles(const Point3DF& c1, double r1, const Point3DF& c2, double r2,
                                   Point3DF& p1, Point3DF& p2) = 0;

    /// Slot 30.
    virtual bool segmentArcCircle2d(const PathRef& path, int i, Point3DF& centre,
                                    double& radius) = 0;

    /// Slot 31.
    virtual bool circleFrom3Points2d(const Point3DF& a, const Point3DF& b, const Point3DF& m,
                                     Point3DF& centre, double& radius) = 0;

    /// Slot 32.
    virtual bool segmentArcCircle3d(const PathRef& path, int i, Point3DF& centre,
                                    double& radius) = 0;

    /// Slot 33.
    virtual bool circleFrom3Points3d(const Point3DF& a, const Point3DF& b, const Point3DF& m,
                                     Point3DF& centre, double& radius) = 0;

    /// Slot 34.
    virtual bool arcSegmentOp34(const PathRef& path, int i, Point3DF& middle) = 0;

    /// Slot 35.
    virtual bool arcTangentAtPoint(const PathRef& path, int i, const Point3DF& q, double& tx,
                                   double& ty) = 0;

    /// Slot 36.
    virtual double pointListLength2d(const PointList& points) = 0;

    /// Slot 37.
    virtual double polylineLength2d(const PathRef& path) = 0;

    /// Slot 38.
    virtual double polylineLength3d(const PathRef& path) = 0;

    /// Slot 39.
    virtual bool pointDistFromPointList(const PointList& points, double distance,
                                        Point3DF& point) = 0;

    /// Slot 40.
    virtual bool pointDistFromPolyline(const PathRef& path, double distance, Point3DF& point) = 0;

    /// Slot 41.
    virtual bool pointDistFromPolyline3d(const PathRef& path, double distance, Point3DF& point) = 0;

    /// Slot 42.
    virtual bool pointRatioFromPointList(const PointList& points, double ratio,
                                         Point3DF& point) = 0;

    /// Slot 43.
    virtual bool pointRatioFromPolyline(const PathRef& path, double ratio, Point3DF& point) = 0;

    /// Slot 44.
    virtual bool pointRatioFromPolyline3d(const PathRef& path, double ratio, Point3DF& point) = 0;

    /// Slot 45.
    virtual bool polygonCentroidOfPointList(const PointList& points, Point3DF& centroid) = 0;

    /// Slot 46.
    virtual bool polygonCentroid(const PathRef& path, Point3DF& centroid) = 0;

    /// Slot 47.
    virtual bool midPointOfPointList(const PointList& points, Point3DF& point) = 0;

    /// Slot 48.
    virtual bool midPointOfPolyline(const PathRef& path, Point3DF& point) = 0;

    /// Slot 49.
    virtual void polarPoint(const Point3DF& base, double angle, double distance,
                            Point3DF& result) = 0;

    /// Slot 50.
    virtual void pointAlongVector(const Point3DF& base, const Point3DF& direction, double distance,
                                  Point3DF& result) = 0;

    /// Slot 51.
    virtual void raisePoint(const Point3DF& p, double dz, Point3DF& result) = 0;

    /// Slot 52.
    virtual bool pathArcOp52(const PathRef& path, double sagitta, PathRef& result) = 0;

    /// Slot 53.
    virtual bool sameSideOfLine(const Point3DF& a, const Point3DF& b, const Point3DF& p,
                                const Point3DF& q) = 0;
};
