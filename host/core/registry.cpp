#include "host/core/registry.h"

#include <algorithm>
#include <cstring>
#include <mutex>

#include "tavrel/PluginHost.h"
#include "tavrel/factory.h"

namespace tav {

namespace {

struct Registry {
    std::mutex mutex;
    std::vector<const ClassEntry*> entries;
    CreationFilter filter = nullptr;
    void* filterContext = nullptr;
};

/// Never destroyed: a plugin held by a static object unregisters its classes at exit.
Registry& registry()
{
    static Registry& instance = *new Registry;
    return instance;
}

}  // namespace

namespace detail {

void registerEntries(const std::vector<const ClassEntry*>& entries)
{
    const std::lock_guard lock(registry().mutex);
    auto& all = registry().entries;
    all.insert(all.end(), entries.begin(), entries.end());
}

void unregisterEntries(const std::vector<const ClassEntry*>& entries)
{
    const std::lock_guard lock(registry().mutex);
    std::erase_if(registry().entries, [&](const ClassEntry* entry) {
        return std::find(entries.begin(), entries.end(), entry) != entries.end();
    });
}

}  // namespace detail

std::vector<const ClassEntry*> registeredClasses()
{
    const std::lock_guard lock(registry().mutex);
    return registry().entries;
}

void setCreationFilter(CreationFilter filter, void* context)
{
    const std::lock_guard lock(registry().mutex);
    registry().filter = filter;
    registry().filterContext = context;
}

void createObject(const char* key, long interfaceId, void** out)
{
    if (!out) return;
    *out = nullptr;
    if (!key || std::strcmp(key, kNormalClassKey) != 0) return;

    const ClassEntry* chosen = nullptr;
    {
        const std::lock_guard lock(registry().mutex);
        if (registry().filter && !registry().filter(key, interfaceId, registry().filterContext))
            return;
        const auto& all = registry().entries;
        const auto found = std::find_if(all.begin(), all.end(), [&](const ClassEntry* entry) {
            return entry->supports(interfaceId);
        });
        if (found != all.end()) chosen = *found;
    }
    // Constructors may create objects themselves, so the lock is not held here.
    if (chosen) *out = chosen->create(interfaceId);
}

}  // namespace tav
