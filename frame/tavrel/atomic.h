// Atomic counting for reference counts.
#pragma once

#include "tavrel/export.h"

namespace tav {

/// Adds one to `*value` atomically and returns the new value. The count is a signed 32-bit value
/// and wraps as one, whatever the width of `long`. A null pointer gives 0.
TAV_CORE_API long lockedIncrement(long* value);

/// Takes one from `*value` atomically and returns the new value. A null pointer gives 0.
TAV_CORE_API long lockedDecrement(long* value);

}  // namespace tav

using tav::lockedDecrement;  // the host's functions are known without the namespace, too
using tav::lockedIncrement;
