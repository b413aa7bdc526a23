#pragma once

#include <bit>
#include <cstddef>
#include <span>
#include <type_traits>
#include <vector>

#include "calcora/ICRTree.h"
#include "rtree/detail/NodePool.h"
#include "rtree/detail/walk.h"
#include "tavrel/PlainObject.h"

namespace calcora::rtree {
class Inspector;
}

/// The R-tree. An instance inside another object is a tree of its own; it allocates nothing before
/// the first insertion.
class CRTree : public tav::PlainObject<CRTree, ICRTree> {
public:
    static constexpr const char* kClassName = "CRTree";

    CRTree() = default;

    void removeAll() override;
    void reset() override;
    bool insertRect(RTreeRect* rect, void* id, int level) override;
    bool removeRect(const RTreeRect* rect, void* id) override;
    bool removeId(void* id) override;
    bool removeFirstOverlapping(const RTreeRect* rect, EntryCallback callback,
                                void* context) override;
    bool removeFirstContained(const RTreeRect* rect, EntryCallback callback,
                              void* context) override;
    void bounds(RTreeRect* out) override;
    void forEachEntry(EntryCallback callback, void* context) override;
    void forEachEntryWithRect(EntryRectCallback callback, void* context) override;
    int findContained(const RTreeRect* rect, tav::List<void*>* out) override;
    int findOverlapping(const RTreeRect* rect, tav::List<void*>* out) override;
    int searchOverlapping(const RTreeRect* rect, EntryCallback callback, void* context) override;
    int searchOverlappingWithRect(const RTreeRect* rect, EntryRectCallback callback,
                                  void* context) override;
    int searchContained(const RTreeRect* rect, EntryCallback callback, void* context) override;
    int searchContainedWithRect(const RTreeRect* rect, EntryRectCallback callback,
                                void* context) override;
    int entryTotal() override;

    /// What a visitor of forEachOverlapping may return.
    using Walk = calcora::rtree::Walk;

    /// The window search for code of this module that holds a tree of its own: calls
    /// `visit(void* id)` for the hits of searchOverlapping (slot 18), in the same order, without a
    /// call through a pointer. The visitor returns a Walk, or nothing to see every hit;
    /// Walk::NextLeaf is what a callback of slot 18 means by 0.
    ///
    /// Reads the tree only and marks nothing in it: the visitor must not change the tree (nobody
    /// checks), and several threads may search at once while nobody changes it.
    template <class Visitor>
    void forEachOverlapping(const RTreeRect& rect, Visitor&& visit) const
    {
        walkOverlapping(rect, [&visit](const calcora::rtree::Leaf& leaf, int slot) {
            if constexpr (std::is_void_v<decltype(visit(leaf.ids[slot]))>) {
                visit(leaf.ids[slot]);
                return Walk::On;
            } else {
                return visit(leaf.ids[slot]);
            }
        });
    }

    /// Calls `visit(void* id, std::span<void* const> hits)` for every entry, leaf by leaf, with the
    /// ids whose rectangles overlap the entry's own, itself among them, in the order in which
    /// forEachOverlapping would find them. The entries of a leaf share one search. The visitor
    /// returns a Walk; it must not change the tree.
    template <class Visitor>
    void forEachWithOverlaps(Visitor&& visit) const;

private:
    friend class calcora::rtree::Inspector;

    using Node = calcora::rtree::Node;
    using Leaf = calcora::rtree::Leaf;
    using Inner = calcora::rtree::Inner;
    using Branch = calcora::rtree::Branch;

    /// A slot of an inner node on the way down.
    struct Step {
        Inner* node;
        int slot;
    };
    /// The way from the root to a node.
    struct Path {
        Step steps[calcora::rtree::kMaxLevels];
        int length = 0;
    };
    /// Where an entry was found.
    struct Place {
        Path path;
        Leaf* leaf = nullptr;
        int slot = 0;
    };
    class SearchMark;

    template <class Visit>
    void walkOverlapping(const RTreeRect& rect, Visit visit) const
    {
        const auto overlaps = [rect](const Node& node) {
            return calcora::rtree::overlapMask(node.rects, rect);
        };
        calcora::rtree::walkLeaves(root_, overlaps, overlaps, visit);
    }
    template <class Visit>
    void walkContained(const RTreeRect& rect, Visit visit) const;
    template <class Visit>
    void walkEverything(Visit visit) const;

    /// Changes are refused while a search calls back, and after `reset`.
    bool isChangeable() const { return !isReset_ && openSearches_ == 0; }

    void clear();
    bool place(const Branch& branch, int level);
    Node* descend(const RTreeRect& rect, int level, Path& path) const;
    void reserveForSplits(const Node& target, const Path& path);
    Branch splitNode(Node& node, Branch& extra);
    void growRoot(const Branch& first, const Branch& second);
    void shrinkRoot();
    Node* takeNode(int level);
    void giveBack(Node* node);

    template <class Enter, class Match>
    bool find(Place& found, Enter enter, Match match) const;
    void reserveForReinsertion(const Place& found);
    void removeAt(const Place& found);
    bool removeFirst(const Place& found, EntryCallback callback, void* context);

    calcora::rtree::NodePool<Leaf> leaves_;
    calcora::rtree::NodePool<Inner> inners_;
    Node* root_ = nullptr;  ///< null while nothing was inserted yet
    int entryCount_ = 0;
    int openSearches_ = 0;  ///< searches that are calling back
    bool isReset_ = false;
    bool isOrdinary_ = true;  ///< all rectangles stored since the tree was empty are ordinary
};

template <class Visitor>
void CRTree::forEachWithOverlaps(Visitor&& visit) const
{
    using namespace calcora::rtree;
    const auto everySlot = [](const Node& node) -> unsigned { return node.used; };
    std::vector<const Leaf*> near;
    std::vector<void*> hits;
    const auto visitEntry = [&](const Leaf& leaf, int slot) {
        if (slot == leaf.firstUsed()) {
            const RTreeRect cover = nodeCover(leaf);
            near.clear();
            walkLeaves(
                root_, [&](const Inner& inner) { return overlapMask(inner.rects, cover); },
                [&](const Leaf& other) {
                    near.push_back(&other);
                    return 0u;
                },
                [](const Leaf&, int) { return Walk::On; });
        }
        const RTreeRect rect = leaf.rects.at(slot);
        hits.clear();
        for (const Leaf* other : near)
            for (unsigned slots = overlapMask(other->rects, rect) & other->used; slots != 0;
                 slots &= slots - 1)
                hits.push_back(other->ids[std::countr_zero(slots)]);
        return visit(leaf.ids[slot], std::span<void* const>(hits));
    };
    walkLeaves(root_, everySlot, everySlot, visitEntry);
}
