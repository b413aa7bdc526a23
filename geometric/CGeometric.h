#pragma once

#include "calcora/IGeometric.h"
#include "tavrel/PlainObject.h"

class CGeometric : public tav::PlainObject<CGeometric, IGeometric> {
public:
    static constexpr const char* kClassName = "CGeometric";

    /// The bulge of the plan arc from a through m to b as the plan stations use it: the tangent of
    /// a quarter of the angle that angleBetweenSegments2d gives between its two radii, 0 for
    /// collinear points (twice the triangle's area below 1e-6) and when an object could not be
    /// created.
    ///
    /// Counter-clockwise is negative. The sign gives the arc's side when m is the arc's middle as a
    /// drawing stores it, within min(0.002, radius / 100) along the chord. For another m it tells
    /// whether m comes before (not negative) or after the middle: give the middle point.
    double arcBulge(const Point3DF& a, const Point3DF& b, const Point3DF& m);

    bool directionAngle3d(Point3DF a, Point3DF b, double& angle) override;
    bool segmentDirectionAngle3d(const PathRef& path, int i, double& angle) override;
    bool directionAngle2d(Point3DF a, Point3DF b, double& angle) override;
    bool segmentDirectionAngle2d(const PathRef& path, int i, double& angle) override;
    bool distance3d(Point3DF a, Point3DF b, double& length) override;
    bool segmentLength3d(const PathRef& path, int i, double& length) override;
    bool slopeAngle3d(Point3DF a, Point3DF b, double& angle) override;
    bool segmentSlopeAngle(const PathRef& path, int i, double& angle) override;
    bool projectPointToSegmentLine3d(const PathRef& path, int i, const Point3DF& q,
                                     Point3DF& foot) override;
    short projectPointToSegment(const PathRef& path, int i, const Point3DF& q,
                                Point3DF& foot) override;
    bool segmentArcLength(const PathRef& path, int i, double& length) override;
    bool nearestPointOnPolyline(const PathRef& path, const Point3DF& q, Point3DF& nearest,
                                int& segment, double& distance) override;
    short angleBetweenSegments3d(const PathRef& a, int i, const PathRef& b, int j,
                                 double& angle) override;
    short angleBetweenLines2d(const Point3DF& a1, const Point3DF& a2, const Point3DF& b1,
                              const Point3DF& b2, double& angle) override;
    short angleBetweenSegments2d(const PathRef& a, int i, const PathRef& b, int j,
                                 double& angle) override;
    bool pointOffsetFromSegmentLine2d(const PathRef& path, int i, Point3DF q,
                                      double& offset) override;
    bool pointDistToSegmentLine3d(const PathRef& path, int i, Point3DF q,
                                  double& distance) override;
    short intersectSegments3d(const PathRef& a, int i, const PathRef& b, int j,
                              Point3DF& point) override;
    short intersectSegmentArc(const PathRef& a, int i, const PathRef& b, int j, Point3DF& p1,
                              Point3DF& p2) override;
    short intersectArcs(const PathRef& a, int i, const PathRef& b, int j, Point3DF& p1,
                        Point3DF& p2) override;
    short segmentArcIntersections(const PathRef& path, int i, const Point3DF& centre, double radius,
                                  Point3DF& p1, Point3DF& p2) override;
    bool transformPoint3d(const Point3DF& p, MatrixRef m, Point3DF& result) override;
    short lineCircleIntersections(const PathRef& path, int i, const Point3DF& centre, double radius,
                                  Point3DF& p1, Point3DF& p2) override;
    short intersectCircles(const Point3DF& c1, double r1, const Point3DF& c2, double r2,
                           Point3DF& p1, Point3DF& p2) override;
    bool segmentArcCircle2d(const PathRef& path, int i, Point3DF& centre, double& radius) override;
    bool circleFrom3Points2d(const Point3DF& a, const Point3DF& b, const Point3DF& m,
                             Point3DF& centre, double& radius) override;
    bool segmentArcCircle3d(const PathRef& path, int i, Point3DF& centre, double& radius) override;
    bool circleFrom3Points3d(const Point3DF& a, const Point3DF& b, const Point3DF& m,
                             Point3DF& centre, double& radius) override;
    bool arcSegmentOp34(const PathRef& path, int i, Point3DF& middle) override;
    bool arcTangentAtPoint(const PathRef& path, int i, const Point3DF& q, double& tx,
                           double& ty) override;
    double pointListLength2d(const PointList& points) override;
    double polylineLength2d(const PathRef& path) override;
    double polylineLength3d(const PathRef& path) override;
    bool pointDistFromPointList(const PointList& points, double distance, Point3DF& point) override;
    bool pointDistFromPolyline(const PathRef& path, double distance, Point3DF& point) override;
    bool pointDistFromPolyline3d(const PathRef& path, double distance, Point3DF& point) override;
    bool pointRatioFromPointList(const PointList& points, double ratio, Point3DF& point) override;
    bool pointRatioFromPolyline(const PathRef& path, double ratio, Point3DF& point) override;
    bool pointRatioFromPolyline3d(const PathRef& path, double ratio, Point3DF& point) override;
    bool polygonCentroidOfPointList(const PointList& points, Point3DF& centroid) override;
    bool polygonCentroid(const PathRef& path, Point3DF& centroid) override;
    bool midPointOfPointList(const PointList& points, Point3DF& point) override;
    bool midPointOfPolyline(const PathRef& path, Point3DF& point) override;
    void polarPoint(const Point3DF& base, double angle, double distance, Point3DF& result) override;
    void pointAlongVector(const Point3DF& base, const Point3DF& direction, double distance,
                          Point3DF& result) override;
    void raisePoint(const Point3DF& p, double dz, Point3DF& result) override;
    bool pathArcOp52(const PathRef& path, double sagitta, PathRef& result) override;
    bool sameSideOfLine(const Point3DF& a, const Point3DF& b, const Point3DF& p,
                        const Point3DF& q) override;
};
