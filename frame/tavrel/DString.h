#pragma once

#include <string>
#include <utility>

#include "tavrel/export.h"

namespace tav {

enum class CaseSensitivity { Insensitive = 0, Sensitive = 1 };

/// The host's string: bytes (UTF-8 by convention), positions and lengths counted in bytes.
class TAV_CORE_API DString {
public:
    DString() = default;
    /// A null pointer gives the empty string.
    DString(const char* text);

    bool isEmpty() const { return text_.empty(); }
    int size() const { return static_cast<int>(text_.size()); }
    /// Terminated by zero, valid until the string changes.
    const char* c_str() const { return text_.c_str(); }

    DString& operator+=(const DString& other);
    friend DString operator+(DString a, const DString& b) { return a += b; }
    friend bool operator==(const DString& a, const DString& b) = default;

    /// A copy with A to Z in lower case; every other byte, and the locale, is left alone.
    DString toLower() const;

    /// The `length` bytes from `position` on; length -1 means to the end. A position outside the
    /// string gives the empty string, a negative one counts as 0.
    DString mid(int position, int length = -1) const;

    /// Position of the first `text` at or after `start`, or -1.
    int indexOf(const DString& text, int start = 0,
                CaseSensitivity sensitivity = CaseSensitivity::Sensitive) const;

    /// A copy in which every occurrence of the lowest-numbered marker ("%1" … "%99") is replaced by
    /// `text`, padded with `fill` to `fieldWidth` (negative: padded on the right). Without a marker
    /// the copy is unchanged.
    DString arg(const DString& text, int fieldWidth = 0, char fill = ' ') const;

private:
    explicit DString(std::string text) : text_(std::move(text)) {}

    std::string text_;
};

}  // namespace tav
