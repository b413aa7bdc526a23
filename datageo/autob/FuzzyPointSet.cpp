#include "datageo/autob/FuzzyPointSet.h"

#include <cmath>
#include <span>

#include "common/detail/key_sort.h"

namespace AutoB {

FuzzyPointSet::FuzzyPointSet(double tolerance)
    : tolerance_(tolerance > 0 ? tolerance : 0), grid_(tolerance_)
{
}

int FuzzyPointSet::findOrAdd(const tav::Point2DF& p)
{
    const int found = grid_.findEarliest(p, [&](const tav::Point2DF& q) {
        return std::fabs(q.x() - p.x()) < tolerance_ && std::fabs(q.y() - p.y()) < tolerance_;
    });
    return found >= 0 ? found : grid_.add(p);
}

std::vector<int> FuzzyPointSet::ranks(calcora::CancelCheck& check) const
{
    std::vector<calcora::detail::KeyedIndex> order(grid_.points().size());
    for (std::size_t i = 0; i < grid_.points().size(); ++i)
        order[i] = {grid_.points()[i].x(), static_cast<int>(i)};
    calcora::detail::sortByKey(order, check);

    for (std::size_t begin = 0; begin < order.size();) {
        check();
        std::size_t end = begin + 1;
        while (end < order.size() && order[end].key - order[end - 1].key < tolerance_) ++end;
        if (end - begin > 1) {
            for (std::size_t i = begin; i < end; ++i)
                order[i].key = grid_.points()[static_cast<std::size_t>(order[i].index)].y();
            calcora::detail::sortByKey(std::span(order).subspan(begin, end - begin), check);
        }
        begin = end;
    }

    std::vector<int> rank(grid_.points().size());
    for (std::size_t place = 0; place < order.size(); ++place) {
        check();
        rank[static_cast<std::size_t>(order[place].index)] = static_cast<int>(place);
    }
    return rank;
}

}  // namespace AutoB
