// Intersections with circles.

#include <algorithm>
#include <cmath>
#include <limits>

#include "common/commonFunc.h"
#include "common/detail/primitives.h"
#include "detail/exact_class.h"

using namespace calcora;
using detail::isFinite;
using detail::kPi;
using detail::leftNormal;
using tav::Point2DF;

namespace {

/// Drawing units: a line whose distance from the centre is this close to the radius touches.
/// intersectLineCircle()
constexpr double kLineTouchBand = 0.001;

/// Coefficients a, b of a line: a smaller one counts as zero. intersectLineCircleEq()
constexpr double kAxisCoefficient = 1e-10;
/// Discriminant, in the fourth power of the coefficients: a smaller one may mean a touching line.
constexpr double kTouchDiscriminant = 1e-10;
/// |r^2 - d^2| per max(1, r): only a line this close to touching does touch.
constexpr double kTouchReach = 1e-10;

/// Drawing units: slack of circles apart, one inside the other, touching. intersectCircles()
constexpr double kCirclesTouch = 1e-10;
/// Drawing units: differences of centres and radii below which two circles are one, and below
/// which the line of the centres is vertical. intersectCircles()
constexpr double kCirclesEqual = 1e-10;

/// Squared drawing units, between the centres of circles that are one. circleCircleIntersection()
constexpr double kSameCentreSquared = 1e-6;
/// Drawing units, between the radii of circles that are one. circleCircleIntersection()
constexpr double kSameRadius = 1e-6;
/// Drawing units: circles that overlap by less, seen from outside, touch.
/// circleCircleIntersection()
constexpr double kOuterTouchBand = 1e-6;
/// Per drawing unit of the largest quantity: what rounding may have moved apart.
/// circleCircleIntersection()
constexpr double kTouchRounding = 8 * std::numeric_limits<double>::epsilon();

/// The chord that two circles have in common, seen from the centre of the smaller one: from that of
/// a much larger one, rounding of its radius alone would move the chord's ends along the smaller.
/// `towards` is the unit vector from the first centre to the second. Circles that miss each other by
/// rounding have a chord without length.
struct CommonChord {
    Point2DF base;       ///< centre of the smaller circle
    Point2DF foot;       ///< from there to the chord's middle
    Point2DF halfChord;  ///< to the left of `towards`

    CommonChord(const Point2DF& c1, double r1, const Point2DF& c2, double r2,
                const Point2DF& towards, double distance)
    {
        const bool fromFirst = r1 <= r2;
        const double small = fromFirst ? r1 : r2;
        const double large = fromFirst ? r2 : r1;
        const double along =
            (small * small + (distance - large) * (distance + large)) / (2 * distance);
        base = fromFirst ? c1 : c2;
        foot = (fromFirst ? along : -along) * towards;
        halfChord =
            std::sqrt(std::max(0.0, (small - along) * (small + along))) * leftNormal(towards);
    }
    Point2DF left() const { return base + (foot + halfChord); }
    Point2DF right() const { return base + (foot - halfChord); }
};

/// Where an axis-parallel line at `offset` from the centre meets the circle: how many points, and
/// in `half` how far they lie to either side.
int axisParallelMeeting(double radius, double offset, double& half)
{
    const double radiusSquared = radius * radius;
    const double offsetSquared = offset * offset;
    half = 0.0;
    if (offsetSquared == radiusSquared) return std::isfinite(radiusSquared) ? 1 : 0;
    if (!(offsetSquared < radiusSquared) || !std::isfinite(radiusSquared)) return 0;
    half = std::sqrt((radius - offset) * (radius + offset));
    return 2;
}

}  // namespace

void commonFunc::intersectLineCircle(const Point2DF& centre, double radius, const Point2DF& p1,
                                     const Point2DF& p2, Point2DF& out1, Point2DF& out2)
{
    if (!(radius >= 0) || !std::isfinite(radius)) return;
    const Point2DF origin;
    const Point2DF from = p1 - centre;
    const Point2DF to = p2 - centre;
    const double distance = pointLineSignedDist(origin, from, to);
    const double angle = lineAngle(from, to);
    if (!std::isfinite(distance) || !std::isfinite(angle)) return;

    if (std::fabs(std::fabs(distance) - radius) < kLineTouchBand) {
        Point2DF touch;
        polarPoint(origin, distance > 0 ? angle + kPi / 2 : angle - kPi / 2, radius, touch);
        out1 = centre + touch;
    } else if (std::fabs(distance) <= radius) {
        const double halfSweep = std::acos(distance / radius);
        Point2DF first;
        Point2DF second;
        polarPoint(origin, angle + halfSweep + kPi / 2, radius, first);
        polarPoint(origin, angle - halfSweep + kPi / 2, radius, second);
        const Point2DF moved = centre;
        out1 = moved + first;
        out2 = moved + second;
    }
}

