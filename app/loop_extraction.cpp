#include "app/loop_extraction.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

#include "app/figures.h"

namespace calcora::app {

namespace {

using tav::Point2DF;

/// The loop with its first point repeated at the end.
Loop closedLoop(const Loop& loop)
{
    Loop closed = loop;
    closed.points.append(loop.points.first());
    closed.bulges.append(0.0);
    return closed;
}

/// Heights, as shares of the box, at which a loop is cut to look for an inner point; then come the
/// heights between its vertices.
constexpr std::array kCutHeights = {0.5, 0.382, 0.618, 0.25, 0.75, 0.1, 0.9};
constexpr std::size_t kMostCuts = 64;

std::vector<double> cutHeights(const Loop& loop, const Box& box)
{
    std::vector<double> heights;
    heights.reserve(kMostCuts);
    for (const double share : kCutHeights) heights.push_back(box.minY + share * box.height());
    std::vector<double> levels;
    levels.reserve(static_cast<std::size_t>(loop.points.size()));
    for (const Point2DF& point : loop.points) levels.push_back(point.y());
    std::sort(levels.begin(), levels.end());
    // The widest steps between levels first: they leave most room.
    std::vector<std::pair<double, double>> steps;
    for (std::size_t i = 1; i < levels.size(); ++i)
        if (levels[i] > levels[i - 1])
            steps.emplace_back(levels[i - 1] - levels[i], (levels[i - 1] + levels[i]) / 2);
    std::sort(steps.begin(), steps.end());
    for (const auto& [negatedStep, height] : steps) {
        if (heights.size() >= kMostCuts) break;
        heights.push_back(height);
    }
    return heights;
}

/// The x values at which the loop crosses the level `y`, in ascending order.
std::vector<double> crossings(IcommonFunc& common, const Loop& closed, const Box& box, double y)
{
    const double margin = box.width() * 0.01 + 1.0;
    const Point2DF left(box.minX - margin, y);
    const Point2DF right(box.maxX + margin, y);
    const double length = right.x() - left.x();
    const std::size_t room = 2 * static_cast<std::size_t>(closed.points.size());
    std::vector<Point2DF> places(room);
    std::vector<double> shares(room);
    int count = 0;
    common.intersectLineWithBulgePolyline(left, right, closed.points, closed.bulges, 0.0,
                                          length * length, places.data(), shares.data(), &count);
    std::vector<double> xs;
    xs.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) xs.push_back(places[static_cast<std::size_t>(i)].x());
    std::sort(xs.begin(), xs.end());
    return xs;
}

}  // namespace

LineWork lineWork(const Drawing& drawing, const ExactScale& scale)
{
    LineWork work;
    work.points.reserve(static_cast<int>(drawing.figures.size()));
    work.bulges.reserve(static_cast<int>(drawing.figures.size()));
    for (const Figure& figure : drawing.figures) {
        Loop chain{scale.scaled(figure.points), figure.bulges};
        if (figure.closed) chain = closedLoop(chain);
        work.points.append(std::move(chain.points));
        work.bulges.append(std::move(chain.bulges));
        work.layers.push_back(figure.layer);
    }
    return work;
}

LoopResult extractLoops(IDataGeo& dataGeo, const LineWork& work, const LoopRequest& request,
                        bool* cancel)
{
    const auto begin = std::chrono::steady_clock::now();
    PointLists points;
    ValueLists bulges;
    if (request.kind == LoopKind::Gaps)
        dataGeo.buildDirectedRegions(work.points, work.bulges, points, bulges, cancel);
    else
        dataGeo.buildRegions(work.points, work.bulges, points, bulges,
                             request.kind == LoopKind::Outlines, cancel,
                             request.scale.scaled(request.snap));
    LoopResult result;
    result.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    const PointLists& found = points;
    const ValueLists& foundBulges = bulges;
    for (int i = 0; i < found.size(); ++i) {
        if (found.at(i).size() < 2)
            ++result.leftOut;
        else
            result.loops.push_back({found.at(i), foundBulges.at(i)});
    }
    return result;
}

LoopMeasures measureLoop(IcommonFunc& common, const Loop& loop)
{
    LoopMeasures measures;
    measures.area = std::fabs(common.bulgePolygonArea(loop.points, loop.bulges));
    measures.length = common.bulgePolylineLength(loop.points, loop.bulges, true);
    measures.arcs = static_cast<int>(std::count_if(loop.bulges.cbegin(), loop.bulges.cend(),
                                                   [](double bulge) { return bulge != 0.0; }));
    return measures;
}

std::optional<Point2DF> innerPoint(IcommonFunc& common, const Loop& loop)
{
    constexpr int kInside = -1;
    const auto isInside = [&](const Point2DF& point) {
        return common.pointInBulgePolygon(loop.points, loop.bulges, point) == kInside;
    };
    Point2DF point;
    if (common.labelPoint(loop.points, loop.bulges, point) && isInside(point)) return point;

    // Cut the loop level by level; the middle of the widest stretch inside is the point.
    const Box box = figureBox(loop.points, loop.bulges, true);
    const Loop closed = closedLoop(loop);
    for (const double y : cutHeights(loop, box)) {
        const std::vector<double> xs = crossings(common, closed, box, y);
        double widest = 0;
        for (std::size_t i = 1; i < xs.size(); ++i) {
            const Point2DF middle(xs[i - 1] + (xs[i] - xs[i - 1]) / 2, y);
            if (xs[i] - xs[i - 1] > widest && isInside(middle)) {
                widest = xs[i] - xs[i - 1];
                point = middle;
            }
        }
        if (widest > 0) return point;
    }
    return std::nullopt;
}

}  // namespace calcora::app
