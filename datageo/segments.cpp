#include "datageo/segments.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "datageo/autob/FuzzyPointSet.h"

namespace calcora {

namespace {

/// Difference of bulges below which two segments with the same ends are one.
constexpr double kEqualBulge = 1e-7;

/// Segments whose ends' memory is asked for before they are looked up.
constexpr std::size_t kSearchesAhead = 6;

/// A segment as the order sees it: ranks of its ends, turned where turning applies.
struct Ranked {
    int second;
    int arrival;
    double bulge;
};

/// Segments grouped by the rank of their first end, in order of arrival inside a group.
struct Grouped {
    std::vector<Ranked> segments;
    std::vector<std::size_t> groupEnds;
};

/// Numbers the ends of the segments in the fuzzy order.
void rankEnds(const std::vector<SegmentKey>& segments, SegmentSet& set, CancelCheck& check)
{
    AutoB::FuzzyPointSet points(kNodeTolerance);
    points.reserve(segments.size());
    set.endsOf.reserve(segments.size());
    const auto numberOf = [&](const tav::Point2DF& end) {
        const int number = points.findOrAdd(end);
        if (!(points.points()[static_cast<std::size_t>(number)] == end)) set.endsAreExact = false;
        return number;
    };
    const tav::Point2DF* last = nullptr;
    const std::size_t n = segments.size();
    for (std::size_t i = 0; i < n; ++i) {
        check();
        if (i + 2 * kSearchesAhead < n) {
            points.prefetch(segments[i + 2 * kSearchesAhead].a);
            points.prefetch(segments[i + 2 * kSearchesAhead].b);
        }
        if (i + kSearchesAhead < n) {
            points.prefetchNext(segments[i + kSearchesAhead].a);
            points.prefetchNext(segments[i + kSearchesAhead].b);
        }
        const SegmentKey& segment = segments[i];
        // Pieces of one segment follow each other.
        const bool goesOn = last && *last == segment.a;
        const int a = goesOn ? set.endsOf.back().second : numberOf(segment.a);
        last = &segment.b;
        const int b = numberOf(segment.b);
        set.endsOf.emplace_back(a, b);
    }
    const std::vector<int> rank = points.ranks(check);
    set.ends.resize(rank.size());
    for (std::size_t i = 0; i < rank.size(); ++i)
        set.ends[static_cast<std::size_t>(rank[i])] = points.points()[i];
    for (auto& [a, b] : set.endsOf) {
        check();
        a = rank[static_cast<std::size_t>(a)];
        b = rank[static_cast<std::size_t>(b)];
    }
}

Grouped groupByFirstEnd(const std::vector<SegmentKey>& segments, const SegmentSet& set,
                        bool directed, CancelCheck& check)
{
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
            isTurned(i) ? ends[i].first : ends[i].second, static_cast<int>(i),
            isTurned(i) ? -segments[i].bulge : segments[i].bulge};
    }
    return grouped;
}

/// Appends the arrivals that stay of one run of segments with equal ends, by bulge.
void mergeRun(std::span<const Ranked> run, std::vector<Ranked>& kept, std::vector<int>& arrivals)
{
    if (run.size() == 1) {
        arrivals.push_back(run.front().arrival);
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
    for (const Ranked& segment : kept) arrivals.push_back(segment.arrival);
}

}  // namespace

SegmentSet mergeEqualSegments(const std::vector<SegmentKey>& segments, bool directed,
                              CancelCheck check)
{
    SegmentSet set;
    rankEnds(segments, set, check);
    Grouped grouped = groupByFirstEnd(segments, set, directed, check);
    std::vector<int> arrivals;
    arrivals.reserve(segments.size());
    std::vector<Ranked> kept;
    const auto bySecondEnd = [](const Ranked& a, const Ranked& b) {
        return a.second < b.second || (a.second == b.second && a.arrival < b.arrival);
    };
    for (std::size_t begin = 0; const std::size_t groupEnd : grouped.groupEnds) {
        check();
        std::span<Ranked> group(grouped.segments.data() + begin, groupEnd - begin);
        std::sort(group.begin(), group.end(), bySecondEnd);
        for (std::size_t i = 0; i < group.size();) {
            std::size_t end = i + 1;
            while (end < group.size() && group[end].second == group[i].second) ++end;
            mergeRun(group.subspan(i, end - i), kept, arrivals);
            i = end;
        }
        begin = groupEnd;
    }

    std::vector<std::pair<int, int>> endsOf;
    endsOf.reserve(arrivals.size());
    set.segments.reserve(arrivals.size());
    for (const int arrival : arrivals) {
        check();
        set.segments.push_back(segments[static_cast<std::size_t>(arrival)]);
        endsOf.push_back(set.endsOf[static_cast<std::size_t>(arrival)]);
    }
    set.endsOf = std::move(endsOf);
    return set;
}

}  // namespace calcora
