// The circle of an arc and what follows from it; the transformation of a point by a matrix.
#include <cmath>

#include "frame/detail/circumcentre.h"
#include "frame/detail/vec3.h"
#include "geometric/CGeometric.h"
#include "geometric/detail/arc.h"
#include "geometric/detail/auxiliary.h"

using namespace calcora::paths;

namespace {

/// Drawing units: how far the arc point may lie beyond or before the radius and still be at it,
/// which decides between a major arc, a half circle and a minor one. segmentArcLength().
constexpr double kHalfCircleTolerance = 1e-6;

/// Radians: an angle between the radii below which the arc is a full circle. segmentArcLength().
constexpr double kNoAngle = 1e-6;

/// Drawing units: nearer the centre a point has no tangent. arcTangentAtPoint().
constexpr double kAtCentre = 1e-6;

/// How far a centre may lie off the plane that halves the chord, as a share of its distance; what
/// lies farther is a right-hand side that a system without a solution left behind.
/// circleFrom3Points3d().
constexpr double kOffCentreShare = 1e-6;

/// The equations for the circle through the origin, u and v, with their matrices.
struct CentreSystem {
    geo::MatrixRef coefficients;
    geo::MatrixRef centre;  ///< the right-hand side, the centre once solved

    /// False when a matrix could not be created, which is reported.
    bool build(const Vec3& u, const Vec3& v)
    {
        coefficients = createAuxiliary<geo::IMatrix>();
        if (!coefficients) return false;
        centre = createAuxiliary<geo::IMatrix>();
        if (!centre) return false;
        equations().set(u, v);
        return true;
    }

    Vec3 solution() const { return equations().solution(); }

private:
    CentreEquations equations() const { return {*coefficients, *centre}; }
};

/// Writes the circle with that centre through a, unless it is none.
bool writeCircle(const tav::Point3DF& centreFound, double radiusFound, tav::Point3DF& centre,
                 double& radius)
{
    if (!isFinite(centreFound) || !std::isfinite(radiusFound)) return false;
    centre = centreFound;
    radius = radiusFound;
    return true;
}

bool writeMidpointCircle(const tav::Point3DF& a, const tav::Point3DF& m, tav::Point3DF& centre,
                         double& radius)
{
    const tav::Point3DF middle((a.x() + m.x()) / 2, (a.y() + m.y()) / 2, (a.z() + m.z()) / 2);
    return writeCircle(middle, length(between(a, m)) / 2, centre, radius);
}

/// The sweep in space of an arc: `angle` between its radii, put on the right side of pi by
/// `beyond`, how much farther than the radius its arc point lies from the chord.
double sweepInSpace(double angle, double beyond)
{
    if (std::fabs(angle) < kNoAngle) return kTwoPi;
    if (beyond > kHalfCircleTolerance) return angle < kPi ? kTwoPi - angle : angle;
    if (beyond < -kHalfCircleTolerance) return angle > kPi ? kTwoPi - angle : angle;
    const bool backwards =
        std::fabs(beyond) < kHalfCircleTolerance && std::fabs(angle + kPi) < kNoAngle;
    return backwards ? kPi : angle;
}

}  // namespace

bool CGeometric::circleFrom3Points2d(const Point3DF& a, const Point3DF& b, const Point3DF& m,
                                     Point3DF& centre, double& radius)
{
    const Point3DF start = inPlan(a);
    const Point3DF end = inPlan(b);
    const Point3DF on = inPlan(m);
    if (endsMeetInPlan(start, end)) return writeMidpointCircle(start, on, centre, radius);
    if (areCollinear(start, end, on)) return false;
    CentreSystem system;
    if (!system.build(between(start, end), between(start, on))) return false;
    if (!system.centre->solve(system.coefficients.get())) return false;
    const Vec3 toCentre{system.solution().x, system.solution().y, 0.0};
    return writeCircle(moved(start, toCentre), length(toCentre), centre, radius);
}

