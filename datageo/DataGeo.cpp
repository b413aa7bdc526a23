// Lengths, areas and point location of IDataGeo.
#include "datageo/DataGeo.h"

#include <cmath>
#include <utility>

#include "common/commonFunc.h"
#include "common/detail/arc.h"
#include "common/detail/ring_measure.h"
#include "common/detail/ring_pieces.h"
#include "common/detail/sort_points.h"
#include "datageo/autob/CAutoLoop.h"
#include "detail/exact_class.h"
#include "tavrel/NormalObject.h"

namespace detail = calcora::detail;

namespace {

/// Bulge below which a segment is measured along its chord.
constexpr double kStraightLengthBulge = 1e-6;

/// Bulge below which chord and arc enclose nothing.
constexpr double kStraightAreaBulge = 1e-12;

/// Squared distance from which a ring's ends count as apart.
constexpr double kOpenRingSquared = 1e-12;

/// Squared length below which an edge has no boundary of its own.
constexpr double kShortEdgeSquared = 1e-7;

/// Bulge below which an edge is crossed as a straight one.
constexpr double kStraightCrossingBulge = 1e-12;

/// signedBulgeArea of a ring without arcs.
double straightRingArea(const IDataGeo::Points& points)
{
    const tav::Point2DF* vertex = points.constData();
    const int n = points.size();
    double area = 0;
    tav::Point2DF previous;  // relative to the first point
    for (int i = 1; i <= n; ++i) {
        const tav::Point2DF next = vertex[i < n ? i : 0] - vertex[0];
        area += (previous.x() + next.x()) / 2 * (previous.y() - next.y());
        previous = next;
    }
    return area;
}

}  // namespace

DataGeo::DataGeo(unsigned /*capacity*/) {}

double DataGeo::pointDistSquared(const Point2DF& a, const Point2DF& b)
{
    return detail::pointDistSquared(a, b);
}

void DataGeo::reverseDoubleList(Values& values)
{
    detail::reverseValues(values);
}

void DataGeo::reversePointList(Points& points)
{
    detail::reversePoints(points);
}

void DataGeo::polarPoint(const Point2DF& base, double angle, double distance, Point2DF& out)
{
    out = detail::polarPoint(base, angle, distance);
}

double DataGeo::pointDist(const Point2DF& a, const Point2DF& b)
{
    return std::sqrt(pointDistSquared(a, b));
}

double DataGeo::lineAngle(const Point2DF& from, const Point2DF& to)
{
    return detail::lineAngle(from, to);
}

void DataGeo::sortPointsByKey(Points& points, Values& keys)
{
    detail::sortPointsByKey(points, keys);
}

double DataGeo::polylineLengthWithBulges(const Points& points, const Values& bulges, bool closed)
{
    const int n = points.size();
    if (n < 2 || bulges.size() != n) return -1.0;
    double length = 0;
    for (int i = 0; i + 1 < n; ++i)
        length += segmentLengthWithBulge(points[i], points[i + 1], bulges[i]);
    if (closed) length += segmentLengthWithBulge(points[n - 1], points[0], bulges[n - 1]);
    return length;
}

double DataGeo::segmentLengthWithBulge(const Point2DF& p1, const Point2DF& p2, double bulge)
{
    if (!(std::fabs(bulge) >= kStraightLengthBulge)) return std::sqrt(pointDistSquared(p1, p2));
    Point2DF centre;
    double radius = 0;
    arcCenterFromBulge(p1, p2, bulge, centre, &radius);
    return arcLengthFromCenter(centre, radius, p1, p2, bulge < 0);
}

double DataGeo::bulgeChordArea(const Point2DF& p1, const Point2DF& p2, double bulge)
{
    if (!(std::fabs(bulge) >= kStraightAreaBulge)) return 0.0;
    return detail::areaBesideChord(pointDistSquared(p1, p2), bulge);
}

double DataGeo::polygonAreaAbs(const Points& polygon)
{
    const int n = polygon.size();
    if (n < 2) return 0.0;
    const Point2DF& origin = polygon.first();
    double sum = 0;
    Point2DF previous;  // relative to the first point
    for (int i = 1; i <= n; ++i) {
        const Point2DF p = i < n ? polygon[i] - origin : Point2DF();
        sum += (previous.x() + p.x()) * 0.5 * (previous.y() - p.y());
        previous = p;
    }
    return std::fabs(sum);
}

