// What is left when memory runs out or the host has no object, at every place where that can be.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <map>
#include <new>
#include <string>
#include <string_view>

#include "tests/reliability/support.h"

namespace {

std::atomic<long> blocksInUse = 0;
thread_local long allocationsLeft = -1;  ///< until one fails; negative: none does
thread_local bool hasRunOut = false;

void* allocate(std::size_t size, std::size_t alignment)
{
    if (allocationsLeft >= 0 && allocationsLeft-- == 0) {
        hasRunOut = true;
        throw std::bad_alloc();
    }
    void* memory =
        alignment <= alignof(std::max_align_t)
            ? std::malloc(size ? size : 1)
            : std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
    if (!memory) throw std::bad_alloc();
    ++blocksInUse;
    return memory;
}

void giveBack(void* memory)
{
    if (memory) --blocksInUse;
    std::free(memory);
}

}  // namespace

void* operator new(std::size_t size)
{
    return allocate(size, 1);
}
void* operator new(std::size_t size, std::align_val_t alignment)
{
    return allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
try {
    return allocate(size, 1);
} catch (const std::bad_alloc&) {
    return nullptr;
}
void operator delete(void* memory) noexcept
{
    giveBack(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    giveBack(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    giveBack(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept
{
    giveBack(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept
{
    giveBack(memory);
}

namespace {

using reliability::bytesOf;

constexpr unsigned kCases = 12;

/// Where the k-th allocation, or creation, of an operation fails.
struct Fault {
    enum Kind { Memory, Creation } kind;
    int place;
};
long nextFault = -1;

void arm(bool begins)
{
    allocationsLeft = begins ? nextFault : -1;
}

/// Runs the operation with the fault, then again without on the same objects. False when the
/// operation did not come to that place.
bool run(const fuzz::Operation& operation, const reliability::Bytes& bytes, const Fault& fault,
         std::uint64_t expected, bool hasState)
{
    const auto source = [&] { return fuzz::Source(bytes.data(), bytes.size()); };
    fuzz::Source current = source();
    fuzz::Call call(current);
    call.letsBadAllocOut = true;
    if (fault.kind == Fault::Creation) call.refusedCreation = fault.place;
    call.onCall = arm;
    nextFault = fault.kind == Fault::Memory ? fault.place : -1;
    hasRunOut = false;
    bool hasThrown = false;
    fuzz::Outcome outcome;
    try {
        call.run(operation, outcome);
    } catch (const std::bad_alloc&) {
        hasThrown = true;
    }
    // A temporary buffer that could not be had is done without; all else reaches the caller.
    if (fault.kind == Fault::Memory && !hasThrown) {
        EXPECT_EQ(outcome.digest(), expected) << operation.name << ", allocation " << fault.place;
    }

    const bool isReached = hasRunOut || call.hasRefused;
    call.refusedCreation = -1;
    nextFault = -1;
    current = source();
    fuzz::Outcome again;
    call.run(operation, again);
    if (!hasState) {
        EXPECT_EQ(again.digest(), expected) << operation.name << " after fault " << fault.place;
    }
    return isReached;
}

TEST(Faults, LeaveNothingBehindAndObjectsAsTheyWere)
{
    int faults[2] = {0, 0};
    std::map<std::string, int> byFamily;
    reliability::forEachOperation(
        [&](const fuzz::Family& family, const fuzz::Operation& operation) {
            const bool hasState = std::string_view(family.name) == "R-tree";
            for (unsigned number = 0; number < kCases; ++number) {
                const auto bytes = bytesOf(number, static_cast<fuzz::Manner>(number % 3));
                fuzz::Outcome expected;
                {
                    fuzz::Source source(bytes.data(), bytes.size());
                    fuzz::Call(source).run(operation, expected);
                }
                for (const auto kind : {Fault::Memory, Fault::Creation})
                    for (int place = 0; place < 500; ++place) {
                        const long before = blocksInUse;
                        const bool isReached =
                            run(operation, bytes, {kind, place}, expected.digest(), hasState);
                        EXPECT_EQ(blocksInUse, before) << operation.name << ", fault " << place;
                        if (!isReached) break;
                        ++faults[kind];
                        byFamily[family.name] += kind == Fault::Memory;
                    }
            }
        });
    EXPECT_GT(faults[Fault::Memory], 6000);
    EXPECT_GT(faults[Fault::Creation], 500);
    RecordProperty("memory", faults[Fault::Memory]);
    RecordProperty("creation", faults[Fault::Creation]);
    for (const auto& [family, count] : byFamily) RecordProperty(family, count);
}

}  // namespace
