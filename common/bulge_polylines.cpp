// Polylines with bulges: length, area, stations, repeats, parallels.

#include <algorithm>
#include <utility>

#include "common/commonFunc.h"
#include "common/detail/bulges.h"
#include "common/detail/point_grid.h"
#include "common/detail/primitives.h"
#include "common/detail/ring_measure.h"
#include "common/detail/ring_pieces.h"
#include "detail/exact_class.h"

namespace detail = calcora::detail;

namespace {

using tav::Point2DF;
using tav::Point3DF;

/// Drawing units: a station this little before or after the start is the start.
constexpr double kStationAtStart = 1e-4;
/// Bulges below are straight where a station is placed, though their length is the arc's.
constexpr double kStraightForStation = 1e-3;
/// A fraction this close to 0 or 1 is the vertex itself; a parameter below it is the start.
constexpr double kParameterAtVertex = 1e-6;
/// Up to this many points repeats are looked for one by one.
constexpr int kFewPoints = 8;

/// Square drawing units: points closer than this are repeats.
constexpr double kRepeatDistanceSquared = 1e-12;
/// Drawing units: the root of kRepeatDistanceSquared.
constexpr double kRepeatDistance = 1e-6;
/// Sine of half the angle between two edges up to which the line turns straight back.
constexpr double kTurnsBack = 1e-14;

/// A place on a line: `along` drawing units into segment `segment` of length `length`.
struct Place {
    int segment = -1;
    double along = 0.0;
    double length = 0.0;
};

bool isAtStart(double station)
{
    return -kStationAtStart <= station && station < kStationAtStart;
}

/// Walks the line to the station; segment -1 if it lies beyond the end or is not a number.
Place walkToStation(IcommonFunc& geometry, const IcommonFunc::Points& points,
                    const IcommonFunc::Values& bulges, double station)
{
    if (!(station >= kStationAtStart)) return {};
    double reached = 0.0;
    for (int i = 0; i + 1 < points.size(); ++i) {
        const double length =
            geometry.bulgeSegmentLength(points[i], points[i + 1], detail::bulgeAt(bulges, i));
        // In this form, so that the line's own length finds its last vertex.
        if (reached + length >= station) return {i, station - reached, length};
        reached += length;
    }
    return {};
}

/// The plan point `along` drawing units from a on the segment from a to b.
Point2DF placeOnSegment(IcommonFunc& geometry, const Point2DF& a, const Point2DF& b, double bulge,
                        double along)
{
    const Point2DF start;
    const Point2DF chord = b - a;
    Point2DF place;
    if (!(std::fabs(bulge) >= kStraightForStation)) {
        geometry.polarPoint(start, geometry.lineAngle(start, chord), along, place);
        return a + place;
    }
    Point2DF centre;
    double radius = 0.0;
    geometry.bulgeArcCenter(start, chord, bulge, centre, &radius);
    if (!(radius > 0)) return a;
    const double from = geometry.lineAngle(centre, start);
    const double turn = along / radius;
    geometry.polarPoint(centre, bulge > 0 ? from + turn : from - turn, radius, place);
    return a + place;
}

/// bulgePolygonArea without anything beside the chords.
double straightRingArea(const IcommonFunc::Points& points)
{
    const Point2DF* vertex = points.constData();
    const Point2DF origin = vertex[0];
    const int n = points.size();
    double area = 0.0;
    Point2DF from = vertex[0] - origin;
    for (int i = 1; i <= n; ++i) {
        const Point2DF to = vertex[i < n ? i : 0] - origin;
        area += (from.x() + to.x()) * 0.5 * (from.y() - to.y());
        from = to;
    }
    return area;
}

double interpolate(double from, double to, double fraction)
{
    return from + fraction * (to - from);
}

}  // namespace

double commonFunc::bulgePolylineLength(const Points& points, const Values& bulges, bool closed)
{
    const int n = points.size();
    if (n < 2 || bulges.size() != n) return -1.0;
    double length = 0.0;
    for (int i = 0; i + 1 < n; ++i)
        length += bulgeSegmentLength(points[i], points[i + 1], bulges[i]);
    if (closed) length += bulgeSegmentLength(points[n - 1], points[0], bulges[n - 1]);
    return length;
}

