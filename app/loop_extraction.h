// Loops of a drawing, through the module.
#pragma once

#include <optional>
#include <vector>

#include "app/Drawing.h"
#include "app/exact_scale.h"
#include "app/host.h"

namespace calcora::app {

enum class LoopKind {
    Regions,   ///< every region that the lines enclose
    Outlines,  ///< the outer boundary of every connected part
    Gaps,      ///< the gaps enclosed between figures
};

struct LoopRequest {
    LoopKind kind = LoopKind::Regions;
    double snap = 0;  ///< drawing units; 0 snaps nothing
    ExactScale scale;
};

/// A closed loop in scaled coordinates.
struct Loop {
    Points points;
    Values bulges;
};

struct LoopResult {
    std::vector<Loop> loops;  ///< smallest area first
    int leftOut = 0;          ///< loops of a single point
    double seconds = 0;
};

/// The figures of a drawing as the module takes them: scaled, closed figures with their first point
/// repeated.
struct LineWork {
    PointLists points;
    ValueLists bulges;
    std::vector<int> layers;
};

LineWork lineWork(const Drawing& drawing, const ExactScale& scale);

/// Runs the extraction. `cancel` (may be null) stops it; the loops found until then are returned.
LoopResult extractLoops(IDataGeo& dataGeo, const LineWork& work, const LoopRequest& request,
                        bool* cancel);

/// What is told about a loop, in scaled coordinates.
struct LoopMeasures {
    double area = 0;
    double length = 0;
    int arcs = 0;
};

LoopMeasures measureLoop(IcommonFunc& common, const Loop& loop);

/// A point strictly inside the loop; nothing when none could be found (a loop thinner than the
/// tolerance of the boundary).
std::optional<tav::Point2DF> innerPoint(IcommonFunc& common, const Loop& loop);

}  // namespace calcora::app