int commonFunc::intersectLineCircleEq(const Point2DF& centre, double radius, double a, double b,
                                      double c, Point2DF& out1, Point2DF& out2)
{
    // In the frame of the centre the line is a x + b y + offset = 0.
    const Point2DF moved = centre;
    const double offset = a * moved.x() + b * moved.y() + c;
    const bool slopes = std::fabs(a) >= kAxisCoefficient;
    const bool runs = std::fabs(b) >= kAxisCoefficient;
    int count = 0;
    Point2DF first;
    Point2DF second;
    if (slopes && runs) {
        const double normSquared = a * a + b * b;
        const double norm = std::sqrt(normSquared);
        const double distance = std::fabs(offset) / norm;
        const double size = std::fabs(radius);
        const double gap = (size - distance) * (size + distance);
        const double discriminant = a * a * normSquared * gap;
        const Point2DF foot(-offset * a / normSquared, -offset * b / normSquared);
        first = second = foot;
        if (std::fabs(discriminant) < kTouchDiscriminant &&
            std::fabs(gap) <= kTouchReach * std::max(1.0, size)) {
            count = 1;
        } else if (gap >= 0) {
            const double halfChord = std::sqrt(gap) / norm;
            const Point2DF upwards(a > 0 ? -b : b, std::fabs(a));
            first = foot + halfChord * upwards;
            second = foot - halfChord * upwards;
            count = 2;
        }
    } else if (runs) {
        const double y = -offset / b;
        double half = 0.0;
        count = axisParallelMeeting(radius, y, half);
        first = {half, y};
        second = {-half, y};
    } else if (slopes) {
        const double x = -offset / a;
        double half = 0.0;
        count = axisParallelMeeting(radius, x, half);
        first = {x, half};
        second = {x, -half};
    }
    first += moved;
    second += moved;
    // Half a chord is below 1e155, by which no coordinate overflows: then the second is finite, too.
    if (count == 0 || !isFinite(first)) return 0;
    out1 = first;
    if (count == 2) out2 = second;
    return count;
}

int commonFunc::intersectCircles(const Point2DF& c1, double r1, const Point2DF& c2, double r2,
                                 Point2DF& out1, Point2DF& out2)
{
    const Point2DF between = c2 - c1;
    const double distance = detail::length(between);
    const double outerGap = distance - r1 - r2;
    const double innerGap = std::fabs(r1 - r2) - distance;
    if (!(outerGap <= kCirclesTouch && innerGap <= kCirclesTouch)) return 0;
    const bool touchOutside = std::fabs(outerGap) < kCirclesTouch;
    const bool touchInside = std::fabs(innerGap) < kCirclesTouch;
    const bool isVertical = std::fabs(between.x()) < kCirclesEqual;
    if (isVertical && std::fabs(between.y()) < kCirclesEqual && std::fabs(r1 - r2) < kCirclesEqual)
        return -1;

    const Point2DF towards(between.x() / distance, between.y() / distance);
    CommonChord chord(c1, r1, c2, r2, towards, distance);
    if (touchOutside || touchInside) chord.halfChord = Point2DF();
    // The larger y first, on a vertical line of centres the larger x.
    const bool leftFirst = isVertical ? chord.halfChord.x() >= 0 : chord.halfChord.y() >= 0;
    const Point2DF first = leftFirst ? chord.left() : chord.right();
    const Point2DF second = leftFirst ? chord.right() : chord.left();
    if (!isFinite(first)) return 0;  // or the second is finite, too, as above
    out1 = first;
    out2 = second;
    return touchOutside ? 1 : 2;
}

int commonFunc::circleCircleIntersection(const Point2DF& c1, double r1, const Point2DF& c2,
                                         double r2, Point2DF& out1, Point2DF& out2)
{
    if (!(r1 >= 0 && r2 >= 0) || !std::isfinite(r1 + r2)) return 0;
    if (pointDistSquared(c1, c2) < kSameCentreSquared && std::fabs(r1 - r2) < kSameRadius)
        return -1;

    const Point2DF between = c2 - c1;
    // As the polar form gives it; it starts as that value, should the operation write nothing.
    double distance = detail::length(between);
    double direction = 0.0;
    if (!detail::isExactly(*this))
        polarFromCoordinates(0.0, 0.0, between.x(), between.y(), direction, distance);
    const double extent =
        std::max({std::fabs(c1.x()), std::fabs(c1.y()), std::fabs(c2.x()), std::fabs(c2.y())}) +
        r1 + r2;
    const double slack = kTouchRounding * extent;
    if (!(distance - (r1 + r2) <= slack && std::fabs(r1 - r2) - distance <= slack)) return 0;

    const bool touches = std::fabs(distance - r1 - r2) < kOuterTouchBand;
    const Point2DF towards(between.x() / distance, between.y() / distance);
    const CommonChord chord(c1, r1, c2, r2, towards, distance);
    const Point2DF first = touches ? c1 + r1 * towards : chord.left();
    const Point2DF second = chord.right();
    if (!isFinite(first) || !isFinite(second)) return 0;
    out1 = first;
    if (touches) return 1;
    out2 = second;
    return 2;
}
