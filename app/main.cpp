// calcora: drawings in, loops and smooth curves out.

#include <cstdio>
#include <exception>
#include <new>
#include <string>

#include "app/command_line.h"
#include "app/user_error.h"

namespace {

using namespace calcora::app;

constexpr int kInternalErrorStatus = 1;

int complain(const std::string& text, int status)
{
    std::string line = text;
    for (char& c : line)
        if (c == '\n' || c == '\r') c = ' ';
    std::fprintf(stderr, "calcora: %s\n", line.c_str());
    return status;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return runCommandLine(argc, argv);
    } catch (const UserError& error) {
        return complain(error.what(), kBadInputStatus);
    } catch (const std::bad_alloc&) {
        return complain("not enough memory", kInternalErrorStatus);
    } catch (const std::exception& error) {
        return complain(error.what(), kInternalErrorStatus);
    }
}
