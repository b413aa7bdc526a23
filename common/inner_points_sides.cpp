// Inner points of rings and relations between polylines.

#include "common/commonFunc.h"

int commonFunc::pointSideOfBulgePolyline(const Point2DF&, const Points&, Values)
{
    return 0;
}

short commonFunc::pointSideOfPolyline(const Point2DF&, const Points&)
{
    return 0;
}

int commonFunc::segmentsSideOfPolyline(const Points&, const Points&)
{
    return 0;
}

int commonFunc::polylineSideOfPolyline(const Points&, const Points&)
{
    return 0;
}

int commonFunc::segmentMidpointInRing(const Points&, const Point2DF&, const Point2DF&)
{
    return 0;
}

int commonFunc::polylineRingRelation(const Points&, const Values&, const Points&, const Values&)
{
    return 0;
}

int commonFunc::polylinePartsInRing(const Points&, const Points&)
{
    return 0;
}

bool commonFunc::haveSameEnds(const Points&, const Points&)
{
    return false;
}

int commonFunc::findSameEnds(const PointLists&, const Points&)
{
    return 0;
}

bool commonFunc::labelPoint(const Points&, const Values&, Point2DF&)
{
    return false;
}

tav::Point2DF commonFunc::innerPointByTriangles(const Points&)
{
    return {};
}

tav::Point2DF commonFunc::innerPointOfRegion(const PointLists&, const ValueLists&)
{
    return {};
}

tav::Point2DF commonFunc::innerPointOfRing(const Points&, const Values&)
{
    return {};
}