/// Signed area of a closed polyline with arcs, positive when it runs clockwise (x right, y up).
double DataGeo::signedBulgeArea(const Points& points, const Values& bulges)
{
    detail::RingMeasure measure(false);
    return signedBulgeArea(points, bulges, measure);
}

double DataGeo::signedBulgeArea(const Points& points, const Values& bulges,
                                detail::RingMeasure& measure)
{
    if (detail::isExactly(*this) && !points.isEmpty()) {
        if (detail::isStraightRing(points, bulges)) return straightRingArea(points);
        if (const auto area = measure.signedArea(points.constData(), points.size(),
                                                 bulges.constData(), bulges.size()))
            return *area;
    }
    Points ring;
    Values ringBulges;
    insertArcExtremes(points, bulges, true, false, true, ring, ringBulges);
    if (ring.isEmpty()) return 0.0;
    const Point2DF origin = std::as_const(ring).first();
    if (pointDistSquared(origin, std::as_const(ring).last()) > kOpenRingSquared) {
        ring.append(origin);
        ringBulges.append(0.0);
    }
    double area = 0;
    Point2DF previous;  // relative to the first point
    const Points& vertices = ring;
    const Values& pieces = ringBulges;
    for (int i = 0; i + 1 < vertices.size(); ++i) {
        const Point2DF next = vertices[i + 1] - origin;
        const double segment = bulgeChordArea(previous, next, pieces[i]);
        area += (previous.x() + next.x()) / 2 * (previous.y() - next.y()) -
                (pieces[i] < 0 ? -segment : segment);
        previous = next;
    }
    return area;
}

int DataGeo::pointInPolygon(const Points& polygon, double x, double y)
{
    return AutoB::CAutoLoop::pointInPolygon(polygon, x, y);
}

int DataGeo::pointInBulgePolygon(Points& points, Values& bulges, Point2DF point)
{
    if (points.isEmpty()) return -2;
    commonFunc geometry(tav::kObjectCapacity);
    if (signedBulgeArea(points, bulges) < 0) {
        reversePointList(points);
        bulges.resize(points.size());  // the list follows its points, missing bulges are straight
        geometry.reverseBulges(bulges);
    }
    Points refined;
    Values refinedBulges;
    insertArcExtremes(points, bulges, true, true, true, refined, refinedBulges);
    const int n = refined.size();
    if (n < 2) return -2;
    // An extreme that replaced the closing vertex differs from it by rounding: close the seam.
    if (std::as_const(refined).first() != std::as_const(refined).last())
        refined[n - 1] = std::as_const(refined).first();

    const Points& ring = refined;
    const Values& pieces = refinedBulges;
    bool inside = false;
    for (int i = 0, j = n - 1; i < n; j = i++) {
        const Point2DF& from = ring[j];
        const Point2DF& to = ring[i];
        const bool isShort = pointDistSquared(from, to) < kShortEdgeSquared;
        Point2DF centre;
        double radius = 0;
        if (!isShort && geometry.isPointOnBulgeSegment(point, from, to, pieces[j], centre, &radius))
            return 0;
        const double bulge = isShort ? 0.0 : pieces[j];
        if (crossesRay(from, to, bulge, point)) inside = !inside;
    }
    return inside ? -1 : 1;
}

/// Whether the ray from `point` towards larger x crosses the edge, which rises or falls
/// monotonically in x and y. An edge owns its lower end.
bool DataGeo::crossesRay(const Point2DF& from, const Point2DF& to, double bulge,
                         const Point2DF& point)
{
    const double x = point.x();
    const double y = point.y();
    if (!((from.y() <= y && y < to.y()) || (to.y() <= y && y < from.y()))) return false;
    if (!(std::fabs(bulge) >= kStraightCrossingBulge))
        return x < (from.x() - to.x()) * (y - to.y()) / (from.y() - to.y()) + to.x();
    if (x > from.x() && x > to.x()) return false;
    if (x < from.x() && x < to.x()) return true;
    Point2DF centre;
    double radius = 0;
    arcCenterFromBulge(from, to, bulge, centre, &radius);
    const double distance = pointDist(centre, point);
    if (from.y() <= to.y())
        return (bulge < 0 && distance > radius) || (bulge > 0 && distance < radius);
    return (bulge < 0 && distance < radius) || (bulge > 0 && distance > radius);
}
