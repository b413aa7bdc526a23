// calcora station: stations along the axes of a drawing.
#pragma once

#include <functional>

#include "app/options.h"

namespace calcora::app {

/// Adds the command to the program; as addLoopsCommand().
void addStationCommand(CLI::App& program, const GlobalOptions& global, std::function<int()>& run);

}  // namespace calcora::app
