// The storage that tav::Vector and tav::List share: one counted block per list, copied on write.
#pragma once

#include <algorithm>
#include <atomic>
#include <cassert>
#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "tavrel/export.h"

namespace tav::detail {

/// Header of a shared block; the elements follow it in memory. `first` is the offset of the first
/// live element, so that taking elements off the front costs nothing.
struct TAV_TEMPLATE_API BlockHeader {
    std::atomic<int> references{1};
    int first = 0;
    int size = 0;
    int capacity = 0;
};

/// A sequence of T in one contiguous block that copies share until one of them is written.
///
/// - Copying costs one atomic increment; a copy taken in one thread may be read and released in
///   another. One object is used from one thread at a time.
/// - Const access never detaches. Non-const access (`operator[]`, `begin`, `data`, `last`) first
///   gives the object a block of its own: read through a const reference where no write is meant.
/// - Indices run from 0 and are not checked (debug builds assert). Sizes fit an `int`; growing
///   beyond that throws std::length_error.
/// - Appending is amortised constant time, also in runs (`append` of a list, `resize`); taking off
///   either end is constant time.
/// - An element of the list itself, or the list itself, may be passed to any operation.
/// - When copying an element throws, adding one element at the end changes nothing; every other
///   operation leaves a list that can be used and destroyed.
template <class T>
class TAV_TEMPLATE_API SharedSequence {
public:
    using value_type = T;
    using iterator = T*;
    using const_iterator = const T*;

    SharedSequence() noexcept = default;
    SharedSequence(const SharedSequence& other) noexcept : block_(other.block_) { retain(); }
    SharedSequence(SharedSequence&& other) noexcept : block_(std::exchange(other.block_, nullptr))
    {
    }
    SharedSequence(std::initializer_list<T> values) : SharedSequence(values.begin(), values.end())
    {
    }
    // Delegating: from here on the destructor cleans up when copying an element throws.
    explicit SharedSequence(int count, const T& value = T()) : SharedSequence()
    {
        resize(count, value);
    }

    template <std::forward_iterator Iterator>
    SharedSequence(Iterator begin, Iterator end) : SharedSequence()
    {
        reserve(checkedSize(static_cast<std::size_t>(std::distance(begin, end))));
        if constexpr (std::is_trivially_copyable_v<T>) {
            if (!block_) return;
            T* last = std::uninitialized_copy(begin, end, items(block_));
            block_->size = static_cast<int>(last - items(block_));
        } else {
            for (; begin != end; ++begin) emplaceBack(*begin);
        }
    }

    ~SharedSequence() { releaseBlock(block_); }

    SharedSequence& operator=(const SharedSequence& other) noexcept
    {
        SharedSequence copy(other);
        swap(copy);
        return *this;
    }
    SharedSequence& operator=(SharedSequence&& other) noexcept
    {
        SharedSequence taken(std::move(other));
        swap(taken);
        return *this;
    }
    SharedSequence& operator=(std::initializer_list<T> values)
    {
        SharedSequence copy(values);
        swap(copy);
        return *this;
    }

    void swap(SharedSequence& other) noexcept { std::swap(block_, other.block_); }

    int size() const noexcept { return block_ ? block_->size : 0; }
    int count() const noexcept { return size(); }
    bool isEmpty() const noexcept { return size() == 0; }
    bool empty() const noexcept { return size() == 0; }
    int capacity() const noexcept { return block_ ? block_->capacity - block_->first : 0; }

    /// True when another object reads the same block (a write would copy).
    bool isShared() const noexcept
    {
        return block_ && block_->references.load(std::memory_order_acquire) > 1;
    }

    const T& at(int index) const
    {
        assert(index >= 0 && index < size());
        return items(block_)[index];
    }
    const T& operator[](int index) const { return at(index); }
    T& operator[](int index)
    {
        assert(index >= 0 && index < size());
        detach();
        return items(block_)[index];
    }

    const T* data() const noexcept { return block_ ? items(block_) : nullptr; }
    const T* constData() const noexcept { return data(); }
    T* data()
    {
        detach();
        return block_ ? items(block_) : nullptr;
    }

    const T* begin() const noexcept { return data(); }
    const T* end() const noexcept { return data() + size(); }
    const T* cbegin() const noexcept { return data(); }
    const T* cend() const noexcept { return data() + size(); }
    T* begin() { return data(); }
    T* end() { return data() + size(); }

