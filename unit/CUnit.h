#pragma once

#include <numbers>

#include "calcora/IUnit.h"
#include "tavrel/PlainObject.h"

class CUnit : public tav::PlainObject<CUnit, IUnit> {
public:
    static constexpr const char* kClassName = "CUnit";

    double meterToUsFoot(double value) override { return value * kUsFeetPerMeter; }
    double meterToFoot(double value) override { return value * kFeetPerMeter; }
    double usFootToMeter(double value) override { return value * kMetersPerUsFoot; }
    double footToMeter(double value) override { return value * kMetersPerFoot; }
    void polarToRect(double distance, double azimuth, double* east, double* north) override;
    void rectToPolar(double east, double north, double* distance, double* azimuth) override;
    void bearingToAzimuth(int quadrant, double bearing, double* azimuth) override;
    void azimuthToBearing(double azimuth, int* quadrant, double* bearing) override;
    double degreeToGon(double value) override { return value * kGonsPerDegree; }
    double gonToDegree(double value) override { return value * kDegreesPerGon; }
    double degreeToMil(double value) override { return value * kMilsPerDegree; }
    double milToDegree(double value) override { return value * kDegreesPerMil; }
    double radianToDegree(double value) override { return kDegreesPerRadian * value; }
    double degreeToRadian(double value) override { return kRadiansPerDegree * value; }

private:
    // The two foot factors and their reverses are conventions of their own, not quotients of each
    // other: a value converted there and back differs in the eighth digit.
    static constexpr double kUsFeetPerMeter = 3.28083335;
    static constexpr double kFeetPerMeter = 3.2808399;
    static constexpr double kMetersPerUsFoot = 0.3048006;
    static constexpr double kMetersPerFoot = 0.3048;

    static constexpr double kGonsPerDegree = 1.1111111111111112;
    static constexpr double kDegreesPerGon = 0.9;
    static constexpr double kMilsPerDegree = 17.77777777777778;
    static constexpr double kDegreesPerMil = 0.05625;
    static constexpr double kDegreesPerRadian = 180 / std::numbers::pi;
    static constexpr double kRadiansPerDegree = std::numbers::pi / 180;
};
