#include "app/station_report.h"

#include <algorithm>
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

/// Stations that the picture labels; more would cover each other.
constexpr long long kMostLabels = 1000;

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
    std::vector<std::vector<std::string>> rows = {{"station", "x", "y", "direction", "radius"}};
    for (std::size_t i = 0; i < std::min(axis.stations.size(), kStationsShown); ++i) {
        const Station& station = axis.stations[i];
        rows.push_back({shortText(station.along), shortText(station.place.x()),
                        shortText(station.place.y()), fixedText(degrees(station.direction), 6),
                        station.radius == 0 ? "" : shortText(station.radius)});
    }
    std::vector<std::size_t> widths(rows[0].size(), 0);
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    std::string text;
    for (const auto& row : rows) {
        text += "  ";
        for (std::size_t i = 0; i < row.size(); ++i)
            text.append(widths[i] - row[i].size() + 2, ' ').append(row[i]);
        text.erase(text.find_last_not_of(' ') + 1);
        text += "\n";
    }
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
    if (extent.isEmpty()) return extent;
    const double room = std::max(extent.width(), extent.height()) / 24;
    return {extent.minX - room, extent.minY - room, extent.maxX + room, extent.maxY + room};
}

}  // namespace

std::string tableText(const StationReport& report)
{
    const Drawing& drawing = report.drawing;
    Table table;
    table.row("entities", countText(drawing.entityCount()), kindsText(drawing.taken));
    if (!drawing.notTaken.empty()) {
        int notTaken = 0;
        for (const auto& [kind, number] : drawing.notTaken) notTaken += number;
        table.row("not taken", countText(notTaken), kindsText(drawing.notTaken));
    }
    if (drawing.onOtherLayers > 0) table.row("on other layers", countText(drawing.onOtherLayers));
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
    picture.beginGroup("ticks", {.stroke = "#d32f2f", .width = SvgPicture::lineWidth(count)});
    for (const AxisReport& axis : report.axes)
        for (const Tick& tick : axis.ticks)
            picture.figure({tick.left, tick.right}, {0.0, 0.0}, false);
    picture.endGroup();

    if (count <= kMostLabels) {
        picture.beginGroup("labels", {.fill = "#37474f"});
        for (const AxisReport& axis : report.axes)
            for (std::size_t i = 0; i < axis.stations.size(); ++i)
                picture.label(axis.ticks[i].left, axis.stations[i].direction + std::numbers::pi / 2,
                              fixedText(axis.stations[i].along, 3));
        picture.endGroup();
    }
    picture.finish();
}

}  // namespace calcora::app
