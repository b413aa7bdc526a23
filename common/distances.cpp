// Distances and nearest points.

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/bulges.h"
#include "common/detail/plain_functions.h"
#include "common/detail/primitives.h"
#include "common/detail/vertex_boxes.h"

using namespace calcora;
using detail::bulgeAt;
using detail::cross;
using detail::length;
using detail::lengthSquared;
using tav::Point2DF;

namespace {

/// |bulge|: a segment with a smaller one is measured along its chord.
constexpr double kStraightBulgeForDistance = 1e-6;

/// Up to this many vertices a polyline is walked plainly.
constexpr int kFewVertices = 2 * detail::kEdgesInBox;

/// A segment and the asked point p, seen from the end that is nearer to p (from b on ties).
struct NearerEndView {
    Point2DF along;    ///< from the nearer end to the other
    Point2DF toPoint;  ///< from the nearer end to p
    bool fromStart;    ///< the nearer end is a
};

NearerEndView viewFromNearerEnd(const Point2DF& p, const Point2DF& a, const Point2DF& b)
{
    if (detail::pointDistSquared(p, b) > detail::pointDistSquared(p, a))
        return {b - a, p - a, true};
    return {a - b, p - b, false};
}

/// Squared distance from the head of `toPoint` to the line through the origin along `along`. As a
/// cross product it is never negative, which |toPoint|^2 - (projection)^2 would be by rounding.
double lineDistSquared(const Point2DF& along, const Point2DF& toPoint, double alongSquared)
{
    const double area = cross(along, toPoint);
    const double areaSquared = area * area;
    const bool isInRange = areaSquared > 0 && std::isfinite(areaSquared);
    return isInRange ? areaSquared / alongSquared : area * (area / alongSquared);
}

/// The nearest place found so far on a figure.
struct Nearest {
    bool found = false;
    double distanceSquared = 0.0;
    Point2DF point;
    int index = 0;
    double fraction = 0.0;

    /// Strictly nearer, so that the first edge wins ties. A distance that is not a number never is.
    bool isImprovedBy(double candidate) const
    {
        return found ? candidate < distanceSquared : !std::isnan(candidate);
    }
    void take(double candidate, const Point2DF& at, int edge, double alongEdge)
    {
        *this = {true, candidate, at, edge, alongEdge};
    }
    void writePlace(int* outIndex, double* outParam) const
    {
        if (!found) return;
        if (outIndex) *outIndex = index;
        if (outParam) *outParam = index + fraction;
    }
};

/// Looks at the stretch of the polyline whose box is nearest to p, then at those that may come
/// nearer than what has been found; each once.
template <class LookAt>
void visitByNearness(const Point2DF* vertex, int n, const Point2DF& p, const Nearest& best,
                     LookAt&& lookAt)
{
    std::vector<double> atLeast;
    atLeast.reserve(static_cast<std::size_t>(n / detail::kEdgesInBox + 1));
    const auto lastOf = [n](int first) { return std::min(first + detail::kEdgesInBox, n - 1); };
    for (int first = 0; first + 1 < n; first = lastOf(first))
        atLeast.push_back(
            detail::computedDistanceAtLeast(detail::boxOf(vertex, first, lastOf(first)), p));
    const auto nearest = std::min_element(atLeast.begin(), atLeast.end()) - atLeast.begin();
    const int start = static_cast<int>(nearest) * detail::kEdgesInBox;
    lookAt(start, lastOf(start));
    const double* bound = atLeast.data();
    for (int first = 0; first + 1 < n; first = lastOf(first), ++bound) {
        const bool isBeyond = best.found && *bound > 0 && *bound * *bound > best.distanceSquared;
        if (first != start && !isBeyond) lookAt(first, lastOf(first));
    }
}

bool hasNoLength(const Point2DF& a, const Point2DF& b)
{
    return detail::pointDistSquared(a, b) == 0;
}

/// An arc as the asked point sees it: the asked point is the origin.
struct ArcView {
    Point2DF start, end, centre;
    double radius = 0.0;
    double direction = 0.0;  ///< of the asked point from the centre
    bool isBeside = false;   ///< that direction lies within the arc, its ends included
    bool endIsNearer = false;
    double distanceSquared = 0.0;  ///< not a number for an arc without a proper circle
};

ArcView viewArc(IcommonFunc& common, const Point2DF& p, const Point2DF& a, const Point2DF& b,
                double bulge)
{
    ArcView arc;
    arc.start = a - p;
    arc.end = b - p;
    common.bulgeArcCenter(arc.start, arc.end, bulge, arc.centre, &arc.radius);
    arc.direction = common.lineAngle(arc.centre, Point2DF());
    double from = common.lineAngle(arc.centre, arc.start);
    double to = common.lineAngle(arc.centre, arc.end);
    if (bulge < 0) std::swap(from, to);

    const bool inRange = from <= to ? from <= arc.direction && arc.direction <= to
                                    : from <= arc.direction || arc.direction <= to;
    // Beyond a half circle a short turn between the ends is a whole circle but for rounding.
    const bool isWhole = std::fabs(bulge) > 1 && detail::turnBetween(from, to) < 1;
    arc.isBeside = inRange || isWhole;

    arc.endIsNearer = lengthSquared(arc.end) < lengthSquared(arc.start);
    const double offCircle = length(arc.centre) - arc.radius;
    if (!std::isfinite(offCircle))
        arc.distanceSquared = std::numeric_limits<double>::quiet_NaN();
    else if (arc.isBeside)
        arc.distanceSquared = offCircle * offCircle;
    else
        arc.distanceSquared = lengthSquared(arc.endIsNearer ? arc.end : arc.start);
    return arc;
}

}  // namespace

