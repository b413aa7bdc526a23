// The nodes that a whole set of segments makes.
#pragma once

#include <utility>
#include <vector>

#include "common/detail/primitives.h"
#include "datageo/segments.h"

namespace AutoB {

/// Squared distance up to which end points of a polyline repeat each other.
inline constexpr double kRepeatSquared = 1e-14;

inline bool hasExtent(const calcora::SegmentKey& segment)
{
    return calcora::detail::pointDistSquared(segment.a, segment.b) > kRepeatSquared;
}

/// Nodes for the segments of a set, in set order; segments without extent have none.
struct SetNodes {
    calcora::detail::BigVector<tav::Point2DF> points;
    calcora::detail::BigVector<std::pair<int, int>> endsOf;  ///< empty: as in the set
};

/// The nodes that the ends make when they come one by one, first end first (second end first unless
/// `keepDirection`): the end that comes first stands for its node.
SetNodes nodesOfSet(const calcora::SegmentSet& set, bool keepDirection,
                    calcora::CancelCheck& check);

}  // namespace AutoB
