// Cutting a ring's arcs at the extreme points of their circles.

#include "common/detail/ring_pieces.h"

#include <algorithm>
#include <utility>

#include "common/detail/arc_extremes.h"
#include "common/detail/bulges.h"

namespace calcora::detail {

namespace {

using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

/// Share of an edge within which an extreme of its arc and one of its ends are the same place.
constexpr double kSamePlace = 1e-6;

/// An edge of the ring before it is cut.
struct Edge {
    double bulge = 0.0;
    Circle circle;
};

/// The edge from `from` to `to`. The extremes of an arc join the lists of cut places, with the
/// edge's number plus the fraction as their place on the ring.
Edge examineEdge(IcommonFunc& geometry, int number, const Point2DF& from, const Point2DF& to,
                 double bulge, Points& cuts, Values& places)
{
    if (!(std::fabs(bulge) >= kStraightInRing) || from == to) return {};
    Edge edge{bulge, {}};
    geometry.bulgeArcCenter(from, to, bulge, edge.circle.centre, &edge.circle.radius);
    const auto fractionOf = [&](const Point2DF& point) {
        return geometry.arcSweepFraction(point, edge.circle.centre, from, to, bulge < 0);
    };
    forEachArcExtreme(edge.circle, fractionOf,
                      [&](ArcExtreme, const Point2DF& point, double fraction) {
                          if (fraction < kSamePlace || 1 - fraction < kSamePlace) return;
                          cuts.append(point);
                          places.append(number + fraction);
                      });
    return edge;
}

}  // namespace

std::vector<RingPiece> cutRingAtArcExtremes(IcommonFunc& geometry, const Points& ring,
                                            const Values& bulges, const Point2DF& origin)
{
    const int n = ring.size();
    Points points;
    Values places;
    points.reserve(n + 1);
    places.reserve(n + 1);
    for (int i = 0; i <= n; ++i) {
        points.append(ring[i < n ? i : 0] - origin);
        places.append(i);
    }

    std::vector<Edge> edges;
    edges.reserve(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        const Point2DF from = std::as_const(points)[i];
        const Point2DF to = std::as_const(points)[i + 1];
        edges.push_back(examineEdge(geometry, i, from, to, bulgeAt(bulges, i), points, places));
    }
    if (points.size() > n + 1) geometry.sortPointsByKey(points, places);

    std::vector<RingPiece> pieces;
    pieces.reserve(static_cast<std::size_t>(points.size()));
    const Point2DF* point = points.constData();
    const double* place = places.constData();
    for (int i = 0; i + 1 < std::min(points.size(), places.size()); ++i) {
        // The middle of the piece tells its edge: at its start rounding could name the one before.
        const double middle = (place[i] + place[i + 1]) / 2;
        if (!(middle >= 0 && middle < n)) continue;
        const Edge& edge = edges[static_cast<std::size_t>(middle)];
        const double share = place[i + 1] - place[i];
        pieces.push_back(
            {point[i], point[i + 1], std::tan(std::atan(edge.bulge) * share), edge.circle});
    }
    return pieces;
}

}  // namespace calcora::detail
