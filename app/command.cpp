#include "app/command.h"

#include <CLI/CLI.hpp>

namespace calcora::app {

Option& Option::required()
{
    option_->required();
    return *this;
}

Option& Option::typeName(const char* name)
{
    option_->type_name(name);
    return *this;
}

Option& Option::check(std::string (*error)(const std::string& word))
{
    option_->check(error);
    return *this;
}

void Option::excludes(const Option& other)
{
    option_->excludes(other.option_);
}

Option Command::flag(const char* name, bool& value, const char* purpose)
{
    return Option(command_->add_flag(name, value, purpose));
}

Option Command::option(const char* name, double& value, const char* purpose)
{
    return Option(command_->add_option(name, value, purpose));
}

Option Command::option(const char* name, std::string& value, const char* purpose)
{
    return Option(command_->add_option(name, value, purpose));
}

Option Command::option(const char* name, std::vector<double>& values, const char* purpose)
{
    return Option(command_->add_option(name, values, purpose));
}

Option Command::option(const char* name, std::vector<std::string>& values, const char* purpose)
{
    return Option(command_->add_option(name, values, purpose));
}

void Command::drawingOptions(DrawingOptions& options)
{
    option("IN.dxf", options.input, "The drawing to read").required();
    option("-o,--output", options.dxf, "Write the result as a DXF drawing").typeName("OUT.dxf");
    option("--svg", options.svg, "Write a picture of the result").typeName("OUT.svg");
    flag("--json", options.json, "Print the result as one JSON object");
    option("--layer", options.layers,
           "Take only what lies on these layers (upper and lower case are one)")
        .typeName("NAME");
    option("--ellipse-tolerance", options.ellipseTolerance,
           "Largest distance between an ellipse and its chords, in drawing units "
           "(default: a thousandth of its larger semi-axis)")
        .typeName("TOL")
        .check(lengthError);
}

Option Command::operator[](const char* name)
{
    return Option(command_->get_option(name));
}

void Command::footer(const char* text)
{
    command_->footer(text);
}

void Command::runs(std::function<int()> work)
{
    command_->callback([work = std::move(work), &run = run_] { run = work; });
}

Command Commands::add(const char* name, const char* purpose)
{
    return {program_.add_subcommand(name, purpose), run_};
}

}  // namespace calcora::app
