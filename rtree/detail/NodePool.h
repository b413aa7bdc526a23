// Memory of a tree's nodes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <new>
#include <type_traits>

namespace calcora::rtree {

/// Nodes of type T from blocks of memory that are given back all at once.
///
/// Whoever needs nodes reserves them first, the one step that can fail; taking and giving back
/// cannot. Nodes given back are used again, the last one first. Blocks grow with the tree, so that
/// about a sixteenth of the memory at most is unused.
template <class T>
class NodePool {
    static_assert(std::is_trivially_destructible_v<T>);

public:
    NodePool() = default;
    NodePool(const NodePool&) = delete;
    NodePool& operator=(const NodePool&) = delete;
    ~NodePool() { clear(); }

    /// Makes sure that `count` nodes can be taken. Throws std::bad_alloc, changing nothing.
    void reserve(int count)
    {
        for (std::ptrdiff_t missing = count - spare_; missing > 0; missing = count - spare_)
            addBlock(std::max(missing, std::clamp(total_ / 16, kLeastBlock, kMostBlock)));
    }

    /// A new node; one must have been reserved.
    T* take(int level) noexcept
    {
        --spare_;
        if (free_ == nullptr) return new (fresh_++) T(level);
        Link* link = free_;
        free_ = link->next;
        return new (link) T(level);
    }

    void giveBack(T* node) noexcept
    {
        ++spare_;
        free_ = new (node) Link{free_};
    }

    /// Frees every node, taken or not.
    void clear() noexcept
    {
        while (blocks_ != nullptr) {
            Block* block = blocks_;
            blocks_ = block->next;
            ::operator delete (static_cast<void*>(block), std::align_val_t{alignof(T)});
        }
        free_ = nullptr;
        fresh_ = nullptr;
        spare_ = total_ = 0;
    }

    /// Memory held, in bytes.
    std::size_t bytes() const { return static_cast<std::size_t>(total_) * sizeof(T); }

private:
    struct Link {
        Link* next;
    };
    struct alignas(T) Block {
        Block* next;
    };
    static_assert(sizeof(Link) <= sizeof(T));

    static constexpr std::ptrdiff_t kLeastBlock = 4;    // nodes
    static constexpr std::ptrdiff_t kMostBlock = 4096;  // nodes, some 1.5 MB

    void addBlock(std::ptrdiff_t nodes)
    {
        void* memory = ::operator new (sizeof(Block) + static_cast<std::size_t>(nodes) * sizeof(T),
                                       std::align_val_t{alignof(T)});
        // What is left of the block before goes to the free list, where nothing is lost.
        for (T* end = freshEnd_; fresh_ != nullptr && fresh_ != end;)
            free_ = new (--end) Link{free_};
        auto* block = new (memory) Block{blocks_};
        blocks_ = block;
        fresh_ = reinterpret_cast<T*>(block + 1);
        freshEnd_ = fresh_ + nodes;
        spare_ += nodes;
        total_ += nodes;
    }

    Block* blocks_ = nullptr;
    Link* free_ = nullptr;
    T* fresh_ = nullptr;  ///< next node of the newest block that was never taken
    T* freshEnd_ = nullptr;
    std::ptrdiff_t spare_ = 0;  ///< nodes that can be taken
    std::ptrdiff_t total_ = 0;
};

}  // namespace calcora::rtree
