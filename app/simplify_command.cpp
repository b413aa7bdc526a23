// calcora simplify: fewer vertices, arcs kept.
#include <algorithm>
#include <cmath>
#include <memory>

#include "app/commands.h"
#include "app/figure_tool.h"

namespace calcora::app {

namespace {

using tav::Point2DF;

struct SimplifyOptions {
    DrawingOptions drawing;
    double tolerance = 0;
};

bool isArc(const Figure& figure, int segment)
{
    return std::fabs(figure.bulges.at(segment)) >= kSmallestArcBulge;
}

/// A vertex between two straight segments may go; the others part the runs. A closed figure without
/// arcs has two of them where it reaches farthest: at its leftmost vertex and at the one farthest
/// from that.
std::vector<char> fixedVertices(IcommonFunc& common, const Figure& figure)
{
    const int count = figure.points.size();
    std::vector<char> fixed(static_cast<std::size_t>(count), 0);
    const auto fix = [&](int vertex) { fixed[static_cast<std::size_t>(vertex)] = 1; };
    for (int i = 0; i < figure.segmentCount(); ++i)
        if (isArc(figure, i)) {
            fix(i);
            fix((i + 1) % count);
        }
    if (!figure.closed) {
        fix(0);
        fix(count - 1);
    } else if (std::count(fixed.begin(), fixed.end(), 1) == 0) {
        int corner = 0;
        for (int i = 1; i < count; ++i) {
            const Point2DF& point = figure.points.at(i);
            const Point2DF& best = figure.points.at(corner);
            if (point.x() < best.x() || (point.x() == best.x() && point.y() < best.y())) corner = i;
        }
        int opposite = corner;
        double farthest = 0;
        for (int i = 0; i < count; ++i) {
            const double distance =
                common.pointDistSquared(figure.points.at(corner), figure.points.at(i));
            if (distance > farthest) {
                farthest = distance;
                opposite = i;
            }
        }
        fix(corner);
        fix(opposite);
    }
    return fixed;
}

/// Marks in `kept` what stays of the run from one fixed vertex to the next; the indices may go
/// beyond the last vertex and so round a closed figure. The result is how far the vertices that
/// went lie from the segments in their place.
double simplifyRun(IcommonFunc& common, const Figure& figure, int first, int last, double tolerance,
                   std::vector<char>& kept)
{
    const int count = figure.points.size();
    Points run;
    for (int i = first; i <= last; ++i) run.append(figure.points.at(i % count));
    tav::Vector<int> found;
    common.simplifyRange(run, 0, last - first, tolerance * tolerance, found);
    std::vector<int> stay(found.cbegin(), found.cend());
    stay.push_back(0);
    stay.push_back(last - first);
    std::sort(stay.begin(), stay.end());
    double farthest = 0;
    const Points& points = run;
    for (std::size_t k = 1; k < stay.size(); ++k) {
        kept[static_cast<std::size_t>((first + stay[k]) % count)] = 1;
        for (int i = stay[k - 1] + 1; i < stay[k]; ++i)
            farthest =
                std::max(farthest, common.pointSegmentDistSquared(
                                       points.at(i), points.at(stay[k - 1]), points.at(stay[k])));
    }
    return std::sqrt(farthest);
}

Figure onlyKept(const Figure& figure, const std::vector<char>& kept)
{
    Figure thinned;
    thinned.closed = figure.closed;
    thinned.layer = figure.layer;
    for (int i = 0; i < figure.points.size(); ++i) {
        if (kept[static_cast<std::size_t>(i)] == 0) continue;
        thinned.points.append(figure.points.at(i));
        thinned.bulges.append(isArc(figure, i) ? figure.bulges.at(i) : 0.0);
        if (!figure.elevations.isEmpty()) thinned.elevations.append(figure.elevations.at(i));
    }
    return thinned;
}

/// Simplifies in place; the result is how far a vertex that went lies from the line. A closed
/// figure of which fewer than three vertices and no arc would be left stays as it is.
double simplify(IcommonFunc& common, Figure& figure, double tolerance)
{
    const int count = figure.points.size();
    std::vector<char> kept = fixedVertices(common, figure);
    std::vector<int> ends;
    for (int i = 0; i < count; ++i)
        if (kept[static_cast<std::size_t>(i)] != 0) ends.push_back(i);
    if (figure.closed) ends.push_back(ends.front() + count);
    double farthest = 0;
    for (std::size_t k = 1; k < ends.size(); ++k)
        if (ends[k] - ends[k - 1] > 1)
            farthest = std::max(farthest,
                                simplifyRun(common, figure, ends[k - 1], ends[k], tolerance, kept));
    const Figure thinned = onlyKept(figure, kept);
    if (figure.closed && thinned.points.size() < 3 && !hasArc(thinned)) return 0;
    figure = thinned;
    return farthest;
}

ToolResult simplifyDrawing(const Host& host, const Drawing& drawing, double tolerance,
                           const Interrupt& interrupt)
{
    const auto common = host.create<IcommonFunc>();
    ToolResult result;
    result.layers = sameLayers(drawing);
    long long before = 0;
    long long after = 0;
    long long changed = 0;
    double farthest = 0;
    nlohmann::json lines = nlohmann::json::array();
    for (const Figure& given : drawing.figures) {
        if (interrupt.raised()) break;
        Figure figure = closedWhereItMeets(given);
        const int vertices = figure.points.size();
        const double deviation = simplify(*common, figure, tolerance);
        farthest = std::max(farthest, deviation);
        before += vertices;
        after += figure.points.size();
        changed += figure.points.size() < vertices ? 1 : 0;
        lines.push_back({{"layer", drawing.layers[static_cast<std::size_t>(figure.layer)]},
                         {"vertices_before", vertices},
                         {"vertices", figure.points.size()},
                         {"deviation", deviation}});
        result.figures.push_back(std::move(figure));
    }
    result.table.row("simplified", countText(changed),
                     "of " + countText(static_cast<long long>(result.figures.size())) + " figures");
    result.table.row("vertices before", countText(before));
    result.table.row("vertices after", countText(after));
    result.table.row("largest deviation", shortText(farthest),
                     "with a tolerance of " + shortText(tolerance));
    result.json = {{"tolerance", tolerance},  {"simplified", changed}, {"vertices_before", before},
                   {"vertices_after", after}, {"deviation", farthest}, {"lines", lines}};
    return result;
}

}  // namespace

void addSimplifyCommand(Commands& commands)
{
    auto options = std::make_shared<SimplifyOptions>();
    Command command = commands.add(
        "simplify", "Leave out vertices that a drawing's lines can do without; arcs stay");
    command.drawingOptions(options->drawing);
    command
        .option("--tolerance", options->tolerance,
                "Largest distance between a vertex left out and the line, in drawing units")
        .typeName("T")
        .required()
        .check(positiveLengthError);
    command.footer(
        "Runs of straight segments between arcs and ends are simplified in plan. Vertices that "
        "stay keep their coordinates and elevations; layers stay.");
    command.runs([options, &global = commands.global] {
        const auto work = [&](const Host& host, const Drawing& drawing, Interrupt& interrupt) {
            return simplifyDrawing(host, drawing, options->tolerance, interrupt);
        };
        return runTool({"simplify", "simplifying", work}, options->drawing, global);
    });
}

}  // namespace calcora::app
