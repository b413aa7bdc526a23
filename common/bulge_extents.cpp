// Extents and sums of polylines with bulges, the parallel of a segment, the bulge of a radius.

#include <algorithm>
#include <cmath>

#include "common/commonFunc.h"
#include "common/detail/arc_extremes.h"
#include "common/detail/bulges.h"

namespace detail = calcora::detail;

namespace {

using tav::Point2DF;

/// Bulges below have the box of their chord.
constexpr double kStraightForExtents = 1e-6;
/// Bulges up to this do not make a list one with arcs.
constexpr double kNoBulge = 1e-6;

struct Box {
    Point2DF low, high;

    void include(const Box& other)
    {
        low = {std::min(low.x(), other.low.x()), std::min(low.y(), other.low.y())};
        high = {std::max(high.x(), other.high.x()), std::max(high.y(), other.high.y())};
    }
};

}  // namespace

bool commonFunc::hasPositiveBulgeArea(const Points& points, Values bulges)
{
    detail::padBulges(bulges, points.size());
    return bulgePolygonArea(points, bulges) > 0;
}

// With p1 as the origin. An extreme next to an end may lie a rounding step inside that end, so a
// side is only ever moved outwards.
void commonFunc::bulgeArcExtents(const Point2DF& p1, const Point2DF& p2, double bulge,
                                 Point2DF& minCorner, Point2DF& maxCorner)
{
    Box box{p1, p1};
    box.include({p2, p2});
    if (std::fabs(bulge) >= kStraightForExtents) {
        const Point2DF start;
        const Point2DF end = p2 - p1;
        detail::Circle circle;
        bulgeArcCenter(start, end, bulge, circle.centre, &circle.radius);
        const auto fractionOf = [&](const Point2DF& point) {
            return arcSweepFraction(point, circle.centre, start, end, bulge < 0);
        };
        forEachArcExtreme(
            circle, fractionOf, [&](detail::ArcExtreme side, const Point2DF& point, double) {
                const bool isTopOrBottom =
                    side == detail::ArcExtreme::kTop || side == detail::ArcExtreme::kBottom;
                const Point2DF at = p1 + point;
                const Point2DF reached =
                    isTopOrBottom ? Point2DF(p1.x(), at.y()) : Point2DF(at.x(), p1.y());
                box.include({reached, reached});
            });
    }
    minCorner = box.low;
    maxCorner = box.high;
}

void commonFunc::bulgePolylineExtents(const Points& points, Values bulges, bool closed,
                                      Point2DF& minCorner, Point2DF& maxCorner, double margin)
{
    const int n = points.size();
    if (n < 2) return;
    const auto boxOf = [&](int from, int to) {
        Box box;
        bulgeArcExtents(points[from], points[to], detail::bulgeAt(bulges, from), box.low, box.high);
        return box;
    };
    Box box = boxOf(0, 1);
    for (int i = 1; i + 1 < n; ++i) box.include(boxOf(i, i + 1));
    if (closed) box.include(boxOf(n - 1, 0));
    const Point2DF margins(margin, margin);
    minCorner = box.low - margins;
    maxCorner = box.high + margins;
}

void commonFunc::parallelSegment(Point2DF a, Point2DF b, Point2DF& outA, Point2DF& outB,
                                 double distance)
{
    const double leftwards = lineAngle(a, b) + detail::kPi / 2;
    Point2DF movedA;
    Point2DF movedB;
    polarPoint(a, leftwards, distance, movedA);
    polarPoint(b, leftwards, distance, movedB);
    outA = movedA;
    outB = movedB;
}

// The short arc's sagitta r - sqrt(r^2 - h^2) is written without the difference, of which nothing
// is left on flat arcs.
double commonFunc::bulgeFromRadius(Point2DF centre, Point2DF start, Point2DF end, double radius,
                                   bool clockwise)
{
    const double halfChord = pointDist(start, end) * 0.5;
    const double turn = detail::turnBetween(lineAngle(centre, start), lineAngle(centre, end));
    if (!(halfChord > 0) || !std::isfinite(halfChord) || !std::isfinite(turn)) return 0.0;
    double bulge = 1.0;
    if (!(halfChord >= radius)) {
        const double root = std::sqrt((radius - halfChord) * (radius + halfChord));
        const bool isLong = clockwise ? turn < detail::kPi : turn > detail::kPi;
        bulge = isLong ? (radius + root) / halfChord : halfChord / (radius + root);
        if (!std::isfinite(bulge)) return 0.0;
    }
    return clockwise ? -bulge : bulge;
}

double commonFunc::bulgeSegmentsLength(const Points& points, const Values& bulges)
{
    const int n = points.size();
    if (bulges.size() < n - 1) return 0.0;
    double length = 0.0;
    for (int i = 1; i < n; ++i)
        length += bulgeSegmentLength(points[i - 1], points[i], bulges[i - 1]);
    return length;
}

bool commonFunc::anyBulgeInLists(const ValueLists& bulgeLists)
{
    return std::any_of(bulgeLists.begin(), bulgeLists.end(),
                       [this](const Values& bulges) { return hasBulges(bulges); });
}

bool commonFunc::hasBulges(const Values& bulges)
{
    return std::any_of(bulges.begin(), bulges.end(),
                       [](double bulge) { return std::fabs(bulge) > kNoBulge; });
}
