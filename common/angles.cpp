// Angles, degrees-minutes-seconds and polar coordinates.

#include <cmath>

#include "common/commonFunc.h"
#include "common/detail/primitives.h"

namespace {

using calcora::detail::kPi;
using calcora::detail::kTwoPi;

/// Degrees: an angle above it counts as not negative when it is split.
constexpr double kNegativeDegrees = -1e-10;
/// Degrees that fit the 32-bit integer they are truncated to.
constexpr double kDegreesLimit = 2147483648.0;
/// Drawing units: a smaller difference in x is taken for this one. vectorAngle().
constexpr double kSmallestVectorWidth = 1e-10;
/// The same for polarFromCoordinates().
constexpr double kSmallestPolarWidth = 1e-12;

/// dx, moved away from 0 to the side it is on.
double atLeast(double smallest, double dx)
{
    if (!(std::fabs(dx) < smallest)) return dx;
    return dx < 0 ? -smallest : smallest;
}

}  // namespace

void commonFunc::degreesToDms(double degrees, int& d, int& m, double& s)
{
    if (!(std::fabs(degrees) < kDegreesLimit)) return;
    const double wholeDegrees = std::trunc(degrees);
    const double minutes = (degrees - wholeDegrees) * 60;
    const double wholeMinutes = std::trunc(minutes);
    const double seconds = (minutes - wholeMinutes) * 60;
    const int sign = degrees < kNegativeDegrees ? -1 : 1;
    d = sign * static_cast<int>(wholeDegrees);
    m = sign * static_cast<int>(wholeMinutes);
    s = sign * seconds;
}

void commonFunc::radiansToDms(double radians, int& d, int& m, double& s)
{
    degreesToDms(std::fabs(radians) * 180 / kPi, d, m, s);
}

double commonFunc::dmsToRadians(int d, int m, double s)
{
    const double sign = d < 0 ? -1.0 : 1.0;
    return (d + sign * m / 60 + sign * s / 3600) * kPi / 180;
}

double commonFunc::normalizeAngle(const double& angle)
{
    if (angle > kTwoPi) return angle - kTwoPi;
    if (angle < 0) return angle + kTwoPi;
    return angle;
}

double commonFunc::vectorAngle(const double& x1, const double& y1, const double& x2,
                               const double& y2)
{
    return normalizeAngle(std::atan2(y2 - y1, atLeast(kSmallestVectorWidth, x2 - x1)));
}

void commonFunc::polarFromCoordinates(const double& x1, const double& y1, const double& x2,
                                      const double& y2, double& angle, double& distance)
{
    const double dx = x2 - x1;
    const double dy = y2 - y1;
    const double direction = normalizeAngle(std::atan2(dy, atLeast(kSmallestPolarWidth, dx)));
    angle = direction;
    distance = std::sqrt(dx * dx + dy * dy);
}

void commonFunc::coordinatesFromPolar(double& x, double& y, const double& x0, const double& y0,
                                      const double& distance, const double& angle)
{
    const double pointX = std::cos(angle) * distance + x0;
    const double pointY = std::sin(angle) * distance + y0;
    x = pointX;
    y = pointY;
}

// x and y change places: both directions are measured from the y axis, clockwise, and the angle
// between them is the same.
double commonFunc::angleBetweenDirections(const Point2DF& a, const Point2DF& b, const Point2DF& c)
{
    const double toA = vectorAngle(b.y(), b.x(), a.y(), a.x());
    const double toC = vectorAngle(b.y(), b.x(), c.y(), c.x());
    const double turn = normalizeAngle(toC - toA);
    return turn > kPi ? kTwoPi - turn : turn;
}
