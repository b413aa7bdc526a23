// Angles, degrees-minutes-seconds and polar coordinates.

#include "common/commonFunc.h"

void commonFunc::degreesToDms(double, int&, int&, double&) {}

void commonFunc::radiansToDms(double, int&, int&, double&) {}

double commonFunc::dmsToRadians(int, int, double)
{
    return 0.0;
}

double commonFunc::normalizeAngle(const double&)
{
    return 0.0;
}

double commonFunc::vectorAngle(const double&, const double&, const double&, const double&)
{
    return 0.0;
}

void commonFunc::polarFromCoordinates(const double&, const double&, const double&, const double&,
                                      double&, double&)
{
}

void commonFunc::coordinatesFromPolar(double&, double&, const double&, const double&, const double&,
                                      const double&)
{
}

double commonFunc::angleBetweenDirections(const Point2DF&, const Point2DF&, const Point2DF&)
{
    return 0.0;
}
