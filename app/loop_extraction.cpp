#include "app/loop_extraction.h"

#include <algorithm>
#include <chrono>
#include <cmath>

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
    Point2DF point;
    if (!common.labelPoint(loop.points, loop.bulges, point)) return std::nullopt;
    return point;
}

}  // namespace calcora::app