bool CGeometric::circleFrom3Points3d(const Point3DF& a, const Point3DF& b, const Point3DF& m,
                                     Point3DF& centre, double& radius)
{
    if (endsMeetInPlan(a, b)) return writeMidpointCircle(a, m, centre, radius);
    if (areCollinear(a, b, m)) return false;
    CentreSystem system;
    const Vec3 chord = between(a, b);
    if (!system.build(chord, between(a, m))) return false;
    system.centre->solveInPlace(system.coefficients.get());
    const Vec3 toCentre = system.solution();
    const double off = dot(toCentre, chord) - dot(chord, chord) / 2;
    if (!(std::fabs(off) <= kOffCentreShare * length(toCentre) * length(chord))) return false;
    return writeCircle(moved(a, toCentre), length(toCentre), centre, radius);
}

bool CGeometric::segmentArcCircle2d(const PathRef& path, int i, Point3DF& centre, double& radius)
{
    const auto arc = arcSegment(path, i);
    return arc && circleFrom3Points2d(arc->a, arc->b, arc->m, centre, radius);
}

bool CGeometric::segmentArcCircle3d(const PathRef& path, int i, Point3DF& centre, double& radius)
{
    const auto arc = arcSegment(path, i);
    return arc && circleFrom3Points3d(arc->a, arc->b, arc->m, centre, radius);
}

bool CGeometric::segmentArcLength(const PathRef& path, int i, double& length)
{
    const auto arc = arcSegment(path, i);
    double scratch = 0.0;
    if (!arc || !segmentLength3d(path, i, scratch)) return false;

    const auto& [a, b, m] = *arc;
    Point3DF centre;
    double radius = 0.0;
    if (!circleFrom3Points3d(a, b, m, centre, radius)) return false;
    const PathRef toStart = segmentPath(centre, a);
    if (!toStart) return false;
    const PathRef toEnd = segmentPath(centre, b);
    if (!toEnd) return false;
    const PathRef chord = segmentPath(a, b);
    if (!chord) return false;
    double angle = 0.0;
    double height = 0.0;  // of the arc point over the chord
    angleBetweenSegments3d(toStart, 0, toEnd, 0, angle);
    pointDistToSegmentLine3d(chord, 0, m, height);

    const double total = sweepInSpace(angle, height - radius) * radius;
    if (!(total >= 0 && std::isfinite(total))) return false;
    length = total;
    return true;
}

bool CGeometric::arcTangentAtPoint(const PathRef& path, int i, const Point3DF& q, double& tx,
                                   double& ty)
{
    Point3DF centre;
    double radius = 0.0;
    if (!segmentArcCircle2d(path, i, centre, radius)) return false;
    const auto arc = arcSegment(path, i);
    if (!arc || !sameSideOfLine(arc->a, arc->b, arc->m, q)) return false;
    const double alongX = -(q.y() - centre.y());
    const double alongY = q.x() - centre.x();
    const double size = std::sqrt(alongX * alongX + alongY * alongY);
    if (!(size >= kAtCentre && std::isfinite(size))) return false;
    tx = alongX / size;
    ty = alongY / size;
    return true;
}

bool CGeometric::transformPoint3d(const Point3DF& p, MatrixRef m, Point3DF& result)
{
    if (!m || m->rowCount() != 4 || m->columnCount() != 4) return false;
    const auto column = createAuxiliary<geo::IMatrix>();
    if (!column) return false;
    const auto product = createAuxiliary<geo::IMatrix>();
    if (!product) return false;
    column->resize(4, 1);
    column->setValue(0, 0, p.x());
    column->setValue(1, 0, p.y());
    column->setValue(2, 0, p.z());
    column->setValue(3, 0, 1.0);
    product->resize(4, 1);
    product->multiply(product.get(), m.get(), column.get());
    const Point3DF image(product->value(0, 0), product->value(1, 0), product->value(2, 0));
    if (!isFinite(image)) return false;
    result = image;
    return true;
}
