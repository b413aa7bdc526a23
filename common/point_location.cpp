// Point location in polygons and regions.

#include "common/commonFunc.h"

int commonFunc::polylineRegionRelation(const Points&, const Points&)
{
    return 0;
}

bool commonFunc::isPointOnSegment(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return false;
}

int commonFunc::pointInBulgeRegion(const PointLists&, const ValueLists&, const Point2DF&)
{
    return 0;
}

int commonFunc::pointInRegion(const PointLists&, const Point2DF&)
{
    return 0;
}

int commonFunc::pointInBulgePolygon(const Points&, const Values&, const Point2DF&)
{
    return 0;
}

int commonFunc::pointInPolygon(const Points&, const Point2DF&)
{
    return 0;
}

bool commonFunc::isPointOnBulgeSegment(const Point2DF&, const Point2DF&, const Point2DF&, double,
                                       Point2DF&, double*)
{
    return false;
}
