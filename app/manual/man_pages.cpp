#include "app/manual/man_pages.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <sstream>
#include <stdexcept>

#include "app/manual/roff.h"

namespace calcora::manual {

namespace {

using app::CommandText;
using app::OptionText;
using Lines = std::vector<std::string>;

/// The second-level sections of a document by title; what stands before them under "".
std::map<std::string, Lines> sections(const std::string& document)
{
    std::map<std::string, Lines> found;
    std::istringstream in(document);
    std::string title;
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("## ", 0) == 0)
            title = line.substr(3);
        else if (line.rfind("# ", 0) != 0)
            found[title].push_back(line);
    }
    return found;
}

/// Without code blocks: the synopsis and the options take their place.
Lines withoutUsage(const Lines& lines)
{
    Lines kept;
    bool inCode = false;
    for (const std::string& line : lines) {
        const bool fence = line.rfind("```", 0) == 0;
        if (!inCode && !fence) kept.push_back(line);
        if (fence) inCode = !inCode;
    }
    return kept;
}

std::string bold(const std::string& text)
{
    return "\\fB" + roffText(text) + "\\fR";
}

std::string italic(const std::string& text)
{
    return text.empty() ? "" : "\\fI" + roffText(text) + "\\fR";
}

/// "--layer NAME ..." as it stands in a synopsis.
std::string usage(const OptionText& option)
{
    std::string text = option.names.empty() ? "" : bold(option.names.front());
    if (!text.empty() && !option.value.empty()) text += " ";
    text += italic(option.value);
    return option.repeats ? text + " ..." : text;
}

bool excludes(const OptionText& option, const OptionText& other)
{
    return !other.names.empty() && std::find(option.excludes.begin(), option.excludes.end(),
                                             other.names.back()) != option.excludes.end();
}

bool isHelp(const OptionText& option)
{
    return !option.names.empty() && option.names.back() == "--help";
}

/// Words that must stand first, then the others in brackets, alternatives together.
std::string synopsis(const std::string& command, const std::vector<OptionText>& options)
{
    std::string text = bold(command);
    for (const OptionText& option : options)
        if (option.required) text += " " + usage(option);
    std::vector<const OptionText*> left;
    for (const OptionText& option : options)
        if (!option.required && !isHelp(option)) left.push_back(&option);
    while (!left.empty()) {
        const OptionText* first = left.front();
        left.erase(left.begin());
        text += " [" + usage(*first);
        const auto other = std::find_if(left.begin(), left.end(), [&](const OptionText* option) {
            return excludes(*first, *option);
        });
        if (other != left.end()) {
            text += " | " + usage(**other);
            left.erase(other);
        }
        text += "]";
    }
    return text + "\n";
}

std::string optionList(const std::vector<OptionText>& options)
{
    std::string text;
    for (const OptionText& option : options) {
        std::string names;
        for (const std::string& name : option.names)
            names += (names.empty() ? "" : ", ") + bold(name);
        if (!names.empty() && !option.value.empty()) names += " ";
        names += italic(option.value);
        if (option.repeats) names += " ...";
        text += ".TP\n" + names + "\n" + roffText(option.purpose) + "\n";
    }
    return text;
}

std::string lowerFirst(std::string text)
{
    if (!text.empty())
        text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
    if (!text.empty() && text.back() == '.') text.pop_back();
    return text;
}

std::string header(const std::string& page, const std::string& purpose, const std::string& version)
{
    std::string title = page;
    for (char& c : title) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return ".TH " + title + " 1 \"\" \"" + version + "\" \"User commands\"\n" + ".nh\n.ad l\n" +
           roffSection("Name") + roffText(page) + " \\- " + roffText(lowerFirst(purpose)) + "\n";
}

/// Text up to the first heading, options, then the rest.
std::string body(const Lines& lines, const std::vector<OptionText>& options)
{
    const auto heading = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
        return line.rfind("###", 0) == 0;
    });
    return roffSection("Description") + roffBlocks(Lines(lines.begin(), heading)) +
           roffSection("Options") + optionList(options) + roffBlocks(Lines(heading, lines.end()));
}

std::string seeAlso(const std::string& name)
{
    return bold(name) + "(1)";
}

}  // namespace

std::vector<ManPage> manPages(const app::ProgramText& text, const std::string& document,
                              const std::string& version)
{
    const std::string& program = text.program.name;
    std::map<std::string, Lines> parts = sections(document);
    std::vector<ManPage> pages;
    std::string list;
    std::string others;
    for (const CommandText& command : text.commands) {
        const std::string page = program + "-" + command.name;
        const auto part = parts.find(program + " " + command.name);
        if (part == parts.end()) throw std::runtime_error("no section on " + page);
        pages.push_back({page, header(page, command.purpose, version) + roffSection("Synopsis") +
                                   synopsis(part->first, command.options) +
                                   body(part->second, command.options) + roffSection("See also") +
                                   seeAlso(program) + "\n"});
        parts.erase(part);
        list += ".TP\n" + seeAlso(page) + "\n" + roffText(command.purpose) + "\n";
        others += (others.empty() ? "" : ", ") + seeAlso(page);
    }

    // What is left is common to all commands.
    const Lines introduction = withoutUsage(parts[""]);
    parts.erase("");
    std::string common;
    for (const auto& [title, lines] : parts) common += roffBlocks(lines);
    std::string own = body(introduction, text.program.options);
    own.insert(own.find(roffSection("Options")), roffSection("Commands") + list);
    const std::string line = bold(program) + " [" + bold("--plugin-dir") + " " + italic("DIR") +
                             "] " + italic("COMMAND") + " ...\n";
    pages.insert(pages.begin(), {program, header(program, text.program.purpose, version) +
                                              roffSection("Synopsis") + line + own + common +
                                              roffSection("See also") + others + "\n"});
    return pages;
}

}  // namespace calcora::manual
