#include "tavrel/DString.h"

#include <algorithm>
#include <cstdlib>

namespace tav {

namespace {

char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string loweredCopy(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), lowered);
    return text;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// A marker "%n" or "%nn" with n above 0.
struct Marker {
    int number = 0;
    std::size_t length = 0;
};

Marker markerAt(const std::string& text, std::size_t position)
{
    if (text[position] != '%' || position + 1 >= text.size() || !isDigit(text[position + 1]))
        return {};
    Marker marker{text[position + 1] - '0', 2};
    if (position + 2 < text.size() && isDigit(text[position + 2])) {
        marker.number = marker.number * 10 + (text[position + 2] - '0');
        marker.length = 3;
    }
    return marker.number > 0 ? marker : Marker{};
}

}  // namespace

DString::DString(const char* text) : text_(text ? text : "") {}

DString& DString::operator+=(const DString& other)
{
    text_ += other.text_;
    return *this;
}

DString DString::toLower() const
{
    return DString(loweredCopy(text_));
}

DString DString::mid(int position, int length) const
{
    if (position >= size()) return {};
    const auto start = static_cast<std::size_t>(std::max(position, 0));
    const auto count = length < 0 ? std::string::npos : static_cast<std::size_t>(length);
    return DString(text_.substr(start, count));
}

int DString::indexOf(const DString& text, int start, CaseSensitivity sensitivity) const
{
    const auto from = static_cast<std::size_t>(std::max(start, 0));
    const std::size_t found = sensitivity == CaseSensitivity::Sensitive
                                  ? text_.find(text.text_, from)
                                  : loweredCopy(text_).find(loweredCopy(text.text_), from);
    return found == std::string::npos ? -1 : static_cast<int>(found);
}

DString DString::arg(const DString& text, int fieldWidth, char fill) const
{
    std::string padded = text.text_;
    const auto width = static_cast<std::size_t>(std::abs(static_cast<long>(fieldWidth)));
    if (padded.size() < width)
        padded.insert(fieldWidth > 0 ? 0 : padded.size(), width - padded.size(), fill);

    int lowest = 0;
    for (std::size_t i = 0; i < text_.size(); ++i) {
        const Marker marker = markerAt(text_, i);
        if (marker.number && (!lowest || marker.number < lowest)) lowest = marker.number;
    }
    if (!lowest) return *this;

    std::string result;
    for (std::size_t i = 0; i < text_.size();) {
        const Marker marker = markerAt(text_, i);
        if (marker.number == lowest) {
            result += padded;
            i += marker.length;
        } else {
            result += text_[i++];
        }
    }
    return DString(std::move(result));
}

}  // namespace tav
