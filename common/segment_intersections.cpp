// Intersections of straight segments and polylines.

#include "common/commonFunc.h"

void commonFunc::intersectPolylinesToLists(const Points&, const Points&, Points&, Values&) {}

void commonFunc::intersectPolylines(const Points&, const Points&, Point2DF*, double*, int*) {}

void commonFunc::intersectSegmentPolyline(const Point2DF&, const Point2DF&, const Points&, double,
                                          double, Point2DF*, double*, int*)
{
}

void commonFunc::intersectAngleLines(const Point2DF&, double, const Point2DF&, double, Point2DF&) {}

void commonFunc::intersectSegments(const Point2DF&, const Point2DF&, const Point2DF&,
                                   const Point2DF&, double, double, double, double, Point2DF*,
                                   double*, int*)
{
}

void commonFunc::intersectSegmentsAll(const Point2DF&, const Point2DF&, const Point2DF&,
                                      const Point2DF&, Points&)
{
}

int commonFunc::overlapIntervals(double, double, double, double, double*)
{
    return 0;
}
