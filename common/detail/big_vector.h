// Lists that may take hundreds of megabytes.
#pragma once

#include <cstddef>
#include <new>
#include <utility>
#include <vector>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace calcora::detail {

/// Asks for large pages where much memory is wanted: it is had, walked through and given back in far
/// less time. Elements that come in by resize() without a value and need no construction stay as the
/// memory is: nothing is written twice, and no long stretch of work is without a look at the cancel flag.
template <class T>
class BigAllocator {
public:
    using value_type = T;

    BigAllocator() = default;
    template <class U>
    BigAllocator(const BigAllocator<U>&)
    {
    }

    T* allocate(std::size_t count)
    {
        const std::size_t size = count * sizeof(T);
        if (size < kLargePages) return static_cast<T*>(::operator new(size));
        void* memory = ::operator new (size, std::align_val_t{kPageSize});
#if defined(__linux__)
        madvise(memory, size, MADV_HUGEPAGE);  // a wish; nothing depends on it
#endif
        return static_cast<T*>(memory);
    }
    void deallocate(T* memory, std::size_t count)
    {
        if (count * sizeof(T) < kLargePages)
            ::operator delete(memory);
        else
            ::operator delete (memory, std::align_val_t{kPageSize});
    }

    template <class U, class... Arguments>
    void construct(U* place, Arguments&&... arguments)
    {
        if constexpr (sizeof...(Arguments) == 0)
            ::new (static_cast<void*>(place)) U;
        else
            ::new (static_cast<void*>(place)) U(std::forward<Arguments>(arguments)...);
    }

    template <class U>
    bool operator==(const BigAllocator<U>&) const
    {
        return true;
    }

private:
    static constexpr std::size_t kPageSize = std::size_t{1} << 21;
    static constexpr std::size_t kLargePages = 4 * kPageSize;
};

template <class T>
using BigVector = std::vector<T, BigAllocator<T>>;

/// Makes room for `more` elements as growing by itself would, but calls `step` for every element that
/// has to move.
template <class T, class Step>
void makeRoomFor(BigVector<T>& list, std::size_t more, Step& step)
{
    if (list.capacity() - list.size() >= more) return;
    BigVector<T> grown;
    grown.reserve(2 * list.capacity() + more);
    for (T& element : list) {
        step();
        grown.push_back(std::move(element));
    }
    list.swap(grown);
}

}  // namespace calcora::detail
