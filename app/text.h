// Numbers and words as the reports show them, whatever the locale.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "app/Drawing.h"

namespace calcora::app {

/// The shortest decimal text that reads back as the same number.
std::string exactText(double value);

/// The number for people: up to ten significant digits, no trailing zeros.
std::string shortText(double value);

/// With so many decimals at most, no trailing zeros, no minus before 0.
std::string fixedText(double value, int decimals);

/// With exactly so many decimals, no minus before 0: for columns.
std::string columnText(double value, int decimals);

/// "1,234,567".
std::string countText(long long count);

std::string placeText(const tav::Point2DF& place);

/// "LINE 120, ARC 30"; "none" without any.
std::string kindsText(const KindCounts& counts);

/// Seconds with as many decimals as they deserve.
std::string secondsText(double seconds);

/// Rows of a report: names on the left, values aligned behind them.
class Table {
public:
    void row(std::string name, std::string value, std::string remark = {});
    /// A line of text under the row before.
    void note(std::string text);
    /// The rows of another table.
    void append(const Table& table);
    std::string text() const;

private:
    struct Row {
        std::string name, value, remark;
        bool isNote = false;
    };
    std::vector<Row> rows_;
};

/// Cells in columns as wide as they need, to the right in each; all rows have as many.
std::string alignedText(const std::vector<std::vector<std::string>>& rows);

/// The rows on what was taken from a drawing and what was not.
Table drawingTable(const Drawing& drawing);

}  // namespace calcora::app
