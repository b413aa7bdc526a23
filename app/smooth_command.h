// calcora smooth: smooth curves through the points of a drawing.
#pragma once

#include <functional>

#include "app/options.h"

namespace calcora::app {

/// Adds the command to the program. When the user gives it, `run` receives what is to be carried
/// out once all options are known; it returns the exit status.
void addSmoothCommand(CLI::App& program, const GlobalOptions& global, std::function<int()>& run);

}  // namespace calcora::app
