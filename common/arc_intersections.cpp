// Intersections of arcs and of polylines with bulges.

#include "common/commonFunc.h"

void commonFunc::intersectBulgePolylines(const Points&, const Values&, const Points&, const Values&,
                                         Point2DF*, double*, int*)
{
}

void commonFunc::intersectArcWithBulgePolyline(const Point2DF&, const Point2DF&, double,
                                               const Points&, const Values&, double, double,
                                               Point2DF*, double*, int*)
{
}

void commonFunc::intersectLineWithBulgePolyline(const Point2DF&, const Point2DF&, const Points&,
                                                const Values&, double, double, Point2DF*, double*,
                                                int*)
{
}

void commonFunc::intersectArcSegment(const Point2DF&, const Point2DF&, double, const Point2DF&,
                                     const Point2DF&, double, double, double, double, Point2DF*,
                                     double*, int*)
{
}

void commonFunc::intersectArcArc(const Point2DF&, const Point2DF&, double, const Point2DF&,
                                 const Point2DF&, double, double, double, double, double, Point2DF*,
                                 double*, int*)
{
}

void commonFunc::intersectSegmentArc(const Point2DF&, const Point2DF&, const Point2DF&,
                                     const Point2DF&, double, double, double, double, double,
                                     Point2DF*, double*, int*)
{
}
