// Chords of arcs and of polylines with bulges: within a sagitta tolerance, or by an angular step.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/bulges.h"
#include "common/detail/primitives.h"

namespace detail = calcora::detail;

namespace {

using tav::Point2DF;
using tav::Point3DF;
using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

/// Bulges up to this are straight where a polyline is cut into chords.
constexpr double kStraightForChords = 1e-6;
/// Share of the figure's size, and of its largest coordinate, below which no tolerance counts.
constexpr double kFinestSagittaOfSize = 1e-10;
constexpr double kFinestSagittaOfCoordinate = 1e-15;
/// The points of one call: up to these, and for each point of the figure these.
constexpr std::int64_t kChordPoints = 4'194'304;
constexpr std::int64_t kChordPointsPerPoint = 64;
/// Halvings whose chords a call may still take.
constexpr int kMostHalvings = 22;
static_assert((std::int64_t{1} << kMostHalvings) == kChordPoints);
/// The most chords of one arc that is cut by angle.
constexpr double kMostChordsByAngle = 65536;
/// Chords: by so little less than a whole number is that number, so that an arc of 30 degrees that
/// comes out as 29.999999999999996 has three steps of 10.
constexpr double kStepSlack = 1e-9;

std::int64_t mostPoints(int pointCount)
{
    return kChordPoints + kChordPointsPerPoint * pointCount;
}

bool allFinite(const Values& values, int count)
{
    return std::all_of(values.begin(), values.begin() + std::min(count, values.size()),
                       [](double value) { return std::isfinite(value); });
}

double sagitta(IcommonFunc& geometry, const Point2DF& p1, const Point2DF& p2, double bulge)
{
    return std::fabs(geometry.pointDist(p1, p2) * bulge) / 2;
}

/// How often the arc is halved until its chords' sagitta is below the tolerance; `kMostHalvings`
/// + 1 if that is never. Both halves of an arc are alike, so one of them tells about all.
int halvingsOf(IcommonFunc& geometry, const Point2DF& p1, const Point2DF& p2, double bulge,
               double tolerance)
{
    double height = sagitta(geometry, p1, p2, bulge);
    double quarterSweep = std::atan(std::fabs(bulge));
    int halvings = 0;
    if (height == 0) return halvings;
    while (!(tolerance > height) && halvings <= kMostHalvings) {
        // Twice the radius is chord / sin(2 q); the sagitta is the radius times 1 - cos(2 q), so a
        // half has sin(q / 2)^2 / sin(q)^2 of it, which is 1 / (4 cos(q / 2)^2).
        const double cosine = std::cos(quarterSweep / 2);
        height /= 4 * cosine * cosine;
        quarterSweep /= 2;
        ++halvings;
    }
    return halvings;
}

/// An arc from the origin with its elevations.
struct RaisedArc {
    Point2DF end;
    double bulge = 0.0;
    double startZ = 0.0;
    double endZ = 0.0;
};

/// Gives visit(point, elevation) the ends of the arc's 2^halvings equal parts, in order. All
/// halves of one size are cut before any smaller ones.
template <class Visit>
void forEachHalvedPoint(IcommonFunc& geometry, const RaisedArc& arc, int halvings, Visit&& visit)
{
    const std::size_t parts = std::size_t{1} << halvings;
    std::vector<Point3DF> places(parts + 1);
    places[0] = {0.0, 0.0, arc.startZ};
    places[parts] = {arc.end, arc.endZ};
    double bulge = arc.bulge;
    for (std::size_t stride = parts; stride > 1; stride /= 2) {
        for (std::size_t i = 0; i < parts; i += stride) {
            const Point3DF& from = places[i];
            const Point3DF& to = places[i + stride];
            const Point2DF middle =
                geometry.arcMidPoint({from.x(), from.y()}, {to.x(), to.y()}, bulge);
            places[i + stride / 2] = {middle, from.z() / 2 + to.z() / 2};
        }
        bulge = std::tan(std::atan(bulge) / 2);
    }
    for (const Point3DF& place : places) visit(Point2DF(place.x(), place.y()), place.z());
}

/// The finest tolerance of a figure; not finite for one that has no finite box.
double finestSagitta(const Point2DF& low, const Point2DF& high, double largestCoordinate)
{
    const double size = std::max(high.x() - low.x(), high.y() - low.y());
    return kFinestSagittaOfSize * size + kFinestSagittaOfCoordinate * largestCoordinate;
}

double largestCoordinate(const Point2DF& p)
{
    return std::max(std::fabs(p.x()), std::fabs(p.y()));
}

/// `wanted` where it is above the finest tolerance, also infinity; anything else is the finest.
double effectiveTolerance(double wanted, double finest)
{
    return wanted > finest ? wanted : finest;
}

/// Cuts one arc; visit(point, elevation) gets both ends and what lies between. False and no visit
/// when a number that takes part is not finite.
template <class Visit>
bool cutArc(IcommonFunc& geometry, const Point3DF& a, const Point3DF& b, double bulge,
            double tolerance, Visit&& visit)
{
    const Point2DF p1(a.x(), a.y());
    const Point2DF p2(b.x(), b.y());
    const double height = sagitta(geometry, p1, p2, bulge);
    if (!detail::isFinite(p1) || !detail::isFinite(p2) || !std::isfinite(a.z() / 2 + b.z() / 2) ||
        !std::isfinite(height))
        return false;
    Point2DF low;
    Point2DF high;
    geometry.bulgeArcExtents(p1, p2, bulge, low, high);
    const double finest =
        finestSagitta(low, high, std::max(largestCoordinate(p1), largestCoordinate(p2)));
    int halvings = halvingsOf(geometry, p1, p2, bulge, effectiveTolerance(tolerance, finest));
    if (halvings > kMostHalvings) halvings = 0;

    const RaisedArc arc{p2 - p1, bulge, a.z(), b.z()};
    const std::size_t last = std::size_t{1} << halvings;
    std::size_t i = 0;
    forEachHalvedPoint(geometry, arc, halvings, [&](const Point2DF& place, double z) {
        visit(i == last ? p2 : p1 + place, z);
        ++i;
    });
    return true;
}

/// The tolerance of a whole polyline's chords; not a number when the figure cannot be cut.
double polylineTolerance(IcommonFunc& geometry, const Points& points, const Values& bulges,
                         double wanted)
{
    constexpr double kRefused = std::numeric_limits<double>::quiet_NaN();
    const int n = points.size();
    double largest = 0.0;
    for (const Point2DF& p : points) {
        if (!detail::isFinite(p)) return kRefused;
        largest = std::max(largest, largestCoordinate(p));
    }
    if (!allFinite(bulges, n - 1)) return kRefused;
    for (int i = 0; i < std::min(n - 1, bulges.size()); ++i) {
        if (!std::isfinite(sagitta(geometry, points[i], points[i + 1], bulges[i]))) return kRefused;
    }
    Point2DF low;
    Point2DF high;
    geometry.bulgePolylineExtents(points, bulges, false, low, high, 0.0);
    return effectiveTolerance(wanted, finestSagitta(low, high, largest));
}

/// Walks the segments of a polyline with a bulge list: cut(i) for an arc that is to be cut into
/// chords behind the last point, which it repeats; straight(i) for the end of any other segment,
/// and straight(-1) for the very first point. `count()` tells how many points there are so far.
template <class Count, class Cut, class Straight>
void walkChords(IcommonFunc& geometry, const Points& points, const Values& bulges, double tolerance,
                Count&& count, Cut&& cut, Straight&& straight)
{
    const int n = points.size();
    for (int i = 0; i + 1 < n; ++i) {
        bool isCut = std::fabs(bulges[i]) > kStraightForChords;
        if (isCut) {
            const int halvings =
                halvingsOf(geometry, points[i], points[i + 1], bulges[i], tolerance);
            isCut = halvings <= kMostHalvings &&
                    count() + (std::int64_t{1} << halvings) + n - i <= mostPoints(n);
        }
        if (isCut) {
            cut(i);
        } else {
            if (i == 0) straight(-1);
            straight(i);
        }
    }
}

/// The number of chords of an arc by a step in degrees; 0 leaves the segment as it is.
int chordsByAngle(double bulge, double stepDegrees)
{
    if (!(std::fabs(bulge) > kStraightForChords) || !std::isfinite(stepDegrees)) return 0;
    const double degrees = 4 * std::atan(bulge) * 180 / detail::kPi;
    const double chords = std::fabs(degrees / stepDegrees) + kStepSlack;
    return std::isfinite(chords) ? static_cast<int>(std::min(chords, kMostChordsByAngle)) : 0;
}

/// The lists that densifying builds up behind each other.
struct DensifiedLists {
    Points points;
    Values bulges;
    Values values;
};

/// Appends `chords - 1` places of the arc of segment i; the segment's own vertex is there already.
void appendArcPlaces(IcommonFunc& geometry, const Points& points, const Values& bulges,
                     const Values& values, int i, int chords, double length, DensifiedLists& out)
{
    Point2DF place = points[i];
    for (int j = 1; j < chords; ++j) {
        geometry.pointOnBulgeSegmentAtDistance(points[i], points[i + 1], bulges[i],
                                               j * length / chords, place);
        out.points.append(place);
        out.bulges.append(0.0);
        if (!values.isEmpty())
            out.values.append(values[i] + j * (values[i + 1] - values[i]) / chords);
    }
}

}  // namespace

