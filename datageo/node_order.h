// Many ends of line work brought to the places where they meet, in one go.
#pragma once

#include <utility>
#include <vector>

#include "common/detail/big_vector.h"
#include "datageo/cancel.h"
#include "tavrel/points.h"

namespace calcora {

/// Drawing units: ends closer than this in both coordinates are one end, and one node of the graph.
inline constexpr double kNodeTolerance = 1e-5;

/// An end of a segment. `index` numbers the ends in their order of arrival.
struct SegmentEnd {
    double key;  ///< x, except while a column of ends is in work
    double other;
    int index;
    int node;

    SegmentEnd() = default;
    SegmentEnd(const tav::Point2DF& point, int number)
        : key(point.x()), other(point.y()), index(number), node(-1)
    {
    }
};

/// Ends of one key are gone through together.
inline bool isBefore(const SegmentEnd& a, const SegmentEnd& b)
{
    return a.key < b.key;
}

/// The places where ends meet.
struct NodeOrder {
    /// What AutoB::FuzzyPointSet finds when the ends arrive one by one, in the order of its ranks().
    detail::BigVector<tav::Point2DF> nodes;
    detail::BigVector<int> nodeOf;  ///< for the number of each end

    /// True when all ends are, bit for bit, the nodes that stand for them.
    bool isExact = true;

    /// True when the ends of each node are within the tolerance of each other and no end is near
    /// another node: then the nodes are the same in whatever order the ends arrive.
    bool isClear = true;

    /// Ranges of nodes whose x values hang together by steps below the tolerance: which of them comes
    /// first may depend on which of its ends stands for a node.
    std::vector<std::pair<int, int>> columns;
};

/// The nodes of ends with finite coordinates, whose numbers are below `endCount` and all different.
///
/// Sorting takes the place of one search for each end: near ends come to lie together, and only
/// where more than one node could be made of them is the order of arrival gone through.
NodeOrder orderNodes(detail::BigVector<SegmentEnd> ends, std::size_t endCount, CancelCheck& check);

}  // namespace calcora
