// Extents, chords and sidewise moves of polylines with bulges.

#include "common/commonFunc.h"

bool commonFunc::hasPositiveBulgeArea(const Points&, Values)
{
    return false;
}

void commonFunc::bulgeArcExtents(const Point2DF&, const Point2DF&, double, Point2DF&, Point2DF&) {}

void commonFunc::bulgePolylineExtents(const Points&, Values, bool, Point2DF&, Point2DF&, double) {}

bool commonFunc::offsetBulgePolyline(Points, Values, double, Points&, Values&)
{
    return false;
}

void commonFunc::parallelSegment(Point2DF, Point2DF, Point2DF&, Point2DF&, double) {}

double commonFunc::bulgeFromRadius(Point2DF, Point2DF, Point2DF, double, bool)
{
    return 0.0;
}

void commonFunc::bulgePolylineSection(const Point2DF&, const Point2DF&, const Points&, Values,
                                      const Values&, PointLists&, ValueLists&, ValueLists&, bool)
{
}

void commonFunc::densifyBulgesByAngle(const Points&, const Values&, const Values&, double, Points&,
                                      Values&, Values&)
{
}

void commonFunc::bulgeArcToChords(Point2DF, Point2DF, double, double, Points&) {}

void commonFunc::bulgeArcToChords3d(Point3DF, Point3DF, double, double, Points&, Values&) {}

void commonFunc::bulgePolylineToChords(const Points&, const Values&, double, Points&) {}

void commonFunc::bulgePolylineToChords3d(const Points&, const Values&, const Values&, double,
                                         Points&, Values&)
{
}

double commonFunc::bulgeSegmentsLength(const Points&, const Values&)
{
    return 0.0;
}

bool commonFunc::anyBulgeInLists(const ValueLists&)
{
    return false;
}

bool commonFunc::hasBulges(const Values&)
{
    return false;
}