    const T& first() const { return at(0); }
    const T& last() const { return at(size() - 1); }
    T& first() { return (*this)[0]; }
    T& last() { return (*this)[size() - 1]; }

    void append(const T& value) { emplaceBack(value); }
    void append(T&& value) { emplaceBack(std::move(value)); }
    void push_back(const T& value) { emplaceBack(value); }
    void push_back(T&& value) { emplaceBack(std::move(value)); }
    void append(const SharedSequence& values)
    {
        if (values.isEmpty()) return;
        if (!block_) {
            *this = values;
            return;
        }
        const int added = values.size();
        makeRoom(checkedSize(static_cast<std::size_t>(size()) + static_cast<std::size_t>(added)));
        // `values` may be this list, which has moved by now.
        std::uninitialized_copy_n(values.data(), added, items(block_) + block_->size);
        block_->size += added;
    }

    template <class... Arguments>
    T& emplaceBack(Arguments&&... arguments)
    {
        const int oldSize = size();
        if (block_ && !isShared() && block_->first + oldSize < block_->capacity) {
            T* place = new (items(block_) + oldSize) T(std::forward<Arguments>(arguments)...);
            ++block_->size;
            return *place;
        }
        // The new element is built first: an argument may live in the block that is left behind.
        BlockOwner grown(allocate(grownCapacity(oldSize, static_cast<std::size_t>(oldSize) + 1)));
        T* place = new (items(grown.block) + oldSize) T(std::forward<Arguments>(arguments)...);
        try {
            transferInto(grown.block, oldSize);
        } catch (...) {
            std::destroy_at(place);
            throw;
        }
        grown.block->size = oldSize + 1;
        adopt(grown);
        return *place;
    }

    /// Puts `value` before element `index`; an index outside 0 … size() is brought to the nearer
    /// end.
    void insert(int index, const T& value)
    {
        const int oldSize = size();
        const int position = std::max(index, 0);
        if (position >= oldSize) {
            emplaceBack(value);
            return;
        }
        T copy(value);
        emplaceBack(std::as_const(*this).last());
        T* all = items(block_);
        std::move_backward(all + position, all + oldSize - 1, all + oldSize);
        all[position] = std::move(copy);
    }

    /// Removes element `index`; nothing happens for an index outside the list.
    void remove(int index) { remove(index, 1); }
    void erase(int index) { remove(index, 1); }

    /// Removes up to `count` elements from `index` on.
    void remove(int index, int count)
    {
        const int oldSize = size();
        if (index < 0 || index >= oldSize || count <= 0) return;
        count = std::min(count, oldSize - index);
        if (index == 0) {
            dropFront(count);
            return;
        }
        detach();
        T* all = items(block_);
        std::move(all + index + count, all + oldSize, all + index);
        truncate(oldSize - count);
    }

    void removeLast() { resizeDown(size() - 1); }
    void pop_back() { removeLast(); }
    void removeFirst() { dropFront(1); }
    void pop_front() { dropFront(1); }

    /// Empties the list; a block of its own keeps its memory for reuse.
    void clear()
    {
        if (!block_) return;
        if (isShared()) {
            releaseBlock(std::exchange(block_, nullptr));
            return;
        }
        truncate(0);
        block_->first = 0;
    }

    void reserve(int wanted)
    {
        if (wanted <= capacity() && !isShared()) return;
        if (!block_ && wanted <= 0) return;
        reallocate(std::max(wanted, size()), size());
    }

    /// Cuts the list to `newSize` elements (negative: none) or fills it up with `value`.
    void resize(int newSize, const T& value = T())
    {
        newSize = std::max(newSize, 0);
        if (newSize <= size()) {
            resizeDown(newSize);
            return;
        }
        const T copy(value);
        makeRoom(newSize);
        if constexpr (std::is_trivially_copyable_v<T>) {
            std::uninitialized_fill_n(items(block_) + size(), newSize - size(), copy);
            block_->size = newSize;
        } else {
            while (size() < newSize) emplaceBack(copy);
        }
    }

    /// Gives this object a block of its own when it shares one.
    void detach()
    {
        if (isShared()) reallocate(size(), size());
    }

    friend bool operator==(const SharedSequence& a,
                           const SharedSequence& b) requires std::equality_comparable<T>
    {
        return std::equal(a.begin(), a.end(), b.begin(), b.end());
    }

private:
    static constexpr std::size_t kAlignment = std::max(alignof(T), alignof(BlockHeader));
    static constexpr std::size_t kHeaderBytes =
        (sizeof(BlockHeader) + kAlignment - 1) / kAlignment * kAlignment;

