#include "tavrel/atomic.h"

#include <atomic>
#include <cstdint>

namespace tav {

namespace {

/// Counts are 32-bit values whatever the width of `long`, so the sum is stored wrapped, too.
long addAtomically(long* value, std::uint32_t step)
{
    const std::atomic_ref count(*value);
    long old = count.load(std::memory_order_relaxed);
    long sum = 0;
    do {
        sum = static_cast<std::int32_t>(static_cast<std::uint32_t>(old) + step);
    } while (!count.compare_exchange_weak(old, sum));
    return sum;
}

}  // namespace

long lockedIncrement(long* value)
{
    if (!value) return 0;
    return addAtomically(value, 1u);
}

long lockedDecrement(long* value)
{
    if (!value) return 0;
    return addAtomically(value, ~0u);
}

}  // namespace tav