void commonFunc::bulgeArcToChords(Point2DF p1, Point2DF p2, double bulge, double tolerance,
                                  Points& out)
{
    cutArc(*this, {p1, 0.0}, {p2, 0.0}, bulge, tolerance,
           [&](const Point2DF& place, double) { out.append(place); });
}

void commonFunc::bulgeArcToChords3d(Point3DF a, Point3DF b, double bulge, double tolerance,
                                    Points& out, Values& outZ)
{
    cutArc(*this, a, b, bulge, tolerance, [&](const Point2DF& place, double z) {
        out.append(place);
        outZ.append(z);
    });
}

void commonFunc::bulgePolylineToChords(const Points& points, const Values& bulges, double tolerance,
                                       Points& out)
{
    const int n = points.size();
    if (n < 2) {
        out = Points();
        return;
    }
    if (!bulges.isEmpty() && bulges.size() < n - 1) return;
    const double effective = polylineTolerance(*this, points, bulges, tolerance);
    if (std::isnan(effective)) return;
    Points chords;
    if (bulges.isEmpty()) {
        chords = points;
    } else {
        walkChords(
            *this, points, bulges, effective, [&] { return chords.size(); },
            [&](int i) {
                if (!chords.isEmpty()) chords.removeLast();
                bulgeArcToChords(points[i], points[i + 1], bulges[i], effective, chords);
            },
            [&](int i) { chords.append(points[i + 1]); });
    }
    out = std::move(chords);
}

