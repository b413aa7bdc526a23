// What the commands share that take a drawing figure by figure and give a drawing.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/Drawing.h"
#include "app/dxf_writer.h"
#include "app/host.h"
#include "app/options.h"
#include "app/progress.h"
#include "app/text.h"

namespace calcora::app {

/// A dot with a text beside it.
struct Mark {
    tav::Point2DF place;
    std::string text;
};

/// What such a command finds.
struct ToolResult {
    std::vector<DxfLayer> layers;  ///< of the result; `Figure::layer` is an index into them
    std::vector<Figure> figures;
    std::vector<Mark> marks;  ///< for the picture only
    Table table;              ///< rows of the answer, after those that describe the input
    std::string details;      ///< text under the table
    nlohmann::json json = nlohmann::json::object();
};

struct Tool {
    std::string name;  ///< of the command
    std::string task;  ///< what is shown while it works
    /// Does the work; stops early, with what is there, when the interrupt is raised.
    std::function<ToolResult(const Host&, const Drawing&, Interrupt&)> work;
};

/// Reads the drawing, works, writes the files asked for and prints the answer; the result is the
/// exit status.
int runTool(const Tool& tool, const DrawingOptions& options, const GlobalOptions& global);

/// The layers of a drawing, for a result that keeps them.
std::vector<DxfLayer> sameLayers(const Drawing& drawing);

/// The figure, but closed when it is open and ends exactly where it begins, with three segments or
/// two with an arc; the repeated point goes.
Figure closedWhereItMeets(Figure figure);

/// The figure's points and bulges with the first point repeated when it is closed.
void openChain(const Figure& figure, Points& points, Values& bulges);

/// Below this a segment counts as straight in the module's operations.
inline constexpr double kSmallestArcBulge = 1e-6;

bool hasArc(const Figure& figure);

/// `[x, y]`.
nlohmann::json placeJson(const tav::Point2DF& place);

}  // namespace calcora::app
