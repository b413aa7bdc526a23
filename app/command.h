// What a command tells the parser of the command line. The parser's own header takes seconds to
// compile, so only command.cpp and command_line.cpp know it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/options.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace calcora::app {

/// An option of a command.
class Option {
public:
    explicit Option(CLI::Option* option) : option_(option) {}

    Option& required();
    /// The value's name in the help: "TOL", "auto|yes|no".
    Option& typeName(const char* name);
    /// `error` tells what is wrong with a word; empty when it will do.
    Option& check(std::string (*error)(const std::string& word));
    void excludes(const Option& other);

private:
    CLI::Option* option_;
};

/// A command of the program. The variables that options write to must outlive the parsing.
class Command {
public:
    Command(CLI::App* command, std::function<int()>& run) : command_(command), run_(run) {}

    Option flag(const char* name, bool& value, const char* purpose);
    Option option(const char* name, double& value, const char* purpose);
    Option option(const char* name, std::string& value, const char* purpose);
    Option option(const char* name, std::vector<double>& values, const char* purpose);
    Option option(const char* name, std::vector<std::string>& values, const char* purpose);

    /// Adds IN.dxf, -o, --svg, --json, --layer and --ellipse-tolerance.
    void drawingOptions(DrawingOptions& options);
    /// An option that was added before.
    Option operator[](const char* name);

    /// What the help says under the options.
    void footer(const char* text);
    /// What is carried out when the user gives the command; returns the exit status.
    void runs(std::function<int()> work);

private:
    CLI::App* command_;
    std::function<int()>& run_;
};

/// The commands of the program, to which each adds itself.
class Commands {
public:
    /// `run` gets what the command that the user gives has to carry out.
    Commands(CLI::App& program, const GlobalOptions& globalOptions, std::function<int()>& run)
        : global(globalOptions), program_(program), run_(run)
    {
    }

    Command add(const char* name, const char* purpose);

    const GlobalOptions& global;

private:
    CLI::App& program_;
    std::function<int()>& run_;
};

}  // namespace calcora::app
