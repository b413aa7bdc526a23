// Simplification, hull and measures of point lists.

#include "common/commonFunc.h"

void commonFunc::simplifyRange(Points, int, int, double, tav::Vector<int>&) {}

void commonFunc::simplifyPolylineWithValues(const Points&, const Values&, const Values&, Points&,
                                            Values&, Values&, double)
{
}

void commonFunc::simplifyPolyline(const Points&, Points&, double) {}

tav::Point2DF commonFunc::ringCentroid(const Points&)
{
    return {};
}

int commonFunc::lowerLeftPointIndex(const Points&)
{
    return 0;
}

bool commonFunc::isClockwiseRing(const Points&)
{
    return false;
}

void commonFunc::convexHull(Points&, Points&) {}

void commonFunc::polylinesExtents(const PointLists&, double&, double&, double&, double&) {}

int commonFunc::pointsExtents(const Points&, double&, double&, double&, double&)
{
    return 0;
}

tav::RectF commonFunc::polylinesRect(const PointLists&)
{
    return {};
}

tav::RectF commonFunc::pointsRect(const Points&)
{
    return {};
}

void commonFunc::translatePolylines(const PointLists&, double, double, PointLists&) {}

int commonFunc::translatePoints(const Points&, double, double, Points&)
{
    return 0;
}

int commonFunc::centerPointsOnBox(const Points&, double&, double&, Points&)
{
    return 0;
}

double commonFunc::polylineLength(const Points&)
{
    return 0.0;
}

double commonFunc::triangleArea(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return 0.0;
}

tav::Point2DF commonFunc::triangleCentroid(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return {};
}

tav::Point2DF commonFunc::pointsBoxCenterPoint(const Points&)
{
    return {};
}

void commonFunc::pointsBoxCenter(const Points&, double&, double&) {}

tav::Point2DF commonFunc::polylinesMeanPoint(const PointLists&)
{
    return {};
}

tav::Point2DF commonFunc::ringMeanPoint(const Points&)
{
    return {};
}

void commonFunc::ringMean(const Points&, double&, double&) {}

void commonFunc::sortPointsByKey(Points&, Values&) {}
