#include "datageo/node_order.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "common/detail/key_sort.h"
#include "datageo/autob/FuzzyPointSet.h"

namespace calcora {

namespace {

/// Up to this many ends are compared with each other one by one.
constexpr std::size_t kFewEnds = 32;

/// A node of the column in work.
struct ColumnNode {
    double key;
    int index;   ///< number of the end that made it
    int number;  ///< place among the column's nodes as they were found
    tav::Point2DF point;
};

bool isBefore(const ColumnNode& a, const ColumnNode& b)
{
    return a.key < b.key || (a.key == b.key && a.index < b.index);
}

/// Lets work(entries) see the ranges of sorted entries whose keys follow each other by less than
/// the tolerance.
template <class Entry, class Work>
void forEachChain(std::span<Entry> entries, Work&& work)
{
    for (std::size_t begin = 0; begin < entries.size();) {
        std::size_t end = begin + 1;
        while (end < entries.size() && entries[end].key - entries[end - 1].key < kNodeTolerance)
            ++end;
        work(entries.subspan(begin, end - begin));
        begin = end;
    }
}

class Ordering {
public:
    Ordering(detail::BigVector<SegmentEnd> ends, std::size_t endCount, CancelCheck& check)
        : ends_(std::move(ends)), check_(check)
    {
        order_.nodes.reserve(ends_.size() / 2);
        order_.nodeOf.resize(endCount);
    }

    NodeOrder run()
    {
        sortEnds_.sort(ends_);
        forEachChain(std::span(ends_), [this](std::span<SegmentEnd> column) {
            check_();
            if (!takeSingleNode(column)) takeColumn(column);
        });
        return std::move(order_);
    }

private:
    /// Takes ends that are all within the tolerance of each other, if they are.
    bool takeSingleNode(std::span<const SegmentEnd> column)
    {
        const SegmentEnd* first = column.data();
        if (column.size() > 1) {
            double low = first->other;
            double high = low;
            for (const SegmentEnd& end : column) {
                low = std::min(low, end.other);
                high = std::max(high, end.other);
                if (end.index < first->index) first = &end;
            }
            const double width = column.back().key - column.front().key;
            if (!(width < kNodeTolerance && high - low < kNodeTolerance)) return false;
            if (width > 0 || high > low) order_.isExact = false;
        }
        const int node = static_cast<int>(order_.nodes.size());
        order_.nodes.emplace_back(first->key, first->other);
        for (const SegmentEnd& end : column)
            order_.nodeOf[static_cast<std::size_t>(end.index)] = node;
        return true;
    }

    void takeColumn(std::span<SegmentEnd> column)
    {
        for (SegmentEnd& end : column) std::swap(end.key, end.other);
        sortEnds_.sort(column);
        found_.clear();
        forEachChain(column, [this](std::span<SegmentEnd> ends) {
            check_();
            if (!findSingle(ends)) findInOrder(ends);
        });
        placeFound();
        const auto base = static_cast<int>(order_.nodes.size() - found_.size());
        for (const SegmentEnd& end : column)
            order_.nodeOf[static_cast<std::size_t>(end.index)] =
                base + rank_[static_cast<std::size_t>(end.node)];
        if (found_.size() > 1)
            order_.columns.emplace_back(base, static_cast<int>(order_.nodes.size()));
    }

    /// Of the column's ends, turned so that the key is y, those that hang together in y.
    bool findSingle(std::span<SegmentEnd> ends)
    {
        const SegmentEnd* first = ends.data();
        double low = first->other;
        double high = low;
        for (const SegmentEnd& end : ends) {
            low = std::min(low, end.other);
            high = std::max(high, end.other);
            if (end.index < first->index) first = &end;
        }
        const double height = ends.back().key - ends.front().key;
        if (!(height < kNodeTolerance && high - low < kNodeTolerance)) return false;
        if (height > 0 || high > low) order_.isExact = false;
        const int number = addFound(*first);
        for (SegmentEnd& end : ends) end.node = number;
        return true;
    }

    /// Ends that may be several nodes, one by one as they arrived.
    void findInOrder(std::span<SegmentEnd> ends)
    {
        order_.isClear = false;
        order_.isExact = false;
        const auto base = static_cast<int>(found_.size());
        std::sort(ends.begin(), ends.end(),
                  [](const SegmentEnd& a, const SegmentEnd& b) { return a.index < b.index; });
        AutoB::FuzzyPointSet many(kNodeTolerance);
        for (SegmentEnd& end : ends) {
            check_();
            const tav::Point2DF point(end.other, end.key);
            if (ends.size() > kFewEnds) {
                end.node = base + many.findOrAdd(point);
            } else {
                const auto near =
                    std::find_if(found_.begin() + base, found_.end(), [&](const ColumnNode& node) {
                        return std::fabs(node.point.x() - point.x()) < kNodeTolerance &&
                               std::fabs(node.point.y() - point.y()) < kNodeTolerance;
                    });
                end.node = static_cast<int>(near - found_.begin());
            }
            if (end.node == static_cast<int>(found_.size())) addFound(end);
        }
    }

    int addFound(const SegmentEnd& end)
    {
        const auto number = static_cast<int>(found_.size());
        found_.push_back({end.other, end.index, number, {end.other, end.key}});
        return number;
    }

    /// Whether the column's nodes were found in their order: ascending in y, their x values together.
    bool areFoundInOrder() const
    {
        double low = HUGE_VAL;
        double high = -HUGE_VAL;
        double last = -HUGE_VAL;
        for (const ColumnNode& node : found_) {
            low = std::min(low, node.key);
            high = std::max(high, node.key);
            if (!(last < node.point.y())) return false;
            last = node.point.y();
        }
        return high - low < kNodeTolerance;
    }

    /// Appends the column's nodes in their order: by y where their x values hang together.
    void placeFound()
    {
        rank_.resize(found_.size());
        int rank = 0;
        const auto place = [&](std::span<const ColumnNode> nodes) {
            for (const ColumnNode& node : nodes) {
                rank_[static_cast<std::size_t>(node.number)] = rank++;
                order_.nodes.push_back(node.point);
            }
        };
        if (areFoundInOrder()) {
            place(found_);
            return;
        }
        sortNodes_.sort(found_);
        forEachChain(std::span(found_), [&](std::span<ColumnNode> chain) {
            if (chain.size() > 1) {
                for (ColumnNode& node : chain) node.key = node.point.y();
                sortNodes_.sort(chain);
            }
            place(chain);
        });
    }

    detail::BigVector<SegmentEnd> ends_;
    CancelCheck& check_;
    detail::KeySort<SegmentEnd, CancelCheck> sortEnds_{check_};
    detail::KeySort<ColumnNode, CancelCheck> sortNodes_{check_};
    NodeOrder order_;
    std::vector<ColumnNode> found_;
    detail::BigVector<int> rank_;
};

}  // namespace

NodeOrder orderNodes(detail::BigVector<SegmentEnd> ends, std::size_t endCount, CancelCheck& check)
{
    return Ordering(std::move(ends), endCount, check).run();
}

}  // namespace calcora
