// Intersections with circles.

#include "common/commonFunc.h"

void commonFunc::intersectLineCircle(const Point2DF&, double, const Point2DF&, const Point2DF&,
                                     Point2DF&, Point2DF&)
{
}

int commonFunc::intersectLineCircleEq(const Point2DF&, double, double, double, double, Point2DF&,
                                      Point2DF&)
{
    return 0;
}

int commonFunc::intersectCircles(const Point2DF&, double, const Point2DF&, double, Point2DF&,
                                 Point2DF&)
{
    return 0;
}

int commonFunc::circleCircleIntersection(const Point2DF&, double, const Point2DF&, double,
                                         Point2DF&, Point2DF&)
{
    return 0;
}
