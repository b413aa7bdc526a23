// A hierarchy of bounds over things in a row, for many questions about what lies near.
#pragma once

#include <algorithm>
#include <vector>

#include "app/figures.h"

namespace calcora::app {

/// How far a point is from a box; 0 inside.
double boxDistance(const Box& box, const tav::Point2DF& point);

/// Bounds over four in a row of the level below each. Neighbours in the row should be neighbours in
/// place, so that the bounds stay small. `Bounds` can add others and has a boxDistance().
template <class Bounds>
class BoundsTree {
public:
    explicit BoundsTree(std::vector<Bounds> leaves = {})
    {
        levels_.push_back(std::move(leaves));
        while (levels_.back().size() > 1) {
            const std::vector<Bounds>& fine = levels_.back();
            std::vector<Bounds> coarse((fine.size() + kFanOut - 1) / kFanOut);
            for (std::size_t i = 0; i < fine.size(); ++i) coarse[i / kFanOut].add(fine[i]);
            levels_.push_back(std::move(coarse));
        }
    }

    /// Calls visit(i) for the leaves whose bounds and all bounds over them are `wanted`, those near
    /// a place rather first. `wanted` is asked late, so that it may change with every visit.
    template <class Wanted, class Visit>
    void search(const tav::Point2DF& place, Wanted&& wanted, Visit&& visit) const
    {
        searchBefore(static_cast<int>(levels_.front().size()), place, wanted, visit);
    }

    /// The same for the leaves before one of them.
    template <class Wanted, class Visit>
    void searchBefore(int end, const tav::Point2DF& place, Wanted&& wanted, Visit&& visit) const
    {
        if (levels_.back().empty()) return;
        std::vector<Node> open = {{levels_.size() - 1, 0}};
        while (!open.empty()) {
            const Node node = open.back();
            open.pop_back();
            if (firstLeaf(node) >= static_cast<std::size_t>(end)) continue;
            if (!wanted(levels_[node.level][node.index])) continue;
            if (node.level == 0)
                visit(static_cast<int>(node.index));
            else
                pushChildren(node, place, open);
        }
    }

private:
    struct Node {
        std::size_t level = 0;
        std::size_t index = 0;
        double distance = 0;  ///< from the place
    };
    static constexpr std::size_t kFanOutBits = 2;
    static constexpr std::size_t kFanOut = std::size_t{1} << kFanOutBits;

    static std::size_t firstLeaf(const Node& node)
    {
        return node.index << (kFanOutBits * node.level);
    }

    void pushChildren(const Node& node, const tav::Point2DF& place, std::vector<Node>& open) const
    {
        const std::vector<Bounds>& children = levels_[node.level - 1];
        const std::size_t end = std::min((node.index + 1) * kFanOut, children.size());
        const auto before = static_cast<std::ptrdiff_t>(open.size());
        for (std::size_t i = node.index * kFanOut; i < end; ++i)
            open.push_back({node.level - 1, i, boxDistance(children[i], place)});
        // The nearest comes last, to be taken first.
        std::sort(open.begin() + before, open.end(), [](const Node& a, const Node& b) {
            return a.distance != b.distance ? a.distance > b.distance : a.index < b.index;
        });
    }

    std::vector<std::vector<Bounds>> levels_;  ///< from the leaves up to a single one
};

}  // namespace calcora::app
