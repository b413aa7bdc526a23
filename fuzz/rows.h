// How the tables of operations are written.
#pragma once

#include "fuzz/call.h"

/// The row of operation `name` of the interface I; behind it, its room and its flags.
#define ROW(name, ...) row<&I::name>(#name __VA_OPT__(, ) __VA_ARGS__)

namespace fuzz {

std::vector<Family> commonFamilies();

}  // namespace fuzz
