#include "app/manual/completions.h"

#include <vector>

namespace calcora::manual {

namespace {

using app::CommandText;
using app::OptionText;

enum class ValueKind { None, Words, File, Folder, Other };

/// What the placeholder of a value stands for.
ValueKind valueKind(const OptionText& option)
{
    if (option.value.empty()) return ValueKind::None;
    if (option.value == "DIR") return ValueKind::Folder;
    if (option.value.find('.') != std::string::npos) return ValueKind::File;
    // Words to choose from are lower case; "K|auto" is a number or a word.
    return option.value.find('|') != std::string::npos ? ValueKind::Words : ValueKind::Other;
}

std::string wordList(const OptionText& option)
{
    std::string words;
    std::string word;
    for (const char c : option.value + "|") {
        if (c != '|') {
            word += c;
            continue;
        }
        if (word[0] >= 'a' && word[0] <= 'z') words += (words.empty() ? "" : " ") + word;
        word.clear();
    }
    return words;
}

std::string extension(const OptionText& option)
{
    return option.value.substr(option.value.find('.') + 1);
}

std::string joined(const std::vector<std::string>& words, const char* between)
{
    std::string text;
    for (const std::string& word : words) {
        if (!text.empty()) text += between;
        text += word;
    }
    return text;
}

std::string optionNames(const CommandText& command)
{
    std::vector<std::string> names;
    for (const OptionText& option : command.options)
        names.insert(names.end(), option.names.begin(), option.names.end());
    return joined(names, " ");
}

/// The case of a command: completes the value of the option before the cursor, or options and the
/// command's own word.
std::string bashCase(const CommandText& command)
{
    std::string text = "    " + command.name + ")\n        case $previous in\n";
    std::string plain = ";";
    for (const OptionText& option : command.options) {
        std::string action;
        switch (valueKind(option)) {
            case ValueKind::None:
                continue;
            case ValueKind::Words:
                action = "_calcora_words \"" + wordList(option) + "\"";
                break;
            case ValueKind::File:
                action = "_calcora_files " + extension(option);
                break;
            case ValueKind::Folder:
                action = "_calcora_folders";
                break;
            case ValueKind::Other:
                action = "COMPREPLY=()";
                break;
        }
        if (option.names.empty()) {
            plain = action;
            continue;
        }
        text += "            " + joined(option.names, "|") + ") " + action + "; return ;;\n";
    }
    if (plain == ";") plain = "COMPREPLY=()";
    return text + "        esac\n        if [[ $current == -* ]]; then _calcora_words \"" +
           optionNames(command) + "\"; else " + plain + "; fi\n        ;;\n";
}

/// Text for the brackets that zsh shows beside a name, inside single quotes.
std::string zshQuoted(const std::string& text)
{
    std::string out;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':' || c == '\\') out += '\\';
        out += c;
        if (c == '\'') out += "\\''";
    }
    return out;
}

std::string zshAction(const OptionText& option)
{
    switch (valueKind(option)) {
        case ValueKind::None:
            return "";
        case ValueKind::Words:
            return ":" + zshQuoted(option.value) + ":(" + wordList(option) + ")";
        case ValueKind::File:
            return ":" + option.value + ":_files -g \"*.(#i)" + extension(option) + "\"";
        case ValueKind::Folder:
            return ":" + option.value + ":_files -/";
        case ValueKind::Other:
            break;
    }
    return ":" + zshQuoted(option.value) + ": ";
}

/// A line for every name of every option, as _arguments of zsh takes them.
std::string zshOptions(const CommandText& command, const std::string& indent)
{
    std::string text;
    for (const OptionText& option : command.options) {
        if (option.names.empty()) {
            text += indent + "'1" + zshAction(option) + "' \\\n";
            continue;
        }
        std::vector<std::string> closed = option.names;  // what cannot follow
        closed.insert(closed.end(), option.excludes.begin(), option.excludes.end());
        const std::string before = option.repeats ? "*" : "(" + joined(closed, " ") + ")";
        const std::string behind = "[" + zshQuoted(option.purpose) + "]" + zshAction(option);
        for (const std::string& name : option.names)
            text.append(indent).append("'").append(before).append(name).append(behind).append(
                "' \\\n");
    }
    return text;
}

}  // namespace

std::string bashCompletion(const app::ProgramText& text)
{
    std::vector<std::string> names;
    std::string cases;
    for (const CommandText& command : text.commands) {
        names.push_back(command.name);
        cases += bashCase(command);
    }
    CommandText program = text.program;
    program.name = "''";
    std::string own = bashCase(program);
    own.replace(own.rfind("COMPREPLY=()"), 12, "_calcora_words \"" + joined(names, " ") + "\"");
    return R"(# bash completion for calcora; made from the program's own options.

_calcora_words()
{
    COMPREPLY=($(compgen -W "$1" -- "$current"))
}

_calcora_folders()
{
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$current")
}

_calcora_files()
{
    _calcora_folders
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY \
        < <(shopt -s nocasematch; compgen -f -- "$current" |
            while read -r file; do
                [[ $file == *.$1 && ! -d $file ]] && printf '%s\n' "$file"
            done)
}

_calcora()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command= word skip=
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if [[ $skip ]]; then skip=
        elif [[ $word == --plugin-dir ]]; then skip=yes
        elif [[ $word != -* ]]; then command=$word; break
        fi
    done
    COMPREPLY=()
    case $command in
)" + own + cases +
           R"(    esac
}

complete -F _calcora calcora
)";
}

std::string zshCompletion(const app::ProgramText& text)
{
    std::string names;
    std::string cases;
    for (const CommandText& command : text.commands) {
        names += "        '" + command.name + ":" + zshQuoted(command.purpose) + "'\n";
        cases += "            " + command.name + ")\n                _arguments \\\n" +
                 zshOptions(command, "                    ") +
                 "                    && return 0\n                ;;\n";
    }
    return R"(#compdef calcora
# zsh completion for calcora; made from the program's own options.

_calcora()
{
    local context state line curcontext="$curcontext"
    local -a commands
    commands=(
)" + names +
           R"(    )
    _arguments -C \
)" + zshOptions(text.program, "        ") +
           R"(        '1:command:->command' \
        '*::arguments:->arguments' \
        && return 0
    case $state in
        command) _describe command commands ;;
        arguments)
            curcontext="${curcontext%:*:*}:calcora-$line[1]:"
            case $line[1] in
)" + cases +
           R"(            esac
            ;;
    esac
}

_calcora "$@"
)";
}

}  // namespace calcora::manual
