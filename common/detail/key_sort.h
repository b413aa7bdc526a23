// Sorting many places by a coordinate or a direction, which are spread rather evenly as a rule.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>
#include <vector>

#include "common/detail/big_vector.h"

namespace calcora::detail {

/// Something numbered, to be sorted by a key that is a number.
struct KeyedIndex {
    double key;
    int index;
};

/// The order of sortByKey(): a type of entries may have one of its own, by key first.
inline bool isBefore(const KeyedIndex& a, const KeyedIndex& b)
{
    return a.key < b.key || (a.key == b.key && a.index < b.index);
}

struct NoStep {
    void operator()() const {}
};

/// The work of sortByKey(); keeps its memory for one sort after the other.
template <class Entry, class Step>
class KeySort {
public:
    explicit KeySort(Step& step) : step_(step) {}

    void sort(std::span<Entry> entries)
    {
        entries_ = entries;
        if (entries_.size() <= kFewInStack) {
            insertionSort(entries_);
            return;
        }
        if (room_.size() < entries_.size()) room_.resize(entries_.size());
        // Many are dealt out coarsely first, so that what is dealt out finely fits the cache.
        if (entries_.size() <= kFinelyDealt) {
            if (deal(entries_, room_.data(), entries_.size(), fineEnds_)) finish(room_.data());
        } else if (deal(entries_, room_.data(),
                        std::min(entries_.size() / kCoarseStack, kMostCoarseStacks), coarseEnds_)) {
            finishCoarse();
        }
    }

private:
    static constexpr std::size_t kFewInStack = 24;
    static constexpr std::size_t kFinelyDealt = 16384;
    static constexpr std::size_t kCoarseStack = 1024;
    static constexpr std::size_t kMostCoarseStacks = 4096;

    struct Before {
        bool operator()(const Entry& a, const Entry& b) const { return isBefore(a, b); }
    };

    static void insertionSort(std::span<Entry> entries)
    {
        for (std::size_t i = 1; i < entries.size(); ++i) {
            if (!isBefore(entries[i], entries[i - 1])) continue;
            const Entry entry = entries[i];
            std::size_t place = i;
            for (; place > 0 && isBefore(entry, entries[place - 1]); --place)
                entries[place] = entries[place - 1];
            entries[place] = entry;
        }
    }

    static void sortFew(std::span<Entry> entries)
    {
        if (entries.size() <= kFewInStack)
            insertionSort(entries);
        else
            sortMany(entries);
    }

    /// Equal keys come together in the order in which they were given, which may be theirs.
    static void sortMany(std::span<Entry> entries)
    {
        if (!std::is_sorted(entries.begin(), entries.end(), Before()))
            std::sort(entries.begin(), entries.end(), Before());
    }

    /// Copies entries to `to`, dealt out evenly over the range of their keys into stacks whose ends
    /// are given back. Where no even dealing is possible the entries are sorted instead, and the
    /// result is false.
    bool deal(std::span<Entry> from, Entry* to, std::size_t stacks, BigVector<std::uint32_t>& ends)
    {
        double least = from.front().key;
        double largest = least;
        for (const Entry& entry : from) {
            least = entry.key < least ? entry.key : least;
            largest = entry.key > largest ? entry.key : largest;
        }
        const double scale = static_cast<double>(stacks - 1) / (largest - least);
        if (!(scale > 0 && std::isfinite(scale))) {
            sortMany(from);
            return false;
        }
        const auto stackOf = [=](const Entry& entry) {
            const auto stack = static_cast<std::size_t>((entry.key - least) * scale);
            return std::min(stack, stacks - 1);
        };
        ends.assign(stacks + 1, 0);
        for (const Entry& entry : from) {
            step_();
            ++ends[stackOf(entry) + 1];
        }
        for (std::size_t i = 1; i <= stacks; ++i) ends[i] += ends[i - 1];
        // ends[i] is the place of the next entry of stack i, and its end once all are dealt out.
        for (const Entry& entry : from) {
            step_();
            to[ends[stackOf(entry)]++] = entry;
        }
        ends.pop_back();
        return true;
    }

    /// Sorts the stacks that were dealt out to the room, and takes them back.
    void finish(Entry* dealt)
    {
        std::size_t begin = 0;
        for (const std::uint32_t end : fineEnds_) {
            step_();
            sortFew({dealt + begin, dealt + end});
            begin = end;
        }
        std::copy(dealt, dealt + begin, entries_.begin());
    }

    void finishCoarse()
    {
        std::size_t begin = 0;
        for (const std::uint32_t end : coarseEnds_) {
            const std::span<Entry> stack(room_.data() + begin, room_.data() + end);
            const std::span<Entry> target = entries_.subspan(begin, stack.size());
            begin = end;
            if (stack.size() > kFewInStack && deal(stack, target.data(), stack.size(), fineEnds_)) {
                std::size_t fine = 0;
                for (const std::uint32_t fineEnd : fineEnds_) {
                    sortFew(target.subspan(fine, fineEnd - fine));
                    fine = fineEnd;
                }
                continue;
            }
            if (stack.size() <= kFewInStack) insertionSort(stack);
            std::copy(stack.begin(), stack.end(), target.begin());
        }
    }

    std::span<Entry> entries_;
    Step& step_;
    BigVector<Entry> room_;
    BigVector<std::uint32_t> coarseEnds_;
    BigVector<std::uint32_t> fineEnds_;
};

/// Sorts entries that have a `key` in the order that isBefore(a, b) tells: dealt out evenly over
/// the range of the keys, then sorted where several came together. Linear time for even keys, never
/// worse than a general sort. `step` is called for each entry now and then and may throw, which
/// leaves the entries in some order.
template <class Entry, class Step = NoStep>
void sortByKey(std::span<Entry> entries, Step&& step = {})
{
    KeySort<Entry, std::remove_reference_t<Step>>(step).sort(entries);
}

template <class Entry, class Allocator, class Step = NoStep>
void sortByKey(std::vector<Entry, Allocator>& entries, Step&& step = {})
{
    sortByKey(std::span<Entry>(entries), step);
}

}  // namespace calcora::detail
