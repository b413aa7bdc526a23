// A plugin that behaves badly in the way that the environment variable ODD_PLUGIN names.
#include <cstdlib>
#include <string>

#include "tavrel/ClassEntry.h"

namespace {

bool isOddity(const char* name)
{
    const char* wanted = std::getenv("ODD_PLUGIN");
    return wanted && std::string(wanted) == name;
}

}  // namespace

extern "C" {

TAV_EXPORT bool TavInitPlugin()
{
    return !isOddity("refuses");
}

TAV_EXPORT bool TavFreePlugin()
{
    setenv("ODD_PLUGIN_FREED", "yes", 1);
    return true;
}

TAV_EXPORT tav::List<tav::ClassEntry*>* initClasses()
{
    if (isOddity("gives no list")) return nullptr;
    static tav::List<tav::ClassEntry*> entries;
    entries = {nullptr, new tav::CppClassEntry(0, "odd.class", "clsid_odd", tav::kLangCpp, {},
                                               nullptr, nullptr)};
    return &entries;
}

TAV_EXPORT const char* tavrelVersion()
{
    return nullptr;
}
}
