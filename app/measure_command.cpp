// calcora measure: what the figures on each layer measure.
#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

#include "app/commands.h"
#include "app/figure_tool.h"
#include "app/figures.h"
#include "app/loop_extraction.h"

namespace calcora::app {

namespace {

using tav::Point2DF;

/// Figures that the table shows of a layer; all are in the JSON answer.
constexpr std::size_t kFiguresShown = 20;

/// Area below this share of the box of a figure is rounding.
constexpr double kNoAreaShare = 1e-12;

/// Sums of areas and of areas times places, relative to an origin.
struct Moment {
    double area = 0;  ///< positive counter-clockwise
    double x = 0;
    double y = 0;

    void add(double part, const Point2DF& place)
    {
        area += part;
        x += part * place.x();
        y += part * place.y();
    }
    Point2DF centroid() const { return {x / area, y / area}; }
};

struct Measures {
    double length = 0;
    Box box;
    double area = 0;  ///< positive counter-clockwise, 0 for an open figure
    std::optional<Point2DF> centroid;
    std::optional<Point2DF> inner;
};

/// Adds the area between an arc of at most a half circle and its chord. Its centroid lies on the
/// arc's side, chord³ / (12 area) from the centre.
void addArcSegment(IcommonFunc& common, const Point2DF& from, const Point2DF& to, double bulge,
                   Moment& moment)
{
    const double chord = common.pointDist(from, to);
    if (!(std::fabs(bulge) >= kSmallestArcBulge) || !(chord > 0)) return;
    const double area = common.bulgeSegmentArea(from, to, bulge);
    Point2DF centre;
    common.bulgeArcCenter(from, to, bulge, centre, nullptr);
    // The arc lies to the right of its chord when the bulge is positive. Side and sign of the area
    // change together, so the part of the moment beside the centre keeps its sign.
    const double signedArea = bulge > 0 ? area : -area;
    const double pull = chord * chord / 12;
    moment.area += signedArea;
    moment.x += signedArea * centre.x() + pull * (to.y() - from.y());
    moment.y += signedArea * centre.y() - pull * (to.x() - from.x());
}

/// Area and moment of a closed figure; take it near the origin.
Moment momentOf(IcommonFunc& common, const Points& points, const Values& bulges)
{
    Moment moment;
    const int count = points.size();
    for (int i = 1; i + 1 < count; ++i)
        moment.add(common.orientation3(points.at(0), points.at(i), points.at(i + 1)) / 2,
                   common.triangleCentroid(points.at(0), points.at(i), points.at(i + 1)));
    for (int i = 0; i < count; ++i) {
        const Point2DF& from = points.at(i);
        const Point2DF& to = points.at((i + 1) % count);
        const double bulge = bulges.at(i);
        if (!(std::fabs(bulge) > 1)) {
            addArcSegment(common, from, to, bulge, moment);
            continue;
        }
        // More than a half circle: two arcs over the triangle to its middle.
        const Point2DF middle = common.arcMidPoint(from, to, bulge);
        const double half = std::tan(std::atan(bulge) / 2);
        moment.add(common.orientation3(from, middle, to) / 2,
                   common.triangleCentroid(from, middle, to));
        addArcSegment(common, from, middle, half, moment);
        addArcSegment(common, middle, to, half, moment);
    }
    return moment;
}

Measures measure(IcommonFunc& common, const Figure& figure)
{
    Measures measures;
    measures.length = common.bulgePolylineLength(figure.points, figure.bulges, figure.closed);
    Point2DF low, high;
    common.bulgePolylineExtents(figure.points, figure.bulges, figure.closed, low, high, 0.0);
    measures.box.add(low);
    measures.box.add(high);
    if (!figure.closed) return measures;

    // Close to the origin, so that far coordinates cost no digits.
    const Point2DF origin = figure.points.first();
    Points local;
    common.translatePoints(figure.points, origin.x(), origin.y(), local);
    const Moment moment = momentOf(common, local, figure.bulges);
    const double boxArea = measures.box.width() * measures.box.height();
    if (!(std::fabs(moment.area) > kNoAreaShare * boxArea)) return measures;
    measures.area = moment.area;
    measures.centroid = moment.centroid() + origin;
    measures.inner = innerPoint(common, {figure.points, figure.bulges});
    return measures;
}

const char* orientationName(const Measures& measures)
{
    if (measures.area == 0) return "none";
    return measures.area > 0 ? "counter-clockwise" : "clockwise";
}

std::string placeOrNothing(const std::optional<Point2DF>& place)
{
    return place ? placeText(*place) : "-";
}

nlohmann::json placeOrNull(const std::optional<Point2DF>& place)
{
    return place ? placeJson(*place) : nlohmann::json(nullptr);
}

nlohmann::json boxJson(const Box& box)
{
    return nlohmann::json::array({box.minX, box.minY, box.maxX, box.maxY});
}

std::string boxText(const Box& box)
{
    return placeText({box.minX, box.minY}) + " to " + placeText({box.maxX, box.maxY});
}

/// What a layer measures, figure by figure and together.
struct LayerMeasures {
    std::vector<Measures> figures;
    std::vector<Figure> shapes;
    int closed = 0;
    double length = 0;
    double area = 0;  ///< of all figures, without sign
    Box box;
    Point2DF moment;  ///< areas times centroids, relative to `origin`
    Point2DF origin;

