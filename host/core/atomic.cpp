#include "tavrel/atomic.h"

#include <atomic>
#include <cstdint>

namespace tav
{

namespace
{

/// Counts are 32-bit values whatever the width of `long`.
long wrapped(long value)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

}  // namespace

long lockedIncrement(long* value)
{
    if (!value) return 0;
    return wrapped(std::atomic_ref(*value).fetch_add(1) + 1);
}

long lockedDecrement(long* value)
{
    if (!value) return 0;
    return wrapped(std::atomic_ref(*value).fetch_sub(1) - 1);
}

}  // namespace tav
