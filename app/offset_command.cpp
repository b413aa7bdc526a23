// calcora offset: parallels of figures.
#include <cmath>
#include <memory>

#include "app/commands.h"
#include "app/dxf_groups.h"
#include "app/figure_tool.h"
#include "app/parallels.h"

namespace calcora::app {

namespace {

struct OffsetOptions {
    DrawingOptions drawing;
    double distance = 0;
    bool both = false;
};

std::string distanceError(const std::string& word)
{
    const auto number = dxfNumber(word);
    return number && *number != 0 ? "" : "\"" + word + "\" is no distance other than 0";
}

ToolResult offsetDrawing(const Host& host, const Drawing& drawing, const OffsetOptions& options,
                         Interrupt& interrupt)
{
    const Parallels parallels(host, interrupt, ExactScale(chooseScale(drawing).exponent));
    std::vector<double> distances = {options.distance};
    if (options.both) distances.push_back(-options.distance);
    ToolResult result;
    result.layers = sameLayers(drawing);
    nlohmann::json list = nlohmann::json::array();
    long long vanished = 0;
    long long closed = 0;
    for (std::size_t i = 0; i < drawing.figures.size() && !interrupt.raised(); ++i)
        for (const double distance : distances) {
            const std::vector<Figure> found = parallels.of(drawing.figures[i], distance);
            if (interrupt.raised()) break;
            vanished += found.empty() ? 1 : 0;
            for (const Figure& parallel : found) {
                closed += parallel.closed ? 1 : 0;
                list.push_back({{"figure", i + 1},
                                {"layer", drawing.layers[static_cast<std::size_t>(parallel.layer)]},
                                {"distance", distance},
                                {"closed", parallel.closed},
                                {"vertices", parallel.points.size()}});
                result.figures.push_back(parallel);
            }
        }
    result.table.row("distance", shortText(options.distance),
                     options.both ? "and " + shortText(-options.distance) : "");
    result.table.row("parallels", countText(static_cast<long long>(result.figures.size())),
                     countText(closed) + " of them closed");
    if (vanished > 0)
        result.table.row("vanished", countText(vanished), "figures with no room for a parallel");
    result.json = {{"distance", options.distance},
                   {"both", options.both},
                   {"parallels", list},
                   {"vanished", vanished}};
    return result;
}

}  // namespace

void addOffsetCommand(Commands& commands)
{
    auto options = std::make_shared<OffsetOptions>();
    Command command = commands.add("offset", "Draw parallels of a drawing's lines; arcs stay arcs");
    command.drawingOptions(options->drawing);
    command
        .option("--distance", options->distance,
                "Drawing units; to the left of open lines and outside of closed ones when "
                "positive, else to the right and inside")
        .typeName("D")
        .required()
        .check(distanceError);
    command.flag("--both", options->both, "Parallels on both sides");
    command.footer(
        "Parallels are cut where they cross themselves, and what would be closer to its line than "
        "the distance is left out. Layers stay; parallels have no elevations.");
    command.runs([options, &global = commands.global] {
        const auto work = [&](const Host& host, const Drawing& drawing, Interrupt& interrupt) {
            return offsetDrawing(host, drawing, *options, interrupt);
        };
        return runTool({"offset", "drawing parallels of", work}, options->drawing, global);
    });
}

}  // namespace calcora::app
