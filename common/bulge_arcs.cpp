// Arcs given by a bulge: the tangent of a quarter of the arc's sweep, positive counter-clockwise.
//
// Every operation works with the arc's start as the origin and adds it back at the end, so that an
// arc in survey coordinates comes out as it would near the origin.

#include "common/commonFunc.h"
#include "common/detail/arc.h"

namespace detail = calcora::detail;

namespace {

using tav::Point2DF;

/// Bulges below are straight for lengths, places by distance and densifying.
constexpr double kStraightForLength = 1e-6;
/// Bulges below are straight for places by fraction.
constexpr double kStraightForRatio = 1e-10;
/// Bulges below enclose no area with their chord.
constexpr double kStraightForArea = 1e-12;
/// Bulges below are placed from the chord: their centre lies so far off that an angle about it
/// says little.
constexpr double kFlatForPlacing = 1e-3;
/// How far a fraction of an arc may lie outside [0, 1].
constexpr double kRatioSlack = 1e-6;
/// Drawing units: distances up to this are the start itself.
constexpr double kAtStart = 1e-6;
/// Square drawing units: three points with twice the triangle's area below are collinear.
constexpr double kCollinearForBulge = 1e-6;
/// Square drawing units: as above, with four times the area.
constexpr double kCollinearForCircle = 1e-10;
/// The most steps that densifying takes.
constexpr double kMaximumSteps = 1e6;

constexpr Point2DF kOrigin;

Point2DF planOf(const tav::Point3DF& p)
{
    return {p.x(), p.y()};
}

/// The place at fraction t of the arc from the origin to `chord`. The chord to it has the length
/// of the whole chord times sin(t sweep / 2) / sin(sweep / 2), and its direction turns from the
/// tangent at the start to the chord's: no centre, no cancellation.
Point2DF alongFlatArc(const Point2DF& chord, double bulge, double t)
{
    const double halfSweep = 2 * std::atan(bulge);
    const double scale = std::sin(t * halfSweep) / std::sin(halfSweep);
    const double turn = (t - 1) * halfSweep;
    const double c = std::cos(turn) * scale;
    const double s = std::sin(turn) * scale;
    return {chord.x() * c - chord.y() * s, chord.x() * s + chord.y() * c};
}

}  // namespace

tav::Point2DF commonFunc::arcMidPoint(const Point2DF& p1, const Point2DF& p2, double bulge)
{
    const Point2DF chord = p2 - p1;
    const double rise = std::sqrt(pointDistSquared(kOrigin, chord)) * bulge / 2;
    const double outwards = std::atan2(chord.y(), chord.x()) - detail::kPi / 2;
    Point2DF middle;
    polarPoint(0.5 * chord, outwards, rise, middle);
    return p1 + middle;
}

double commonFunc::bulgeFrom3Points(const Point2DF& start, const Point2DF& mid, const Point2DF& end)
{
    const Point2DF toMid = mid - start;
    const Point2DF toEnd = end - start;
    const double turn = orientation3(toMid, kOrigin, toEnd);
    if (!(std::fabs(turn) >= kCollinearForBulge)) return 0.0;
    Point2DF centre;
    double radius = 0.0;
    if (!circleFrom3Points(kOrigin, toMid, toEnd, centre, &radius)) return 0.0;
    const double sweep = sweepAngle(centre, kOrigin, toEnd);
    return turn < 0 ? std::tan(sweep / 4) : std::tan((sweep - detail::kTwoPi) / 4);
}

bool commonFunc::densifyArc3d(Point3DF p1, Point3DF p2, double bulge, double angleStep,
                              Points& outPoints, Values& outHeights)
{
    if (!(std::fabs(bulge) > kStraightForLength)) return false;
    const double wanted = std::trunc(std::fabs(4 * std::atan(bulge) / angleStep));
    if (!(wanted >= 1 && wanted <= kMaximumSteps)) return false;
    const Point2DF start = planOf(p1);
    const Point2DF end = planOf(p2);
    const double length = bulgeSegmentLength(start, end, bulge);
    if (!std::isfinite(length)) return false;

    const int steps = static_cast<int>(wanted);
    const double rise = (p2.z() - p1.z()) / steps;
    const double stride = length / steps;
    Point2DF sample = start;
    for (int k = 0; k <= steps; ++k) {
        pointOnBulgeSegmentAtDistance(start, end, bulge, k * stride, sample);
        outPoints.append(sample);
        outHeights.append(p1.z() + k * rise);
    }
    return true;
}

double commonFunc::bulgeSegmentArea(const Point2DF& p1, const Point2DF& p2, double bulge)
{
    if (!(std::fabs(bulge) >= kStraightForArea)) return 0.0;
    const double chordSquared = pointDistSquared(p1, p2);
    return chordSquared > 0 ? detail::areaBesideChord(chordSquared, bulge) : 0.0;
}