double commonFunc::pointSegmentDistSquared(const Point2DF& p, const Point2DF& a, const Point2DF& b)
{
    return detail::pointSegmentDistSquared(*this, p, a, b);
}

double commonFunc::pointLineDistSquared(const Point2DF& p, const Point2DF& a, const Point2DF& b)
{
    const NearerEndView view = viewFromNearerEnd(p, a, b);
    const double alongSquared = lengthSquared(view.along);
    if (alongSquared == 0) return lengthSquared(view.toPoint);
    return lineDistSquared(view.along, view.toPoint, alongSquared);
}

double commonFunc::pointLineSignedDist(const Point2DF& p, const Point2DF& a, const Point2DF& b)
{
    const NearerEndView view = viewFromNearerEnd(p, a, b);
    const double chord = length(view.along);
    if (chord == 0) return 0.0;
    const double toTheLeft = cross(view.along, view.toPoint) / chord;
    return view.fromStart ? -toTheLeft : toTheLeft;
}

double commonFunc::pointPolylineDistSquared(const Point2DF& p, const Points& polyline)
{
    const Point2DF* vertex = polyline.constData();
    const int n = polyline.size();
    return detail::withFunctionsOf(*this, [&](auto& functions) {
        Nearest best;
        const auto lookAt = [&](int first, int last) {
            for (int i = first; i < last; ++i) {
                const double candidate =
                    functions.pointSegmentDistSquared(p, vertex[i], vertex[i + 1]);
                if (best.isImprovedBy(candidate)) best.take(candidate, p, i, 0.0);
            }
        };
        if (functions.kIsPlain && n > kFewVertices)
            visitByNearness(vertex, n, p, best, lookAt);
        else
            lookAt(0, n - 1);
        return best.distanceSquared;
    });
}

double commonFunc::nearestOnPolyline(const Point2DF& p, const Points& polyline, Point2DF& outPoint,
                                     int* outIndex, double* outParam)
{
    Nearest best;
    for (int i = 0; i + 1 < polyline.size(); ++i) {
        const Point2DF& a = polyline[i];
        const Point2DF& b = polyline[i + 1];
        const double candidate = pointSegmentDistSquared(p, a, b);
        if (!best.isImprovedBy(candidate)) continue;
        if (hasNoLength(a, b))
            best.take(candidate, a, i, 0.0);
        else
            best.take(candidate, closestPointOnSegment(p, a, b), i, segmentParameter(p, a, b));
    }
    best.writePlace(outIndex, outParam);
    if (best.found) outPoint = best.point;
    return best.distanceSquared;
}

