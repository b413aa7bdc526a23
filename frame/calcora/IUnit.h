// IUnit: conversions of units and angles.
#pragma once

#include "tavrel/IObject.h"

/// Conversions of feet, polar coordinates, bearings and angles: 14 operations (slots 6 to 19).
///
/// Azimuths run clockwise from north, so that east = distance * sin(azimuth) and north = distance *
/// cos(azimuth). Angles are radians unless a name says degrees, gons or mils. Nothing is checked:
/// not-a-number and infinity follow IEEE arithmetic. A null out pointer is skipped. The object
/// holds no state; any thread may call any operation.
///
/// Every scaling is one multiplication by the factor given, so a value converted there and back
/// comes back to about the digits of the factors only.
///
/// Quadrant codes of bearings (not the clockwise numbering):
///
/// | code | quadrant   | azimuth         | bearing        |
/// |------|------------|-----------------|----------------|
/// | 1    | north-east | 0 to pi/2       | azimuth        |
/// | 2    | north-west | 1.5 pi to 2 pi  | 2 pi - azimuth |
/// | 3    | south-east | pi/2 to pi      | pi - azimuth   |
/// | 4    | south-west | pi to 1.5 pi    | azimuth - pi   |
class IUnit : public tav::InterfaceOf<IUnit> {
public:
    static constexpr const char* kInterfaceName = "IUnit";

    /// Slot 6. Metres to US survey feet: value * 3.28083335.
    virtual double meterToUsFoot(double value) = 0;

    /// Slot 7. Metres to international feet: value * 3.2808399.
    virtual double meterToFoot(double value) = 0;

    /// Slot 8. US survey feet to metres: value * 0.3048006.
    virtual double usFootToMeter(double value) = 0;

    /// Slot 9. International feet to metres: value * 0.3048.
    virtual double footToMeter(double value) = 0;

    /// Slot 10. The offset of a point at `distance` in direction `azimuth`.
    virtual void polarToRect(double distance, double azimuth, double* east, double* north) = 0;

    /// Slot 11. Azimuth atan(east / north) and distance north / cos(azimuth) of an offset.
    ///
    /// The quadrant is not looked at: the azimuth lies within -pi/2 to pi/2, and a negative `north`
    /// gives a negative distance, so (3, -4) gives -5 and atan(-0.75). polarToRect brings both
    /// back.
    ///
    /// Near the east-west direction digits are lost: (1e5, 1e-12) gives a distance of about 16331,
    /// (5, 0) gives 0 with azimuth pi/2, and (0, 0) gives two not-a-numbers.
    virtual void rectToPolar(double east, double north, double* distance, double* azimuth) = 0;

    /// Slot 12. The azimuth of a quadrant bearing: b, 2 pi - b, pi - b, pi + b for the codes 1
    /// to 4. Any other code writes nothing.
    virtual void bearingToAzimuth(int quadrant, double bearing, double* azimuth) = 0;

    /// Slot 13. The quadrant code and bearing of an azimuth of any number of turns.
    ///
    /// pi/2, pi and 1.5 pi belong to the range that ends there (codes 1, 3, 4).
    ///
    /// Nothing is written for not-a-number, for infinity, and for a negative azimuth so small that
    /// a turn added to it rounds to a full turn (-1e-17). Set both variables before the call.
    virtual void azimuthToBearing(double azimuth, int* quadrant, double* bearing) = 0;

    /// Slot 14. Degrees to gons (400 to the circle): value * 10/9.
    virtual double degreeToGon(double value) = 0;

    /// Slot 15. Gons to degrees: value * 0.9.
    virtual double gonToDegree(double value) = 0;

    /// Slot 16. Degrees to mils (6400 to the circle): value * 160/9.
    virtual double degreeToMil(double value) = 0;

    /// Slot 17. Mils to degrees: value * 0.05625.
    virtual double milToDegree(double value) = 0;

    /// Slot 18. Radians to degrees: (180 / pi) * value, the factor formed first.
    virtual double radianToDegree(double value) = 0;

    /// Slot 19. Degrees to radians: (pi / 180) * value, the factor formed first.
    virtual double degreeToRadian(double value) = 0;
};
