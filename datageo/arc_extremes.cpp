// Arcs of IDataGeo: their circles, and their topmost, leftmost, lowest and rightmost points.
#include <cmath>
#include <utility>

#include "common/detail/arc_extremes.h"
#include "datageo/DataGeo.h"
#include "detail/exact_class.h"

namespace detail = calcora::detail;

namespace {

/// Bulge below which an edge has no extreme points and its pieces are straight.
constexpr double kStraightBulge = 1e-6;

/// Difference of positions below which the later of two neighbouring vertices goes.
constexpr double kSamePosition = 1e-6;

}  // namespace

void DataGeo::arcCenterFromBulge(const Point2DF& p1, const Point2DF& p2, double bulge,
                                 Point2DF& centre, double* radius)
{
    const detail::Circle circle = detail::bulgeArcCircle(*this, p1, p2, bulge);
    centre = circle.centre;
    if (radius) *radius = circle.radius;
}

double DataGeo::arcLengthFromCenter(const Point2DF& centre, double radius, const Point2DF& from,
                                    const Point2DF& to, bool clockwise)
{
    return radius * detail::sweepAbout(*this, centre, from, to, clockwise);
}

double DataGeo::arcPositionFraction(const Point2DF& point, const Point2DF& centre,
                                    const Point2DF& start, const Point2DF& end, bool clockwise)
{
    return detail::sweepFraction(*this, point, centre, start, end, clockwise);
}

void DataGeo::segmentArcExtremes(int index, const Point2DF& p1, const Point2DF& p2, double bulge,
                                 bool xExtremes, bool yExtremes, Points& outPoints,
                                 Values& outPositions)
{
    if (!(std::fabs(bulge) >= kStraightBulge)) return;
    const Point2DF start = p1;  // the outputs may hold the ends
    const Point2DF end = p2;
    const auto append = [&](detail::ArcExtreme side, const Point2DF& p, const auto& fractionOf) {
        const bool isTopOrBottom =
            side == detail::ArcExtreme::kTop || side == detail::ArcExtreme::kBottom;
        if (!(isTopOrBottom ? yExtremes : xExtremes)) return;
        // An arc whose directions agree has no sweep to place a point in, whatever side it is on.
        const double fraction = fractionOf(p);
        if (!(0 < fraction && fraction < 1)) return;
        outPoints.append(p);
        outPositions.append(index + fraction);
    };
    if (detail::isExactly(*this)) {
        detail::forEachPlainArcExtreme(
            start, end, bulge,
            [&](detail::ArcExtreme side, const Point2DF& p, const detail::PlainArcPlaces& places) {
                append(side, p, [&](const Point2DF& q) { return places.fraction(q); });
            });
        return;
    }
    detail::Circle circle;
    arcCenterFromBulge(start, end, bulge, circle.centre, &circle.radius);
    const auto fractionOf = [&](const Point2DF& p) {
        return arcPositionFraction(p, circle.centre, start, end, bulge < 0);
    };
    detail::forEachArcExtreme(circle, fractionOf,
                              [&](detail::ArcExtreme side, const Point2DF& p, double fraction) {
                                  append(side, p, [=](const Point2DF&) { return fraction; });
                              });
}

bool DataGeo::polylineArcExtremes(const Points& points, const Values& bulges, bool closed,
                                  bool xExtremes, bool yExtremes, Points& outPoints,
                                  Values& outPositions)
{
    const Points vertices = points;  // the outputs may be the inputs
    const Values arcs = bulges;
    const Points& at = vertices;
    const Values& bulge = arcs;
    const int n = at.size();
    if (n < 2) return false;
    const auto bulgeOf = [&](int i) { return i < bulge.size() ? bulge[i] : 0.0; };
    for (int i = 0; i + 1 < n; ++i)
        segmentArcExtremes(i, at[i], at[i + 1], bulgeOf(i), xExtremes, yExtremes, outPoints,
                           outPositions);
    if (closed)
        segmentArcExtremes(n - 1, at[n - 1], at[0], bulgeOf(n - 1), xExtremes, yExtremes, outPoints,
                           outPositions);
    return true;
}

void DataGeo::insertArcExtremes(Points points, Values bulges, bool closed, bool xExtremes,
                                bool yExtremes, Points& outPoints, Values& outBulges)
{
    bulges.resize(points.size());
    if (closed && !points.isEmpty()) {
        points.append(Point2DF(std::as_const(points).first()));
        bulges.append(0.0);
    }
    const int n = points.size();
    Points vertices = points;
    Values positions;
    Points extremes;
    polylineArcExtremes(points, bulges, closed, xExtremes, yExtremes, extremes, positions);
    if (!extremes.isEmpty()) {
        vertices.append(extremes);
        Values all;
        all.reserve(n + positions.size());
        for (int i = 0; i < n; ++i) all.append(i);
        all.append(positions);
        positions = std::move(all);
        sortPointsByKey(vertices, positions);
    }

    // Without extremes every vertex stays, and the positions are the vertices' numbers.
    const Points& sorted = vertices;
    const Values& at = positions;
    const auto positionOf = [&](int i) { return at.isEmpty() ? i : at[i]; };
    Points cut;
    Values cutBulges;
    cut.reserve(sorted.size());
    cutBulges.reserve(sorted.size());
    double last = 0;
    for (int i = 0; i < sorted.size(); ++i) {
        const double position = positionOf(i);
        if (i > 0) {
            if (position - positionOf(i - 1) < kSamePosition) continue;
            // An extreme just before a vertex has taken its place: the piece after it belongs to
            // the edge that starts there.
            const int edge = static_cast<int>(last + kSamePosition);
            const double bulge = std::as_const(bulges)[edge];
            cutBulges[cutBulges.size() - 1] = std::fabs(bulge) >= kStraightBulge
                                                  ? std::tan(std::atan(bulge) * (position - last))
                                                  : 0.0;
        }
        cut.append(sorted[i]);
        cutBulges.append(0.0);
        last = position;
    }
    outPoints = std::move(cut);
    outBulges = std::move(cutBulges);
}
