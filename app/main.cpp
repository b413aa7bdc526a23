// calcora: drawings in, loops and smooth curves out.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <functional>

#include "app/classes_command.h"
#include "app/loops_command.h"
#include "app/measure_command.h"
#include "app/offset_command.h"
#include "app/simplify_command.h"
#include "app/smooth_command.h"
#include "app/square_command.h"
#include "app/station_command.h"
#include "app/user_error.h"

namespace {

using namespace calcora::app;

constexpr int kInternalErrorStatus = 1;

int complain(const std::string& text, int status)
{
    std::string line = text;
    for (char& c : line)
        if (c == '\n' || c == '\r') c = ' ';
    std::fprintf(stderr, "calcora: %s\n", line.c_str());
    return status;
}

int runCommandLine(int argc, char** argv)
{
    CLI::App program("Closed loops and smooth curves from the lines of a drawing.", "calcora");
    program.set_version_flag("--version", "calcora " CALCORA_VERSION);
    program.require_subcommand(1);
    GlobalOptions global;
    program
        .add_option("--plugin-dir", global.pluginFolder,
                    "Folder of the plugins (default: beside the program; also CALCORA_PLUGIN_DIR)")
        ->type_name("DIR");
    std::function<int()> run;
    addLoopsCommand(program, global, run);
    addSmoothCommand(program, global, run);
    addStationCommand(program, global, run);
    addMeasureCommand(program, global, run);
    addOffsetCommand(program, global, run);
    addSquareCommand(program, global, run);
    addSimplifyCommand(program, global, run);
    addClassesCommand(program, global, run);
    program.footer("Details: calcora COMMAND --help");

    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return program.exit(error);
        const auto unknown = program.remaining();
        if (program.get_subcommands().empty() && !unknown.empty())
            return complain("no command \"" + unknown.front() + "\" (see calcora --help)",
                            kBadInputStatus);
        return complain(std::string(error.what()) + " (see calcora --help)", kBadInputStatus);
    }
    return run();
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return runCommandLine(argc, argv);
    } catch (const UserError& error) {
        return complain(error.what(), kBadInputStatus);
    } catch (const std::bad_alloc&) {
        return complain("not enough memory", kInternalErrorStatus);
    } catch (const std::exception& error) {
        return complain(error.what(), kInternalErrorStatus);
    }
}