double commonFunc::pointBulgePolylineDistSquared(const Point2DF& p, const Points& polyline,
                                                 const Values& bulges)
{
    Nearest best;
    for (int i = 0; i + 1 < polyline.size(); ++i) {
        const Point2DF& a = polyline[i];
        const Point2DF& b = polyline[i + 1];
        const double bulge = bulgeAt(bulges, i);
        const bool isStraight = std::fabs(bulge) < kStraightBulgeForDistance || hasNoLength(a, b);
        const double candidate = isStraight ? pointSegmentDistSquared(p, a, b)
                                            : viewArc(*this, p, a, b, bulge).distanceSquared;
        if (best.isImprovedBy(candidate)) best.take(candidate, p, i, 0.0);
    }
    return best.distanceSquared;
}

double commonFunc::pointBulgeSegmentDistSquared(const Point2DF& p, const Point2DF& a,
                                                const Point2DF& b, double bulge)
{
    return pointBulgePolylineDistSquared(p, Points{a, b}, Values{bulge});
}

void commonFunc::projectPointOnBulgePolyline(const Point2DF& p, const Points& polyline,
                                             const Values& bulges, int* outIndex, double* outParam)
{
    Nearest best;
    for (int i = 0; i + 1 < polyline.size(); ++i) {
        const Point2DF& a = polyline[i];
        const Point2DF& b = polyline[i + 1];
        const double bulge = bulgeAt(bulges, i);
        const bool isStraight = std::fabs(bulge) < kStraightBulgeForDistance;
        const double candidate = isStraight ? pointSegmentDistSquared(p, a, b)
                                            : pointBulgeSegmentDistSquared(p, a, b, bulge);
        if (!best.isImprovedBy(candidate)) continue;
        const bool isPoint = hasNoLength(a, b);
        double fraction = 0.0;
        if (isStraight && !isPoint) {
            fraction = segmentParameter(p, a, b);
        } else if (!isPoint) {
            Point2DF centre;
            double radius = 0.0;
            bulgeArcCenter(a - p, b - p, bulge, centre, &radius);
            // An arc that cannot be measured has the distance of an empty figure, 0.
            if (!detail::isFinite(centre) || !std::isfinite(radius)) continue;
            fraction = arcSweepFraction(Point2DF(), centre, a - p, b - p, bulge <= 0);
        }
        best.take(candidate, p, i, fraction);
    }
    best.writePlace(outIndex, outParam);
}

double commonFunc::nearestOnBulgePolylineEx(const Point2DF& p, const Points& polyline,
                                            Values bulges, Point2DF& outPoint, int* outIndex,
                                            double* outParam)
{
    const Values& edgeBulges = bulges;
    Nearest best;
    for (int i = 0; i + 1 < polyline.size(); ++i) {
        const Point2DF& a = polyline[i];
        const Point2DF& b = polyline[i + 1];
        const double bulge = bulgeAt(edgeBulges, i);
        if (hasNoLength(a, b)) {
            const double candidate = detail::pointDistSquared(p, a);
            if (best.isImprovedBy(candidate)) best.take(candidate, a, i, 0.0);
        } else if (std::fabs(bulge) < kStraightBulgeForDistance) {
            const double candidate = pointSegmentDistSquared(p, a, b);
            if (best.isImprovedBy(candidate))
                best.take(candidate, closestPointOnSegment(p, a, b), i, segmentParameter(p, a, b));
        } else {
            const ArcView arc = viewArc(*this, p, a, b, bulge);
            if (!best.isImprovedBy(arc.distanceSquared)) continue;
            const double fraction =
                arcSweepFraction(Point2DF(), arc.centre, arc.start, arc.end, bulge < 0);
            Point2DF nearest = arc.endIsNearer ? b : a;
            if (arc.isBeside) {
                polarPoint(arc.centre, arc.direction, arc.radius, nearest);
                nearest += p;
            }
            best.take(arc.distanceSquared, nearest, i, fraction);
        }
    }
    best.writePlace(outIndex, outParam);
    if (best.found) outPoint = best.point;
    return best.distanceSquared;
}
