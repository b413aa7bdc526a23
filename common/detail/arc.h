// The circle of an arc given by its chord and its bulge.
#pragma once

#include <limits>

#include "common/detail/primitives.h"

namespace calcora::detail {

struct Circle {
    Point2DF centre;
    double radius = 0.0;
};

// The next three rest on operations that IcommonFunc and IDataGeo both offer; `geometry` is whichever
// object is asked, so that what it overrides is seen.

/// Centre and radius of the arc from p1 to p2 with that bulge, the tangent of a quarter of its
/// sweep.
///
/// The sagitta is |bulge| times half the chord; the centre lies at radius - sagitta from the
/// chord's middle, to the left of p1 -> p2 for a positive bulge, to the right for a negative one. A
/// bulge of exactly 0 gives the chord's middle and a radius that is not finite. Coincident ends
/// with a bulge give that point and radius 0.
template <class Geometry>
Circle bulgeArcCircle(Geometry& geometry, const Point2DF& p1, const Point2DF& p2, double bulge)
{
    const Point2DF origin;
    const Point2DF chord = p2 - p1;
    const double halfChordSquared = geometry.pointDistSquared(origin, chord) / 4;
    if (halfChordSquared == 0 && bulge != 0) return {p1, 0.0};
    const double sagittaSquared = halfChordSquared * bulge * bulge;
    const double sagitta = std::sqrt(sagittaSquared);
    const double radius = (sagittaSquared + halfChordSquared) * 0.5 / sagitta;
    Point2DF toCentre = 0.5 * chord;
    if (bulge != 0) {
        const Point2DF middle = toCentre;
        const double chordAngle = geometry.lineAngle(origin, chord);
        const double quarterTurn = bulge < 0 ? -kPi / 2 : kPi / 2;
        geometry.polarPoint(middle, chordAngle + quarterTurn, radius - sagitta, toCentre);
    }
    return {p1 + toCentre, radius};
}

/// The turn about the centre from one direction to another in [0, 2 pi), in the sense asked for.
template <class Geometry>
double sweepAbout(Geometry& geometry, const Point2DF& centre, const Point2DF& from,
                  const Point2DF& to, bool clockwise)
{
    const double first = geometry.lineAngle(centre, from);
    const double last = geometry.lineAngle(centre, to);
    return clockwise ? turnBetween(last, first) : turnBetween(first, last);
}

/// Place of p along the arc from start to end as a fraction of its sweep. In the gap outside the
/// arc the nearer end decides: beyond the gap's middle p lies before the start. Start and end in one
/// direction: 0 for p in that direction too, otherwise infinity, which no range accepts.
template <class Geometry>
double sweepFraction(Geometry& geometry, const Point2DF& p, const Point2DF& centre,
                     const Point2DF& start, const Point2DF& end, bool clockwise)
{
    double turn = sweepAbout(geometry, centre, start, p, clockwise);
    const double sweep = sweepAbout(geometry, centre, start, end, clockwise);
    if (!(sweep > 0) || std::isnan(turn))
        return sweep == 0 && turn == 0 ? 0.0 : std::numeric_limits<double>::infinity();
    if (turn > sweep / 2 + kPi) turn -= kTwoPi;
    return turn / sweep;
}

/// Bulges below get the area beside their chord from the first terms of its series.
inline constexpr double kFlatForArea = 1e-3;

/// Area between an arc and its chord: the sector less the triangle, r^2 / 2 (sweep - |sin sweep|),
/// written in the chord and |bulge|, since differences of areas of size r^2 lose everything on flat
/// arcs.
inline double areaBesideChord(double chordSquared, double bulge)
{
    const double b = std::fabs(bulge);
    if (b < kFlatForArea) return b * chordSquared / 3 * (1 + b * b / 5);
    const double radiusPerChord = (1 / b + b) / 4;
    const double sweep = 4 * std::atan(b);
    return chordSquared * radiusPerChord * radiusPerChord / 2 *
           (sweep - std::fabs(std::sin(sweep)));
}

}  // namespace calcora::detail