// Relative to vertex 0, since far from the origin the trapezoids are large and their sum is all
// rounding; cut first, since the area beside a chord is that of at most half a circle.
double commonFunc::bulgePolygonArea(const Points& points, const Values& bulges)
{
    if (points.isEmpty()) return 0.0;
    if (detail::isExactly(*this)) {
        if (detail::isStraightRing(points, bulges)) return straightRingArea(points);
        return detail::RingMeasure(false).polygonArea(points.constData(), points.size(),
                                                      bulges.constData(), bulges.size());
    }
    double area = 0.0;
    for (const detail::RingPiece& piece :
         detail::cutRingAtArcExtremes(*this, points, bulges, points[0])) {
        area += (piece.from.x() + piece.to.x()) * 0.5 * (piece.from.y() - piece.to.y());
        const double beside = bulgeSegmentArea(piece.from, piece.to, piece.bulge);
        area -= piece.bulge >= 0 ? beside : -beside;
    }
    return area;
}

void commonFunc::bulgePolylineStations(const Points& points, const Values& bulges,
                                       Values& outStations)
{
    if (points.isEmpty()) return;
    const Values bulgesRead = bulges;  // the output may be the same list
    double station = 0.0;
    outStations.append(station);
    for (int i = 0; i + 1 < points.size(); ++i) {
        station += bulgeSegmentLength(points[i], points[i + 1], detail::bulgeAt(bulgesRead, i));
        outStations.append(station);
    }
}

bool commonFunc::pointAtStation3d(int, const Points& points, const Values& bulges,
                                  const Values& heights, const Values& stations, double station,
                                  Point3DF& out)
{
    if (isAtStart(station)) {
        if (points.isEmpty() || heights.isEmpty()) return false;
        out = Point3DF(points[0], heights[0]);
        return true;
    }
    if (!(station >= kStationAtStart)) return false;
    const int known = std::min(points.size(), stations.size());
    for (int i = 0; i + 1 < known; ++i) {
        if (!(stations[i] < station && station <= stations[i + 1])) continue;
        if (heights.size() < i + 2) return false;
        const double along = station - stations[i];
        const Point2DF plan =
            placeOnSegment(*this, points[i], points[i + 1], detail::bulgeAt(bulges, i), along);
        const double fraction = along / (stations[i + 1] - stations[i]);
        out = Point3DF(plan, interpolate(heights[i], heights[i + 1], fraction));
        return true;
    }
    return false;
}

void commonFunc::pointAtStationZ(const Points& points, const Values& bulges, const Values& heights,
                                 double station, Point3DF& out)
{
    if (isAtStart(station)) {
        if (!points.isEmpty() && !heights.isEmpty()) out = Point3DF(points[0], heights[0]);
        return;
    }
    const auto [i, along, length] = walkToStation(*this, points, bulges, station);
    if (i < 0 || heights.size() < i + 2) return;
    const Point2DF plan =
        placeOnSegment(*this, points[i], points[i + 1], detail::bulgeAt(bulges, i), along);
    out = Point3DF(plan, interpolate(heights[i], heights[i + 1], along / length));
}

void commonFunc::pointAtStation(const Points& points, const Values& bulges, double station,
                                Point2DF& out)
{
    if (isAtStart(station)) {
        if (!points.isEmpty()) out = points[0];
        return;
    }
    const auto [i, along, length] = walkToStation(*this, points, bulges, station);
    if (i < 0) return;
    out = placeOnSegment(*this, points[i], points[i + 1], detail::bulgeAt(bulges, i), along);
}

