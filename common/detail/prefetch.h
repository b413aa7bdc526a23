// Asking for memory before it is read.
#pragma once

namespace calcora::detail {

/// Lets memory come in while something else is done. Changes nothing else.
inline void prefetch(const void* memory)
{
#if defined(__GNUC__)
    __builtin_prefetch(memory);
#else
    static_cast<void>(memory);
#endif
}

}  // namespace calcora::detail
