// Arcs given by a bulge.

#include "common/commonFunc.h"

tav::Point2DF commonFunc::arcMidPoint(const Point2DF&, const Point2DF&, double)
{
    return {};
}

double commonFunc::bulgeFrom3Points(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return 0.0;
}

bool commonFunc::densifyArc3d(Point3DF, Point3DF, double, double, Points&, Values&)
{
    return false;
}

double commonFunc::bulgeSegmentArea(const Point2DF&, const Point2DF&, double)
{
    return 0.0;
}

double commonFunc::bulgeSegmentLength(const Point2DF&, const Point2DF&, double)
{
    return 0.0;
}

double commonFunc::arcSweepFraction(const Point2DF&, const Point2DF&, const Point2DF&,
                                    const Point2DF&, bool)
{
    return 0.0;
}

void commonFunc::pointOnBulgeSegmentAtRatio(const Point2DF&, const Point2DF&, double, double,
                                            Point2DF&)
{
}

void commonFunc::pointOnBulgeSegmentAtDistance(const Point2DF&, const Point2DF&, double, double,
                                               Point2DF&)
{
}

double commonFunc::arcLength(const Point2DF&, double, const Point2DF&, const Point2DF&, bool)
{
    return 0.0;
}

void commonFunc::bulgeArcCenter(const Point2DF&, const Point2DF&, double, Point2DF&, double*) {}

bool commonFunc::circleFrom3Points(const Point2DF&, const Point2DF&, const Point2DF&, Point2DF&,
                                   double*)
{
    return false;
}
