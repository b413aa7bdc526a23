// The half-edges that leave a node, in angular order.
#include <algorithm>
#include <cmath>
#include <span>

#include "datageo/autob/CAutoLoop.h"
#include "datageo/autob/blocks.h"

namespace AutoB {

namespace {

/// Radians: half-edges whose angles differ by less leave in one direction; which comes first is
/// then decided by how they run along their polylines.
constexpr double kAngleTie = 1e-7;

/// Up to this many half-edges a node's list is searched and built by plain scans.
constexpr std::size_t kFewEdges = 32;

/// Whether a half-edge goes before those of the same direction that were added earlier.
bool goesFirst(const CLoopEdge& edge)
{
    return edge.againstInput == edge.keepDirection;
}

/// Puts the last entry of the list where the scan from the front stops.
template <class Entry>
void insertLast(std::span<Entry> list, bool first)
{
    const Entry entry = list.back();
    std::size_t place = 0;
    for (; place + 1 < list.size(); ++place) {
        const double angle = list[place].angle;
        if (std::fabs(entry.angle - angle) < kAngleTie) {
            if (first) break;
        } else if (entry.angle > angle) {
            break;
        }
    }
    std::rotate(list.begin() + static_cast<std::ptrdiff_t>(place), list.end() - 1, list.end());
}

/// The same order for many half-edges by one sort: largest angle first, and within each direction
/// those that go first in reverse order of arrival, then the others as they arrived. Chains of
/// directions are cut where they have spread by the tie.
template <class Entry>
void sortList(std::span<Entry> list, const std::vector<CLoopEdge>& edges)
{
    std::sort(list.begin(), list.end(), [](const Entry& a, const Entry& b) {
        return a.angle > b.angle || (a.angle == b.angle && a.edge < b.edge);
    });
    const auto rankInTie = [&](const Entry& entry) {
        return goesFirst(edges[static_cast<std::size_t>(entry.edge)]) ? -1 - entry.edge
                                                                      : entry.edge;
    };
    for (std::size_t begin = 0; begin < list.size();) {
        std::size_t end = begin + 1;
        while (end < list.size() && list[begin].angle - list[end].angle < kAngleTie) ++end;
        std::sort(list.begin() + static_cast<std::ptrdiff_t>(begin),
                  list.begin() + static_cast<std::ptrdiff_t>(end),
                  [&](const Entry& a, const Entry& b) { return rankInTie(a) < rankInTie(b); });
        begin = end;
    }
}

}  // namespace

void CAutoLoop::buildAngularLists()
{
    nodes_.resize(nodePoints_.size());
    for (CLoopNode& node : nodes_) node.endEdge = 0;
    calcora::CancelCheck check(cancelFlag_);
    for (const CLoopEdge& edge : edges_) {
        check();
        if (edge.alive) ++nodes_[static_cast<std::size_t>(edge.startNode)].endEdge;
    }
    int total = 0;
    for (CLoopNode& node : nodes_) {
        node.firstEdge = total;
        total += node.endEdge;
        node.endEdge = node.firstEdge;
    }
    angular_.resize(static_cast<std::size_t>(total));
    for (std::size_t e = 0; e < edges_.size(); ++e) {
        check();
        if (!edges_[e].alive) continue;
        CLoopNode& node = nodes_[static_cast<std::size_t>(edges_[e].startNode)];
        angular_[static_cast<std::size_t>(node.endEdge++)] = {edges_[e].startAngle,
                                                              static_cast<int>(e)};
    }
    for (const CLoopNode& node : nodes_) {
        check();
        const std::span<AngularEntry> list(angular_.data() + node.firstEdge,
                                           angular_.data() + node.endEdge);
        if (list.size() > kFewEdges) {
            sortList(list, edges_);
            continue;
        }
        for (std::size_t count = 2; count <= list.size(); ++count)
            insertLast(list.first(count),
                       goesFirst(edges_[static_cast<std::size_t>(list[count - 1].edge)]));
    }
}

/// Lets walks see every node as it is.
void CAutoLoop::keepNodesWhole()
{
    walkNodes_ = nodes_;
    walkNodeOf_.resize(edges_.size());
    for (std::size_t e = 0; e < edges_.size(); ++e) walkNodeOf_[e] = edges_[e].startNode;
}

/// Lets walks see one node per block that meets at a node, with that block's half-edges in the
/// order of the node's list; half-edges outside all blocks are not walked.
void CAutoLoop::splitNodesByBlock()
{
    calcora::CancelCheck check(cancelFlag_);
    std::vector<std::pair<int, int>> ends(edges_.size() / 2, {-1, -1});
    for (std::size_t pair = 0; pair < ends.size(); ++pair) {
        check();
        if (edges_[2 * pair].alive && edges_[2 * pair + 1].alive)
            ends[pair] = {edges_[2 * pair].startNode, edges_[2 * pair].endNode};
    }
    const std::vector<int> blocks = biconnectedBlocks(static_cast<int>(nodes_.size()), ends, check);
    const auto blockOf = [&](const AngularEntry& entry) {
        return blocks[static_cast<std::size_t>(entry.edge / 2)];
    };

    walkNodes_.clear();
    walkNodes_.reserve(nodes_.size());
    walkNodeOf_.assign(edges_.size(), -1);
    std::vector<AngularEntry> mixed;
    const auto addWalkNode = [&](int first, int end) {
        for (int place = first; place < end; ++place)
            walkNodeOf_[static_cast<std::size_t>(angular_[static_cast<std::size_t>(place)].edge)] =
                static_cast<int>(walkNodes_.size());
        walkNodes_.push_back({-1, first, end});
    };
    for (const CLoopNode& node : nodes_) {
        check();
        const std::span<const AngularEntry> list(angular_.data() + node.firstEdge,
                                                 angular_.data() + node.endEdge);
        if (list.empty()) continue;
        const int firstBlock = blockOf(list.front());
        const bool oneBlock = std::all_of(list.begin(), list.end(), [&](const AngularEntry& entry) {
            return blockOf(entry) == firstBlock;
        });
        if (oneBlock) {
            if (firstBlock != kNoBlock) addWalkNode(node.firstEdge, node.endEdge);
            continue;
        }
        mixed.assign(list.begin(), list.end());
        std::stable_sort(
            mixed.begin(), mixed.end(),
            [&](const AngularEntry& a, const AngularEntry& b) { return blockOf(a) < blockOf(b); });
        for (std::size_t begin = 0; begin < mixed.size();) {
            std::size_t end = begin + 1;
            while (end < mixed.size() && blockOf(mixed[end]) == blockOf(mixed[begin])) ++end;
            if (blockOf(mixed[begin]) != kNoBlock) {
                const int first = static_cast<int>(angular_.size());
                angular_.insert(angular_.end(), mixed.begin() + static_cast<std::ptrdiff_t>(begin),
                                mixed.begin() + static_cast<std::ptrdiff_t>(end));
                addWalkNode(first, static_cast<int>(angular_.size()));
            }
            begin = end;
        }
    }
}

/// Place of the first living half-edge of the node whose angle is below `angle`; the end of the
/// node's list when there is none.
int CAutoLoop::firstBelow(const CLoopNode& node, double angle) const
{
    int place = node.firstEdge;
    if (static_cast<std::size_t>(node.endEdge - node.firstEdge) > kFewEdges) {
        // Angles fall along the list but for ties: go to the last place that is surely too early.
        const auto surelyBefore = [&](const AngularEntry& entry) {
            return entry.angle >= angle + 2 * kAngleTie;
        };
        const auto found = std::partition_point(angular_.begin() + node.firstEdge,
                                                angular_.begin() + node.endEdge, surelyBefore);
        place = static_cast<int>(found - angular_.begin());
    }
    for (; place < node.endEdge; ++place) {
        const AngularEntry& entry = angular_[static_cast<std::size_t>(place)];
        if (entry.angle < angle && edges_[static_cast<std::size_t>(entry.edge)].alive) break;
    }
    return place;
}

}  // namespace AutoB