void commonFunc::pointAtParameter(const Points& points, const Values& bulges, int index,
                                  double parameter, Point2DF& out)
{
    const int n = points.size();
    if (n == 0 || index < 0) return;
    const double fraction = parameter - index;
    if (std::fabs(fraction - 1) < kParameterAtVertex) {
        if (index < n - 1) out = points[index + 1];
    } else if (parameter < kParameterAtVertex) {
        // Also the vertex of index 0 and fraction 0: both are the start of the line.
        out = points[0];
    } else if (parameter >= kParameterAtVertex) {
        if (index >= n - 1)
            out = points[n - 1];
        else
            pointOnBulgeSegmentAtRatio(points[index], points[index + 1],
                                       detail::bulgeAt(bulges, index), fraction, out);
    }
}

void commonFunc::removeDuplicatePointsRaw(Point2DF* points, double* values, int* count)
{
    if (!points || !values || !count || *count <= 0) return;
    if (*count <= kFewPoints && detail::isExactly(*this)) {
        int left = 0;
        for (int i = 0; i < *count; ++i) {
            const Point2DF p = points[i];
            const bool isRepeat = std::any_of(points, points + left, [&](const Point2DF& earlier) {
                return detail::pointDistSquared(p, earlier) < kRepeatDistanceSquared;
            });
            if (isRepeat) continue;
            points[left] = p;
            values[left++] = values[i];
        }
        *count = left;
        return;
    }
    Points kept(points, points + *count);
    Values keptValues(values, values + *count);
    removeDuplicatePoints(kept, keptValues);
    const int left = std::min({kept.size(), keptValues.size(), *count});
    std::copy_n(kept.constData(), left, points);
    std::copy_n(keptValues.constData(), left, values);
    *count = left;
}

void commonFunc::removeDuplicatePoints(Points& points, Values& values)
{
    const int n = points.size();
    if (n < 2 || values.size() < n) return;
    detail::PointGrid survivors(kRepeatDistance, n);
    Values keptValues;
    for (int i = 0; i < n; ++i) {
        const Point2DF& p = std::as_const(points)[i];
        const auto isRepeat = [&](const Point2DF& earlier) {
            return pointDistSquared(p, earlier) < kRepeatDistanceSquared;
        };
        if (survivors.findEarliest(p, isRepeat) != detail::PointGrid::kNone) continue;
        survivors.add(p);
        keptValues.append(std::as_const(values)[i]);
    }
    if (survivors.size() == n) return;

    Points kept;
    kept.reserve(survivors.size());
    for (int i = 0; i < survivors.size(); ++i) kept.append(survivors.point(i));
    // Values beyond the last point belong to none and follow on.
    for (int i = n; i < values.size(); ++i) keptValues.append(std::as_const(values)[i]);
    points = kept;
    values = keptValues;
}

void commonFunc::reverseBulges(Values& bulges)
{
    const int n = bulges.size();
    if (n < 2) return;
    reverseDoubleList(bulges);
    for (double& bulge : bulges) bulge = -bulge;
    // The closing segment still closes.
    std::rotate(bulges.begin(), bulges.begin() + 1, bulges.end());
}

void commonFunc::offsetPolyline(const Points& points, double distance, Points& out)
{
    const Points line = points;  // the output may be the same list
    const int n = line.size();
    if (n < 2) return;
    const auto appendFrom = [&](int i, double direction, double reach) {
        Point2DF place;
        polarPoint(line[i], direction, reach, place);
        out.append(place);
    };
    const auto appendBeside = [&](int i, int segment) {
        const double direction = lineAngle(line[segment], line[segment + 1]);
        appendFrom(i, direction + detail::kPi / 2, distance);
    };

    appendBeside(0, 0);
    for (int i = 1; i + 1 < n; ++i) {
        const double back = lineAngle(line[i], line[i - 1]);
        const double ahead = lineAngle(line[i], line[i + 1]);
        const double sineOfHalf = std::sin(std::fabs(ahead - back) / 2);
        if (sineOfHalf > kTurnsBack) {
            const double middle = (back + ahead) / 2 - (back < ahead ? detail::kPi : 0.0);
            appendFrom(i, middle, distance / sineOfHalf);
        } else {
            appendBeside(i, i - 1);
        }
    }
    appendBeside(n - 1, n - 2);
}
