// calcora station: stations along the axes of a drawing.
#include <algorithm>
#include <memory>

#include "app/command_run.h"
#include "app/commands.h"
#include "app/figures.h"
#include "app/host.h"
#include "app/station_report.h"
#include "app/text.h"
#include "app/user_error.h"

namespace calcora::app {

namespace {

struct StationOptions {
    DrawingOptions drawing;
    StationRequest request;
    double tick = 0;  ///< 0: by the size of the axes
};

/// A sixtieth of the larger side of the drawing.
double tickFor(const Drawing& drawing)
{
    constexpr double kTickShare = 1.0 / 60;
    Box extent;
    for (const Figure& figure : drawing.figures)
        extent.add(figureBox(figure.points, figure.bulges, figure.closed));
    return extent.isEmpty() ? 0.0 : std::max(extent.width(), extent.height()) * kTickShare;
}

void setStations(Axis& axis, const std::vector<double>& wanted, double tick,
                 const Interrupt& interrupt, AxisReport& report)
{
    for (const double along : wanted) {
        if (interrupt.raised()) return;
        report.stations.push_back(axis.at(along));
        const Station& station = report.stations.back();
        report.ticks.push_back({axis.beside(station, tick), axis.beside(station, -tick)});
    }
}

/// Told when not one axis has any of the stations asked for.
void failBeyondAll(const StationReport& report, const StationRequest& request)
{
    double longest = 0;
    for (const AxisReport& axis : report.axes) {
        if (axis.beyond.size() < request.at.size()) return;
        longest = std::max(longest, axis.length);
    }
    const double first = *std::min_element(request.at.begin(), request.at.end());
    throw UserError(report.file + ": --at " + shortText(first) + " lies beyond the end of the " +
                    (report.axes.size() == 1 ? "axis" : "longest axis") + " at " +
                    shortText(longest));
}

/// Fills in the axes of `report.drawing`.
void setOut(const Host& host, const StationRequest& request, const Interrupt& interrupt,
            StationReport& report)
{
    long long count = 0;
    for (const Figure& figure : report.drawing.figures) {
        if (interrupt.raised()) break;
        Axis axis(host, figure);
        if (!(axis.length() > 0)) {
            ++report.drawing.notTaken["axis (no length)"];
            continue;
        }
        AxisReport told;
        told.number = static_cast<int>(report.axes.size()) + 1;
        told.figure = &figure;
        told.length = axis.length();
        told.segments = axis.segmentCount();
        told.arcs = axis.arcCount();
        const std::vector<double> wanted = wantedStations(axis, request, told.beyond);
        count += static_cast<long long>(wanted.size());
        if (count > kMostStations)
            throw UserError("more than " + countText(kMostStations) + " stations in all");
        setStations(axis, wanted, report.tick, interrupt, told);
        report.axes.push_back(std::move(told));
    }
    if (interrupt.raised()) return;
    if (report.axes.empty()) throw UserError("nothing on the layer has a length");
    if (!request.at.empty()) failBeyondAll(report, request);
}

/// What goes wrong with a drawing is told with its name.
void setOutOf(const Host& host, const StationRequest& request, const Interrupt& interrupt,
              StationReport& report)
{
    try {
        setOut(host, request, interrupt, report);
    } catch (const UserError& error) {
        const std::string text = error.what();
        throw UserError(text.starts_with(report.file) ? text : report.file + ": " + text);
    }
}

int runStation(const StationOptions& options, const GlobalOptions& global)
{
    CommandRun run(options.drawing);
    Host host(global.pluginFolder);
    host.loadGeometry();
    StationReport report;
    report.file = options.drawing.input;
    report.drawing = run.readDrawing();
    report.tick = options.tick > 0 ? options.tick : tickFor(report.drawing);
    run.work(
        "setting out stations",
        [&](const Interrupt& interrupt) { setOutOf(host, options.request, interrupt, report); },
        [&](Outputs& outputs) {
            if (outputs.dxf()) writeStations(*outputs.dxf(), report);
            if (outputs.svg()) drawStations(*outputs.svg(), report);
            if (outputs.csv()) writeCsv(*outputs.csv(), report);
        });
    return run.answerWith(report);
}

}  // namespace

void addStationCommand(Commands& commands)
{
    auto options = std::make_shared<StationOptions>();
    Command command = commands.add(
        "station", "Set out stations along the axes on a layer, with points and directions");
    command.drawingOptions(options->drawing);
    command["--layer"].required();
    command.option("--csv", options->drawing.csv, "Write the stations as a table of numbers")
        .typeName("OUT.csv");
    auto every = command
                     .option("--every", options->request.every,
                             "A station every D from the start on, and one at the end "
                             "(default: a station at every vertex)")
                     .typeName("D")
                     .check(positiveLengthError);
    auto at = command.option("--at", options->request.at, "Stations at these running lengths")
                  .typeName("S")
                  .check(lengthError);
    command
        .option("--tick", options->tick,
                "Length of the tick marks to either side of the axis (default: a sixtieth of "
                "the drawing's larger side)")
        .typeName("LENGTH")
        .check(positiveLengthError);
    every.excludes(at);
    command.runs([options, &global = commands.global] { return runStation(*options, global); });
}

}  // namespace calcora::app
