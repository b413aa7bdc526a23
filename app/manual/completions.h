// Completions of the command line for shells.
#pragma once

#include <string>

#include "app/command_line.h"

namespace calcora::manual {

std::string bashCompletion(const app::ProgramText& text);
std::string zshCompletion(const app::ProgramText& text);

}  // namespace calcora::manual
