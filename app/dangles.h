// Pieces of line that bound no loop.
#pragma once

#include <vector>

#include "app/loop_extraction.h"

namespace calcora::app {

/// A stretch of a segment that no loop runs along, in scaled coordinates: a line with a free end, a
/// bridge between loops, or a line that fails to meet its neighbour.
struct Dangle {
    tav::Point2DF from;
    tav::Point2DF to;
    double bulge = 0;
    double length = 0;
    int layer = 0;
    bool hasFreeEnd = false;  ///< an end at which no other segment ends and no loop has a vertex
    tav::Point2DF place{};    ///< the free end; without one the middle of the stretch
};

/// The stretches of the line work's segments along which no loop runs, those with a free end first,
/// otherwise in the order of the drawing. A segment drawn several times counts once. `snap` is the
/// snap tolerance of the extraction in scaled units: snapped loops may lie that far from the
/// drawing.
std::vector<Dangle> findDangles(IcommonFunc& common, ICRTree& tree, const LineWork& work,
                                const std::vector<Loop>& loops, double snap);

}  // namespace calcora::app
