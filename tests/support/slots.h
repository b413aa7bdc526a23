// Where operations stand in the tables of virtual functions.
#pragma once

#include <cstdint>
#include <cstring>

namespace test_support {

/// The slot of a virtual member: its place in declaration order, the destructor taking one place
/// although it has two entries in the table.
template <class Member>
int slotOf(Member member)
{
    std::intptr_t words[2];
    static_assert(sizeof member == sizeof words);
    std::memcpy(words, &member, sizeof words);
#if defined(__aarch64__) || defined(__arm__)
    const bool isVirtual = words[1] & 1;
    const std::intptr_t offset = words[0];
#else
    const bool isVirtual = words[0] & 1;
    const std::intptr_t offset = words[0] - 1;
#endif
    if (!isVirtual) return -1;
    const int entry = static_cast<int>(offset / std::intptr_t{sizeof(void*)});
    return entry < 2 ? entry : entry - 1;
}

}  // namespace test_support
