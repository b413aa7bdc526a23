// The parallel of a line, segment by segment and corner by corner.
#pragma once

#include <vector>

#include "app/corner_tips.h"
#include "app/segment_index.h"

namespace calcora::app {

struct RawParallel {
    std::vector<Segment> segments;
    std::vector<CornerTip> tips;  ///< where two segments are carried on until they meet
};

/// The moved segments of a chain, in their order, to its left for a positive distance, with the
/// arcs that connect some of them at corners. `closed`: the chain ends where it begins.
///
/// Every corner is looked at by itself: where the parallels of its two segments meet, both end
/// there, else they keep their own ends; very sharp tips are rounded. So all that the parallel of
/// the chain can have at the distance is there, and more: neighbours that are too short for their
/// corners cross each other or what comes behind them.
RawParallel rawParallel(IcommonFunc& common, const SegmentIndex& chain, bool closed,
                        double distance);

/// Takes out vertices that repeat the one before them, as the module does before it moves a line;
/// with each goes the segment that leads to it. The last point stays as it is.
void removeRepeats(Points& points, Values& bulges);

}  // namespace calcora::app
