// The binary interface is the one that was recorded: slots, signatures, sizes, exported functions.
#include <cxxabi.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "calcora/calcora.h"
#include "tavrel/core.h"
#include "tests/reliability/support.h"
#include "tests/support/slots.h"

namespace {

std::string readable(const char* mangled)
{
    char* text = abi::__cxa_demangle(mangled, nullptr, nullptr, nullptr);
    const std::string result = text ? text : mangled;
    std::free(text);
    return result;
}

template <class... T>
void describeSizes(std::vector<std::string>& lines)
{
    (lines.push_back("size " + readable(typeid(T).name()) + ' ' + std::to_string(sizeof(T)) + ' ' +
                     std::to_string(alignof(T))),
     ...);
}

/// How many operations of its own interface I has.
template <class... I>
int operationCount()
{
    int count = 0;
    const auto add = [&count]<class Interface>(const Interface*) {
        struct Longer : Interface {
            virtual void next() {}
        };
        count += test_support::slotOf(&Longer::next) - 6;
    };
    (add(static_cast<const I*>(nullptr)), ...);
    return count;
}

std::vector<std::string> describeInterface()
{
    std::vector<std::string> lines;
    reliability::forEachOperation([&](const fuzz::Family&, const fuzz::Operation& operation) {
        char slot[16];
        std::snprintf(slot, sizeof slot, " %03d ", operation.slot);
        const std::string type = readable(operation.member->name());
        const auto owner = type.find("(I") + 1;
        lines.push_back(type.substr(owner, type.find("::*") - owner) + slot + operation.name + ' ' +
                        type);
    });
    describeSizes<tav::Point2DF, tav::Point3DF, tav::RectF, tav::Radian, tav::Variant, tav::DString,
                  tav::Vector<double>, tav::List<double>, tav::Ref<IUnit>, tav::ClassInfo,
                  tav::ClassEntry, RTreeRect, GeoCircle, CMyAngleLine>(lines);
    FILE* pipe = popen("nm -D --defined-only " TAVREL_CORE, "r");
    char line[4096];
    while (pipe && std::fgets(line, sizeof line, pipe)) {
        std::string name(line + 19);
        name.pop_back();
        if (line[17] == 'T' && name.find("3tav") != std::string::npos)
            lines.push_back("core " + readable(name.c_str()));
    }
    if (pipe) pclose(pipe);
    std::sort(lines.begin(), lines.end());
    return lines;
}

TEST(Interface, IsTheOneRecorded)
{
    const auto lines = describeInterface();
    EXPECT_EQ((operationCount<IcommonFunc, IGeometric, IGeoSetUp, IDataGeo, ICRTree, IUnit>()),
              std::count_if(lines.begin(), lines.end(), [](const auto& l) { return l[0] == 'I'; }));
    const std::string path = testing::TempDir() + "interface.txt";
    {
        std::ofstream now(path);
        for (const auto& line : lines) now << line << '\n';
    }
    std::ifstream file(CALCORA_INTERFACE);
    std::vector<std::string> recorded;
    for (std::string line; std::getline(file, line);) recorded.push_back(line);
    std::vector<std::string> changed;
    std::set_symmetric_difference(lines.begin(), lines.end(), recorded.begin(), recorded.end(),
                                  std::back_inserter(changed));
    for (const auto& line : changed) ADD_FAILURE() << line;
    if (!changed.empty()) std::printf("as it is now: %s\n", path.c_str());
}

}  // namespace
