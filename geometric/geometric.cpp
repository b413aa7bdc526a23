// Measures of one segment: direction, length, slope, projection, distances, the angle between two
// segments; and the points built from a base.
#include <cmath>

#include "frame/detail/vec3.h"
#include "geometric/CGeometric.h"
#include "geometric/detail/arc.h"
#include "geometric/detail/auxiliary.h"

using namespace calcora::paths;

namespace {

/// Length of a direction below which it has none. pointAlongVector().
constexpr double kNoDirection = 1e-6;

/// Twice a triangle's area, in square drawing units, up to which its tip counts as on the line.
/// sameSideOfLine().
constexpr double kOnLineArea = 1e-6;

/// The angle in 0 to 2 pi whose cosine is given, beyond pi when `behind`.
double fullAngle(double cosine, bool behind)
{
    const double angle = clampedAcos(cosine);
    return behind ? kTwoPi - angle : angle;
}

/// Twice the signed area of the triangle s, a, b.
double lineSide(const tav::Point3DF& a, const tav::Point3DF& b, const tav::Point3DF& s)
{
    return (s.x() - a.x()) * (s.y() - b.y()) - (s.x() - b.x()) * (s.y() - a.y());
}

}  // namespace

bool CGeometric::directionAngle3d(Point3DF a, Point3DF b, double& angle)
{
    const PathRef path = segmentPath(a, b);
    return path && segmentDirectionAngle3d(path, 0, angle);
}

bool CGeometric::segmentDirectionAngle3d(const PathRef& path, int i, double& angle)
{
    const PathView view(path);
    if (!view.hasSegment(i)) return false;
    const Vec3 d = between(view.point(i), view.point(i + 1));
    const double size = length(d);
    if (!isUsableLength(size)) return false;
    if (d.y == 0 && d.z == 0)
        angle = d.x > 0 ? 0.0 : kPi;
    else
        angle = fullAngle(d.x / size, d.y < 0 || (d.y == 0 && d.z > 0));
    return true;
}

bool CGeometric::directionAngle2d(Point3DF a, Point3DF b, double& angle)
{
    const PathRef path = segmentPath(a, b);
    return path && segmentDirectionAngle2d(path, 0, angle);
}

bool CGeometric::segmentDirectionAngle2d(const PathRef& path, int i, double& angle)
{
    const PathView view(path);
    if (!view.hasSegment(i)) return false;
    const Vec3 d = planBetween(view.point(i), view.point(i + 1));
    const double size = length(d);
    if (!isUsableLength(size)) return false;
    if (d.y == 0)
        angle = d.x > 0 ? 0.0 : kPi;
    else
        angle = fullAngle(d.x / size, d.y < 0);
    return true;
}

bool CGeometric::distance3d(Point3DF a, Point3DF b, double& length)
{
    const PathRef path = segmentPath(a, b);
    return path && segmentLength3d(path, 0, length);
}

bool CGeometric::segmentLength3d(const PathRef& path, int i, double& length)
{
    const PathView view(path);
    if (!view.hasSegment(i)) return false;
    const double chord = calcora::paths::length(between(view.point(i), view.point(i + 1)));
    if (!std::isfinite(chord)) return false;
    length = chord;
    return true;
}

bool CGeometric::slopeAngle3d(Point3DF a, Point3DF b, double& angle)
{
    const PathRef path = segmentPath(a, b);
    return path && segmentSlopeAngle(path, 0, angle);
}

bool CGeometric::segmentSlopeAngle(const PathRef& path, int i, double& angle)
{
    const PathView view(path);
    if (!view.hasSegment(i)) return false;
    const Point3DF a = view.point(i);
    const Point3DF b = view.point(i + 1);
    const double run = length(planBetween(a, b));
    const double drop = a.z() - b.z();
    if (!isUsableLength(run) || std::isnan(drop)) return false;
    angle = std::atan(drop / run);
    return true;
}

bool CGeometric::projectPointToSegmentLine3d(const PathRef& path, int i, const Point3DF& q,
                                             Point3DF& foot)
{
    const PathView view(path);
    if (!view.hasSegment(i)) return false;
    const Point3DF a = view.point(i);
    const Vec3 d = between(a, view.point(i + 1));
    if (!isUsableLength(length(d))) return false;
    const double t = dot(between(a, q), d) / dot(d, d);
    const Point3DF onLine = moved(a, t * d);
    if (!isFinite(onLine)) return false;
    foot = onLine;
    return true;
}

