#include "app/figure_tool.h"

#include <algorithm>
#include <cmath>

#include "app/command_run.h"
#include "app/figures.h"
#include "app/svg_writer.h"
#include "app/user_error.h"

namespace calcora::app {

namespace {

void draw(OutputFile& out, const std::string& title, const Drawing& drawing,
          const ToolResult& result)
{
    Box extent;
    for (const auto* figures : {&drawing.figures, &result.figures})
        for (const Figure& figure : *figures)
            extent.add(figureBox(figure.points, figure.bulges, figure.closed));
    SvgPicture picture(out, extent, title);
    const double width = SvgPicture::lineWidth(drawing.segmentCount());
    picture.beginGroup("given", {.stroke = "#9e9e9e", .width = width * 0.6});
    for (const Figure& figure : drawing.figures)
        picture.figure(figure.points, figure.bulges, figure.closed);
    picture.endGroup();

    std::vector<std::vector<const Figure*>> layers(result.layers.size());
    for (const Figure& figure : result.figures)
        layers[static_cast<std::size_t>(figure.layer)].push_back(&figure);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        picture.beginGroup(result.layers[i].name,
                           {.stroke = darkColour(static_cast<int>(i)), .width = width * 1.5});
        for (const Figure* figure : layers[i])
            picture.figure(figure->points, figure->bulges, figure->closed);
        picture.endGroup();
    }
    picture.beginGroup("marks", {.fill = "#212121"});
    for (const Mark& mark : result.marks) {
        picture.dot(mark.place, width * 2);
        picture.label(mark.place, 0.0, mark.text);
    }
    picture.endGroup();
    picture.finish();
}

std::string tableText(const std::string& file, const Drawing& drawing, ToolResult& result,
                      bool interrupted, double seconds)
{
    Table input = drawingTable(drawing);
    input.append(result.table);
    input.row("seconds", secondsText(seconds));
    std::string text = file + "\n" + input.text() + result.details;
    if (interrupted) text += "interrupted: this is what was done so far; no file was written\n";
    return text;
}

std::string jsonText(const std::string& file, const Drawing& drawing, ToolResult& result,
                     bool interrupted, double seconds)
{
    nlohmann::json json = {{"file", file},
                           {"entities", drawing.taken},
                           {"skipped", drawing.notTaken},
                           {"on_other_layers", drawing.onOtherLayers},
                           {"ellipse_tolerance", drawing.ellipseReach},
                           {"interrupted", interrupted},
                           {"seconds", seconds}};
    json.update(result.json);
    // File names and layers may hold bytes that are no UTF-8.
    return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

}  // namespace

int runTool(const Tool& tool, const DrawingOptions& options, const GlobalOptions& global)
{
    CommandRun run(options);
    const Host host(global.pluginFolder);
    const Drawing drawing = run.readDrawing();
    ToolResult result;
    run.work(
        tool.task + " " + countText(static_cast<long long>(drawing.figures.size())) + " figures",
        [&](Interrupt& interrupt) { result = tool.work(host, drawing, interrupt); },
        [&](Outputs& outputs) {
            if (outputs.dxf()) writeDxf(*outputs.dxf(), result.layers, result.figures);
            if (outputs.svg())
                draw(*outputs.svg(), options.input + ": " + tool.name, drawing, result);
        });
    const auto tell = options.json ? jsonText : tableText;
    return run.answer(tell(options.input, drawing, result, run.interrupted(), run.seconds()));
}

std::vector<DxfLayer> sameLayers(const Drawing& drawing)
{
    std::vector<DxfLayer> layers;
    for (const std::string& name : drawing.layers) layers.push_back({.name = name});
    return layers;
}

Figure closedWhereItMeets(Figure figure)
{
    const int count = figure.points.size();
    if (figure.closed || count < 3) return figure;
    const bool meets = figure.points.first().x() == figure.points.last().x() &&
                       figure.points.first().y() == figure.points.last().y();
    if (!meets || (count == 3 && !hasArc(figure))) return figure;
    figure.points.removeLast();
    figure.bulges.removeLast();
    if (!figure.elevations.isEmpty()) figure.elevations.removeLast();
    figure.closed = true;
    return figure;
}

void openChain(const Figure& figure, Points& points, Values& bulges)
{
    points = figure.points;
    bulges = figure.bulges;
    if (!figure.closed) return;
    const tav::Point2DF first = figure.points.first();
    points.append(first);
    bulges.append(0.0);
}

bool hasArc(const Figure& figure)
{
    return std::any_of(figure.bulges.cbegin(), figure.bulges.cend(),
                       [](double bulge) { return std::fabs(bulge) >= kSmallestArcBulge; });
}

nlohmann::json placeJson(const tav::Point2DF& place)
{
    return nlohmann::json::array({place.x(), place.y()});
}

}  // namespace calcora::app
