#include "app/options.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "app/dxf_groups.h"
#include "app/user_error.h"

namespace calcora::app {

namespace {

bool isSameFile(const std::string& a, const std::string& b)
{
    namespace fs = std::filesystem;
    if (a.empty() || b.empty()) return false;
    std::error_code error;
    if (fs::equivalent(a, b, error)) return fs::is_regular_file(a, error);
    // A path of which nothing exists would stay as it is spelt.
    const auto place = [&](const std::string& path) {
        return fs::weakly_canonical(fs::absolute(path, error), error);
    };
    return place(a) == place(b) && !fs::exists(a, error);
}

}  // namespace

std::string lengthError(const std::string& word)
{
    const auto number = dxfNumber(word);
    return number && *number >= 0 ? "" : "\"" + word + "\" is no length";
}

std::string positiveLengthError(const std::string& word)
{
    const auto number = dxfNumber(word);
    return number && *number > 0 ? "" : "\"" + word + "\" is no length above 0";
}

Outputs::Outputs(const DrawingOptions& options)
{
    if (isSameFile(options.dxf, options.svg))
        throw UserError(options.svg + ": named for both the DXF and the SVG output");
    if (isSameFile(options.csv, options.dxf) || isSameFile(options.csv, options.svg))
        throw UserError(options.csv + ": named for both the CSV and another output");
    for (const std::string& output : {options.dxf, options.svg, options.csv})
        if (isSameFile(output, options.input))
            throw UserError(output + ": the output would replace the input");
    if (!options.dxf.empty()) dxf_.emplace(options.dxf);
    if (!options.svg.empty()) svg_.emplace(options.svg);
    if (!options.csv.empty()) csv_.emplace(options.csv);
}

void Outputs::commit()
{
    if (dxf_) dxf_->commit();
    if (svg_) svg_->commit();
    if (csv_) csv_->commit();
}

void printAnswer(const std::string& text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
        throw UserError(std::string("the answer cannot be written: ") + std::strerror(errno));
}

}  // namespace calcora::app
