#include "app/dxf_groups.h"

#include <charconv>
#include <cmath>

#include "app/user_error.h"

namespace calcora::app {

namespace {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r\f\v";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view withoutPlus(std::string_view value)
{
    return value.size() > 1 && value[0] == '+' && value[1] != '-' ? value.substr(1) : value;
}

/// What of a hostile value is safe to show on one line.
std::string shown(std::string_view value)
{
    constexpr std::size_t kLongestShown = 32;
    std::string text(value.substr(0, kLongestShown));
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) > 0x7e) c = '?';
    return value.size() > kLongestShown ? text + "..." : text;
}

}  // namespace

std::optional<std::string_view> DxfGroups::nextLine()
{
    if (position_ >= text_.size()) return std::nullopt;
    const std::size_t end = std::min(text_.find('\n', position_), text_.size());
    const std::string_view line = text_.substr(position_, end - position_);
    position_ = end + 1;
    ++line_;
    return trimmed(line);
}

std::optional<DxfGroup> DxfGroups::next()
{
    const auto codeText = nextLine();
    if (!codeText) return std::nullopt;
    // Blank lines behind the last group are no group.
    if (codeText->empty() && text_.find_first_not_of(" \t\r\n", position_) == text_.npos)
        return std::nullopt;
    const auto code = dxfInteger(*codeText);
    if (!code) fail(line_, "a group code was expected, not \"" + shown(*codeText) + "\"");
    const auto value = nextLine();
    if (!value) fail(line_, "the file ends in the middle of a group");
    return DxfGroup{*code, *value, line_};
}

void DxfGroups::fail(int line, const std::string& message) const
{
    throw UserError(file_ + ":" + std::to_string(line) + ": " + message);
}

std::optional<double> dxfNumber(std::string_view value)
{
    value = withoutPlus(value);
    double number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (end != value.data() + value.size()) return std::nullopt;
    if (error == std::errc::result_out_of_range) {
        // Too small for a double, or too large: the exponent's sign tells.
        return value.find("e-") != value.npos || value.find("E-") != value.npos
                   ? std::optional<double>(0.0)
                   : std::nullopt;
    }
    if (error != std::errc{} || !(std::fabs(number) <= kLargestNumber)) return std::nullopt;
    return number;
}

std::optional<int> dxfInteger(std::string_view value)
{
    value = withoutPlus(value);
    int number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (error != std::errc{} || end != value.data() + value.size()) return std::nullopt;
    return number;
}

bool isNumberCode(int code)
{
    return (code >= 10 && code <= 59) || (code >= 110 && code <= 149) ||
           (code >= 210 && code <= 239);
}

}  // namespace calcora::app
