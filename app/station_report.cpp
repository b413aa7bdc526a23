#include "app/station_report.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>

#include "app/dxf_writer.h"
#include "app/figures.h"
#include "app/svg_writer.h"
#include "app/text.h"

namespace calcora::app {

namespace {

/// Stations of an axis that the table gives.
constexpr std::size_t kStationsShown = 100;

/// Decimals of a degree in the table: a fifth of a millimetre on a kilometre.
constexpr int kDirectionDecimals = 5;

/// Labels, and dots at vertices, that the picture has room for.
constexpr long long kMostLabels = 1000;

/// How far apart two labels must begin to be read, in units of the page.
constexpr double kLabelRoom = 13;

double degrees(double radians)
{
    return radians * 180 / std::numbers::pi;
}

long long stationCount(const StationReport& report)
{
    long long count = 0;
    for (const AxisReport& axis : report.axes)
        count += static_cast<long long>(axis.stations.size());
    return count;
}

std::string axisRemark(const AxisReport& axis)
{
    std::string text = countText(axis.segments) + (axis.segments == 1 ? " segment" : " segments");
    if (axis.arcs > 0) text += ", " + countText(axis.arcs) + " of them arcs";
    return axis.figure->closed ? text + ", closed" : text;
}

/// The stations in columns, as wide as they need.
std::string columnsText(const AxisReport& axis)
{
    // A millionth of the axis, but no fewer than the millimetres of metres.
    const int decimals = std::clamp(6 - static_cast<int>(std::log10(axis.length)), 3, 12);
    std::vector<std::vector<std::string>> rows = {{"station", "x", "y", "direction", "radius"}};
    for (std::size_t i = 0; i < std::min(axis.stations.size(), kStationsShown); ++i) {
        const Station& station = axis.stations[i];
        rows.push_back({columnText(station.along, decimals),
                        columnText(station.place.x(), decimals),
                        columnText(station.place.y(), decimals),
                        columnText(degrees(station.direction), kDirectionDecimals),
                        station.radius == 0 ? "" : shortText(station.radius)});
    }
    std::string text = alignedText(rows);
    if (axis.stations.size() > kStationsShown)
        text += "    and " +
                countText(static_cast<long long>(axis.stations.size() - kStationsShown)) +
                " more (--csv and --json list all)\n";
    return text;
}

std::string axisText(const AxisReport& axis)
{
    Table table;
    table.row("axis " + std::to_string(axis.number), shortText(axis.length), axisRemark(axis));
    std::string text = table.text();
    if (!axis.stations.empty()) text += columnsText(axis);
    if (!axis.beyond.empty()) {
        text += "    beyond the end:";
        for (const double station : axis.beyond) text.append(" ").append(shortText(station));
        text += "\n";
    }
    return text;
}

nlohmann::json stationsJson(const AxisReport& axis)
{
    nlohmann::json list = nlohmann::json::array();
    for (const Station& station : axis.stations)
        list.push_back({{"station", station.along},
                        {"point", {station.place.x(), station.place.y()}},
                        {"direction", degrees(station.direction)},
                        {"radius", station.radius == 0 ? nlohmann::json(nullptr)
                                                       : nlohmann::json(station.radius)}});
    return list;
}

/// What is drawn, and room for the labels on either side.
Box extentOf(const StationReport& report)
{
    Box extent;
    for (const AxisReport& axis : report.axes) {
        extent.add(figureBox(axis.figure->points, axis.figure->bulges, axis.figure->closed));
        for (const Tick& tick : axis.ticks) {
            extent.add(tick.left);
            extent.add(tick.right);
        }
    }
    const double room = std::max(extent.width(), extent.height()) / 24;
    return {extent.minX - room, extent.minY - room, extent.maxX + room, extent.maxY + room};
}

long long vertexCount(const StationReport& report)
{
    long long count = 0;
    for (const AxisReport& axis : report.axes) count += axis.figure->points.size();
    return count;
}

/// A label beside the axis: where it begins and about where it ends.
struct LabelPlace {
    tav::Point2DF begin;
    tav::Point2DF end;
};

LabelPlace labelPlace(const SvgPicture& picture, const tav::Point2DF& begin, double direction,
                      const std::string& text)
{
    constexpr double kSignWidth = 7;
    const double length = kSignWidth * static_cast<double>(text.size()) / picture.onPage(1);
    return {begin,
            begin + tav::Point2DF(length * std::cos(direction), length * std::sin(direction))};
}

/// Writes running lengths to the left of the axis, as many as have room; that of the end on its
/// right when the left is taken. Gives the number of labels.
long long labelStations(SvgPicture& picture, const AxisReport& axis)
{
    constexpr double kQuarter = std::numbers::pi / 2;
    long long labels = 0;
    LabelPlace last;
    for (std::size_t i = 0; i < axis.stations.size() && labels < kMostLabels; ++i) {
        const Station& station = axis.stations[i];
        const std::string text = fixedText(station.along, 3);
        const double leftwards = station.direction + kQuarter;
        const LabelPlace place = labelPlace(picture, axis.ticks[i].left, leftwards, text);
        const double apart =
            std::min(place.begin.distanceTo(last.begin), place.end.distanceTo(last.end));
        if (i == 0 || picture.onPage(apart) >= kLabelRoom) {
            picture.label(place.begin, leftwards, text);
            last = place;
        } else if (i + 1 == axis.stations.size()) {
            picture.label(axis.ticks[i].right, station.direction - kQuarter, text);
        } else {
            continue;
        }
        ++labels;
    }
    return labels;
}

}  // namespace

std::string tableText(const StationReport& report)
{
    const Drawing& drawing = report.drawing;
    Table table = drawingTable(drawing);
    if (drawing.ellipseReach > 0)
        table.row("ellipses", "as chords", "within " + shortText(drawing.ellipseReach));
    table.row("axes", countText(static_cast<long long>(report.axes.size())));
    table.row("stations", countText(stationCount(report)));
    table.row("seconds", secondsText(report.seconds));
    std::string text = report.file + "\n" + table.text();
    for (const AxisReport& axis : report.axes) text += axisText(axis);
    if (report.interrupted)
        text += "interrupted: this is what was found so far; no file was written\n";
    return text;
}

std::string jsonText(const StationReport& report)
{
    nlohmann::json axes = nlohmann::json::array();
    for (const AxisReport& axis : report.axes)
        axes.push_back(
            {{"number", axis.number},
             {"layer", report.drawing.layers[static_cast<std::size_t>(axis.figure->layer)]},
             {"closed", axis.figure->closed},
             {"length", axis.length},
             {"segments", axis.segments},
             {"arcs", axis.arcs},
             {"stations", stationsJson(axis)},
             {"beyond", axis.beyond}});
    const nlohmann::json json = {
        {"file", report.file},
        {"entities", report.drawing.taken},
        {"skipped", report.drawing.notTaken},
        {"on_other_layers", report.drawing.onOtherLayers},
        {"ellipse_tolerance", report.drawing.ellipseReach},
        {"axes", axes},
        {"tick", report.tick},
        {"interrupted", report.interrupted},
        {"seconds", report.seconds},
    };
    return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

void writeCsv(OutputFile& out, const StationReport& report)
{
    out.write("axis,station,x,y,direction,radius\n");
    for (const AxisReport& axis : report.axes)
        for (const Station& station : axis.stations) {
            std::string line = std::to_string(axis.number);
            for (const double value :
                 {station.along, station.place.x(), station.place.y(), degrees(station.direction)})
                line.append(",").append(exactText(value));
            line += ",";
            if (station.radius != 0) line += exactText(station.radius);
            out.write(line + "\n");
        }
}

void writeStations(OutputFile& out, const StationReport& report)
{
    constexpr int kRed = 1;
    constexpr int kBlackOrWhite = 7;
    constexpr int kAxes = 0;
    constexpr int kStations = 1;
    std::vector<Figure> figures;
    for (const AxisReport& axis : report.axes) {
        figures.push_back(*axis.figure);
        figures.back().layer = kAxes;
        for (const Tick& tick : axis.ticks) {
            Figure mark;
            mark.points = {tick.left, tick.right};
            mark.bulges = {0.0, 0.0};
            mark.layer = kStations;
            figures.push_back(std::move(mark));
        }
    }
    writeDxf(out, {{"AXES", kBlackOrWhite}, {"STATIONS", kRed}}, figures);
}

void drawStations(OutputFile& out, const StationReport& report)
{
    SvgPicture picture(out, extentOf(report), report.file + ": stations");
    picture.beginGroup("axes", {.stroke = "#37474f", .width = 1.6});
    for (const AxisReport& axis : report.axes)
        picture.figure(
            axis.figure->points, axis.figure->bulges, axis.figure->closed, {},
            "axis " + std::to_string(axis.number) + ", length " + shortText(axis.length));
    picture.endGroup();

    const long long count = stationCount(report);
    if (vertexCount(report) <= kMostLabels) {
        picture.beginGroup("vertices", {.fill = "#37474f"});
        for (const AxisReport& axis : report.axes)
            for (const tav::Point2DF& vertex : axis.figure->points) picture.dot(vertex, 2.4);
        picture.endGroup();
    }
    picture.beginGroup("ticks", {.stroke = "#d32f2f", .width = SvgPicture::lineWidth(count)});
    for (const AxisReport& axis : report.axes)
        for (const Tick& tick : axis.ticks)
            picture.figure({tick.left, tick.right}, {0.0, 0.0}, false);
    picture.endGroup();

    picture.beginGroup("labels", {.fill = "#37474f"});
    long long labels = 0;
    for (const AxisReport& axis : report.axes) {
        if (labels > kMostLabels) break;
        labels += labelStations(picture, axis);
        if (report.axes.size() == 1 || axis.stations.empty()) continue;
        const Station& end = axis.stations.back();
        if (end.along >= axis.length)
            picture.label(end.place, end.direction, "axis " + std::to_string(axis.number));
    }
    picture.endGroup();
    picture.finish();
}

}  // namespace calcora::app
