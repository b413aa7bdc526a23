// Manual pages: the options as the program knows them, the text of docs/calcora.md.
#pragma once

#include <string>
#include <vector>

#include "app/command_line.h"

namespace calcora::manual {

struct ManPage {
    std::string name;  ///< "calcora-loops"
    std::string text;  ///< roff
};

/// One page for the program and one for each command. `document` is Markdown with a section
/// "<program> <command>" for each command; what stands before the first of them goes to the
/// program's page. Throws std::runtime_error when a command has no section.
std::vector<ManPage> manPages(const app::ProgramText& text, const std::string& document,
                              const std::string& version);

}  // namespace calcora::manual