bool CGeometric::pointDistToSegmentLine3d(const PathRef& path, int i, Point3DF q, double& distance)
{
    const PathView view(path);
    if (!view.hasSegment(i)) return false;
    const Point3DF a = view.point(i);
    const Vec3 u = between(a, view.point(i + 1));
    const Vec3 v = between(a, q);
    const double chord = length(u);
    if (!isUsableLength(chord)) return false;
    const bool atStart = chord * length(v) == 0;
    const double away = atStart ? 0.0 : length(cross(u, v)) / chord;
    if (!std::isfinite(away)) return false;
    distance = away;
    return true;
}

bool CGeometric::pointOffsetFromSegmentLine2d(const PathRef& path, int i, Point3DF q,
                                              double& offset)
{
    const PathView view(path);
    if (!view.hasSegment(i)) return false;
    const Point3DF a = view.point(i);
    const Point3DF b = view.point(i + 1);
    // The line as normalX * x + normalY * y = constant, told from a so that no digits cancel.
    const double normalX = a.y() - b.y();
    const double normalY = b.x() - a.x();
    const double size = std::sqrt(normalX * normalX + normalY * normalY);
    if (!isUsableLength(size)) return false;
    const double toLeft = (normalX * (q.x() - a.x()) + normalY * (q.y() - a.y())) / size;
    if (!std::isfinite(toLeft)) return false;
    offset = toLeft;
    return true;
}

short CGeometric::angleBetweenSegments3d(const PathRef& a, int i, const PathRef& b, int j,
                                         double& angle)
{
    const PathView first(a);
    const PathView second(b);
    if (!first.hasSegment(i) || !second.hasSegment(j)) return 0;
    const Vec3 u1 = between(first.point(i), first.point(i + 1));
    const Vec3 u2 = between(second.point(j), second.point(j + 1));
    double length1 = 0.0;
    double length2 = 0.0;
    if (!segmentLength3d(a, i, length1) || !segmentLength3d(b, j, length2)) return 0;
    if (!isUsableLength(length1) || !isUsableLength(length2)) return 0;

    double turn = 0.0;
    if (u1.y == 0 && u2.y == 0) {
        double direction1 = 0.0;  // stays 0 for a segment without plan length
        double direction2 = 0.0;
        segmentDirectionAngle2d(a, i, direction1);
        segmentDirectionAngle2d(b, j, direction2);
        turn = direction2 < direction1 ? kTwoPi + direction2 - direction1 : direction2 - direction1;
    } else {
        const Vec3 unit1 = u1 / length1;
        const Vec3 unit2 = u2 / length2;
        // Twice the angle whose sine is half the distance of the unit vectors.
        const double between12 = 2 * std::atan2(length(unit2 - unit1), length(unit2 + unit1));
        turn = u2.z < u1.z ? kTwoPi - between12 : between12;
    }
    if (!std::isfinite(turn)) return 0;
    angle = turn;
    return 1;
}

void CGeometric::polarPoint(const Point3DF& base, double angle, double distance, Point3DF& result)
{
    double dx = 0.0;
    double dy = 0.0;
    if (angle >= 0 && angle < kPi * 0.5) {
        dx = std::cos(angle) * distance;
        dy = std::sin(angle) * distance;
    } else if (angle >= kPi * 0.5 && angle < kPi) {
        dx = -(std::cos(kPi - angle) * distance);
        dy = std::sin(kPi - angle) * distance;
    } else if (angle >= kPi && angle < 1.5 * kPi) {
        dx = -(std::cos(angle - kPi) * distance);
        dy = -(std::sin(angle - kPi) * distance);
    } else {
        dx = std::cos(kTwoPi - angle) * distance;
        dy = -(std::sin(kTwoPi - angle) * distance);
    }
    result = Point3DF(base.x() + dx, base.y() + dy, base.z());
}

void CGeometric::pointAlongVector(const Point3DF& base, const Point3DF& direction, double distance,
                                  Point3DF& result)
{
    const Vec3 along{direction.x(), direction.y(), direction.z()};
    const double size = length(along);
    if (size >= kNoDirection && std::isfinite(size))
        result = moved(base, (distance / size) * along);
    else
        result = base;
}

void CGeometric::raisePoint(const Point3DF& p, double dz, Point3DF& result)
{
    result = Point3DF(p.x(), p.y(), p.z() + dz);
}

bool CGeometric::sameSideOfLine(const Point3DF& a, const Point3DF& b, const Point3DF& p,
                                const Point3DF& q)
{
    const double sideOfP = lineSide(a, b, p);
    const double sideOfQ = lineSide(a, b, q);
    return (sideOfP >= -kOnLineArea && sideOfQ >= -kOnLineArea) ||
           (sideOfP <= kOnLineArea && sideOfQ <= kOnLineArea);
}
