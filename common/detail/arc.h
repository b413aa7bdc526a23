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

/// A turn from an arc's start as a fraction of its sweep, both in [0, 2 pi). In the gap outside the
/// arc the nearer end decides: beyond the gap's middle a point lies before the start. Start and end in
/// one direction: 0 for a point in that direction too, otherwise infinity, which no range accepts.
inline double fractionOfSweep(double turn, double sweep)
{
    if (!(sweep > 0) || std::isnan(turn))
        return sweep == 0 && turn == 0 ? 0.0 : std::numeric_limits<double>::infinity();
    if (turn > sweep / 2 + kPi) turn -= kTwoPi;
    return turn / sweep;
}

/// Place of p along the arc from start to end as a fraction of its sweep.
template <class Geometry>
double sweepFraction(Geometry& geometry, const Point2DF& p, const Point2DF& centre,
                     const Point2DF& start, const Point2DF& end, bool clockwise)
{
    const double turn = sweepAbout(geometry, centre, start, p, clockwise);
    return fractionOfSweep(turn, sweepAbout(geometry, centre, start, end, clockwise));
}

/// The directions and points that the above ask for, of an object that overrides nothing.
struct PlainDirections {
    static double pointDistSquared(const Point2DF& a, const Point2DF& b)
    {
        return detail::pointDistSquared(a, b);
    }
    static double lineAngle(const Point2DF& from, const Point2DF& to)
    {
        return detail::lineAngle(from, to);
    }
    static void polarPoint(const Point2DF& base, double angle, double distance, Point2DF& out)
    {
        out = detail::polarPoint(base, angle, distance);
    }
};

/// bulgeArcCircle() of an object that overrides nothing.
inline Circle plainArcCircle(const Point2DF& p1, const Point2DF& p2, double bulge)
{
    PlainDirections directions;
    return bulgeArcCircle(directions, p1, p2, bulge);
}

/// Places along an arc, as sweepFraction() has them for an object that overrides nothing; the
/// directions of both ends are computed once, when first asked for.
class PlainArcPlaces {
public:
    PlainArcPlaces() = default;
    PlainArcPlaces(const Point2DF& centre, const Point2DF& start, const Point2DF& end,
                   bool clockwise)
        : centre_(centre), start_(start), end_(end), isClockwise_(clockwise)
    {
    }

    double sweep() const
    {
        if (!areEndsMeasured_) {
            startAngle_ = lineAngle(centre_, start_);
            sweep_ = turnTo(lineAngle(centre_, end_));
            areEndsMeasured_ = true;
        }
        return sweep_;
    }
    double fraction(const Point2DF& p) const
    {
        const double whole = sweep();
        return fractionOfSweep(turnTo(lineAngle(centre_, p)), whole);
    }

private:
    double turnTo(double angle) const
    {
        return isClockwise_ ? turnBetween(angle, startAngle_) : turnBetween(startAngle_, angle);
    }

    Point2DF centre_, start_, end_;
    bool isClockwise_ = false;
    mutable bool areEndsMeasured_ = false;
    mutable double startAngle_ = 0.0;
    mutable double sweep_ = 0.0;
};

/// Bulges below get the area beside their chord from the first terms of its series.
inline constexpr double kFlatForArea = 1e-3;

/// Area between an arc and its chord: the sector less the triangle, r^2 / 2 (sweep - |sin sweep|),
/// written in the chord and |bulge|, since differences of areas of size r^2 lose everything on flat
/// arcs. What rests on the bulge alone is kept, to be used for several chords.
struct BesideChord {
    double size;  ///< |bulge|
    double radiusPerChord = 0.0;
    double segment = 0.0;  ///< of the circle of radius 1, doubled

    explicit BesideChord(double bulge) : size(std::fabs(bulge))
    {
        if (size < kFlatForArea) return;
        radiusPerChord = (1 / size + size) / 4;
        const double sweep = 4 * std::atan(size);
        segment = sweep - std::fabs(std::sin(sweep));
    }
    double area(double chordSquared) const
    {
        if (size < kFlatForArea) return size * chordSquared / 3 * (1 + size * size / 5);
        return chordSquared * radiusPerChord * radiusPerChord / 2 * segment;
    }
};

inline double areaBesideChord(double chordSquared, double bulge)
{
    return BesideChord(bulge).area(chordSquared);
}

}  // namespace calcora::detail
