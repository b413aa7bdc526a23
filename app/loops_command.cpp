// calcora loops: closed loops from a drawing.
#include <memory>

#include "app/command_run.h"
#include "app/commands.h"
#include "app/dangles.h"
#include "app/dxf_groups.h"
#include "app/dxf_writer.h"
#include "app/host.h"
#include "app/loops_report.h"
#include "app/nesting.h"
#include "app/text.h"

namespace calcora::app {

namespace {

struct LoopsOptions {
    DrawingOptions drawing;
    bool outer = false;
    bool directed = false;
    double snap = 0;
    std::string scale = "auto";
};

LoopKind wantedKind(const LoopsOptions& options)
{
    if (options.outer) return LoopKind::Outlines;
    return options.directed ? LoopKind::Gaps : LoopKind::Regions;
}

/// Takes the exponent asked for, or chooses one.
void settleScale(const std::string& asked, LoopsReport& report)
{
    if (asked == "auto") {
        const ScaleChoice choice = chooseScale(report.drawing);
        report.scale = ExactScale(choice.exponent);
        report.shortSegments = choice.shortSegments;
        report.scaleIsChosen = true;
    } else {
        report.scale = ExactScale(dxfInteger(asked).value_or(0));
        report.shortSegments = countShortSegments(report.drawing, report.scale);
    }
}

/// Regions are what dangles are told from, whatever kind of loop is asked for: inside an outline
/// the walls between regions bound no outline, but regions.
void findLineEnds(const Host& host, const LineWork& work, bool* cancel, LoopsReport& report)
{
    if (report.kind == LoopKind::Gaps) return;
    const std::vector<Loop>* regions = &report.loops;
    LoopResult others;
    if (report.kind == LoopKind::Outlines) {
        const auto dataGeo = host.create<IDataGeo>();
        others =
            extractLoops(*dataGeo, work, {LoopKind::Regions, report.snap, report.scale}, cancel);
        regions = &others.loops;
    }
    if (*cancel) return;
    const auto common = host.create<IcommonFunc>();
    const auto tree = host.create<ICRTree>();
    report.dangles = findDangles(*common, *tree, work, *regions, report.scale.scaled(report.snap));
    report.hasDangles = true;
}

LoopsReport makeReport(const Host& host, const LoopsOptions& options, Drawing drawing,
                       Interrupt& interrupt)
{
    LoopsReport report;
    report.file = options.drawing.input;
    report.drawing = std::move(drawing);
    report.kind = wantedKind(options);
    report.snap = options.snap;
    settleScale(options.scale, report);

    const LineWork work = lineWork(report.drawing, report.scale);
    const auto dataGeo = host.create<IDataGeo>();
    LoopResult found =
        extractLoops(*dataGeo, work, {report.kind, report.snap, report.scale}, interrupt.flag());
    report.loops = std::move(found.loops);
    report.leftOut = found.leftOut;
    report.extractionSeconds = found.seconds;
    report.interrupted = interrupt.raised();
    if (!report.interrupted) findLineEnds(host, work, interrupt.flag(), report);

    report.nested = findNestedLoops(host, report.loops);
    const auto common = host.create<IcommonFunc>();
    for (const Loop& loop : report.loops) {
        report.measures.push_back(measureLoop(*common, loop));
        if (options.drawing.json) report.innerPoints.push_back(innerPoint(*common, loop));
    }
    return report;
}

void writeLoops(OutputFile& out, const LoopsReport& report)
{
    std::vector<Figure> figures;
    for (const Loop& loop : report.loops) {
        Figure figure;
        figure.points = report.scale.unscaled(loop.points);
        figure.bulges = loop.bulges;
        figure.closed = true;
        figures.push_back(std::move(figure));
    }
    constexpr int kBlue = 5;
    writeDxf(out, {{"LOOPS", kBlue}}, figures);
}

/// What is wrong with the word behind --scale; empty when nothing is.
std::string scaleError(const std::string& word)
{
    const auto exponent = dxfInteger(word);
    const bool good = word == "auto" || (exponent && *exponent >= kSmallestScaleExponent &&
                                         *exponent <= kLargestScaleExponent);
    return good ? "" : "\"" + word + "\" is neither auto nor an integer from -64 to 64";
}

int runLoops(const LoopsOptions& options, const GlobalOptions& global)
{
    CommandRun run(options.drawing);
    const Host host(global.pluginFolder);
    Drawing drawing = run.readDrawing();
    LoopsReport report;
    run.work(
        "building loops from " + countText(drawing.segmentCount()) + " segments",
        [&](Interrupt& interrupt) {
            report = makeReport(host, options, std::move(drawing), interrupt);
        },
        [&](Outputs& outputs) {
            if (outputs.dxf()) writeLoops(*outputs.dxf(), report);
            if (outputs.svg()) drawLoops(*outputs.svg(), report);
        });
    return run.answerWith(report);
}

}  // namespace

void addLoopsCommand(Commands& commands)
{
    auto options = std::make_shared<LoopsOptions>();
    Command command =
        commands.add("loops", "Find the closed loops that the lines of a drawing form");
    command.drawingOptions(options->drawing);
    auto outer = command.flag("--outer", options->outer,
                              "Outer boundaries of connected parts instead of regions");
    auto directed = command.flag("--directed", options->directed,
                                 "Gaps enclosed between closed figures instead of regions");
    auto snap = command
                    .option("--snap", options->snap,
                            "Join points that lie within TOL of each other in x and in y, "
                            "in drawing units (default: 0, none)")
                    .typeName("TOL")
                    .check(lengthError);
    command
        .option("--scale", options->scale,
                "Work with coordinates multiplied by 2^K, for details that are small against "
                "the tolerances (0.05 and below); auto, the default, takes the K that the "
                "drawing needs")
        .typeName("K|auto")
        .check(scaleError);
    outer.excludes(directed);
    snap.excludes(directed);
    command.runs([options, &global = commands.global] { return runLoops(*options, global); });
}

}  // namespace calcora::app
