#include "datageo/autob/blocks.h"

#include <algorithm>

namespace AutoB {

namespace {

/// The edges at every node, as ranges of one list.
struct Incidence {
    std::vector<int> begin;  ///< per node, and the end of the last
    std::vector<int> edges;
};

Incidence incidenceOf(std::size_t nodeCount, std::span<const std::pair<int, int>> edges)
{
    Incidence at;
    at.begin.assign(nodeCount + 1, 0);
    for (const auto& [a, b] : edges) {
        if (a < 0 || a == b) continue;
        ++at.begin[static_cast<std::size_t>(a) + 1];
        ++at.begin[static_cast<std::size_t>(b) + 1];
    }
    for (std::size_t i = 0; i < nodeCount; ++i) at.begin[i + 1] += at.begin[i];
    at.edges.resize(static_cast<std::size_t>(at.begin[nodeCount]));
    std::vector<int> place(at.begin.begin(), at.begin.end() - 1);
    for (std::size_t e = 0; e < edges.size(); ++e) {
        const auto [a, b] = edges[e];
        if (a < 0 || a == b) continue;
        at.edges[static_cast<std::size_t>(place[static_cast<std::size_t>(a)]++)] =
            static_cast<int>(e);
        at.edges[static_cast<std::size_t>(place[static_cast<std::size_t>(b)]++)] =
            static_cast<int>(e);
    }
    return at;
}

class BlockSearch {
public:
    BlockSearch(int nodeCount, std::span<const std::pair<int, int>> edges)
        : edges_(edges),
          at_(incidenceOf(static_cast<std::size_t>(nodeCount), edges)),
          entered_(static_cast<std::size_t>(nodeCount), 0),
          low_(static_cast<std::size_t>(nodeCount), 0),
          block_(edges.size(), kNoBlock)
    {
    }

    std::vector<int> run()
    {
        for (std::size_t e = 0; e < edges_.size(); ++e)
            if (edges_[e].first >= 0 && edges_[e].first == edges_[e].second)
                block_[e] = blockCount_++;
        for (std::size_t node = 0; node < entered_.size(); ++node)
            if (!entered_[node]) searchFrom(static_cast<int>(node));
        return std::move(block_);
    }

private:
    struct Frame {
        int node;
        int arrivedBy;  ///< edge, -1 at the root
        int next;       ///< place in the incidence list
    };

    void enter(int node, int arrivedBy)
    {
        const auto n = static_cast<std::size_t>(node);
        entered_[n] = low_[n] = ++clock_;
        frames_.push_back({node, arrivedBy, at_.begin[n]});
    }

    void searchFrom(int root)
    {
        enter(root, -1);
        while (!frames_.empty()) {
            Frame& frame = frames_.back();
            const auto node = static_cast<std::size_t>(frame.node);
            if (frame.next == at_.begin[node + 1]) {
                leave();
                continue;
            }
            const int edge = at_.edges[static_cast<std::size_t>(frame.next++)];
            if (edge == frame.arrivedBy) continue;
            const auto [a, b] = edges_[static_cast<std::size_t>(edge)];
            const int other = a == frame.node ? b : a;
            const int otherEntered = entered_[static_cast<std::size_t>(other)];
            if (!otherEntered) {
                open_.push_back(edge);
                enter(other, edge);
            } else if (otherEntered < entered_[node]) {
                open_.push_back(edge);
                low_[node] = std::min(low_[node], otherEntered);
            }
        }
    }

    /// Leaves the node on top; when nothing below it reaches above its parent, the open edges down
    /// to the one it was entered by form a block.
    void leave()
    {
        const Frame frame = frames_.back();
        frames_.pop_back();
        if (frames_.empty()) return;
        const auto node = static_cast<std::size_t>(frame.node);
        const auto parent = static_cast<std::size_t>(frames_.back().node);
        low_[parent] = std::min(low_[parent], low_[node]);
        if (low_[node] < entered_[parent]) return;
        if (open_.back() == frame.arrivedBy) {
            open_.pop_back();
            return;
        }
        int edge = -1;
        do {
            edge = open_.back();
            open_.pop_back();
            block_[static_cast<std::size_t>(edge)] = blockCount_;
        } while (edge != frame.arrivedBy);
        ++blockCount_;
    }

    std::span<const std::pair<int, int>> edges_;
    Incidence at_;
    std::vector<int> entered_;  ///< per node, order of entering from 1; 0: not yet
    std::vector<int> low_;
    std::vector<int> block_;
    std::vector<Frame> frames_;
    std::vector<int> open_;
    int clock_ = 0;
    int blockCount_ = 0;
};

}  // namespace

std::vector<int> biconnectedBlocks(int nodeCount, std::span<const std::pair<int, int>> edges)
{
    return BlockSearch(nodeCount, edges).run();
}

}  // namespace AutoB
