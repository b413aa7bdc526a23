// Makes what comes with calcora from its options and docs/calcora.md: manual pages and completions.
//   calcora_manual DOCUMENT OUTPUT_FOLDER

#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "app/manual/completions.h"
#include "app/manual/man_pages.h"

namespace {

std::string contents(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), {}};
    if (!in || text.empty()) throw std::runtime_error(path + ": cannot be read");
    return text;
}

void write(const std::string& path, const std::string& text)
{
    std::ofstream out(path, std::ios::binary);
    out << text << std::flush;
    if (!out) throw std::runtime_error(path + ": cannot be written");
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3) return 2;
    try {
        const std::string folder = std::string(argv[2]) + "/";
        const calcora::app::ProgramText text = calcora::app::programText();
        for (const auto& page :
             calcora::manual::manPages(text, contents(argv[1]), "calcora " CALCORA_VERSION))
            write(folder + page.name + ".1", page.text);
        write(folder + "calcora.bash", calcora::manual::bashCompletion(text));
        write(folder + "_calcora", calcora::manual::zshCompletion(text));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "calcora_manual: %s\n", error.what());
        return 1;
    }
}
