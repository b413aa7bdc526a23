// A look at the structure of a tree, for checks and measurements.
#pragma once

#include "rtree/CRTree.h"

namespace calcora::rtree {

/// Reads what the interface does not show. Nodes are read through nodes.h and stay valid until the
/// tree changes.
class Inspector {
public:
    /// The root; null stands for an empty leaf (nothing was inserted yet) or for no root at all
    /// (after `reset`).
    static const Node* root(const CRTree& tree) { return tree.root_; }

    /// Memory that the tree holds for its nodes, used or spare, in bytes.
    static std::size_t bytes(const CRTree& tree)
    {
        return tree.leaves_.bytes() + tree.inners_.bytes();
    }
};

}  // namespace calcora::rtree