    void add(const Figure& shape, const Measures& measures)
    {
        if (figures.empty()) origin = shape.points.first();
        figures.push_back(measures);
        shapes.push_back(shape);
        closed += shape.closed ? 1 : 0;
        length += measures.length;
        area += std::fabs(measures.area);
        box.add(measures.box);
        if (measures.centroid)
            moment = moment + std::fabs(measures.area) * (*measures.centroid - origin);
    }
    std::optional<Point2DF> centroid() const
    {
        if (!(area > 0)) return std::nullopt;
        return origin + (1 / area) * moment;
    }
};

/// The figures of a layer in columns, as wide as they need.
std::string columnsText(const LayerMeasures& layer)
{
    std::vector<std::vector<std::string>> rows = {
        {"number", "length", "area", "orientation", "centroid", "inner point", "extents"}};
    for (std::size_t i = 0; i < std::min(layer.figures.size(), kFiguresShown); ++i) {
        const Measures& measures = layer.figures[i];
        const bool closed = layer.shapes[i].closed;
        rows.push_back({std::to_string(i + 1), shortText(measures.length),
                        closed ? shortText(std::fabs(measures.area)) : "-",
                        closed ? orientationName(measures) : "open",
                        placeOrNothing(measures.centroid), placeOrNothing(measures.inner),
                        boxText(measures.box)});
    }
    std::string text = alignedText(rows);
    if (layer.figures.size() > kFiguresShown)
        text += "    ... and " +
                countText(static_cast<long long>(layer.figures.size() - kFiguresShown)) +
                " more (all with --json)\n";
    return text;
}

void report(const std::string& name, const LayerMeasures& layer, ToolResult& result)
{
    Table table;
    table.row("figures", countText(static_cast<long long>(layer.figures.size())),
              countText(layer.closed) + " of them closed");
    table.row("length", shortText(layer.length));
    if (layer.closed > 0) table.row("area", shortText(layer.area));
    if (layer.centroid()) table.row("centroid", placeText(*layer.centroid()));
    table.row("extents", boxText(layer.box));
    result.details += "layer " + name + "\n" + table.text() + columnsText(layer);

    nlohmann::json figures = nlohmann::json::array();
    for (std::size_t i = 0; i < layer.figures.size(); ++i) {
        const Measures& measures = layer.figures[i];
        figures.push_back({{"number", i + 1},
                           {"closed", layer.shapes[i].closed},
                           {"vertices", layer.shapes[i].points.size()},
                           {"length", measures.length},
                           {"area", std::fabs(measures.area)},
                           {"orientation", orientationName(measures)},
                           {"centroid", placeOrNull(measures.centroid)},
                           {"inner_point", placeOrNull(measures.inner)},
                           {"extents", boxJson(measures.box)}});
    }
    result.json["layers"].push_back({{"layer", name},
                                     {"closed", layer.closed},
                                     {"length", layer.length},
                                     {"area", layer.area},
                                     {"centroid", placeOrNull(layer.centroid())},
                                     {"extents", boxJson(layer.box)},
                                     {"figures", figures}});
}

ToolResult measureDrawing(const Host& host, const Drawing& drawing, const Interrupt& interrupt)
{
    const auto common = host.create<IcommonFunc>();
    ToolResult result;
    result.layers = sameLayers(drawing);
    result.json["layers"] = nlohmann::json::array();
    std::vector<LayerMeasures> layers(drawing.layers.size());
    for (const Figure& given : drawing.figures) {
        if (interrupt.raised()) break;
        const Figure figure = closedWhereItMeets(given);
        LayerMeasures& layer = layers[static_cast<std::size_t>(figure.layer)];
        layer.add(figure, measure(*common, figure));
        result.figures.push_back(figure);
        if (const auto& inner = layer.figures.back().inner)
            result.marks.push_back({*inner, std::to_string(layer.figures.size())});
    }
    for (std::size_t i = 0; i < layers.size(); ++i)
        if (!layers[i].figures.empty()) report(drawing.layers[i], layers[i], result);
    return result;
}

}  // namespace

void addMeasureCommand(Commands& commands)
{
    auto options = std::make_shared<DrawingOptions>();
    Command command = commands.add(
        "measure", "Measure the figures of a drawing, layer by layer: lengths, areas, places");
    command.drawingOptions(*options);
    command.footer(
        "A line that ends exactly where it begins counts as closed. The drawing written holds the "
        "figures as they were measured; the picture numbers the closed ones at their inner "
        "points.");
    command.runs([options, &global = commands.global] {
        return runTool({"measure", "measuring", measureDrawing}, *options, global);
    });
}

}  // namespace calcora::app
