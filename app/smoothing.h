// Smooth curves through the points of figures, through the module.
#pragma once

#include <string>
#include <vector>

#include "app/Drawing.h"
#include "app/figures.h"
#include "calcora/calcora.h"

namespace calcora::app {

enum class CurveKind { Spline, Tension, Akima, Bezier, BSpline };

/// Which lines become closed curves.
enum class Closing {
    Auto,  ///< closed figures, and lines that end where they begin
    Yes,   ///< all
    No,    ///< none: where ends meet, the curve has a corner there
};

struct SmoothRequest {
    CurveKind kind = CurveKind::Spline;
    Closing closing = Closing::Auto;
    double tolerance = 0;  ///< largest distance between a curve and its chords, drawing units
};

/// What becomes of a figure's elevations.
enum class Heights {
    None,     ///< it has none
    Level,    ///< one for all its points, kept
    Carried,  ///< run along the curve
    Lost,     ///< change along the line, and the kind of curve has none
};

struct SmoothedFigure {
    Figure curve;           ///< the figure itself when it was not smoothed
    Points given;           ///< the points that the curve follows, arcs as points along them
    int repeats = 0;        ///< points left out because they repeat the one before
    bool smoothed = false;  ///< false: fewer than three points, or numbers too far apart
    Heights heights = Heights::None;
};

/// Smooths the figure. Points closer than a billionth of the figure's extent to the one before are
/// left out first. Akima and Bezier curves close a line whose ends meet whatever is asked for.
SmoothedFigure smoothed(IcommonFunc& common, const Figure& figure, const SmoothRequest& request);

/// The larger side of the box of all figures; 0 without any.
double largestSide(const Drawing& drawing);

}  // namespace calcora::app
