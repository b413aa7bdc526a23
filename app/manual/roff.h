// Text for manual pages (the man macros of roff).
#pragma once

#include <string>
#include <vector>

namespace calcora::manual {

/// The text as roff shows it: hyphens that can be copied, nothing that roff would take for a
/// request or an escape.
std::string roffText(const std::string& text);

/// A paragraph of Markdown with `code`, **bold**, *italic* and links as one line of roff.
std::string roffInline(const std::string& markdown);

/// Paragraphs, lists, tables and code blocks of Markdown. Headings become sections; pictures are
/// left out. Tables become lists: the first column is the term.
std::string roffBlocks(const std::vector<std::string>& lines);

/// A section heading.
std::string roffSection(const std::string& title);

}  // namespace calcora::manual
