// Arguments by number for the table of operations.
#pragma once

#include <array>
#include <cstdint>
#include <random>

#include "fuzz/operations.h"

namespace reliability {

using Bytes = std::array<std::uint8_t, 24>;

/// The bytes of case `number`; `manner` is the kind of numbers that they make.
inline Bytes bytesOf(unsigned number, fuzz::Manner manner)
{
    std::mt19937 random(number);
    Bytes bytes;
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
    bytes[0] = static_cast<std::uint8_t>(manner);
    return bytes;
}

/// Calls `visit(family, operation)` for every operation.
template <class Visit>
void forEachOperation(Visit visit)
{
    fuzz::loadPlugins();
    for (const fuzz::Family& family : fuzz::families())
        for (const fuzz::Operation& operation : family.operations) visit(family, operation);
}

}  // namespace reliability
