#pragma once

#include <span>
#include <utility>
#include <vector>

#include "datageo/cancel.h"

namespace AutoB {

/// No walk can close through this edge: it is a bridge or ends freely, or it is used up.
inline constexpr int kNoBlock = -1;

/// Biconnected blocks of an undirected multigraph, one number per edge; edges of one block lie on
/// common simple cycles. An edge that is a block of its own gets kNoBlock, unless it joins a
/// node to itself. Edges with a negative end are left out.
///
/// Depth-first search with low points (Hopcroft and Tarjan 1973), with an explicit stack and by
/// edge number, so that parallel edges count. Linear time.
std::vector<int> biconnectedBlocks(int nodeCount, std::span<const std::pair<int, int>> edges,
                                   calcora::CancelCheck& check);

}  // namespace AutoB
