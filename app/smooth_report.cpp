#include "app/smooth_report.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "app/figures.h"
#include "app/svg_writer.h"
#include "app/text.h"

namespace calcora::app {

namespace {

struct Counts {
    long long smoothed = 0;
    long long closed = 0;
    long long kept = 0;  ///< figures that stay as they are
    long long repeats = 0;
    long long given = 0;
    long long points = 0;
    long long lostHeights = 0;
};

Counts countsOf(const SmoothReport& report)
{
    Counts counts;
    for (const SmoothedFigure& figure : report.figures) {
        if (!figure.smoothed) {
            ++counts.kept;
            continue;
        }
        ++counts.smoothed;
        if (figure.curve.closed) ++counts.closed;
        if (figure.heights == Heights::Lost) ++counts.lostHeights;
        counts.repeats += figure.repeats;
        counts.given += figure.given.size();
        counts.points += figure.curve.points.size();
    }
    return counts;
}

const char* heightsName(const SmoothedFigure& figure)
{
    if (!figure.smoothed) return figure.heights == Heights::None ? "none" : "kept";
    switch (figure.heights) {
        case Heights::Level:
            return "kept";
        case Heights::Carried:
            return "carried";
        case Heights::Lost:
            return "lost";
        default:
            return "none";
    }
}

bool hasTolerance(const SmoothReport& report)
{
    return report.request.kind != CurveKind::Akima;
}

nlohmann::json curvesJson(const SmoothReport& report)
{
    nlohmann::json list = nlohmann::json::array();
    for (const SmoothedFigure& figure : report.figures)
        list.push_back(
            {{"layer", report.drawing.layers[static_cast<std::size_t>(figure.curve.layer)]},
             {"smoothed", figure.smoothed},
             {"closed", figure.curve.closed},
             {"given", figure.given.size()},
             {"repeats", figure.repeats},
             {"points", figure.curve.points.size()},
             {"elevations", heightsName(figure)}});
    return list;
}

}  // namespace

const char* curveName(CurveKind kind)
{
    switch (kind) {
        case CurveKind::Tension:
            return "tension";
        case CurveKind::Akima:
            return "akima";
        case CurveKind::Bezier:
            return "bezier";
        case CurveKind::BSpline:
            return "bspline";
        default:
            return "spline";
    }
}

const char* closingName(Closing closing)
{
    switch (closing) {
        case Closing::Yes:
            return "yes";
        case Closing::No:
            return "no";
        default:
            return "auto";
    }
}

std::string tableText(const SmoothReport& report)
{
    const Drawing& drawing = report.drawing;
    const Counts counts = countsOf(report);
    Table table = drawingTable(drawing);
    table.row(std::string(curveName(report.request.kind)) + " curves", countText(counts.smoothed),
              countText(counts.closed) + " of them closed");
    if (counts.kept > 0)
        table.row("kept", countText(counts.kept),
                  "figures as they are, of fewer than three points");
    table.row("given points", countText(counts.given),
              counts.repeats > 0 ? countText(counts.repeats) + " repeats were left out" : "");
    table.row("curve points", countText(counts.points),
              hasTolerance(report) ? "" : "50 for each segment");
    if (counts.lostHeights > 0)
        table.row("levelled", countText(counts.lostHeights),
                  "curves whose elevations change: this kind has none (tension, bezier and bspline "
                  "have)");
    if (hasTolerance(report))
        table.row("tolerance", shortText(report.request.tolerance),
                  report.toleranceIsChosen ? "chosen for the size of the drawing" : "");
    table.row("seconds", secondsText(report.seconds));
    std::string text = report.file + "\n" + table.text();
    if (report.interrupted)
        text += "interrupted: this is what was drawn so far; no file was written\n";
    return text;
}

std::string jsonText(const SmoothReport& report)
{
    const Counts counts = countsOf(report);
    nlohmann::json json = {
        {"file", report.file},
        {"curve", curveName(report.request.kind)},
        {"closed", closingName(report.request.closing)},
        {"tolerance", nullptr},
        {"entities", report.drawing.taken},
        {"skipped", report.drawing.notTaken},
        {"on_other_layers", report.drawing.onOtherLayers},
        {"ellipse_tolerance", report.drawing.ellipseReach},
        {"curves", curvesJson(report)},
        {"smoothed", counts.smoothed},
        {"kept", counts.kept},
        {"given_points", counts.given},
        {"curve_points", counts.points},
        {"interrupted", report.interrupted},
        {"seconds", report.seconds},
    };
    if (hasTolerance(report)) json["tolerance"] = report.request.tolerance;
    // File names and layers may hold bytes that are no UTF-8.
    return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

void drawCurves(OutputFile& out, const SmoothReport& report)
{
    const Drawing& drawing = report.drawing;
    Box extent;
    for (const Figure& figure : drawing.figures)
        extent.add(figureBox(figure.points, figure.bulges, figure.closed));
    for (const SmoothedFigure& figure : report.figures)
        extent.add(figureBox(figure.curve.points, figure.curve.bulges, figure.curve.closed));
    SvgPicture picture(out, extent, report.file + ": " + curveName(report.request.kind));
    const double width = SvgPicture::lineWidth(drawing.segmentCount());

    picture.beginGroup("given", {.stroke = "#9e9e9e", .width = width * 0.6});
    for (const Figure& figure : drawing.figures)
        picture.figure(figure.points, figure.bulges, figure.closed);
    picture.endGroup();

    // One group for each layer, in the order of the layers.
    std::vector<std::vector<const SmoothedFigure*>> layers(drawing.layers.size());
    for (const SmoothedFigure& figure : report.figures)
        layers[static_cast<std::size_t>(figure.curve.layer)].push_back(&figure);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        const std::string colour = darkColour(static_cast<int>(i));
        picture.beginGroup("curves " + drawing.layers[i], {.stroke = colour, .width = width * 1.5});
        for (const SmoothedFigure* figure : layers[i])
            picture.figure(figure->curve.points, figure->curve.bulges, figure->curve.closed);
        picture.endGroup();
        picture.beginGroup("points " + drawing.layers[i], {.fill = colour});
        for (const SmoothedFigure* figure : layers[i])
            for (const tav::Point2DF& point : figure->given) picture.dot(point, width * 2);
        picture.endGroup();
    }
    picture.finish();
}

}  // namespace calcora::app
