// Points and vectors.

#include "common/commonFunc.h"

double commonFunc::lineAngle(const Point2DF&, const Point2DF&)
{
    return 0.0;
}

double commonFunc::pointDist(const Point2DF&, const Point2DF&)
{
    return 0.0;
}

double commonFunc::projectionRatio(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return 0.0;
}

double commonFunc::pointDistSquared(const Point2DF&, const Point2DF&)
{
    return 0.0;
}

void commonFunc::reverseDoubleList(Values&) {}

void commonFunc::reversePointList(Points&) {}

double commonFunc::dotProduct(const Point2DF&, const Point2DF&)
{
    return 0.0;
}

double commonFunc::vectorDot(const Point2DF&, const Point2DF&)
{
    return 0.0;
}

double commonFunc::innerProduct(const Point2DF&, const Point2DF&)
{
    return 0.0;
}

double commonFunc::scalarProduct(const Point2DF&, const Point2DF&)
{
    return 0.0;
}

double commonFunc::crossProduct(const Point2DF&, const Point2DF&)
{
    return 0.0;
}

double commonFunc::orientation3(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return 0.0;
}

double commonFunc::sweepAngle(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return 0.0;
}

tav::Point2DF commonFunc::closestPointOnSegment(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return {};
}

double commonFunc::polygonArea(const Points&)
{
    return 0.0;
}

double commonFunc::segmentParameter(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return 0.0;
}

void commonFunc::polarPoint(const Point2DF&, double, double, Point2DF&) {}