double commonFunc::bulgeSegmentLength(const Point2DF& p1, const Point2DF& p2, double bulge)
{
    if (!(std::fabs(bulge) >= kStraightForLength)) return std::sqrt(pointDistSquared(p1, p2));
    const Point2DF chord = p2 - p1;
    Point2DF centre;
    double radius = 0.0;
    bulgeArcCenter(kOrigin, chord, bulge, centre, &radius);
    return arcLength(centre, radius, kOrigin, chord, bulge < 0);
}

double commonFunc::arcSweepFraction(const Point2DF& p, const Point2DF& centre,
                                    const Point2DF& start, const Point2DF& end, bool clockwise)
{
    return detail::sweepFraction(*this, p, centre, start, end, clockwise);
}

void commonFunc::pointOnBulgeSegmentAtRatio(const Point2DF& p1, const Point2DF& p2, double bulge,
                                            double t, Point2DF& out)
{
    if (!(-kRatioSlack <= t && t <= 1.000001)) return;
    const Point2DF chord = p2 - p1;
    if (!(std::fabs(bulge) >= kStraightForRatio)) {
        out = p1 + t * chord;
        return;
    }
    Point2DF place;
    if (std::fabs(bulge) < kFlatForPlacing) {
        place = alongFlatArc(chord, bulge, t);
    } else {
        Point2DF centre;
        double radius = 0.0;
        bulgeArcCenter(kOrigin, chord, bulge, centre, &radius);
        const double from = lineAngle(centre, kOrigin);
        const double to = lineAngle(centre, chord);
        const double angle = bulge > 0
                                 ? from + t * std::fmod(to + detail::kTwoPi - from, detail::kTwoPi)
                                 : from - t * std::fmod(from + detail::kTwoPi - to, detail::kTwoPi);
        polarPoint(centre, angle, radius, place);
    }
    out = p1 + place;
}

void commonFunc::pointOnBulgeSegmentAtDistance(const Point2DF& p1, const Point2DF& p2, double bulge,
                                               double distance, Point2DF& out)
{
    if (std::fabs(distance) <= kAtStart) {
        out = p1;
        return;
    }
    const Point2DF chord = p2 - p1;
    const double length = bulgeSegmentLength(kOrigin, chord, bulge);
    if (!(distance <= length)) return;
    const double t = distance / length;
    if (!std::isfinite(t)) return;

    Point2DF place;
    if (!(std::fabs(bulge) >= kStraightForLength)) {
        place = t * chord;
    } else if (std::fabs(bulge) < kFlatForPlacing) {
        place = alongFlatArc(chord, bulge, t);
    } else {
        Point2DF centre;
        double radius = 0.0;
        bulgeArcCenter(kOrigin, chord, bulge, centre, &radius);
        const double from = lineAngle(centre, kOrigin);
        const double to = lineAngle(centre, chord);
        const double angle = bulge > 0 ? from + detail::turnBetween(from, to) * t
                                       : from - detail::turnBetween(to, from) * t;
        polarPoint(centre, angle, radius, place);
    }
    out = p1 + place;
}

double commonFunc::arcLength(const Point2DF& centre, double radius, const Point2DF& from,
                             const Point2DF& to, bool clockwise)
{
    return radius * detail::sweepAbout(*this, centre, from, to, clockwise);
}

void commonFunc::bulgeArcCenter(const Point2DF& p1, const Point2DF& p2, double bulge,
                                Point2DF& centre, double* radius)
{
    const detail::Circle circle = detail::bulgeArcCircle(*this, p1, p2, bulge);
    centre = circle.centre;
    if (radius) *radius = circle.radius;
}

// Cramer's rule on the perpendicular bisectors, with p1 as the origin.
bool commonFunc::circleFrom3Points(const Point2DF& p1, const Point2DF& p2, const Point2DF& p3,
                                   Point2DF& centre, double* radius)
{
    const Point2DF u = p2 - p1;
    const Point2DF v = p3 - p1;
    const double determinant = 2 * detail::cross(u, p3 - p2);
    if (!(std::fabs(determinant) >= kCollinearForCircle)) return false;
    const double uu = detail::lengthSquared(u);
    const double vv = detail::lengthSquared(v);
    const Point2DF toCentre{(v.y() * uu - u.y() * vv) / determinant,
                            (u.x() * vv - v.x() * uu) / determinant};
    if (!detail::isFinite(toCentre)) return false;
    const double circleRadius = std::sqrt(pointDistSquared(kOrigin, toCentre));
    centre = p1 + toCentre;
    if (radius) *radius = circleRadius;
    return true;
}
