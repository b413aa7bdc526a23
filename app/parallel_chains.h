// How the pieces of a parallel that is cut at its crossings go together.
#pragma once

#include <vector>

#include "app/segment_index.h"

namespace calcora::app {

/// A piece of a parallel; the line that it belongs to lies behind it on the right.
struct ParallelPiece {
    Segment path;
    int start = 0;  ///< the nodes where it begins and ends
    int end = 0;
};

struct PieceChain {
    std::vector<int> pieces;
    bool closed = false;
};

/// Follows the pieces so that all that lies to the left of a chain, next to it, is free: at a node
/// where several meet a piece goes over into the one that comes first on its left,
///
///                  |
///        <-- b --- o - - - -
///          free    ^
///                  | a
///
/// here a into b. Pieces that have no such partner at a node where others pass have what the others
/// keep clear of on their left, as the tips of two mitres that cross, and are left out with all that
/// hangs on them. So are pieces that lie on each other and run against each other: there is no room
/// between them. Of pieces that lie on each other otherwise one stays.
///
/// Ends of chains within `reach` of each other meet.
std::vector<PieceChain> chainPieces(IcommonFunc& common, const std::vector<ParallelPiece>& pieces,
                                    int nodeCount, double reach);

}  // namespace calcora::app
