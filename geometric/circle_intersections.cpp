// Where two circles meet in plan.
#include <algorithm>
#include <cmath>

#include "frame/detail/vec3.h"
#include "geometric/CGeometric.h"
#include "geometric/detail/auxiliary.h"

using namespace calcora::paths;

namespace {

/// Drawing units: centres and radii nearer than this are the same. intersectCircles().
constexpr double kSameCircle = 1e-6;

/// Drawing units: circles this near to touching touch. intersectCircles().
constexpr double kTouching = 1e-6;

constexpr short kCoincide = 3;
constexpr short kInvalid = -1;

/// Two circles in plan, told from the first centre.
struct CirclePair {
    Vec3 toSecond;
    double distance;
    double r1;
    double r2;

    double larger() const { return std::max(r1, r2); }
    double smaller() const { return std::min(r1, r2); }
    bool touchFromOutside() const
    {
        return std::fabs(distance - (r1 + r2)) < kTouching && distance > 0;
    }
    /// Holds only where the larger radius is at least twice the smaller.
    bool touchFromInside() const
    {
        return std::fabs(distance - (larger() - smaller())) < kTouching &&
               distance - larger() <= kTouching && distance - smaller() >= -kTouching &&
               larger() - smaller() >= kTouching;
    }
    bool cross() const { return distance <= r1 + r2 && distance > larger() - smaller(); }

    /// From the first centre to the point where one circle touches the other from inside.
    Vec3 innerTouch() const
    {
        if (r1 > r2) return (r1 / (r1 - r2)) * toSecond;
        return toSecond - (r2 / (r2 - r1)) * toSecond;
    }

    /// Half the angle that the intersections span at the first centre, taken on the second one's
    /// side; the height of the triangle of both centres and a point is twice its area by the base.
    double halfSpan() const
    {
        const double s = (r1 + r2 + distance) * 0.5;
        const double squaredSides = std::max(0.0, (s - r1) * (s - r2));
        const double squaredBase = std::max(0.0, s * (s - distance));
        const double height = 2 * std::sqrt(squaredSides) * std::sqrt(squaredBase) / distance;
        const double along = (distance + (r1 - r2) * ((r1 + r2) / distance)) / 2;
        return std::atan2(height, std::fabs(along));
    }
};

bool concentric(const tav::Point3DF& c1, const tav::Point3DF& c2)
{
    return std::fabs(c1.x() - c2.x()) < kSameCircle && std::fabs(c1.y() - c2.y()) < kSameCircle &&
           std::fabs(c1.z() - c2.z()) < kSameCircle;
}

tav::Point3DF polar(const tav::Point3DF& centre, double angle, double radius)
{
    return {centre.x() + std::cos(angle) * radius, centre.y() + std::sin(angle) * radius, 0.0};
}

/// The direction from c1 to c2 as the path {c1, c2} gives it; false when that path could not be
/// made.
bool directionOfCentres(IGeometric& self, const tav::Point3DF& c1, const tav::Point3DF& c2,
                        double& direction)
{
    const auto path = createAuxiliary<geo::IPath>();
    const auto points = path.query<geo::IPointCollection>();
    if (!points) return false;
    points->addPoint(inPlan(c1));
    points->addPoint(inPlan(c2));
    direction = 0.0;
    self.segmentDirectionAngle2d(path, 0, direction);
    return true;
}

}  // namespace

short CGeometric::intersectCircles(const Point3DF& c1, double r1, const Point3DF& c2, double r2,
                                   Point3DF& p1, Point3DF& p2)
{
    if (!isFinite(c1) || !isFinite(c2) || !std::isfinite(r1) || !std::isfinite(r2)) return kInvalid;
    const bool sameCentre = concentric(c1, c2);
    if (sameCentre && std::fabs(r1 - r2) < kSameCircle) return kCoincide;
    if (!(r1 > 0) || !(r2 > 0) || sameCentre) return kInvalid;

    const Vec3 toSecond = planBetween(c1, c2);
    const CirclePair pair{toSecond, length(toSecond), r1, r2};
    if (!std::isfinite(pair.distance) || !std::isfinite(r1 + r2)) return kInvalid;
    Point3DF first;
    Point3DF second;
    short count = 0;
    if (pair.touchFromOutside()) {
        first = inPlan(moved(c1, (r1 / pair.distance) * toSecond));
        count = 1;
    } else if (pair.touchFromInside()) {
        first = inPlan(moved(c1, pair.innerTouch()));
        count = 1;
    } else if (pair.cross()) {
        double direction = 0.0;
        if (!directionOfCentres(*this, c1, c2, direction)) return kInvalid;
        const double span = pair.halfSpan();
        first = polar(c1, direction - span, r1);
        second = polar(c1, direction + span, r1);
        count = 2;
    }
    if (!isFinite(first) || !isFinite(second)) return kInvalid;
    p1 = first;
    p2 = second;
    return count;
}
