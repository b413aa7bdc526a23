// The circle of an arc given by its chord and its bulge.
#pragma once

#include "common/detail/primitives.h"

namespace calcora::detail
{

struct Circle {
    Point2DF centre;
    double radius = 0.0;
};

/// Centre and radius of the arc from p1 to p2 with that bulge, the tangent of a quarter of its
/// sweep.
///
/// The sagitta is |bulge| times half the chord; the centre lies at radius - sagitta from the
/// chord's middle, to the left of p1 -> p2 for a positive bulge, to the right for a negative one. A
/// bulge of exactly 0 gives the chord's middle and a radius that is not finite. Coincident ends
/// with a bulge give that point and radius 0.
inline Circle bulgeArcCircle(const Point2DF& p1, const Point2DF& p2, double bulge)
{
    const double halfChordSquared = pointDistSquared(p1, p2) / 4;
    if (halfChordSquared == 0 && bulge != 0) return {p1, 0.0};
    const double sagittaSquared = halfChordSquared * bulge * bulge;
    const double sagitta = std::sqrt(sagittaSquared);
    const double radius = (sagittaSquared + halfChordSquared) * 0.5 / sagitta;
    const Point2DF middle = midpoint(p1, p2);
    if (bulge == 0) return {middle, radius};
    const double chordAngle = lineAngle(p1, p2);
    const double towardsCentre = bulge < 0 ? chordAngle - kPi / 2 : chordAngle + kPi / 2;
    return {polarPoint(middle, towardsCentre, radius - sagitta), radius};
}

}  // namespace calcora::detail
