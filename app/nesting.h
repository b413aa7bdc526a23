// Which loops lie inside others.
#pragma once

#include <vector>

#include "app/host.h"
#include "app/loop_extraction.h"

namespace calcora::app {

/// For every loop whether it lies inside another one. The loops must come smallest area first and
/// must not cross each other, as the extraction gives them: two loops of one connected drawing lie
/// side by side, and a loop inside another touches it in one point at most.
std::vector<bool> findNestedLoops(const Host& host, const std::vector<Loop>& loops);

}  // namespace calcora::app
