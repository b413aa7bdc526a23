// calcora square: outlines with right angles.
#include <algorithm>
#include <limits>
#include <memory>

#include "app/bounds_tree.h"
#include "app/commands.h"
#include "app/figure_tool.h"

namespace calcora::app {

namespace {

using tav::Point2DF;

/// Distances from the nearest of an outline's vertices.
class NearestVertex {
public:
    explicit NearestVertex(const Points& vertices) : vertices_(vertices), tree_(boxesOf(vertices))
    {
    }

    double distance(const Point2DF& place) const
    {
        double best = std::numeric_limits<double>::infinity();
        tree_.search(
            place, [&](const Box& box) { return boxDistance(box, place) < best; },
            [&](int i) { best = std::min(best, vertices_.at(i).distanceTo(place)); });
        return best;
    }

private:
    static std::vector<Box> boxesOf(const Points& vertices)
    {
        std::vector<Box> boxes;
        for (const Point2DF& vertex : vertices) boxes.emplace_back().add(vertex);
        return boxes;
    }

    Points vertices_;
    BoundsTree<Box> tree_;
};

struct Squared {
    bool changed = false;
    double moved = 0;  ///< the farthest that a corner lies from the nearest vertex before
};

bool isFootprint(const Figure& figure)
{
    constexpr int kFewestCorners = 4;
    return figure.closed && !hasArc(figure) && figure.points.size() >= kFewestCorners;
}

/// Elevations that are one and the same stay; others have no place on the new outline.
Values levelElevations(const Values& elevations, int count)
{
    Values level;
    if (elevations.isEmpty()) return level;
    for (const double elevation : elevations)
        if (elevation != elevations.first()) return level;
    for (int i = 0; i < count; ++i) level.append(elevations.first());
    return level;
}

/// Squares the figure in place.
Squared square(IcommonFunc& common, Figure& figure)
{
    Points ring = figure.points;
    const Point2DF first = ring.first();
    ring.append(first);
    PointLists rings;
    rings.append(ring);
    PointLists found;
    common.squareRings(rings, found);
    constexpr int kFewestPoints = 5;
    if (found.size() != 1 || std::as_const(found).at(0).size() < kFewestPoints) return {};
    Points corners = std::as_const(found).at(0);
    corners.removeLast();

    Squared squared{true, 0};
    const NearestVertex before(figure.points);
    for (const Point2DF& corner : std::as_const(corners))
        squared.moved = std::max(squared.moved, before.distance(corner));
    figure.elevations = levelElevations(figure.elevations, corners.size());
    figure.points = corners;
    figure.bulges = Values();
    for (int i = 0; i < corners.size(); ++i) figure.bulges.append(0.0);
    return squared;
}

ToolResult squareDrawing(const Host& host, const Drawing& drawing, const Interrupt& interrupt)
{
    const auto common = host.create<IcommonFunc>();
    ToolResult result;
    result.layers = sameLayers(drawing);
    nlohmann::json outlines = nlohmann::json::array();
    long long kept = 0;
    double farthest = 0;
    Point2DF farthestAt;
    for (const Figure& given : drawing.figures) {
        if (interrupt.raised()) break;
        Figure figure = closedWhereItMeets(given);
        const int vertices = figure.points.size();
        const Squared squared = isFootprint(figure) ? square(*common, figure) : Squared{};
        if (!squared.changed) {
            result.figures.push_back(given);
            ++kept;
            continue;
        }
        if (outlines.empty() || squared.moved > farthest) {
            farthest = squared.moved;
            farthestAt = figure.points.first();
        }
        outlines.push_back({{"layer", drawing.layers[static_cast<std::size_t>(figure.layer)]},
                            {"vertices", vertices},
                            {"corners", figure.points.size()},
                            {"moved", squared.moved}});
        result.figures.push_back(std::move(figure));
    }
    const auto count = static_cast<long long>(outlines.size());
    result.table.row("squared", countText(count));
    if (kept > 0)
        result.table.row("kept", countText(kept), "figures open, with arcs or below four corners");
    if (count > 0)
        result.table.row("farthest move", shortText(farthest),
                         "a corner of the outline at " + placeText(farthestAt));
    result.json = {{"outlines", outlines}, {"kept", kept}, {"farthest_move", farthest}};
    return result;
}

}  // namespace

void addSquareCommand(Commands& commands)
{
    auto options = std::make_shared<DrawingOptions>();
    Command command = commands.add(
        "square", "Make the corners of footprints right angles; tells how far any corner moved");
    command.drawingOptions(*options);
    command.footer(
        "Every closed figure of straight segments is squared by itself, along the direction that "
        "most of its outline has. Other figures are written as they are.");
    command.runs([options, &global = commands.global] {
        return runTool({"square", "squaring", squareDrawing}, *options, global);
    });
}

}  // namespace calcora::app
