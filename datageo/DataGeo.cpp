#include "datageo/DataGeo.h"

DataGeo::DataGeo(unsigned) {}

void DataGeo::buildRegions(const PointLists&, const ValueLists&, PointLists&, ValueLists&, bool,
                           bool*, double)
{
}

void DataGeo::buildDirectedRegions(const PointLists&, const ValueLists&, PointLists&, ValueLists&,
                                   bool*)
{
}

int DataGeo::pointInBulgePolygon(Points&, Values&, Point2DF)
{
    return 0;
}

int DataGeo::pointInPolygon(const Points&, double, double)
{
    return 0;
}

int DataGeo::intersectSegmentPolylineToLists(const Point2DF&, const Point2DF&, const Points&,
                                             double, double, Points&, Values&)
{
    return 0;
}

int DataGeo::intersectPolylinesToListsEx(const Points&, const Points&, Points&, Values&)
{
    return 0;
}

double DataGeo::pointDistSquared(const Point2DF&, const Point2DF&)
{
    return -1.0;
}

void DataGeo::reverseDoubleList(Values&) {}

void DataGeo::reversePointList(Points&) {}

double DataGeo::polylineLengthWithBulges(const Points&, const Values&, bool)
{
    return -1.0;
}

double DataGeo::segmentLengthWithBulge(const Point2DF&, const Point2DF&, double)
{
    return -1.0;
}

void DataGeo::arcCenterFromBulge(const Point2DF&, const Point2DF&, double, Point2DF&, double*) {}

double DataGeo::arcLengthFromCenter(const Point2DF&, double, const Point2DF&, const Point2DF&, bool)
{
    return -1.0;
}

void DataGeo::insertArcExtremes(Points, Values, bool, bool, bool, Points&, Values&) {}

double DataGeo::bulgeChordArea(const Point2DF&, const Point2DF&, double)
{
    return -1.0;
}

void DataGeo::polarPoint(const Point2DF&, double, double, Point2DF&) {}

double DataGeo::pointDist(const Point2DF&, const Point2DF&)
{
    return -1.0;
}

double DataGeo::lineAngle(const Point2DF&, const Point2DF&)
{
    return -1.0;
}

double DataGeo::polygonAreaAbs(const Points&)
{
    return -1.0;
}

bool DataGeo::polylineArcExtremes(const Points&, const Values&, bool, bool, bool, Points&, Values&)
{
    return false;
}

void DataGeo::segmentArcExtremes(int, const Point2DF&, const Point2DF&, double, bool, bool, Points&,
                                 Values&)
{
}

double DataGeo::arcPositionFraction(const Point2DF&, const Point2DF&, const Point2DF&,
                                    const Point2DF&, bool)
{
    return -1.0;
}

void DataGeo::sortPointsByKey(Points&, Values&) {}
