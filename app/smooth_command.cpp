// calcora smooth: smooth curves through the points of a drawing.
#include <algorithm>
#include <array>
#include <memory>

#include "app/command_run.h"
#include "app/commands.h"
#include "app/dxf_groups.h"
#include "app/dxf_writer.h"
#include "app/host.h"
#include "app/smooth_report.h"
#include "app/text.h"
#include "app/user_error.h"

namespace calcora::app {

namespace {

/// Tolerance when none is asked for, as a share of the drawing's larger side: a pixel in ten on a
/// screen that shows the whole drawing.
constexpr double kChosenToleranceShare = 1e-4;

/// A finer tolerance, as a share of the drawing's larger side, counts as this: it would give points
/// by the million and nothing to see.
constexpr double kFinestToleranceShare = 1e-9;

constexpr std::array kKinds = {CurveKind::Spline, CurveKind::Tension, CurveKind::Akima,
                               CurveKind::Bezier, CurveKind::BSpline};
constexpr std::array kClosings = {Closing::Auto, Closing::Yes, Closing::No};

struct SmoothOptions {
    DrawingOptions drawing;
    std::string curve;
    std::string closing = "auto";
    double tolerance = 0;  ///< 0: chosen
};

/// The value with that name; nothing when there is none.
template <class Values, class NameOf>
const auto* named(const Values& values, NameOf nameOf, const std::string& word)
{
    const auto place = std::find_if(values.begin(), values.end(),
                                    [&](auto value) { return word == nameOf(value); });
    return place == values.end() ? nullptr : &*place;
}

std::string curveError(const std::string& word)
{
    return named(kKinds, curveName, word)
               ? ""
               : "\"" + word + "\" is none of spline, tension, akima, bezier, bspline";
}

std::string closingError(const std::string& word)
{
    return named(kClosings, closingName, word) ? "" : "\"" + word + "\" is none of auto, yes, no";
}

std::string toleranceError(const std::string& word)
{
    const auto number = dxfNumber(word);
    return number && *number > 0 ? "" : "\"" + word + "\" is no length above 0";
}

void settleTolerance(double asked, SmoothReport& report)
{
    const double side = largestSide(report.drawing);
    report.toleranceIsChosen = asked == 0;
    report.request.tolerance = report.toleranceIsChosen
                                   ? kChosenToleranceShare * side
                                   : std::max(asked, kFinestToleranceShare * side);
}

void writeCurves(OutputFile& out, const SmoothReport& report)
{
    std::vector<DxfLayer> layers;
    for (const std::string& name : report.drawing.layers) layers.push_back({.name = name});
    std::vector<Figure> figures;
    for (const SmoothedFigure& figure : report.figures) figures.push_back(figure.curve);
    writeDxf(out, layers, figures);
}

int runSmooth(const SmoothOptions& options, const GlobalOptions& global)
{
    CommandRun run(options.drawing);
    const Host host(global.pluginFolder);
    SmoothReport report;
    report.file = options.drawing.input;
    report.request.kind = *named(kKinds, curveName, options.curve);
    report.request.closing = *named(kClosings, closingName, options.closing);
    report.drawing = run.readDrawing();
    settleTolerance(options.tolerance, report);
    run.work(
        "smoothing " + countText(static_cast<long long>(report.drawing.figures.size())) + " lines",
        [&](const Interrupt& interrupt) {
            const auto common = host.create<IcommonFunc>();
            for (const Figure& figure : report.drawing.figures) {
                if (interrupt.raised()) break;
                report.figures.push_back(smoothed(*common, figure, report.request));
            }
        },
        [&](Outputs& outputs) {
            if (outputs.dxf()) writeCurves(*outputs.dxf(), report);
            if (outputs.svg()) drawCurves(*outputs.svg(), report);
        });
    return run.answerWith(report);
}

}  // namespace

void addSmoothCommand(Commands& commands)
{
    auto options = std::make_shared<SmoothOptions>();
    Command command = commands.add("smooth",
                                   "Draw smooth curves through the points of a drawing's "
                                   "lines; layers and elevations stay");
    command.drawingOptions(options->drawing);
    command["--output"].required();
    command
        .option("--curve", options->curve,
                "spline (cubic), tension (stiffer, hardly overshoots), akima (local, calm; 50 "
                "points for each segment), bezier (local, round) or bspline (smoothest, "
                "passes beside the points)")
        .typeName("spline|tension|akima|bezier|bspline")
        .required()
        .check(curveError);
    command
        .option("--closed", options->closing,
                "auto, the default: close what is closed or ends where it begins; yes: close "
                "every line; no: leave a corner where ends meet (akima and bezier close such "
                "lines all the same)")
        .typeName("auto|yes|no")
        .check(closingError);
    command
        .option("--tolerance", options->tolerance,
                "Largest distance between a curve and its chords, in drawing units (default: "
                "a ten-thousandth of the drawing's larger side; akima takes none)")
        .typeName("T")
        .check(toleranceError);
    command.footer(
        "Arcs in the drawing become points at most 11.25 degrees apart, through which the curve "
        "is drawn. Lines of two points stay as they are. Elevations run along tension, bezier and "
        "bspline curves; spline and akima keep those of level lines and lose others.");
    command.runs([options, &global = commands.global] { return runSmooth(*options, global); });
}

}  // namespace calcora::app
