// Circles from a centre or a diameter; the arc through three points by its ends and its middle.
#include <cmath>

#include "calcora/IGeometric.h"
#include "frame/detail/circumcentre.h"
#include "frame/detail/path_access.h"
#include "frame/detail/vec3.h"
#include "geosetup/CGeoSetUp.h"
#include "geosetup/detail/creation.h"

using namespace calcora::paths;

namespace {

/// Twice a triangle's area, in square drawing units, below which its points are collinear.
/// arcThrough3Points().
constexpr double kCollinearArea = 1e-6;

/// A path from p to q, through a new object offering I; empty when it could not be created, which
/// is reported with that line.
template <class I>
geo::PathRef pathBetween(const Vec3& p, const Vec3& q, CreationReport report)
{
    const auto created = createForSetUp<I>(report);
    const auto points = created.template query<geo::IPointCollection>();
    if (!points) return {};
    points->addPoint(toPoint(p));
    points->addPoint(toPoint(q));
    return points.template query<geo::IPath>();
}

bool samePlace(const tav::Point3DF& a, const tav::Point3DF& b)
{
    return a.x() == b.x() && a.y() == b.y();
}

/// The middle of the arc over the chord from the origin to u, on the side of the unit vector
/// `side`: the chord's middle raised by the sagitta, which for a minor arc is half the chord
/// squared by radius plus distance of the centre, so that flat arcs keep their digits.
Vec3 arcMiddle(const Vec3& u, const Vec3& side, const Vec3& centre, double radius)
{
    const Vec3 chordMiddle = u / 2;
    const double ahead = dot(centre - chordMiddle, side);
    const double sagitta =
        ahead >= 0 ? radius + ahead : dot(chordMiddle, chordMiddle) / (radius - ahead);
    return chordMiddle + sagitta * side;
}

/// The centre, told from the first point, of the circle through it, u and v in space. False when
/// a matrix could not be created or there is no circle.
bool centreInSpace(const Vec3& u, const Vec3& v, Vec3& centre)
{
    const auto coefficients = createForSetUp<geo::IMatrix>(kCoefficientsReport3d);
    if (!coefficients) return false;
    const auto solution = createForSetUp<geo::IMatrix>(kCentreReport3d);
    if (!solution) return false;
    const CentreEquations equations{*coefficients, *solution};
    equations.set(u, v);
    if (!solution->solve(coefficients.get())) return false;
    centre = equations.solution();
    return true;
}

}  // namespace

bool CGeoSetUp::arcThrough3Points3d(const Point3DF& a, const Point3DF& b, const Point3DF& c,
                                    Point3DF& start, Point3DF& end, Point3DF& middle)
{
    if (a == b || a == c || b == c || areCollinear(a, b, c)) return false;
    const Vec3 u = between(a, b);
    const Vec3 v = between(a, c);
    const geo::PathRef chord = pathBetween<geo::IPath>({}, u, kChordReport3d);
    if (!chord) return false;
    const auto geometric = createForSetUp<IGeometric>(kGeometricReport3d);
    if (!geometric) return false;
    Point3DF foot;
    if (!geometric->projectPointToSegmentLine3d(chord, 0, toPoint(v), foot)) return false;
    Vec3 centre;
    if (!centreInSpace(u, v, centre)) return false;

    const Vec3 acrossChord = between(foot, toPoint(v));
    const Vec3 side = acrossChord / length(acrossChord);
    const Point3DF found = moved(a, arcMiddle(u, side, centre, length(centre)));
    if (!isFinite(found)) return false;
    const Point3DF first = a;
    const Point3DF last = b;
    start = first;
    end = last;
    middle = found;
    return true;
}

bool CGeoSetUp::arcThrough3Points(const Point3DF& a, const Point3DF& b, const Point3DF& c,
                                  Point3DF& start, Point3DF& end, Point3DF& middle)
{
    if (samePlace(a, b) || samePlace(a, c) || samePlace(b, c)) return false;
    const auto geometric = createForSetUp<IGeometric>(kGeometricReport);
    if (!geometric) return false;
    const geo::PathRef chord =
        pathBetween<geo::IPointCollection>({}, planBetween(a, b), kChordReport);
    if (!chord) return false;
    double offset = 0.0;
    const Point3DF seenFromA = toPoint(planBetween(a, c));
    if (!geometric->pointOffsetFromSegmentLine2d(chord, 0, seenFromA, offset)) return false;

    // With c to the right of the chord the arc runs counter-clockwise from start to end.
    const Point3DF first = inPlan(offset > 0 ? b : a);
    const Point3DF last = inPlan(offset > 0 ? a : b);
    const Vec3 u = planBetween(first, last);
    const Vec3 v = planBetween(first, c);
    if (!(std::fabs(planCross(u, v)) >= kCollinearArea)) return false;
    const Vec3 centre = planCircumcentre(u, v);
    if (!isFinite(centre)) return false;
    const geo::PathRef startRadius = pathBetween<geo::IPath>(centre, {}, kStartRadiusReport);
    if (!startRadius) return false;
    const geo::PathRef endRadius = pathBetween<geo::IPath>(centre, u, kEndRadiusReport);
    if (!endRadius) return false;
    double radius = 0.0;
    if (!geometric->segmentLength3d(startRadius, 0, radius)) return false;

    const Vec3 toRight = Vec3{u.y, -u.x, 0.0} / length(u);
    const Point3DF found = inPlan(moved(first, arcMiddle(u, toRight, centre, radius)));
    if (!isFinite(found)) return false;
    start = first;
    end = last;
    middle = found;
    return true;
}

bool CGeoSetUp::circleOnDiameter(Point3DF& a, Point3DF& b, GeoCircle& out)
{
    a.setZ(0.0);
    b.setZ(0.0);
    const auto diameter = createForSetUp<geo::IPointCollection>(kDiameterReport);
    if (!diameter) return false;
    diameter->addPoint(a);
    diameter->addPoint(b);
    const auto geometric = createForSetUp<IGeometric>(kDiameterGeometricReport);
    if (!geometric) return false;
    double length = 0.0;
    if (!geometric->segmentLength3d(diameter.query<geo::IPath>(), 0, length)) return false;
    Point3DF centre((a.x() + b.x()) / 2, (a.y() + b.y()) / 2, 0.0);
    makeCircle(centre, length / 2, out);
    return true;
}

bool CGeoSetUp::makeCircle(Point3DF& centre, double radius, GeoCircle& out)
{
    if (!(radius > 0)) return false;
    centre.setZ(0.0);
    out.centre = centre;
    out.radius = radius;
    return true;
}