    static constexpr bool kOveraligned = kAlignment > __STDCPP_DEFAULT_NEW_ALIGNMENT__;

    static T* items(BlockHeader* block) noexcept
    {
        return reinterpret_cast<T*>(reinterpret_cast<unsigned char*>(block) + kHeaderBytes) +
               block->first;
    }
    static const T* items(const BlockHeader* block) noexcept
    {
        return items(const_cast<BlockHeader*>(block));
    }

    static int checkedSize(std::size_t wanted)
    {
        if (wanted > static_cast<std::size_t>(std::numeric_limits<int>::max()))
            throw std::length_error("tav: list too long");
        return static_cast<int>(wanted);
    }

    /// At least `wanted`, and twice the old size, so that growing step by step stays linear.
    static int grownCapacity(int oldSize, std::size_t wanted)
    {
        const auto doubled = static_cast<std::size_t>(oldSize) * 2;
        const auto limit = static_cast<std::size_t>(std::numeric_limits<int>::max());
        return checkedSize(std::max({wanted, std::min(doubled, limit), std::size_t{2}}));
    }

    static BlockHeader* allocate(int capacity)
    {
        const std::size_t bytes = kHeaderBytes + static_cast<std::size_t>(capacity) * sizeof(T);
        void* memory = nullptr;
        if constexpr (kOveraligned)
            memory = ::operator new (bytes, std::align_val_t{kAlignment});
        else
            memory = ::operator new(bytes);
        auto* block = new (memory) BlockHeader;
        block->capacity = capacity;
        return block;
    }

    static void freeBlock(BlockHeader* block) noexcept
    {
        block->~BlockHeader();
        if constexpr (kOveraligned)
            ::operator delete (static_cast<void*>(block), std::align_val_t{kAlignment});
        else
            ::operator delete(static_cast<void*>(block));
    }

    static void releaseBlock(BlockHeader* block) noexcept
    {
        if (!block || block->references.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
        std::destroy_n(items(block), block->size);
        freeBlock(block);
    }

    void retain() const noexcept
    {
        if (block_) block_->references.fetch_add(1, std::memory_order_relaxed);
    }

    /// Frees a block that holds no elements yet when building it is interrupted.
    struct BlockOwner {
        explicit BlockOwner(BlockHeader* owned) : block(owned) {}
        BlockOwner(const BlockOwner&) = delete;
        BlockOwner& operator=(const BlockOwner&) = delete;
        ~BlockOwner()
        {
            if (block) freeBlock(block);
        }
        BlockHeader* block;
    };

    /// Moves (own block) or copies (shared block) the first `count` elements into `target`.
    void transferInto(BlockHeader* target, int count)
    {
        if (!block_) return;
        T* source = items(block_);
        if constexpr (std::is_nothrow_move_constructible_v<T>) {
            if (!isShared()) {
                std::uninitialized_move_n(source, count, items(target));
                return;
            }
        }
        std::uninitialized_copy_n(source, count, items(target));
    }

    void adopt(BlockOwner& owner) noexcept
    {
        BlockHeader* old = std::exchange(block_, std::exchange(owner.block, nullptr));
        releaseBlock(old);
    }

    /// A block of this object's own with its first `count` elements.
    void reallocate(int capacity, int count)
    {
        BlockOwner fresh(allocate(std::max(capacity, 1)));
        transferInto(fresh.block, count);
        fresh.block->size = count;
        adopt(fresh);
    }

    /// Room for `wanted` elements in a block of its own.
    void makeRoom(int wanted)
    {
        if (wanted <= capacity() && !isShared()) return;
        reallocate(grownCapacity(size(), static_cast<std::size_t>(wanted)), size());
    }

    /// Shortens a block that is not shared.
    void truncate(int newSize) noexcept
    {
        std::destroy(items(block_) + newSize, items(block_) + block_->size);
        block_->size = newSize;
    }

    void resizeDown(int newSize)
    {
        if (newSize < 0 || newSize >= size()) return;
        if (isShared())
            reallocate(newSize, newSize);
        else
            truncate(newSize);
    }

    void dropFront(int count)
    {
        if (!block_ || block_->size == 0) return;
        detach();
        count = std::min(count, block_->size);
        std::destroy_n(items(block_), count);
        block_->size -= count;
        block_->first = block_->size ? block_->first + count : 0;
    }

    BlockHeader* block_ = nullptr;
};

}  // namespace tav::detail
