// A DXF text as groups (code and value), with the line that each stands on.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace calcora::app {

struct DxfGroup {
    int code = 0;
    std::string_view value;  ///< without surrounding blanks
    int line = 0;            ///< number of the value's line, from 1
};

/// Reads the groups of a text one by one. The text must outlive the reader and its groups.
class DxfGroups {
public:
    DxfGroups(std::string_view text, std::string file) : text_(text), file_(std::move(file)) {}

    /// The next group, or nothing at the end of the text. Throws UserError when a group code is no
    /// integer or its value is missing.
    std::optional<DxfGroup> next();

    /// Throws UserError "FILE:LINE: MESSAGE".
    [[noreturn]] void fail(int line, const std::string& message) const;

    int line() const { return line_; }

private:
    std::optional<std::string_view> nextLine();

    std::string_view text_;
    std::string file_;
    std::size_t position_ = 0;
    int line_ = 0;
};

/// Numbers beyond this have no decimals left that a drawing could use.
inline constexpr double kLargestNumber = 1e15;

/// The value read as a number with a decimal point, whatever the locale; nothing when it is none,
/// not finite, or larger than kLargestNumber in size.
std::optional<double> dxfNumber(std::string_view value);

std::optional<int> dxfInteger(std::string_view value);

/// True for the group codes whose values are coordinates, lengths, angles and the like.
bool isNumberCode(int code);

}  // namespace calcora::app
