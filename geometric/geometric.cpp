#include "geometric/CGeometric.h"

bool CGeometric::directionAngle3d(Point3DF, Point3DF, double&)
{
    return false;
}

bool CGeometric::segmentDirectionAngle3d(const PathRef&, int, double&)
{
    return false;
}

bool CGeometric::directionAngle2d(Point3DF, Point3DF, double&)
{
    return false;
}

bool CGeometric::segmentDirectionAngle2d(const PathRef&, int, double&)
{
    return false;
}

bool CGeometric::distance3d(Point3DF, Point3DF, double&)
{
    return false;
}

bool CGeometric::segmentLength3d(const PathRef&, int, double&)
{
    return false;
}

bool CGeometric::slopeAngle3d(Point3DF, Point3DF, double&)
{
    return false;
}

bool CGeometric::segmentSlopeAngle(const PathRef&, int, double&)
{
    return false;
}

bool CGeometric::projectPointToSegmentLine3d(const PathRef&, int, const Point3DF&, Point3DF&)
{
    return false;
}

short CGeometric::projectPointToSegment(const PathRef&, int, const Point3DF&, Point3DF&)
{
    return 0;
}

bool CGeometric::segmentArcLength(const PathRef&, int, double&)
{
    return false;
}

bool CGeometric::nearestPointOnPolyline(const PathRef&, const Point3DF&, Point3DF&, int&, double&)
{
    return false;
}

short CGeometric::angleBetweenSegments3d(const PathRef&, int, const PathRef&, int, double&)
{
    return 0;
}

short CGeometric::angleBetweenLines2d(const Point3DF&, const Point3DF&, const Point3DF&,
                                      const Point3DF&, double&)
{
    return 0;
}

short CGeometric::angleBetweenSegments2d(const PathRef&, int, const PathRef&, int, double&)
{
    return 0;
}

bool CGeometric::pointOffsetFromSegmentLine2d(const PathRef&, int, Point3DF, double&)
{
    return false;
}

bool CGeometric::pointDistToSegmentLine3d(const PathRef&, int, Point3DF, double&)
{
    return false;
}

short CGeometric::intersectSegments3d(const PathRef&, int, const PathRef&, int, Point3DF&)
{
    return 0;
}

short CGeometric::intersectSegmentArc(const PathRef&, int, const PathRef&, int, Point3DF&,
                                      Point3DF&)
{
    return 0;
}

short CGeometric::intersectArcs(const PathRef&, int, const PathRef&, int, Point3DF&, Point3DF&)
{
    return 0;
}

short CGeometric::segmentArcIntersections(const PathRef&, int, const Point3DF&, double, Point3DF&,
                                          Point3DF&)
{
    return 0;
}

bool CGeometric::transformPoint3d(const Point3DF&, MatrixRef, Point3DF&)
{
    return false;
}

short CGeometric::lineCircleIntersections(const PathRef&, int, const Point3DF&, double, Point3DF&,
                                          Point3DF&)
{
    return 0;
}

short CGeometric::intersectCircles(const Point3DF&, double, const Point3DF&, double, Point3DF&,
                                   Point3DF&)
{
    return 0;
}

bool CGeometric::segmentArcCircle2d(const PathRef&, int, Point3DF&, double&)
{
    return false;
}

bool CGeometric::circleFrom3Points2d(const Point3DF&, const Point3DF&, const Point3DF&, Point3DF&,
                                     double&)
{
    return false;
}

bool CGeometric::segmentArcCircle3d(const PathRef&, int, Point3DF&, double&)
{
    return false;
}

bool CGeometric::circleFrom3Points3d(const Point3DF&, const Point3DF&, const Point3DF&, Point3DF&,
                                     double&)
{
    return false;
}

bool CGeometric::arcSegmentOp34(const PathRef&, int, Point3DF&)
{
    return false;
}

bool CGeometric::arcTangentAtPoint(const PathRef&, int, const Point3DF&, double&, double&)
{
    return false;
}

double CGeometric::pointListLength2d(const PointList&)
{
    return -1.0;
}

double CGeometric::polylineLength2d(const PathRef&)
{
    return -1.0;
}

double CGeometric::polylineLength3d(const PathRef&)
{
    return -1.0;
}

bool CGeometric::pointDistFromPointList(const PointList&, double, Point3DF&)
{
    return false;
}

bool CGeometric::pointDistFromPolyline(const PathRef&, double, Point3DF&)
{
    return false;
}

bool CGeometric::pointDistFromPolyline3d(const PathRef&, double, Point3DF&)
{
    return false;
}

bool CGeometric::pointRatioFromPointList(const PointList&, double, Point3DF&)
{
    return false;
}

bool CGeometric::pointRatioFromPolyline(const PathRef&, double, Point3DF&)
{
    return false;
}

bool CGeometric::pointRatioFromPolyline3d(const PathRef&, double, Point3DF&)
{
    return false;
}

bool CGeometric::polygonCentroidOfPointList(const PointList&, Point3DF&)
{
    return false;
}

bool CGeometric::polygonCentroid(const PathRef&, Point3DF&)
{
    return false;
}

bool CGeometric::midPointOfPointList(const PointList&, Point3DF&)
{
    return false;
}

bool CGeometric::midPointOfPolyline(const PathRef&, Point3DF&)
{
    return false;
}

void CGeometric::polarPoint(const Point3DF&, double, double, Point3DF&) {}

void CGeometric::pointAlongVector(const Point3DF&, const Point3DF&, double, Point3DF&) {}

void CGeometric::raisePoint(const Point3DF&, double, Point3DF&) {}

bool CGeometric::pathArcOp52(const PathRef&, double, PathRef&)
{
    return false;
}

bool CGeometric::sameSideOfLine(const Point3DF&, const Point3DF&, const Point3DF&, const Point3DF&)
{
    return false;
}
