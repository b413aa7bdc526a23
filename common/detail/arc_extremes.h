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

}  // namespace calcora::detail
