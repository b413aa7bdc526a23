#include "app/figures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace calcora::app {

namespace {

using tav::Point2DF;

constexpr double kPi = std::numbers::pi;

/// Sweep in degrees from which an arc is handed on in two halves.
constexpr double kSplitSweep = 350.0;

/// Difference of semi-axes, as a share of the larger, below which an ellipse is a circle.
constexpr double kCircleShare = 1e-12;

/// Parameter (radians) that may be missing to a full turn of a closed ellipse; files give the end
/// of the turn with as few as six decimals.
constexpr double kFullTurnSlack = 1e-6;

/// `degrees` brought to 0 (inclusive) … 360 (exclusive).
double normalisedDegrees(double degrees)
{
    double turn = std::fmod(degrees, 360.0);
    if (turn < 0) turn += 360.0;
    return turn >= 360.0 ? 0.0 : turn;
}

double bulgeOfSweep(double degrees)
{
    return degrees == 180.0 ? 1.0 : std::tan(degrees * kPi / 720.0);
}

Figure chain(std::initializer_list<Point2DF> points, std::initializer_list<double> bulges,
             bool closed)
{
    Figure figure;
    figure.points = points;
    figure.bulges = bulges;
    figure.closed = closed;
    return figure;
}

}  // namespace

void Box::add(const Point2DF& point)
{
    minX = std::min(minX, point.x());
    minY = std::min(minY, point.y());
    maxX = std::max(maxX, point.x());
    maxY = std::max(maxY, point.y());
}

void Box::add(const Box& other)
{
    minX = std::min(minX, other.minX);
    minY = std::min(minY, other.minY);
    maxX = std::max(maxX, other.maxX);
    maxY = std::max(maxY, other.maxY);
}

Box segmentBox(const Point2DF& from, const Point2DF& to, double bulge)
{
    Box box;
    box.add(from);
    box.add(to);
    const Point2DF chord = to - from;
    const double length = std::hypot(chord.x(), chord.y());
    if (bulge == 0.0) return box;

    // The centre lies on the chord's bisector, on its left for a short counter-clockwise arc.
    const double offset = (1.0 - bulge * bulge) / (4.0 * bulge);
    const Point2DF middle = from + 0.5 * chord;
    const Point2DF centre(middle.x() - offset * chord.y(), middle.y() + offset * chord.x());
    const double radius = length * (1.0 + bulge * bulge) / (4.0 * std::fabs(bulge));

    // A point of the circle is on the arc when it lies on the arc's side of the chord.
    const auto reach = [&](double dx, double dy) {
        const Point2DF extreme(centre.x() + dx * radius, centre.y() + dy * radius);
        const Point2DF toExtreme = extreme - from;
        const double side = chord.x() * toExtreme.y() - chord.y() * toExtreme.x();
        if ((bulge > 0 && side < 0) || (bulge < 0 && side > 0)) box.add(extreme);
    };
    reach(0, 1);
    reach(-1, 0);
    reach(0, -1);
    reach(1, 0);
    return box;
}

Box figureBox(const Points& points, const Values& bulges, bool closed)
{
    Box box;
    const int count = points.size();
    for (const Point2DF& point : points) box.add(point);
    for (int i = 0; i < (closed ? count : count - 1); ++i)
        if (bulges.at(i) != 0.0)
            box.add(segmentBox(points.at(i), points.at((i + 1) % count), bulges.at(i)));
    return box;
}

Point2DF pointOnCircle(const Point2DF& centre, double radius, double degrees)
{
    int quarter = 0;
    const double rest = std::remquo(normalisedDegrees(degrees), 90.0, &quarter) * kPi / 180.0;
    const double cosine = radius * std::cos(rest);
    const double sine = radius * std::sin(rest);
    switch (quarter & 3) {
        case 0:
            return centre + Point2DF(cosine, sine);
        case 1:
            return centre + Point2DF(-sine, cosine);
        case 2:
            return centre + Point2DF(-cosine, -sine);
        default:
            return centre + Point2DF(sine, -cosine);
    }
}

Figure circleFigure(const Point2DF& centre, double radius)
{
    return chain({pointOnCircle(centre, radius, 0), pointOnCircle(centre, radius, 180)}, {1.0, 1.0},
                 true);
}

Figure arcFigure(const Point2DF& centre, double radius, double startDegrees, double endDegrees)
{
    const double sweep = normalisedDegrees(endDegrees - startDegrees);
    if (sweep == 0.0) return circleFigure(centre, radius);
    const Point2DF start = pointOnCircle(centre, radius, startDegrees);
    const Point2DF end = pointOnCircle(centre, radius, endDegrees);
    if (sweep < kSplitSweep) return chain({start, end}, {bulgeOfSweep(sweep), 0.0}, false);
    const double half = bulgeOfSweep(sweep / 2);
    const Point2DF middle = pointOnCircle(centre, radius, startDegrees + sweep / 2);
    return chain({start, middle, end}, {half, half, 0.0}, false);
}

Figure ellipseFigure(const EllipseArc& ellipse, double tolerance, double& reach)
{
    const double major = std::hypot(ellipse.major.x(), ellipse.major.y());
    const double minor = std::hypot(ellipse.minor.x(), ellipse.minor.y());
    double sweep = std::fmod(ellipse.end - ellipse.start, 2 * kPi);
    if (sweep < 0) sweep += 2 * kPi;
    const bool full = sweep < kFullTurnSlack || sweep > 2 * kPi - kFullTurnSlack;
    if (full) sweep = 2 * kPi;
    reach = 0;

    const double turn =
        ellipse.major.x() * ellipse.minor.y() - ellipse.major.y() * ellipse.minor.x();
    if (major - minor <= kCircleShare * major) {
        if (full) return circleFigure(ellipse.centre, major);
        const double axis = std::atan2(ellipse.major.y(), ellipse.major.x()) * 180.0 / kPi;
        const double from = (turn > 0 ? ellipse.start : -ellipse.end) * 180.0 / kPi;
        return arcFigure(ellipse.centre, major, axis + from, axis + from + sweep * 180.0 / kPi);
    }

    // The ellipse is the affine image of a circle: over a parameter step s the chord leaves it by
    // at most (1 − cos(s/2)) times the larger semi-axis.
    const double share = std::clamp(tolerance / major, 1e-9, 0.5);
    const double step = 2 * std::acos(1 - share);
    const int chords = static_cast<int>(
        std::min(std::ceil(sweep / step - 1e-9), static_cast<double>(kMaximumChords)));
    const int count = std::max(chords, full ? 3 : 1);
    reach = major * (1 - std::cos(sweep / count / 2));

    Figure figure;
    figure.closed = full;
    const int last = full ? count - 1 : count;
    for (int i = 0; i <= last; ++i) {
        const double u = ellipse.start + sweep * i / count;
        figure.points.append(ellipse.centre + std::cos(u) * ellipse.major +
                             std::sin(u) * ellipse.minor);
        figure.bulges.append(0.0);
    }
    return figure;
}

}  // namespace calcora::app
