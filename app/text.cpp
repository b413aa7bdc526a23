#include "app/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace calcora::app {

namespace {

std::string withoutTrailingZeros(std::string text)
{
    if (text.find('.') != text.npos && text.find('e') == text.npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

template <class... Format>
std::string converted(double value, Format... format)
{
    char buffer[512];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, format...);
    return {buffer, result.ptr};
}

}  // namespace

std::string exactText(double value)
{
    constexpr double kLargestPlain = 1e16;
    constexpr double kSmallestPlain = 1e-6;
    const double size = std::fabs(value);
    const bool plain = size == 0 || (size >= kSmallestPlain && size < kLargestPlain);
    return converted(value, plain ? std::chars_format::fixed : std::chars_format::scientific);
}

std::string shortText(double value)
{
    constexpr int kDigits = 10;
    return withoutTrailingZeros(converted(value, std::chars_format::general, kDigits));
}

std::string fixedText(double value, int decimals)
{
    return withoutTrailingZeros(converted(value, std::chars_format::fixed, decimals));
}

std::string columnText(double value, int decimals)
{
    const std::string text = converted(value, std::chars_format::fixed, decimals);
    const bool isZero = text.find_first_not_of("-0.") == text.npos;
    return isZero && text[0] == '-' ? text.substr(1) : text;
}

std::string countText(long long count)
{
    std::string text = std::to_string(count);
    for (int place = static_cast<int>(text.size()) - 3; place > (count < 0 ? 1 : 0); place -= 3)
        text.insert(static_cast<std::size_t>(place), 1, ',');
    return text;
}

std::string placeText(const tav::Point2DF& place)
{
    return shortText(place.x()) + ", " + shortText(place.y());
}

std::string kindsText(const KindCounts& counts)
{
    std::string text;
    for (const auto& [kind, number] : counts) {
        if (!text.empty()) text += ", ";
        text += kind + " " + countText(number);
    }
    return text.empty() ? "none" : text;
}

std::string secondsText(double seconds)
{
    return fixedText(seconds, seconds < 0.1 ? 4 : seconds < 10 ? 2 : 0);
}

void Table::row(std::string name, std::string value, std::string remark)
{
    rows_.push_back({std::move(name), std::move(value), std::move(remark)});
}

void Table::note(std::string text)
{
    rows_.push_back({{}, {}, std::move(text), true});
}

void Table::append(const Table& table)
{
    rows_.insert(rows_.end(), table.rows_.begin(), table.rows_.end());
}

std::string Table::text() const
{
    std::size_t nameWidth = 0;
    std::size_t valueWidth = 0;
    for (const Row& row : rows_) {
        nameWidth = std::max(nameWidth, row.name.size());
        valueWidth = std::max(valueWidth, row.value.size());
    }
    std::string text;
    for (const Row& row : rows_) {
        if (row.isNote) {
            text += "    " + row.remark + "\n";
            continue;
        }
        text += "  " + row.name + std::string(nameWidth - row.name.size() + 2, ' ') +
                std::string(valueWidth - row.value.size(), ' ') + row.value;
        if (!row.remark.empty()) text += "   " + row.remark;
        text += "\n";
    }
    return text;
}

std::string alignedText(const std::vector<std::vector<std::string>>& rows)
{
    std::vector<std::size_t> widths(rows[0].size(), 0);
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    std::string text;
    for (const auto& row : rows) {
        text += "  ";
        for (std::size_t i = 0; i < row.size(); ++i)
            text.append(widths[i] - row[i].size() + 2, ' ').append(row[i]);
        text.erase(text.find_last_not_of(' ') + 1);
        text += "\n";
    }
    return text;
}

Table drawingTable(const Drawing& drawing)
{
    Table table;
    table.row("entities", countText(drawing.entityCount()), kindsText(drawing.taken));
    if (!drawing.notTaken.empty())
        table.row("not taken", countText(drawing.notTakenCount()), kindsText(drawing.notTaken));
    if (drawing.onOtherLayers > 0) table.row("on other layers", countText(drawing.onOtherLayers));
    return table;
}

}  // namespace calcora::app
