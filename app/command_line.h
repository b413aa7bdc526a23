// The command line of calcora: carrying it out, and telling what may stand on it.
#pragma once

#include <string>
#include <vector>

namespace calcora::app {

/// Carries out what the arguments ask for; returns the exit status. Throws UserError and what the
/// commands throw.
int runCommandLine(int argc, char** argv);

/// An option, or a word that stands without one, as manual pages and completions tell it.
struct OptionText {
    std::vector<std::string> names;     ///< "-o", "--output"; none for a word without an option
    std::string value;                  ///< "OUT.dxf", "auto|yes|no"; empty for a flag
    std::string purpose;                ///< one phrase, without a full stop
    std::vector<std::string> excludes;  ///< last names of the options that it cannot stand with
    bool required = false;
    bool repeats = false;  ///< takes several values
};

struct CommandText {
    std::string name;
    std::string purpose;
    std::vector<OptionText> options;
};

/// The program's own options and all commands, in the order in which the help tells them.
struct ProgramText {
    CommandText program;
    std::vector<CommandText> commands;
};

ProgramText programText();

}  // namespace calcora::app
