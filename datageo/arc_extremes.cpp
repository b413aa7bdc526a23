// Arcs of IDataGeo: their circles, and their topmost, leftmost, lowest and rightmost points.
#include <array>
#include <cmath>
#include <utility>

#include "common/detail/primitives.h"
#include "datageo/DataGeo.h"

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
    const double quarter = pointDistSquared(p1, p2) / 4;
    if (quarter == 0 && bulge != 0) {
        centre = p1;
        if (radius) *radius = 0;
        return;
    }
    const double sagittaSquared = quarter * bulge * bulge;
    const double sagitta = std::sqrt(sagittaSquared);
    const double arcRadius = (sagittaSquared + quarter) * 0.5 / sagitta;
    Point2DF found = detail::midpoint(p1, p2);
    if (bulge != 0) {
        const double chord = lineAngle(p1, p2);
        const double towardsCentre = bulge > 0 ? chord + detail::kPi / 2 : chord - detail::kPi / 2;
        polarPoint(found, towardsCentre, arcRadius - sagitta, found);
    }
    centre = found;
    if (radius) *radius = arcRadius;
}

double DataGeo::arcLengthFromCenter(const Point2DF& centre, double radius, const Point2DF& from,
                                    const Point2DF& to, bool clockwise)
{
    const double start = lineAngle(centre, from);
    const double end = lineAngle(centre, to);
    return radius * (clockwise ? detail::turnBetween(end, start) : detail::turnBetween(start, end));
}

double DataGeo::arcPositionFraction(const Point2DF& point, const Point2DF& centre,
                                    const Point2DF& start, const Point2DF& end, bool clockwise)
{
    const double from = lineAngle(centre, start);
    const double at = lineAngle(centre, point);
    const double to = lineAngle(centre, end);
    double turn = clockwise ? detail::turnBetween(at, from) : detail::turnBetween(from, at);
    const double sweep = clockwise ? detail::turnBetween(to, from) : detail::turnBetween(from, to);
    if (turn > sweep / 2 + detail::kPi) turn -= detail::kTwoPi;
    if (sweep == 0) return turn == 0 ? 0.0 : HUGE_VAL;
    return turn / sweep;
}

void DataGeo::segmentArcExtremes(int index, const Point2DF& p1, const Point2DF& p2, double bulge,
                                 bool xExtremes, bool yExtremes, Points& outPoints,
                                 Values& outPositions)
{
    if (!(std::fabs(bulge) >= kStraightBulge)) return;
    Point2DF centre;
    double radius = 0;
    arcCenterFromBulge(p1, p2, bulge, centre, &radius);
    struct Candidate {
        Point2DF point;
        bool wanted;
    };
    const std::array<Candidate, 4> candidates{{
        {{centre.x(), centre.y() + radius}, yExtremes},
        {{centre.x() - radius, centre.y()}, xExtremes},
        {{centre.x(), centre.y() - radius}, yExtremes},
        {{centre.x() + radius, centre.y()}, xExtremes},
    }};
    const Point2DF start = p1;  // the outputs may hold the ends
    const Point2DF end = p2;
    for (const Candidate& candidate : candidates) {
        if (!candidate.wanted) continue;
        const double t = arcPositionFraction(candidate.point, centre, start, end, bulge < 0);
        if (!(0 < t && t < 1)) continue;
        outPoints.append(candidate.point);
        outPositions.append(index + t);
    }
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
