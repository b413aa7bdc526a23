// The nodes of the tree and what is asked of one node at a time.
//
// A node has nine slots, used or not; `used` holds one bit for each. Everything that scans a node
// goes through its slots in index order. Rectangles lie in four arrays, one for each coordinate, so
// that a scan is one loop without branches over all nine; a slot that is not used holds values that
// take no part: a rectangle inside out and, in an inner node, an endless negative volume.
#pragma once

#include <bit>
#include <cstdint>
#include <limits>

#include "rtree/detail/lanes.h"

namespace calcora::rtree {

/// Most branches of a node.
inline constexpr int kSlots = 9;
/// A node below the root with fewer branches is dissolved; a split leaves at least as many in each
/// half.
inline constexpr int kMinFill = 4;
/// Levels that a tree can have: nodes below the root hold four branches or more, and entries are
/// counted in an `int`.
inline constexpr int kMaxLevels = 16;

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr RTreeRect kUnusedRect{kInfinity, kInfinity, -kInfinity, -kInfinity};
inline constexpr double kUnusedVolume = -kInfinity;

/// What a slot holds. `child` is an entry's id in a leaf and a Node in an inner node; `volume` is
/// the sphericalVolume of `rect` and is kept in inner nodes only.
struct Branch {
    RTreeRect rect;
    double volume = 0.0;
    void* child = nullptr;
};

struct Node {
    explicit Node(int nodeLevel) : level(static_cast<std::int8_t>(nodeLevel))
    {
        for (int i = 0; i < kSlots; ++i) rects.set(i, kUnusedRect);
    }

    bool isFull() const { return count == kSlots; }
    bool isLeaf() const { return level == 0; }
    int firstUsed() const { return std::countr_zero(static_cast<unsigned>(used)); }
    int firstUnused() const { return std::countr_one(static_cast<unsigned>(used)); }

    std::uint16_t used = 0;
    std::int8_t count = 0;  ///< of used slots
    std::int8_t level;      ///< 0 for a leaf, one more than its children's for an inner node
    RectLanes<kSlots> rects;
};

struct alignas(64) Leaf : Node {
    explicit Leaf(int) : Node(0) {}

    void* ids[kSlots] = {};
};

struct alignas(64) Inner : Node {
    explicit Inner(int nodeLevel) : Node(nodeLevel)
    {
        for (double& v : volume) v = kUnusedVolume;
        for (Node*& child : children) child = this;
    }

    Node* children[kSlots];  ///< of an unused slot: any node, which may be prefetched
    double volume[kSlots];
};

inline Leaf& asLeaf(Node& node)
{
    return static_cast<Leaf&>(node);
}
inline const Leaf& asLeaf(const Node& node)
{
    return static_cast<const Leaf&>(node);
}
inline Inner& asInner(Node& node)
{
    return static_cast<Inner&>(node);
}
inline const Inner& asInner(const Node& node)
{
    return static_cast<const Inner&>(node);
}

inline Branch branchAt(const Node& node, int slot)
{
    if (node.isLeaf()) return {node.rects.at(slot), 0.0, asLeaf(node).ids[slot]};
    const Inner& inner = asInner(node);
    return {node.rects.at(slot), inner.volume[slot], inner.children[slot]};
}

/// Writes what an unused slot holds from now on.
inline void putBranch(Node& node, int slot, const Branch& branch)
{
    node.used = static_cast<std::uint16_t>(node.used | 1u << slot);
    ++node.count;
    node.rects.set(slot, branch.rect);
    if (node.isLeaf()) {
        asLeaf(node).ids[slot] = branch.child;
        return;
    }
    asInner(node).volume[slot] = branch.volume;
    asInner(node).children[slot] = static_cast<Node*>(branch.child);
}

inline void clearSlot(Node& node, int slot)
{
    node.used = static_cast<std::uint16_t>(node.used & ~(1u << slot));
    --node.count;
    node.rects.set(slot, kUnusedRect);
    if (!node.isLeaf()) asInner(node).volume[slot] = kUnusedVolume;
}

/// Writes the cover of a used slot's child.
inline void setCover(Inner& node, int slot, const RTreeRect& cover, double volume)
{
    node.rects.set(slot, cover);
    node.volume[slot] = volume;
}

/// The cover of the used slots; zeros when there is none.
inline RTreeRect nodeCover(const Node& node)
{
    if (node.used == 0) return {};
    RTreeRect cover = node.rects.at(0);
    for (int i = 1; i < kSlots; ++i) cover = combineRect(cover, node.rects.at(i));
    return cover;
}

}  // namespace calcora::rtree
