// Options and outputs that the commands share.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/output_file.h"

namespace calcora::app {

/// Where a command reads from and writes to.
struct DrawingOptions {
    std::string input;
    std::string dxf;  ///< empty: none
    std::string svg;  ///< empty: none
    std::string csv;  ///< empty: none; for commands that offer it
    bool json = false;
    std::vector<std::string> layers;
    double ellipseTolerance = 0;
};

/// What is wrong with the word of an option that takes a length (finite, 0 or more); empty when it
/// is one.
std::string lengthError(const std::string& word);

/// What is wrong with the word of an option that takes a length above 0; empty when it is one.
std::string positiveLengthError(const std::string& word);

/// Options that stand before the command.
struct GlobalOptions {
    std::string pluginFolder;
};

/// The output files of a command, made (and so known to be writable) before the work begins.
class Outputs {
public:
    /// Throws UserError when a file cannot be made, or when two of the files are one.
    explicit Outputs(const DrawingOptions& options);

    OutputFile* dxf() { return dxf_ ? &*dxf_ : nullptr; }
    OutputFile* svg() { return svg_ ? &*svg_ : nullptr; }
    OutputFile* csv() { return csv_ ? &*csv_ : nullptr; }
    void commit();

private:
    std::optional<OutputFile> dxf_;
    std::optional<OutputFile> svg_;
    std::optional<OutputFile> csv_;
};

/// Writes a command's answer to the standard output; throws UserError when that fails.
void printAnswer(const std::string& text);

}  // namespace calcora::app
