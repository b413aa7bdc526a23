#include "app/manual/roff.h"

#include <cctype>
#include <cstddef>

namespace calcora::manual {

namespace {

bool startsWith(const std::string& line, const char* start)
{
    return line.rfind(start, 0) == 0;
}

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The cells of a row; "\|" inside a cell is a bar.
std::vector<std::string> tableCells(const std::string& row)
{
    std::vector<std::string> cells;
    std::string cell;
    for (std::size_t i = 1; i < row.size(); ++i) {
        if (row[i] == '\\' && i + 1 < row.size() && row[i + 1] == '|') {
            cell += row[++i];
        } else if (row[i] == '|') {
            cells.push_back(trimmed(cell));
            cell.clear();
        } else {
            cell += row[i];
        }
    }
    return cells;
}

/// Reads Markdown line by line and appends roff.
class Converter {
public:
    explicit Converter(const std::vector<std::string>& lines) : lines_(lines) {}

    std::string convert()
    {
        while (at_ < lines_.size()) block();
        return out_;
    }

private:
    const std::string& line() const { return lines_[at_]; }

    void block()
    {
        if (line().empty() || startsWith(line(), "![")) {
            ++at_;
        } else if (startsWith(line(), "#")) {
            out_ += roffSection(trimmed(line().substr(line().find_first_not_of('#'))));
            ++at_;
        } else if (startsWith(line(), "```")) {
            code();
        } else if (startsWith(line(), "|")) {
            table();
        } else if (startsWith(line(), "- ")) {
            item();
        } else {
            out_ += ".PP\n" + paragraph(line());
        }
    }

    /// Takes the lines up to the next block; `first` stands for the present one.
    std::string paragraph(std::string first)
    {
        std::string text = std::move(first);
        for (++at_; at_ < lines_.size() && !endsParagraph(line()); ++at_)
            text += " " + trimmed(line());
        return roffInline(text) + "\n";
    }

    static bool endsParagraph(const std::string& line)
    {
        return line.empty() || line[0] == '#' || line[0] == '|' || startsWith(line, "- ") ||
               startsWith(line, "```");
    }

    void code()
    {
        out_ += ".PP\n.RS 4\n.EX\n";
        for (++at_; at_ < lines_.size() && !startsWith(line(), "```"); ++at_)
            out_ += roffText(line()) + "\n";
        ++at_;
        out_ += ".EE\n.RE\n";
    }

    void item() { out_ += ".IP \\(bu 2\n" + paragraph(line().substr(2)); }

    void table()
    {
        const std::vector<std::string> titles = tableCells(line());
        for (at_ += 2; at_ < lines_.size() && startsWith(line(), "|"); ++at_) {
            const std::vector<std::string> cells = tableCells(line());
            std::string text = cells.size() > 1 ? cells[1] : "";
            for (std::size_t i = 2; i < cells.size(); ++i)
                text += "; " + titles[i] + ": " + cells[i];
            out_ += ".TP\n" + roffInline(cells[0]) + "\n" + roffInline(text) + "\n";
        }
    }

    const std::vector<std::string>& lines_;
    std::size_t at_ = 0;
    std::string out_;
};

}  // namespace

std::string roffText(const std::string& text)
{
    std::string out;
    if (!text.empty() && (text[0] == '.' || text[0] == '\'')) out = "\\&";
    for (const char c : text) {
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else if (c == '^')
            out += "\\(ha";
        else if (c == '~')
            out += "\\(ti";
        else
            out += c;
    }
    return out;
}

std::string roffInline(const std::string& markdown)
{
    std::string out;
    std::string plain;
    const auto flush = [&] {
        out += roffText(plain);
        plain.clear();
    };
    bool bold = false;
    bool italic = false;
    for (std::size_t i = 0; i < markdown.size(); ++i) {
        const std::string rest = markdown.substr(i);
        const auto end = [&](const char* mark, std::size_t from) { return rest.find(mark, from); };
        if (rest[0] == '`' && end("`", 1) != std::string::npos) {
            flush();
            out += "\\fB" + roffText(rest.substr(1, end("`", 1) - 1)) + (bold ? "" : "\\fR");
            i += end("`", 1);
        } else if (startsWith(rest, "**")) {
            flush();
            bold = !bold;
            out += bold ? "\\fB" : "\\fR";
            ++i;
        } else if (rest[0] == '*' && (italic || end("*", 1) != std::string::npos)) {
            flush();
            italic = !italic;
            out += italic ? "\\fI" : "\\fR";
        } else if (rest[0] == '[' && end("](", 1) != std::string::npos &&
                   end("]", 1) == end("](", 1)) {
            plain += rest.substr(1, end("](", 1) - 1);
            i += end(")", end("](", 1));
        } else {
            plain += rest[0];
        }
    }
    flush();
    return out;
}

std::string roffBlocks(const std::vector<std::string>& lines)
{
    return Converter(lines).convert();
}

std::string roffSection(const std::string& title)
{
    std::string upper;
    bool inCode = false;  // the names of options stay as they are
    for (const char c : title) {
        if (c == '`')
            inCode = !inCode;
        else
            upper += inCode ? c : static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return ".SH " + roffText(upper) + "\n";
}

}  // namespace calcora::manual
