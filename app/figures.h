// Figures from arcs, circles and ellipses, and their extents.
#pragma once

#include <limits>

#include "app/Drawing.h"

namespace calcora::app {

/// An axis-parallel box; empty (and so contained in every other) when default-constructed.
struct Box {
    double minX = std::numeric_limits<double>::infinity();
    double minY = std::numeric_limits<double>::infinity();
    double maxX = -std::numeric_limits<double>::infinity();
    double maxY = -std::numeric_limits<double>::infinity();

    bool isEmpty() const { return !(minX <= maxX); }
    double width() const { return maxX - minX; }
    double height() const { return maxY - minY; }
    void add(const tav::Point2DF& point);
    void add(const Box& other);
};

/// The box of a segment, arcs to their full reach.
Box segmentBox(const tav::Point2DF& from, const tav::Point2DF& to, double bulge);

/// The box of a figure's segments.
Box figureBox(const Points& points, const Values& bulges, bool closed);

/// The point at `degrees` (counter-clockwise from the x axis) on a circle; exact in direction at
/// whole quarter turns.
tav::Point2DF pointOnCircle(const tav::Point2DF& centre, double radius, double degrees);

/// Two half circles, counter-clockwise.
Figure circleFigure(const tav::Point2DF& centre, double radius);

/// The arc from `startDegrees` counter-clockwise to `endDegrees`: one segment, two when hardly
/// anything is missing to the full circle (the short chord would lose the radius), a circle when
/// the angles are equal up to full turns.
Figure arcFigure(const tav::Point2DF& centre, double radius, double startDegrees,
                 double endDegrees);

/// An ellipse or a part of it: the point at parameter u is centre + cos u · major + sin u · minor.
struct EllipseArc {
    tav::Point2DF centre;
    tav::Point2DF major;
    tav::Point2DF minor;  ///< at right angles to `major`, not longer
    double start = 0;     ///< parameter, radians
    double end = 0;       ///< parameter, radians; the arc runs towards growing parameters
};

/// The ellipse as chords that stay within `tolerance` of it (but at most kMaximumChords of them),
/// closed when nothing is missing to the full turn; a circle as true arcs. `reach` receives the
/// bound on the distance between ellipse and chords, 0 for a circle.
Figure ellipseFigure(const EllipseArc& ellipse, double tolerance, double& reach);

inline constexpr int kMaximumChords = 20000;

}  // namespace calcora::app
