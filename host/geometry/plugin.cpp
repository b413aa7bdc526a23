// The sibling geometry plugin's exported functions.
#include "tavrel/ClassEntry.h"

extern "C" {
TAV_EXPORT bool TavInitPlugin();
TAV_EXPORT bool TavFreePlugin();
TAV_EXPORT tav::List<tav::ClassEntry*>* initClasses();
TAV_EXPORT const char* tavrelVersion();

bool TavInitPlugin()
{
    return true;
}
bool TavFreePlugin()
{
    return true;
}
tav::List<tav::ClassEntry*>* initClasses()
{
    static tav::List<tav::ClassEntry*> entries;
    return &entries;
}
const char* tavrelVersion()
{
    return "1.0.0";
}
}
