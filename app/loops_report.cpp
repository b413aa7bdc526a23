#include "app/loops_report.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "app/figures.h"
#include "app/svg_writer.h"
#include "app/text.h"

namespace calcora::app {

namespace {

/// Dangles whose place the table gives.
constexpr std::size_t kPlacesShown = 5;

const char* kindName(LoopKind kind)
{
    switch (kind) {
        case LoopKind::Outlines:
            return "outlines";
        case LoopKind::Gaps:
            return "gaps";
        default:
            return "loops";
    }
}

struct AreaSummary {
    double total = 0;  ///< what the loops cover; a loop inside another adds nothing
    double sum = 0;    ///< of the loops' areas
    double smallest = 0;
    double largest = 0;
};

AreaSummary areaSummary(const LoopsReport& report)
{
    AreaSummary areas;
    if (report.measures.empty()) return areas;
    areas.smallest = report.measures.front().area;
    for (std::size_t i = 0; i < report.measures.size(); ++i) {
        const double area = report.measures[i].area;
        areas.sum += area;
        if (!report.nested[i]) areas.total += area;
        areas.smallest = std::min(areas.smallest, area);
        areas.largest = std::max(areas.largest, area);
    }
    for (double* area : {&areas.total, &areas.sum, &areas.smallest, &areas.largest})
        *area = report.scale.unscaledArea(*area);
    return areas;
}

double dangleLength(const LoopsReport& report)
{
    double length = 0;
    for (const Dangle& dangle : report.dangles) length += dangle.length;
    return report.scale.unscaled(length);
}

std::string scaleRemark(const LoopsReport& report)
{
    std::string text;
    if (report.scaleIsChosen)
        text = report.scale.exponent() == 0 ? "chosen: none needed" : "chosen for short segments";
    if (report.shortSegments > 0)
        text += (text.empty() ? "" : "; ") + countText(report.shortSegments) +
                " segments stay shorter than 0.05 of its units";
    return text;
}

void addDangleRows(const LoopsReport& report, Table& table)
{
    if (!report.hasDangles) return;
    const auto& dangles = report.dangles;
    table.row("dangles", countText(static_cast<long long>(dangles.size())),
              dangles.empty()
                  ? ""
                  : "pieces of line that bound no loop, length " + shortText(dangleLength(report)));
    for (std::size_t i = 0; i < std::min(dangles.size(), kPlacesShown); ++i) {
        const Dangle& dangle = dangles[i];
        table.note((dangle.hasFreeEnd ? "free end at " : "bridge at ") +
                   placeText(report.scale.unscaled(dangle.place)) + "  length " +
                   shortText(report.scale.unscaled(dangle.length)) + "  layer " +
                   report.drawing.layers[static_cast<std::size_t>(dangle.layer)]);
    }
    if (dangles.size() > kPlacesShown)
        table.note("and " + countText(static_cast<long long>(dangles.size() - kPlacesShown)) +
                   " more (--json lists all)");
}

nlohmann::json placeJson(const tav::Point2DF& place)
{
    return {place.x(), place.y()};
}

nlohmann::json loopsJson(const LoopsReport& report)
{
    nlohmann::json list = nlohmann::json::array();
    for (std::size_t i = 0; i < report.loops.size(); ++i) {
        const LoopMeasures& measures = report.measures[i];
        const auto& inner = report.innerPoints[i];
        list.push_back({{"area", report.scale.unscaledArea(measures.area)},
                        {"length", report.scale.unscaled(measures.length)},
                        {"vertices", report.loops[i].points.size()},
                        {"arcs", measures.arcs},
                        {"nested", static_cast<bool>(report.nested[i])},
                        {"inner_point", inner ? placeJson(report.scale.unscaled(*inner))
                                              : nlohmann::json(nullptr)}});
    }
    return list;
}

nlohmann::json danglesJson(const LoopsReport& report)
{
    if (!report.hasDangles) return nullptr;
    nlohmann::json list = nlohmann::json::array();
    for (const Dangle& dangle : report.dangles)
        list.push_back({{"place", placeJson(report.scale.unscaled(dangle.place))},
                        {"length", report.scale.unscaled(dangle.length)},
                        {"layer", report.drawing.layers[static_cast<std::size_t>(dangle.layer)]},
                        {"free_end", dangle.hasFreeEnd}});
    return list;
}

}  // namespace

std::string tableText(const LoopsReport& report)
{
    const Drawing& drawing = report.drawing;
    Table table = drawingTable(drawing);
    table.row("segments", countText(drawing.segmentCount()),
              drawing.ellipseReach > 0
                  ? "ellipses as chords within " + shortText(drawing.ellipseReach)
                  : "");
    table.row("scale", "2^" + std::to_string(report.scale.exponent()), scaleRemark(report));

    table.row(kindName(report.kind), countText(static_cast<long long>(report.loops.size())),
              report.interrupted ? "found before the interruption" : "");
    if (report.leftOut > 0)
        table.row("left out", countText(report.leftOut), "loops of a single point");
    const AreaSummary areas = areaSummary(report);
    const auto nested = std::count(report.nested.begin(), report.nested.end(), true);
    table.row("total area", shortText(areas.total),
              nested > 0
                  ? countText(nested) + " loops lie inside others and add nothing (sum of all " +
                        shortText(areas.sum) + ")"
                  : "");
    table.row("smallest", shortText(areas.smallest));
    table.row("largest", shortText(areas.largest));
    addDangleRows(report, table);
    table.row("seconds", secondsText(report.seconds),
              secondsText(report.extractionSeconds) + " of them for the extraction");
    std::string text = report.file + "\n" + table.text();
    if (report.interrupted)
        text += "interrupted: this is what was found so far; no file was written\n";
    return text;
}

std::string jsonText(const LoopsReport& report)
{
    const AreaSummary areas = areaSummary(report);
    nlohmann::json json = {
        {"file", report.file},
        {"kind", kindName(report.kind)},
        {"entities", report.drawing.taken},
        {"skipped", report.drawing.notTaken},
        {"on_other_layers", report.drawing.onOtherLayers},
        {"ellipse_tolerance", report.drawing.ellipseReach},
        {"segments", report.drawing.segmentCount()},
        {"scale", report.scale.exponent()},
        {"short_segments", report.shortSegments},
        {"snap", report.snap},
        {"area", areas.total},
        {"area_sum", areas.sum},
        {"smallest_area", areas.smallest},
        {"largest_area", areas.largest},
        {"loops", loopsJson(report)},
        {"left_out", report.leftOut},
        {"dangles", danglesJson(report)},
        {"interrupted", report.interrupted},
        {"seconds", report.seconds},
        {"extraction_seconds", report.extractionSeconds},
    };
    // File names and layers may hold bytes that are no UTF-8.
    return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

void drawLoops(OutputFile& out, const LoopsReport& report)
{
    constexpr std::size_t kMostTips = 20000;  // more would make the picture slow
    const Drawing& drawing = report.drawing;
    Box extent;
    for (const Figure& figure : drawing.figures)
        extent.add(figureBox(figure.points, figure.bulges, figure.closed));
    SvgPicture picture(out, extent, report.file + ": " + kindName(report.kind));

    picture.beginGroup(kindName(report.kind), {.stroke = "none"});
    for (std::size_t i = report.loops.size(); i-- > 0;) {
        const Loop& loop = report.loops[i];
        std::string tip;
        if (report.loops.size() <= kMostTips)
            tip = "loop " + std::to_string(i + 1) + ", area " +
                  shortText(report.scale.unscaledArea(report.measures[i].area));
        picture.figure(report.scale.unscaled(loop.points), loop.bulges, true,
                       lightColour(static_cast<int>(i)), tip);
    }
    picture.endGroup();

    const double width = SvgPicture::lineWidth(drawing.segmentCount());
    picture.beginGroup("drawing", {.stroke = "#37474f", .width = width});
    for (const Figure& figure : drawing.figures)
        picture.figure(figure.points, figure.bulges, figure.closed);
    picture.endGroup();

    picture.beginGroup("dangles", {.stroke = "#d32f2f", .width = width * 1.8});
    for (const Dangle& dangle : report.dangles)
        picture.figure(report.scale.unscaled(Points{dangle.from, dangle.to}), {dangle.bulge, 0.0},
                       false);
    picture.endGroup();
    picture.beginGroup("free-ends", {.fill = "#d32f2f"});
    for (const Dangle& dangle : report.dangles)
        if (dangle.hasFreeEnd) picture.dot(report.scale.unscaled(dangle.place), width * 2.4);
    picture.endGroup();
    picture.finish();
}

}  // namespace calcora::app
