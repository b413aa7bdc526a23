#pragma once

#include "calcora/IUnit.h"
#include "tavrel/PlainObject.h"

class CUnit : public tav::PlainObject<CUnit, IUnit> {
public:
    static constexpr const char* kClassName = "CUnit";

    double meterToUsFoot(double value) override;
    double meterToFoot(double value) override;
    double usFootToMeter(double value) override;
    double footToMeter(double value) override;
    void polarToRect(double distance, double azimuth, double* east, double* north) override;
    void rectToPolar(double east, double north, double* distance, double* azimuth) override;
    void bearingToAzimuth(int quadrant, double bearing, double* azimuth) override;
    void azimuthToBearing(double azimuth, int* quadrant, double* bearing) override;
    double degreeToGon(double value) override;
    double gonToDegree(double value) override;
    double degreeToMil(double value) override;
    double milToDegree(double value) override;
    double radianToDegree(double value) override;
    double degreeToRadian(double value) override;
};
