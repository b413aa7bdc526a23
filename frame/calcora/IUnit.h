// IUnit: conversions of units and angles.
#pragma once

#include "tavrel/IObject.h"

/// Conversions of feet, polar coordinates, bearings and angles: 14 operations (slots 6 to 19).
class IUnit : public tav::InterfaceOf<IUnit>
{
public:
    static constexpr const char* kInterfaceName = "IUnit";

    /// Slot 6.
    virtual double meterToUsFoot(double value) = 0;

    /// Slot 7.
    virtual double meterToFoot(double value) = 0;

    /// Slot 8.
    virtual double usFootToMeter(double value) = 0;

    /// Slot 9.
    virtual double footToMeter(double value) = 0;

    /// Slot 10.
    virtual void polarToRect(double distance, double azimuth, double* east, double* north) = 0;

    /// Slot 11.
    virtual void rectToPolar(double east, double north, double* distance, double* azimuth) = 0;

    /// Slot 12.
    virtual void bearingToAzimuth(int quadrant, double bearing, double* azimuth) = 0;

    /// Slot 13.
    virtual void azimuthToBearing(double azimuth, int* quadrant, double* bearing) = 0;

    /// Slot 14.
    virtual double degreeToGon(double value) = 0;

    /// Slot 15.
    virtual double gonToDegree(double value) = 0;

    /// Slot 16.
    virtual double degreeToMil(double value) = 0;

    /// Slot 17.
    virtual double milToDegree(double value) = 0;

    /// Slot 18.
    virtual double radianToDegree(double value) = 0;

    /// Slot 19.
    virtual double degreeToRadian(double value) = 0;
};
