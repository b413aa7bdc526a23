// Bezier, Akima and B-spline curves.

#include "common/commonFunc.h"

bool commonFunc::bezierSpanToPolyline3d(const Point2DF&, double, const Point2DF&, double,
                                        const Point2DF&, double, const Point2DF&, double, Points&,
                                        Values&, double)
{
    return false;
}

bool commonFunc::bezierSpanToPolyline(const Point2DF&, const Point2DF&, const Point2DF&,
                                      const Point2DF&, Points&, double)
{
    return false;
}

tav::Point2DF commonFunc::bezierSpanPoint3d(const Point2DF&, double, const Point2DF&, double,
                                            const Point2DF&, double, const Point2DF&, double,
                                            double&, double)
{
    return {};
}

bool commonFunc::bezierCurveSpans(Points, PointLists&)
{
    return false;
}

void commonFunc::akimaCurve(Points, Points&) {}

bool commonFunc::bsplineToPolyline3d(const Points&, const Values&, Points&, Values&, int, double)
{
    return false;
}

bool commonFunc::bsplineToPolyline(const Points&, Points&, int, double)
{
    return false;
}
