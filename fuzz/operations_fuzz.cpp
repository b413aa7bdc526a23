// Calls of operations of one family, one after another on the same objects.
#include <cstdio>
#include <cstdlib>

#include "fuzz/operations.h"

namespace {

/// Executions by family, told at the end of the process.
struct Counts {
    std::vector<long> calls = std::vector<long>(fuzz::families().size());
    ~Counts()
    {
        for (std::size_t i = 0; i < calls.size(); ++i)
            std::fprintf(stderr, "executions %ld %s\n", calls[i], fuzz::families()[i].name);
    }
};

const bool isLoaded = (fuzz::loadPlugins(), true);  // before the fuzzer looks for code

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Counts counts;
    fuzz::Source source(data, size);
    const int family = source.below(static_cast<int>(fuzz::families().size()));
    const auto& operations = fuzz::families()[static_cast<std::size_t>(family)].operations;
    fuzz::Call call(source);
    fuzz::Outcome outcome;
    outcome.isWanted = false;
    for (int i = 0; i < 8; ++i) {
        call.refusedCreation = source.oneIn(8) ? source.below(4) : -1;
        const int which = source.below(static_cast<int>(operations.size()));
        call.run(operations[static_cast<std::size_t>(which)], outcome);
        ++counts.calls[static_cast<std::size_t>(family)];
    }
    return 0;
}
