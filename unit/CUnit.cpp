#include "unit/CUnit.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

/// Quadrants of bearings, numbered as the file formats of the field have them.
enum Quadrant : int { kNorthEast = 1, kNorthWest = 2, kSouthEast = 3, kSouthWest = 4 };

template <class T>
void write(T* target, T value)
{
    if (target) *target = value;
}

}  // namespace

void CUnit::polarToRect(double distance, double azimuth, double* east, double* north)
{
    write(east, std::sin(azimuth) * distance);
    write(north, std::cos(azimuth) * distance);
}

void CUnit::rectToPolar(double east, double north, double* distance, double* azimuth)
{
    const double angle = std::atan(east / north);
    write(distance, north / std::cos(angle));
    write(azimuth, angle);
}

void CUnit::bearingToAzimuth(int quadrant, double bearing, double* azimuth)
{
    switch (quadrant) {
        case kNorthEast:
            write(azimuth, bearing);
            break;
        case kNorthWest:
            write(azimuth, 2 * kPi - bearing);
            break;
        case kSouthEast:
            write(azimuth, kPi - bearing);
            break;
        case kSouthWest:
            write(azimuth, kPi + bearing);
            break;
        default:
            break;
    }
}

void CUnit::azimuthToBearing(double azimuth, int* quadrant, double* bearing)
{
    const auto answer = [&](Quadrant code, double value) {
        write<int>(quadrant, code);
        write(bearing, value);
    };
    double turn = std::fmod(azimuth, 2 * kPi);
    if (turn < 0) turn += 2 * kPi;
    if (0 <= turn && turn <= kPi / 2)
        answer(kNorthEast, turn);
    else if (kPi / 2 < turn && turn <= kPi)
        answer(kSouthEast, kPi - turn);
    else if (kPi < turn && turn <= 1.5 * kPi)
        answer(kSouthWest, turn - kPi);
    else if (1.5 * kPi < turn && turn < 2 * kPi)
        answer(kNorthWest, 2 * kPi - turn);
}
