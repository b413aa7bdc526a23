#include "datageo/segments.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "common/detail/prefetch.h"

namespace calcora {

namespace {

/// Difference of bulges below which two segments with the same ends are one.
constexpr double kEqualBulge = 1e-7;

/// Segments whose memory is asked for before they are read in an order of their own.
constexpr std::size_t kReadAhead = 16;

/// The segments to be merged, and when they arrived.
struct Arriving {
    std::span<const SegmentKey> segments;
    std::span<const int> arrivals;

    int arrivalOf(std::size_t i) const
    {
        return arrivals.empty() ? static_cast<int>(i) : arrivals[i];
    }
};

/// A segment as the order sees it: ranks of its ends, turned where turning applies.
struct Ranked {
    int second;
    int arrival;
    int index;
    double bulge;
};

/// Segments grouped by the rank of their first end.
struct Grouped {
    detail::BigVector<Ranked> segments;
    detail::BigVector<std::size_t> groupEnds;
};

/// Numbers the ends of the segments in the fuzzy order.
void rankEnds(const Arriving& given, SegmentSet& set, CancelCheck& check)
{
    detail::BigVector<SegmentEnd> ends;
    ends.reserve(2 * given.segments.size());
    set.endsOf.reserve(given.segments.size());
    for (std::size_t i = 0; i < given.segments.size(); ++i) {
        check();
        const SegmentKey& segment = given.segments[i];
        const int number = 2 * given.arrivalOf(i);
        // Pieces of one segment follow each other.
        const bool goesOn =
            i > 0 && given.segments[i - 1].b == segment.a && set.endsOf.back().second == number - 1;
        const int a = goesOn ? set.endsOf.back().second : number;
        if (!goesOn) ends.emplace_back(segment.a, number);
        ends.emplace_back(segment.b, number + 1);
        set.endsOf.emplace_back(a, number + 1);
    }
    NodeOrder order = orderNodes(std::move(ends), 2 * given.segments.size(), check);
    for (auto& [a, b] : set.endsOf) {
        check();
        a = order.nodeOf[static_cast<std::size_t>(a)];
        b = order.nodeOf[static_cast<std::size_t>(b)];
    }
    set.ends = std::move(order.nodes);
    set.endsAreExact = order.isExact;
    set.endsAreClear = order.isClear;
    set.columns = std::move(order.columns);
}

Grouped groupByFirstEnd(const Arriving& given, const SegmentSet& set, bool directed,
                        CancelCheck& check)
{
    std::span<const SegmentKey> segments = given.segments;
    const auto& ends = set.endsOf;
    const auto isTurned = [&](std::size_t i) {
        return !directed && ends[i].second < ends[i].first;
    };
    const auto firstOf = [&](std::size_t i) {
        return static_cast<std::size_t>(isTurned(i) ? ends[i].second : ends[i].first);
    };
    Grouped grouped;
    grouped.groupEnds.assign(set.ends.size() + 1, 0);
    for (std::size_t i = 0; i < segments.size(); ++i) {
        check();
        ++grouped.groupEnds[firstOf(i) + 1];
    }
    for (std::size_t i = 1; i < grouped.groupEnds.size(); ++i)
        grouped.groupEnds[i] += grouped.groupEnds[i - 1];

    // groupEnds[r] is the place of the next segment of group r, and its end once all are placed.
    grouped.segments.resize(segments.size());
    for (std::size_t i = 0; i < segments.size(); ++i) {
        check();
        grouped.segments[grouped.groupEnds[firstOf(i)]++] = {
            isTurned(i) ? ends[i].first : ends[i].second, given.arrivalOf(i), static_cast<int>(i),
            isTurned(i) ? -segments[i].bulge : segments[i].bulge};
    }
    return grouped;
}

/// Appends the segments that stay of one run with equal ends, by bulge.
void mergeRun(std::span<const Ranked> run, detail::BigVector<Ranked>& kept,
              detail::BigVector<int>& staying)
{
    if (run.size() == 1) {
        staying.push_back(run.front().index);
        return;
    }
    // Kept bulges lie at least kEqualBulge apart, so only the neighbours can be equal.
    kept.clear();
    for (const Ranked& segment : run) {
        const auto place =
            std::lower_bound(kept.begin(), kept.end(), segment.bulge,
                             [](const Ranked& other, double bulge) { return other.bulge < bulge; });
        const bool equalsNext =
            place != kept.end() && std::fabs(place->bulge - segment.bulge) < kEqualBulge;
        const bool equalsPrevious =
            place != kept.begin() && std::fabs((place - 1)->bulge - segment.bulge) < kEqualBulge;
        if (!equalsNext && !equalsPrevious) kept.insert(place, segment);
    }
    for (const Ranked& segment : kept) staying.push_back(segment.index);
}

}  // namespace

SegmentSet mergeEqualSegments(std::span<const SegmentKey> segments, bool directed,
                              CancelCheck check, std::span<const int> arrivals)
{
    const Arriving given{segments, arrivals};
    SegmentSet set;
    rankEnds(given, set, check);
    Grouped grouped = groupByFirstEnd(given, set, directed, check);
    detail::BigVector<int> staying;
    staying.reserve(segments.size());
    detail::BigVector<Ranked> kept;
    const auto bySecondEnd = [](const Ranked& a, const Ranked& b) {
        return a.second < b.second || (a.second == b.second && a.arrival < b.arrival);
    };
    for (std::size_t begin = 0; const std::size_t groupEnd : grouped.groupEnds) {
        check();
        std::span<Ranked> group(grouped.segments.data() + begin, groupEnd - begin);
        if (group.size() > 1) std::sort(group.begin(), group.end(), bySecondEnd);
        for (std::size_t i = 0; i < group.size();) {
            std::size_t end = i + 1;
            while (end < group.size() && group[end].second == group[i].second) ++end;
            mergeRun(group.subspan(i, end - i), kept, staying);
            i = end;
        }
        begin = groupEnd;
    }

    grouped = {};
    detail::BigVector<std::pair<int, int>> endsOf;
    endsOf.reserve(staying.size());
    set.segments.reserve(staying.size());
    for (std::size_t i = 0; i < staying.size(); ++i) {
        check();
        if (i + kReadAhead < staying.size()) {
            const auto later = static_cast<std::size_t>(staying[i + kReadAhead]);
            detail::prefetch(&segments[later]);
            detail::prefetch(&set.endsOf[later]);
        }
        const auto index = static_cast<std::size_t>(staying[i]);
        set.segments.push_back(segments[index]);
        endsOf.push_back(set.endsOf[index]);
    }
    set.endsOf = std::move(endsOf);
    return set;
}

}  // namespace calcora
