// What `calcora loops` tells about a drawing: as a table, as JSON and as a picture.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/dangles.h"
#include "app/loop_extraction.h"
#include "app/output_file.h"

namespace calcora::app {

struct LoopsReport {
    std::string file;
    Drawing drawing;
    LoopKind kind = LoopKind::Regions;
    double snap = 0;

    ExactScale scale;
    bool scaleIsChosen = false;  ///< by the program, not by the user
    int shortSegments = 0;       ///< segments that stay short against the tolerances

    std::vector<Loop> loops;                                ///< scaled
    std::vector<LoopMeasures> measures;                     ///< scaled, one per loop
    std::vector<bool> nested;                               ///< inside another loop, one per loop
    std::vector<std::optional<tav::Point2DF>> innerPoints;  ///< scaled, for JSON only
    int leftOut = 0;                                        ///< loops of a single point

    std::vector<Dangle> dangles;  ///< scaled
    bool hasDangles = false;      ///< dangles were looked for

    bool interrupted = false;
    double extractionSeconds = 0;
    double seconds = 0;  ///< from reading to the answer
};

std::string tableText(const LoopsReport& report);

/// One JSON object; its keys are told in docs/calcora.md.
std::string jsonText(const LoopsReport& report);

/// Loops in light fills, large ones below, the drawing's lines over them, dangles in red.
void drawLoops(OutputFile& out, const LoopsReport& report);

}  // namespace calcora::app
