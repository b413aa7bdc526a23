#include "unit/CUnit.h"

double CUnit::meterToUsFoot(double)
{
    return -1.0;
}

double CUnit::meterToFoot(double)
{
    return -1.0;
}

double CUnit::usFootToMeter(double)
{
    return -1.0;
}

double CUnit::footToMeter(double)
{
    return -1.0;
}

void CUnit::polarToRect(double, double, double*, double*) {}

void CUnit::rectToPolar(double, double, double*, double*) {}

void CUnit::bearingToAzimuth(int, double, double*) {}

void CUnit::azimuthToBearing(double, int*, double*) {}

double CUnit::degreeToGon(double)
{
    return -1.0;
}

double CUnit::gonToDegree(double)
{
    return -1.0;
}

double CUnit::degreeToMil(double)
{
    return -1.0;
}

double CUnit::milToDegree(double)
{
    return -1.0;
}

double CUnit::radianToDegree(double)
{
    return -1.0;
}

double CUnit::degreeToRadian(double)
{
    return -1.0;
}
