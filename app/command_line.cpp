#include "app/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>

#include "app/commands.h"
#include "app/user_error.h"

namespace calcora::app {

namespace {

/// The parser with all commands, and where parsing leaves its results.
struct CommandLine {
    CLI::App program{"Closed loops and smooth curves from the lines of a drawing.", "calcora"};
    GlobalOptions global;
    std::function<int()> run;

    CommandLine()
    {
        program.set_version_flag("--version", "calcora " CALCORA_VERSION);
        program.require_subcommand(1);
        program
            .add_option(
                "--plugin-dir", global.pluginFolder,
                "Folder of the plugins (default: beside the program; also CALCORA_PLUGIN_DIR)")
            ->type_name("DIR");
        Commands commands(program, global, run);
        addLoopsCommand(commands);
        addSmoothCommand(commands);
        addStationCommand(commands);
        addMeasureCommand(commands);
        addOffsetCommand(commands);
        addSquareCommand(commands);
        addSimplifyCommand(commands);
        addClassesCommand(commands);
        program.footer("Details: calcora COMMAND --help");
    }
};

/// An option's name for messages about others: the long one where there is one.
std::string lastName(const CLI::Option& option)
{
    if (!option.get_lnames().empty()) return "--" + option.get_lnames().back();
    return option.get_snames().empty() ? "" : "-" + option.get_snames().back();
}

OptionText optionText(const CLI::Option& option)
{
    OptionText text;
    for (const std::string& name : option.get_snames()) text.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) text.names.push_back("--" + name);
    if (option.get_type_size() != 0) text.value = option.get_type_name();
    if (text.names.empty()) text.value = option.get_name();
    text.purpose = option.get_description();
    for (const CLI::Option* other : option.get_excludes())
        text.excludes.push_back(lastName(*other));
    std::sort(text.excludes.begin(), text.excludes.end());  // the set is ordered by address
    text.required = option.get_required();
    text.repeats = option.get_expected_max() > 1;
    return text;
}

CommandText commandText(const CLI::App& command)
{
    CommandText text{command.get_name(), command.get_description(), {}};
    for (const CLI::Option* option : command.get_options())
        text.options.push_back(optionText(*option));
    // Words without an option first; the parser has its help before them.
    std::stable_partition(text.options.begin(), text.options.end(),
                          [](const OptionText& option) { return option.names.empty(); });
    return text;
}

}  // namespace

int runCommandLine(int argc, char** argv)
{
    CommandLine line;
    try {
        line.program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return line.program.exit(error);
        const auto unknown = line.program.remaining();
        if (line.program.get_subcommands().empty() && !unknown.empty())
            throw UserError("no command \"" + unknown.front() + "\" (see calcora --help)");
        throw UserError(std::string(error.what()) + " (see calcora --help)");
    }
    return line.run();
}

ProgramText programText()
{
    const CommandLine line;
    ProgramText text{commandText(line.program), {}};
    for (const CLI::App* command : line.program.get_subcommands({}))
        text.commands.push_back(commandText(*command));
    return text;
}

}  // namespace calcora::app
