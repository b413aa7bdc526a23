// Sorting many places by a coordinate or a direction, which are spread rather evenly as a rule.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace calcora::detail {

/// Something numbered, to be sorted by a key that is a number.
struct KeyedIndex {
    double key;
    int index;
};

inline bool isBefore(const KeyedIndex& a, const KeyedIndex& b)
{
    return a.key < b.key || (a.key == b.key && a.index < b.index);
}

struct NoStep {
    void operator()() const {}
};

/// Sorts by key, equal keys by index: dealt out evenly over the range of the keys, then sorted where
/// several came together. Linear time for even keys, never worse than a general sort. `step` is
/// called for each entry now and then and may throw, which leaves the entries as they were.
template <class Step = NoStep>
void sortByKey(std::span<KeyedIndex> entries, Step&& step = {})
{
    constexpr std::size_t kFewEntries = 64;
    constexpr std::ptrdiff_t kFewInStack = 24;
    const auto [least, largest] =
        std::minmax_element(entries.begin(), entries.end(),
                            [](const KeyedIndex& a, const KeyedIndex& b) { return a.key < b.key; });
    const std::size_t stacks = entries.size();
    const double scale =
        entries.empty() ? 0.0 : static_cast<double>(stacks - 1) / (largest->key - least->key);
    if (stacks <= kFewEntries || !(scale > 0 && std::isfinite(scale))) {
        std::sort(entries.begin(), entries.end(), isBefore);
        return;
    }
    const auto stackOf = [origin = least->key, scale, last = stacks - 1](const KeyedIndex& entry) {
        return std::min(static_cast<std::size_t>((entry.key - origin) * scale), last);
    };
    std::vector<std::uint32_t> ends(stacks + 1, 0);
    for (const KeyedIndex& entry : entries) {
        step();
        ++ends[stackOf(entry) + 1];
    }
    for (std::size_t i = 1; i <= stacks; ++i) ends[i] += ends[i - 1];
    // ends[i] is the place of the next entry of stack i, and its end once all are dealt out.
    std::vector<KeyedIndex> dealt(entries.size());
    for (const KeyedIndex& entry : entries) {
        step();
        dealt[ends[stackOf(entry)]++] = entry;
    }
    auto begin = dealt.begin();
    for (std::size_t i = 0; i < stacks; ++i) {
        step();
        const auto end = dealt.begin() + ends[i];
        if (end - begin > kFewInStack) std::sort(begin, end, isBefore);
        for (auto next = begin; next != end; ++next) {
            if (next == begin || !isBefore(*next, *(next - 1))) continue;
            const KeyedIndex entry = *next;
            auto place = next;
            for (; place != begin && isBefore(entry, *(place - 1)); --place) *place = *(place - 1);
            *place = entry;
        }
        begin = end;
    }
    std::copy(dealt.begin(), dealt.end(), entries.begin());
}

}  // namespace calcora::detail
