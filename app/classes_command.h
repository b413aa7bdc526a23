// calcora classes: what the loaded plugin registers.
#pragma once

#include <functional>

#include "app/options.h"

namespace calcora::app {

/// Adds the command to the program; as addLoopsCommand().
void addClassesCommand(CLI::App& program, const GlobalOptions& global, std::function<int()>& run);

}  // namespace calcora::app
