// Edge directions and squaring of rings.

#include "common/commonFunc.h"

double commonFunc::dominantEdgeDirection(const PointLists&)
{
    return 0.0;
}

void commonFunc::intersectDirectionLines(Point2DF, double, Point2DF, double, Point2DF&) {}

bool commonFunc::isParallelDirection(Point2DF, Point2DF, Point2DF)
{
    return false;
}

void commonFunc::removeCollinearPoints(Points&) {}

const CMyAngleLine* commonFunc::lookupAngleLine(tav::Vector<CMyAngleLine>, double)
{
    return nullptr;
}

void commonFunc::squareRings(const PointLists&, PointLists&) {}

bool commonFunc::squareCorner(const Point2DF&, Point2DF&, const Point2DF&)
{
    return false;
}

bool commonFunc::squareCorners(Points&, double)
{
    return false;
}
