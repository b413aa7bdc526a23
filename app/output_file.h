// Output files that are there whole or not at all.
#pragma once

#include <string>
#include <string_view>

namespace calcora::app {

/// A file in the making. What is written goes to a temporary file beside the target, which takes
/// the target's name when all is written and vanishes when it never comes to that. A target that is
/// no regular file (a pipe, a terminal) is written directly.
class OutputFile {
public:
    /// Throws UserError when the file cannot be made.
    explicit OutputFile(const std::string& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Throws Interrupted when much has been written and Ctrl-C was pressed meanwhile.
    void write(std::string_view text);

    /// Puts the file in its place. Throws UserError when something could not be written.
    void commit();

private:
    [[noreturn]] void fail(int error) const;
    void flush();

    std::string path_;       ///< as the user gave it, for messages
    std::string target_;     ///< behind symbolic links
    std::string temporary_;  ///< empty when the target is written directly
    std::string buffer_;
    int descriptor_ = -1;
};

}  // namespace calcora::app
