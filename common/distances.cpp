// Distances and nearest points.

#include "common/commonFunc.h"

void commonFunc::projectPointOnBulgePolyline(const Point2DF&, const Points&, const Values&, int*,
                                             double*)
{
}

double commonFunc::pointSegmentDistSquared(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return 0.0;
}

double commonFunc::pointLineDistSquared(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return 0.0;
}

double commonFunc::pointLineSignedDist(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return 0.0;
}

double commonFunc::nearestOnBulgePolylineEx(const Point2DF&, const Points&, Values, Point2DF&, int*,
                                            double*)
{
    return 0.0;
}

double commonFunc::nearestOnPolyline(const Point2DF&, const Points&, Point2DF&, int*, double*)
{
    return 0.0;
}

double commonFunc::pointBulgePolylineDistSquared(const Point2DF&, const Points&, const Values&)
{
    return 0.0;
}

double commonFunc::pointPolylineDistSquared(const Point2DF&, const Points&)
{
    return 0.0;
}

double commonFunc::pointBulgeSegmentDistSquared(const Point2DF&, const Point2DF&, const Point2DF&,
                                                double)
{
    return 0.0;
}
