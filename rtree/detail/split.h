// The quadratic split: ten branches into two groups of four to six.
#pragma once

#include "rtree/detail/nodes.h"

namespace calcora::rtree {

/// Branches of a node that overflows: its own and the one too many.
inline constexpr int kSplitBranches = kSlots + 1;

/// The branches to divide. `volume` holds the sphericalVolume of each rectangle.
struct SplitBuffer {
    RectLanes<kSplitBranches> rects;
    double volume[kSplitBranches];
    void* child[kSplitBranches];
};

/// A group of branches: one bit for each member, their cover and its volume.
struct Group {
    unsigned members = 0;
    RTreeRect cover;
    double volume = 0.0;
};

struct Groups {
    Group group[2];
};

/// Divides the branches.
///
/// The two whose common cover wastes most volume found a group each. Then the branch that prefers
/// one group to the other most strongly joins the group that it enlarges less, again and again,
/// until a group has six members; the other one gets what is left. Ties within 1e-6 go to the
/// smaller group.
Groups divideBranches(const SplitBuffer& buffer);

}  // namespace calcora::rtree
