#include "app/smoothing.h"

#include <algorithm>
#include <cmath>

#include "app/exact_scale.h"

namespace calcora::app {

namespace {

using tav::Point2DF;

/// Neighbours closer than this share of the figure's larger side are one point.
constexpr double kRepeatShare = 1e-9;

/// And so are neighbours closer than this share of the largest coordinate: they differ by rounding.
constexpr double kRoundingShare = 1e-15;

/// Degree of the B-splines.
constexpr int kCubic = 3;

/// Arcs become chords of at most this sweep (radians, a sixteenth of a half turn). Curves through
/// such points stay within two thousandths of the radius.
constexpr double kLargestArcStep = 0.19634954084936207;

/// Scaled numbers stay below 2 to this power, far inside what the operations take.
constexpr int kLargestScaledPower = 300;

/// A figure as the curves take it. When closed, its first point does not come again at the end.
struct Line {
    Points points;
    Values elevations;  ///< as many as points, or none
    bool closed = false;

    void add(const Point2DF& point, double elevation, bool hasElevations)
    {
        points.append(point);
        if (hasElevations) elevations.append(elevation);
    }
    void removeLast()
    {
        points.removeLast();
        if (!elevations.isEmpty()) elevations.removeLast();
    }
    double elevation(int index) const { return elevations.isEmpty() ? 0.0 : elevations.at(index); }
    void repeatFirst()
    {
        const Point2DF first = points.first();
        add(first, elevation(0), !elevations.isEmpty());
    }
};

/// The inner points of an arc, halved until its pieces sweep little.
void addArc(IcommonFunc& common, const Point2DF& from, double fromZ, const Point2DF& to, double toZ,
            double bulge, bool hasElevations, Line& line)
{
    if (!(4 * std::fabs(std::atan(bulge)) > kLargestArcStep)) return;
    const Point2DF middle = common.arcMidPoint(from, to, bulge);
    const double middleZ = fromZ + (toZ - fromZ) / 2;
    const double half = std::tan(std::atan(bulge) / 2);
    addArc(common, from, fromZ, middle, middleZ, half, hasElevations, line);
    line.add(middle, middleZ, hasElevations);
    addArc(common, middle, middleZ, to, toZ, half, hasElevations, line);
}

/// The figure's points, with points along its arcs.
Line pointsOf(IcommonFunc& common, const Figure& figure)
{
    Line line;
    line.closed = figure.closed;
    const bool hasElevations = !figure.elevations.isEmpty();
    const int count = figure.points.size();
    const auto elevation = [&](int i) { return hasElevations ? figure.elevations.at(i) : 0.0; };
    for (int i = 0; i < count; ++i) {
        line.add(figure.points.at(i), elevation(i), hasElevations);
        if (i >= figure.segmentCount()) break;
        const int next = (i + 1) % count;
        addArc(common, figure.points.at(i), elevation(i), figure.points.at(next), elevation(next),
               figure.bulges.at(i), hasElevations, line);
    }
    return line;
}

/// Distance up to which neighbours are one point.
double repeatDistance(const Points& points)
{
    Box box;
    for (const Point2DF& point : points) box.add(point);
    const double largest = std::max(
        {std::fabs(box.minX), std::fabs(box.maxX), std::fabs(box.minY), std::fabs(box.maxY)});
    return std::max(kRepeatShare * std::max(box.width(), box.height()), kRoundingShare * largest);
}

/// A line as it goes into the operations.
struct Prepared {
    Line line;
    int repeats = 0;   ///< points left out
    int distinct = 0;  ///< points of the line, a last one at the place of the first not counted
};

/// The line without repeats, closed or open as asked for. A ring that is to be open runs back to
/// its first point.
Prepared prepared(const Line& given, const SmoothRequest& request, double nearness)
{
    Prepared result;
    Line& line = result.line;
    for (int i = 0; i < given.points.size(); ++i) {
        const Point2DF& point = given.points.at(i);
        if (line.points.isEmpty() || line.points.last().distanceTo(point) > nearness)
            line.add(point, given.elevation(i), !given.elevations.isEmpty());
        else
            ++result.repeats;
    }
    const bool endsMeet =
        line.points.size() > 1 && line.points.first().distanceTo(line.points.last()) <= nearness;
    if (endsMeet) line.removeLast();
    if (endsMeet && given.closed) ++result.repeats;
    result.distinct = line.points.size();

    const bool isRing = given.closed || endsMeet;
    const bool closesRings = request.kind == CurveKind::Akima || request.kind == CurveKind::Bezier;
    line.closed = request.closing == Closing::Yes ||
                  (isRing && (request.closing == Closing::Auto || closesRings));
    if (isRing && !line.closed) line.repeatFirst();
    return result;
}

bool isLevel(const Values& elevations)
{
    return std::all_of(elevations.begin(), elevations.end(),
                       [&](double z) { return z == elevations.first(); });
}

Heights heightsOf(const Values& elevations, CurveKind kind)
{
    if (elevations.isEmpty()) return Heights::None;
    if (isLevel(elevations)) return Heights::Level;
    const bool inPlane = kind == CurveKind::Spline || kind == CurveKind::Akima;
    return inPlane ? Heights::Lost : Heights::Carried;
}

/// A scale in which no two neighbours, nor the ends of an open line, are closer than 1: some of the
/// operations tell points apart by absolute distances far below that.
ExactScale scaleFor(const Line& line)
{
    const Points& points = line.points;
    double shortest = 1;
    double largest = 1;
    for (int i = 0; i < points.size(); ++i) {
        const Point2DF& point = points.at(i);
        const double length = point.distanceTo(points.at((i + 1) % points.size()));
        if (length > 0) shortest = std::min(shortest, length);
        largest = std::max(
            {largest, std::fabs(point.x()), std::fabs(point.y()), std::fabs(line.elevation(i))});
    }
    return ExactScale(std::min(-std::ilogb(shortest), kLargestScaledPower - std::ilogb(largest)));
}

/// Joins the spans of a Bezier curve through the points of a line with its first point repeated.
bool bezierCurve(IcommonFunc& common, const Line& line, double tolerance, Line& curve)
{
    PointLists handles;
    common.bezierCurveSpans(line.points, handles);
    if (handles.size() != line.points.size() - 1) return false;
    for (int i = 0; i < handles.size(); ++i) {
        const Points& inner = handles.at(i);
        if (inner.size() != 2) return false;
        Points points;
        Values elevations;
        const Point2DF& from = line.points.at(i);
        const Point2DF& to = line.points.at(i + 1);
        if (line.elevations.isEmpty()) {
            common.bezierSpanToPolyline(from, inner.at(0), inner.at(1), to, points, tolerance);
        } else {
            const double z0 = line.elevations.at(i);
            const double z3 = line.elevations.at(i + 1);
            common.bezierSpanToPolyline3d(from, z0, inner.at(0), z0, inner.at(1), z3, to, z3,
                                          points, elevations, tolerance);
        }
        if (points.isEmpty()) return false;
        if (i > 0) curve.removeLast();
        curve.points.append(points);
        curve.elevations.append(elevations);
    }
    return true;
}

/// Elevations that rise on both sides like a parabola, just enough for every span between control
/// points to be halved. The sampler looks at the middle of the curve only: without them a line
/// whose two halves mirror each other, an S, would come out as its two ends.
Values risingSides(int count, double tolerance)
{
    constexpr double kRise = 4.4;  // in tolerances: a quarter of it lies at a span's middle
    constexpr double kLargestRadius = 2e4;  // beyond, the sides would coarsen the tolerance
    const double middle = (count - 1) / 2.0;
    const double shrink = std::min(1.0, kLargestRadius / std::max(middle, 1.0));
    Values sides;
    sides.reserve(count);
    for (int i = 0; i < count; ++i) {
        const double away = (i - middle) * shrink;
        sides.append(kRise * tolerance * away * away);
    }
    return sides;
}

/// A B-spline with the points as control points. A closed one starts and ends in the middle of the
/// closing side and runs along it there, so that nothing shows of the joint.
bool bsplineCurve(IcommonFunc& common, const Line& line, double tolerance, Line& curve)
{
    Line controls;
    const bool hasElevations = !line.elevations.isEmpty();
    const int last = line.points.size() - 1;
    const Point2DF joint = 0.5 * line.points.at(last) + 0.5 * line.points.first();
    const double jointZ = 0.5 * line.elevation(last) + 0.5 * line.elevation(0);
    if (line.closed) controls.add(joint, jointZ, hasElevations);
    controls.points.append(line.points);
    controls.elevations.append(line.elevations);
    if (line.closed) controls.add(joint, jointZ, hasElevations);
    if (hasElevations)
        return common.bsplineToPolyline3d(controls.points, controls.elevations, curve.points,
                                          curve.elevations, kCubic, tolerance);
    Values sides;
    return common.bsplineToPolyline3d(controls.points,
                                      risingSides(controls.points.size(), tolerance), curve.points,
                                      sides, kCubic, tolerance);
}

/// The curve; a closed one ends with its first point.
bool drawCurve(IcommonFunc& common, Line line, CurveKind kind, double tolerance, Line& curve)
{
    switch (kind) {
        case CurveKind::Spline:
            common.splineInterpolate(line.points, curve.points, line.closed, tolerance);
            break;
        case CurveKind::Tension:
            if (line.elevations.isEmpty())
                common.tensionCurve(line.points, curve.points, line.closed, 0, 0, tolerance);
            else
                common.tensionCurveZ(line.points, line.elevations, curve.points, curve.elevations,
                                     line.closed, 0, 0, tolerance);
            break;
        case CurveKind::Akima:
            if (line.closed) line.repeatFirst();
            common.akimaCurve(line.points, curve.points);
            break;
        case CurveKind::Bezier:
            if (line.closed) line.repeatFirst();
            if (!bezierCurve(common, line, tolerance, curve)) return false;
            break;
        case CurveKind::BSpline:
            if (!bsplineCurve(common, line, tolerance, curve)) return false;
            break;
    }
    return curve.points.size() > 1;
}

Line scaled(const Line& line, const ExactScale& scale)
{
    Line result;
    result.closed = line.closed;
    result.points = scale.scaled(line.points);
    for (const double z : line.elevations) result.elevations.append(scale.scaled(z));
    return result;
}

}  // namespace

SmoothedFigure smoothed(IcommonFunc& common, const Figure& figure, const SmoothRequest& request)
{
    const Line given = pointsOf(common, figure);
    Prepared ready = prepared(given, request, repeatDistance(given.points));
    Line& line = ready.line;
    SmoothedFigure result;
    result.curve = figure;
    result.given = line.points;
    result.repeats = ready.repeats;
    result.heights = heightsOf(line.elevations, request.kind);
    if (ready.distinct < 3) return result;

    const double level = line.elevation(0);
    if (result.heights != Heights::Carried) line.elevations.clear();
    const ExactScale scale = scaleFor(line);
    Line curve;
    if (!drawCurve(common, scaled(line, scale), request.kind, scale.scaled(request.tolerance),
                   curve))
        return result;
    if (line.closed) curve.removeLast();

    result.smoothed = true;
    result.curve.closed = line.closed;
    result.curve.points = scale.unscaled(curve.points);
    const int count = curve.points.size();
    result.curve.bulges = Values(count, 0.0);
    result.curve.elevations.clear();
    if (result.heights == Heights::Level) result.curve.elevations = Values(count, level);
    for (const double z : curve.elevations) result.curve.elevations.append(scale.unscaled(z));
    return result;
}

double largestSide(const Drawing& drawing)
{
    Box box;
    for (const Figure& figure : drawing.figures)
        box.add(figureBox(figure.points, figure.bulges, figure.closed));
    return box.isEmpty() ? 0.0 : std::max(box.width(), box.height());
}

}  // namespace calcora::app
