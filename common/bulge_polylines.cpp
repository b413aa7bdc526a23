// Polylines with bulges.

#include "common/commonFunc.h"

double commonFunc::bulgePolylineLength(const Points&, const Values&, bool)
{
    return 0.0;
}

double commonFunc::bulgePolygonArea(const Points&, const Values&)
{
    return 0.0;
}

void commonFunc::bulgePolylineStations(const Points&, const Values&, Values&) {}

bool commonFunc::pointAtStation3d(int, const Points&, const Values&, const Values&, const Values&,
                                  double, Point3DF&)
{
    return false;
}

void commonFunc::pointAtStationZ(const Points&, const Values&, const Values&, double, Point3DF&) {}

void commonFunc::pointAtStation(const Points&, const Values&, double, Point2DF&) {}

void commonFunc::pointAtParameter(const Points&, const Values&, int, double, Point2DF&) {}

void commonFunc::removeDuplicatePointsRaw(Point2DF*, double*, int*) {}

void commonFunc::removeDuplicatePoints(Points&, Values&) {}

void commonFunc::reverseBulges(Values&) {}

void commonFunc::offsetPolyline(const Points&, double, Points&) {}
