#include "datageo/autob/set_nodes.h"

#include <algorithm>
#include <cstddef>

#include "datageo/node_order.h"

namespace AutoB {

namespace {

/// Calls visit(end, number, place) for the two ends of every segment with extent, in the order in
/// which they come to the builder; `place` is the end's entry in endsOf.
template <class EndsOf, class Visit>
void forEachEnd(const calcora::SegmentSet& set, EndsOf& endsOf, bool keepDirection,
                calcora::CancelCheck& check, Visit&& visit)
{
    for (std::size_t i = 0; i < set.segments.size(); ++i) {
        check();
        const calcora::SegmentKey& segment = set.segments[i];
        if (!hasExtent(segment)) continue;
        const auto number = static_cast<int>(2 * i);
        visit(keepDirection ? segment.a : segment.b, number,
              keepDirection ? endsOf[i].first : endsOf[i].second);
        visit(keepDirection ? segment.b : segment.a, number + 1,
              keepDirection ? endsOf[i].second : endsOf[i].first);
    }
}

/// Orders the ends that `isAsked(node)` picks once more, as they come to the builder.
template <class IsAsked>
calcora::NodeOrder orderAgain(const calcora::SegmentSet& set, bool keepDirection,
                              calcora::CancelCheck& check, IsAsked&& isAsked)
{
    calcora::detail::BigVector<calcora::SegmentEnd> ends;
    forEachEnd(set, set.endsOf, keepDirection, check,
               [&](const tav::Point2DF& end, int number, int node) {
                   if (isAsked(node)) ends.emplace_back(end, number);
               });
    return calcora::orderNodes(std::move(ends), 2 * set.segments.size(), check);
}

}  // namespace

SetNodes nodesOfSet(const calcora::SegmentSet& set, bool keepDirection, calcora::CancelCheck& check)
{
    if (set.endsAreExact) return {set.ends, {}};
    SetNodes nodes{{}, set.endsOf};
    if (!set.endsAreClear) {
        calcora::NodeOrder order = orderAgain(set, keepDirection, check, [](int) { return true; });
        forEachEnd(set, nodes.endsOf, keepDirection, check,
                   [&](const tav::Point2DF&, int number, int& node) {
                       node = order.nodeOf[static_cast<std::size_t>(number)];
                   });
        nodes.points = std::move(order.nodes);
        return nodes;
    }
    nodes.points.resize(set.ends.size());
    calcora::detail::BigVector<char> isPlaced(set.ends.size(), 0);
    const auto place = [&](const tav::Point2DF& end, int, int node) {
        char& placed = isPlaced[static_cast<std::size_t>(node)];
        if (!placed) nodes.points[static_cast<std::size_t>(node)] = end;
        placed = 1;
    };
    forEachEnd(set, set.endsOf, keepDirection, check, place);
    if (set.columns.empty()) return nodes;

    // Nodes of one column change places where another end now stands for them.
    calcora::detail::BigVector<int> columnBegin(set.ends.size(), -1);
    for (const auto& [begin, end] : set.columns)
        std::fill(columnBegin.begin() + begin, columnBegin.begin() + end, begin);
    const auto isInColumn = [&](int node) {
        return columnBegin[static_cast<std::size_t>(node)] >= 0;
    };
    const calcora::NodeOrder order = orderAgain(set, keepDirection, check, isInColumn);
    // The new nodes of a column follow each other: from the least number on.
    calcora::detail::BigVector<int> least(set.ends.size(), -1);
    const auto leastOf = [&](int node) -> int& {
        return least[static_cast<std::size_t>(columnBegin[static_cast<std::size_t>(node)])];
    };
    forEachEnd(set, nodes.endsOf, keepDirection, check,
               [&](const tav::Point2DF&, int number, int node) {
                   if (!isInColumn(node)) return;
                   const int again = order.nodeOf[static_cast<std::size_t>(number)];
                   int& lowest = leastOf(node);
                   if (lowest < 0 || again < lowest) lowest = again;
               });
    forEachEnd(set, nodes.endsOf, keepDirection, check,
               [&](const tav::Point2DF&, int number, int& node) {
                   if (!isInColumn(node)) return;
                   const int again = order.nodeOf[static_cast<std::size_t>(number)];
                   node = columnBegin[static_cast<std::size_t>(node)] + again - leastOf(node);
                   nodes.points[static_cast<std::size_t>(node)] =
                       order.nodes[static_cast<std::size_t>(again)];
               });
    return nodes;
}

}  // namespace AutoB
