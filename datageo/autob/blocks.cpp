#include "datageo/autob/blocks.h"

#include <algorithm>

namespace AutoB {

namespace {

/// An edge at a node, and the node that it leads to.
struct Way {
    int edge;
    int other;
};

/// The edges at every node, as ranges of one list.
struct Incidence {
    std::vector<int> begin;  ///< per node, and the end of the last
    std::vector<Way> ways;
};

Incidence incidenceOf(std::size_t nodeCount, std::span<const std::pair<int, int>> edges,
                      calcora::CancelCheck& check)
{
    Incidence at;
    at.begin.assign(nodeCount + 1, 0);
    for (const auto& [a, b] : edges) {
        check();
        if (a < 0 || a == b) continue;
        ++at.begin[static_cast<std::size_t>(a) + 1];
        ++at.begin[static_cast<std::size_t>(b) + 1];
    }
    for (std::size_t i = 0; i < nodeCount; ++i) at.begin[i + 1] += at.begin[i];
    at.ways.resize(static_cast<std::size_t>(at.begin[nodeCount]));
    std::vector<int> place(at.begin.begin(), at.begin.end() - 1);
    for (std::size_t e = 0; e < edges.size(); ++e) {
        check();
        const auto [a, b] = edges[e];
        if (a < 0 || a == b) continue;
        const int edge = static_cast<int>(e);
        at.ways[static_cast<std::size_t>(place[static_cast<std::size_t>(a)]++)] = {edge, b};
        at.ways[static_cast<std::size_t>(place[static_cast<std::size_t>(b)]++)] = {edge, a};
    }
    return at;
}

class BlockSearch {
public:
    BlockSearch(int nodeCount, std::span<const std::pair<int, int>> edges,
                calcora::CancelCheck& check)
        : edges_(edges),
          check_(check),
          at_(incidenceOf(static_cast<std::size_t>(nodeCount), edges, check)),
          entered_(static_cast<std::size_t>(nodeCount), 0),
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
        int arrivedBy;  ///< edge, -1 at the root
        int next;       ///< place in the incidence list
        int end;
        int entered;
        int low;
    };

    void enter(int node, int arrivedBy)
    {
        const auto n = static_cast<std::size_t>(node);
        entered_[n] = ++clock_;
        frames_.push_back({arrivedBy, at_.begin[n], at_.begin[n + 1], clock_, clock_});
    }

    void searchFrom(int root)
    {
        enter(root, -1);
        while (!frames_.empty()) {
            check_();
            Frame& frame = frames_.back();
            if (frame.next == frame.end) {
                leave();
                continue;
            }
            const auto [edge, other] = at_.ways[static_cast<std::size_t>(frame.next++)];
            if (edge == frame.arrivedBy) continue;
            const int otherEntered = entered_[static_cast<std::size_t>(other)];
            if (!otherEntered) {
                open_.push_back(edge);
                enter(other, edge);
            } else if (otherEntered < frame.entered) {
                open_.push_back(edge);
                frame.low = std::min(frame.low, otherEntered);
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
        Frame& parent = frames_.back();
        parent.low = std::min(parent.low, frame.low);
        if (frame.low < parent.entered) return;
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
    calcora::CancelCheck& check_;
    Incidence at_;
    std::vector<int> entered_;  ///< per node, order of entering from 1; 0: not yet
    std::vector<int> block_;
    std::vector<Frame> frames_;
    std::vector<int> open_;
    int clock_ = 0;
    int blockCount_ = 0;
};

}  // namespace

std::vector<int> biconnectedBlocks(int nodeCount, std::span<const std::pair<int, int>> edges,
                                   calcora::CancelCheck& check)
{
    return BlockSearch(nodeCount, edges, check).run();
}

}  // namespace AutoB
