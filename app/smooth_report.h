// What `calcora smooth` tells about a drawing: as a table, as JSON and as a picture.
#pragma once

#include <string>
#include <vector>

#include "app/Drawing.h"
#include "app/output_file.h"
#include "app/smoothing.h"

namespace calcora::app {

struct SmoothReport {
    std::string file;
    Drawing drawing;
    SmoothRequest request;
    bool toleranceIsChosen = false;       ///< by the program, not by the user
    std::vector<SmoothedFigure> figures;  ///< in the order of the drawing's
    bool interrupted = false;             ///< `figures` lacks the last ones
    double seconds = 0;                   ///< from reading to the answer
};

/// The word for a kind of curve, as the command line takes it.
const char* curveName(CurveKind kind);

/// The word for a way of closing, as the command line takes it.
const char* closingName(Closing closing);

std::string tableText(const SmoothReport& report);

/// One JSON object; its keys are told in docs/calcora.md.
std::string jsonText(const SmoothReport& report);

/// The given lines thin, the curves over them in a colour for each layer, the given points as dots.
void drawCurves(OutputFile& out, const SmoothReport& report);

}  // namespace calcora::app
