// Where an arc reaches the top, left, bottom or right of its circle.
#pragma once

#include "common/detail/arc.h"

namespace calcora::detail {

enum class ArcExtreme { kTop, kLeft, kBottom, kRight };

/// Calls visit(side, point, fraction) for each extreme point of the circle that lies strictly
/// inside an arc of it, in the order top, left, bottom, right. `fractionOf(point)` is the point's
/// place along the arc, 0 at its start and 1 at its end; not-a-number is outside.
template <class FractionOf, class Visit>
void forEachArcExtreme(const Circle& circle, FractionOf&& fractionOf, Visit&& visit)
{
    const double x = circle.centre.x();
    const double y = circle.centre.y();
    const double r = circle.radius;
    const auto offer = [&](ArcExtreme side, const Point2DF& point) {
        const double fraction = fractionOf(point);
        if (0 < fraction && fraction < 1) visit(side, point, fraction);
    };
    offer(ArcExtreme::kTop, {x, y + r});
    offer(ArcExtreme::kLeft, {x - r, y});
    offer(ArcExtreme::kBottom, {x, y - r});
    offer(ArcExtreme::kRight, {x + r, y});
}

/// Share of the radius, of the coordinates' size, and drawing units: from the chord on by which an
/// extreme is surely on its side of it, whatever rounding did.
inline constexpr double kSideOfRadius = 1e-6;
inline constexpr double kSideOfCoordinates = 1e-11;
inline constexpr double kSideAtLeast = 1e-9;

/// Squared drawing units: directions of shorter chords are too coarse for that.
inline constexpr double kShortestTellingChord = 1e-8;

/// The same where directions are those of an object that overrides nothing, for an arc given by its
/// bulge: visit(side, point, places) may ask `places.fraction(point)`. The chord parts the circle into
/// the arc and the rest, so its side mostly tells whether a point is inside, without an angle; and the
/// circle itself is computed only when a point near it is not surely outside.
template <class Visit>
void forEachPlainArcExtreme(const Point2DF& start, const Point2DF& end, double bulge, Visit&& visit)
{
    const Point2DF chord = end - start;
    const double chordSquared = lengthSquared(chord);
    const auto marginOf = [](const Point2DF& centre, double radius) {
        return kSideOfRadius * radius + kSideAtLeast +
               kSideOfCoordinates *
                   (std::fabs(centre.x()) + std::fabs(centre.y()) + std::fabs(radius));
    };
    const auto turnOf = [&](double x, double y) { return cross(chord, Point2DF(x, y) - start); };
    const bool isRight = bulge > 0;

    const Point2DF middle = 0.5 * (start + end);
    const Point2DF near = middle + (1 - bulge * bulge) / (4 * bulge) * leftNormal(chord);
    const double nearRadius =
        std::sqrt(chordSquared) * (1 + bulge * bulge) / (4 * std::fabs(bulge));
    const double nearMargin = marginOf(near, nearRadius);
    const bool tells = chordSquared >= kShortestTellingChord;
    const double nearClear = nearMargin * nearMargin * chordSquared;
    const auto isOutside = [&](double x, double y) {
        const double turn = turnOf(x, y);
        return tells && turn * turn > nearClear && (turn < 0) != isRight;
    };
    if (isOutside(near.x(), near.y() + nearRadius) && isOutside(near.x() - nearRadius, near.y()) &&
        isOutside(near.x(), near.y() - nearRadius) && isOutside(near.x() + nearRadius, near.y()))
        return;

    const Circle circle = plainArcCircle(start, end, bulge);
    const double x = circle.centre.x();
    const double y = circle.centre.y();
    const double r = circle.radius;
    const double margin = marginOf(circle.centre, r);
    const double clear = margin * margin * chordSquared;
    const PlainArcPlaces places(circle.centre, start, end, bulge < 0);
    const auto offer = [&](ArcExtreme side, const Point2DF& point) {
        const double turn = turnOf(point.x(), point.y());
        bool isInside = (turn < 0) == isRight;
        if (!(tells && turn * turn > clear)) {
            const double fraction = places.fraction(point);
            isInside = 0 < fraction && fraction < 1;
        }
        if (isInside) visit(side, point, places);
    };
    offer(ArcExtreme::kTop, {x, y + r});
    offer(ArcExtreme::kLeft, {x - r, y});
    offer(ArcExtreme::kBottom, {x, y - r});
    offer(ArcExtreme::kRight, {x + r, y});
}

}  // namespace calcora::detail
