// Descents through the tree.
#pragma once

#include <cstddef>

#include "rtree/detail/nodes.h"

namespace calcora::rtree {

/// What a visitor wants next.
enum class Walk {
    On,        ///< the next hit
    NextLeaf,  ///< leave this leaf, go on with the remaining ones
    End        ///< no more hits
};

inline void prefetch(const Node* node)
{
#if defined(__GNUC__)
    constexpr std::size_t kLine = 64;
    const char* bytes = reinterpret_cast<const char*>(node);
    for (std::size_t at = 0; at < sizeof(Leaf); at += kLine) __builtin_prefetch(bytes + at);
#else
    static_cast<void>(node);
#endif
}

/// A walk over the leaves below nodes of one level, in their order. Each level is done for a batch
/// of nodes before the next one, which lets the memory of a whole batch come in at once; since all
/// leaves lie on one level, they are met in the order of a depth-first walk.
template <class Enter, class Match, class Visit>
class LeafWalk {
public:
    LeafWalk(Enter e, Match m, Visit v) : enter(e), match(m), visit(v) {}

    /// False when the visitor ended the walk.
    bool descend(const Node* const* nodes, int count)
    {
        if (nodes[0]->isLeaf()) return visitLeaves(nodes, count);
        const Node* below[kBatch + kSlots];
        int waiting = 0;
        for (int i = 0; i < count; ++i) {
            const Inner& inner = asInner(*nodes[i]);
            unsigned slots = enter(inner) & inner.used;
            // Mostly there are none to two: those are taken without asking, counted when there.
            for (int k = 0; k < 2; ++k) {
                const Node* child = inner.children[std::countr_zero(slots | kLastSlot)];
                prefetch(child);
                below[waiting] = child;
                waiting += slots != 0;
                slots &= slots - 1;
            }
            for (; slots != 0; slots &= slots - 1) {
                const Node* child = inner.children[std::countr_zero(slots)];
                prefetch(child);
                below[waiting++] = child;
            }
            if (waiting >= kBatch) {
                if (!descend(below, waiting)) return false;
                waiting = 0;
            }
        }
        return waiting == 0 || descend(below, waiting);
    }

private:
    /// Nodes whose memory is waited for together.
    static constexpr int kBatch = 16;
    static constexpr unsigned kLastSlot = 1u << (kSlots - 1);

    bool visitLeaves(const Node* const* leaves, int count)
    {
        for (int i = 0; i < count; ++i) {
            const Leaf& leaf = asLeaf(*leaves[i]);
            for (unsigned slots = match(leaf) & leaf.used; slots != 0; slots &= slots - 1) {
                const Walk next = visit(leaf, std::countr_zero(slots));
                if (next == Walk::On) continue;
                if (next == Walk::End) return false;
                break;
            }
        }
        return true;
    }

    Enter enter;
    Match match;
    Visit visit;
};

/// Visits leaf slots depth-first, in slot order, until the visitor ends the walk.
///
/// `enter(inner)` gives the slots of an inner node to go down into and `match(leaf)` the slots of a
/// leaf to visit, one bit each; bits of unused slots are ignored. `visit(leaf, slot)` returns a
/// Walk.
template <class Enter, class Match, class Visit>
void walkLeaves(const Node* root, Enter enter, Match match, Visit visit)
{
    if (root != nullptr) LeafWalk<Enter, Match, Visit>(enter, match, visit).descend(&root, 1);
}

}  // namespace calcora::rtree