void commonFunc::bulgePolylineToChords3d(const Points& points, const Values& bulges,
                                         const Values& z, double tolerance, Points& out,
                                         Values& outZ)
{
    const int n = points.size();
    if (n < 2) {
        out = Points();
        outZ = Values();
        return;
    }
    const bool hasElevations = !z.isEmpty();
    if ((!bulges.isEmpty() && bulges.size() < n - 1) || (hasElevations && z.size() < n)) return;
    const double effective = polylineTolerance(*this, points, bulges, tolerance);
    if (std::isnan(effective) || !allFinite(z, n)) return;
    Points chords;
    Values elevations;
    if (bulges.isEmpty()) {
        chords = points;
        elevations = z;
    } else {
        const auto raised = [&](int i) { return Point3DF(points[i], hasElevations ? z[i] : 0.0); };
        walkChords(
            *this, points, bulges, effective, [&] { return chords.size(); },
            [&](int i) {
                if (!chords.isEmpty()) {
                    chords.removeLast();
                    if (hasElevations) elevations.removeLast();
                }
                bulgeArcToChords3d(raised(i), raised(i + 1), bulges[i], effective, chords,
                                   elevations);
            },
            [&](int i) {
                chords.append(points[i + 1]);
                if (hasElevations) elevations.append(z[i + 1]);
            });
    }
    out = std::move(chords);
    outZ = std::move(elevations);
}

void commonFunc::densifyBulgesByAngle(const Points& points, const Values& bulges,
                                      const Values& values, double stepDegrees, Points& outPoints,
                                      Values& outBulges, Values& outValues)
{
    const int n = points.size();
    if ((!bulges.isEmpty() && bulges.size() < n - 1) || (!values.isEmpty() && values.size() < n))
        return;
    DensifiedLists dense;
    for (int i = 0; i < n && !bulges.isEmpty(); ++i) {
        dense.points.append(points[i]);
        if (!values.isEmpty()) dense.values.append(values[i]);
        if (i + 1 == n) break;
        const int chords = chordsByAngle(bulges[i], stepDegrees);
        const double length =
            chords > 0 ? bulgeSegmentLength(points[i], points[i + 1], bulges[i]) : 0.0;
        const std::int64_t rest = std::int64_t{chords} - 1 + n - i - 1;
        if (chords > 0 && std::isfinite(length) && dense.points.size() + rest <= mostPoints(n)) {
            dense.bulges.append(0.0);
            appendArcPlaces(*this, points, bulges, values, i, chords, length, dense);
        } else {
            dense.bulges.append(bulges[i]);
        }
    }
    if (bulges.isEmpty()) dense = {points, bulges, values};
    // What lies behind the last segment or point is copied.
    for (int i = std::max(n - 1, 0); i < bulges.size(); ++i) dense.bulges.append(bulges[i]);
    for (int i = n; i < values.size() && !bulges.isEmpty(); ++i) dense.values.append(values[i]);
    outPoints = std::move(dense.points);
    outBulges = std::move(dense.bulges);
    outValues = std::move(dense.values);
}
