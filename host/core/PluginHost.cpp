#include "tavrel/PluginHost.h"

#include <dlfcn.h>

#include <algorithm>
#include <iterator>

#include "host/core/registry.h"

namespace tav {

struct Plugin::State {
    std::string path;
    void* library = nullptr;
    bool (*freePlugin)() = nullptr;
    std::string version;
    std::vector<const ClassEntry*> entries;

    ~State()
    {
        detail::unregisterEntries(entries);
        if (freePlugin) freePlugin();
        for (const ClassEntry* entry : entries) delete entry;
        if (library) dlclose(library);
    }
};

namespace {

template <class Function>
Function* exportedFunction(void* library, const char* name, const std::string& path)
{
    void* address = dlsym(library, name);
    if (!address) throw PluginError(path + ": not a plugin, it does not export " + name);
    return reinterpret_cast<Function*>(address);
}

}  // namespace

std::unique_ptr<Plugin> Plugin::load(const std::string& path)
{
    if (path.empty()) throw PluginError("no plugin file is named");
    auto state = std::make_unique<State>();
    state->path = path;
    state->library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!state->library) {
        const char* reason = dlerror();
        throw PluginError(reason ? reason : path + ": cannot be loaded");
    }

    auto* init = exportedFunction<bool()>(state->library, "TavInitPlugin", path);
    auto* free = exportedFunction<bool()>(state->library, "TavFreePlugin", path);
    auto* classes = exportedFunction<List<ClassEntry*>*()>(state->library, "initClasses", path);
    auto* version = exportedFunction<const char*()>(state->library, "tavrelVersion", path);

    if (!init()) throw PluginError(path + ": the plugin refused to start");
    state->freePlugin = free;
    if (const char* text = version()) state->version = text;
    const List<ClassEntry*>* list = classes();
    if (!list) throw PluginError(path + ": the plugin gave no list of classes");
    std::copy_if(list->begin(), list->end(), std::back_inserter(state->entries),
                 [](const ClassEntry* entry) { return entry != nullptr; });
    detail::registerEntries(state->entries);
    return std::unique_ptr<Plugin>(new Plugin(std::move(state)));
}

Plugin::Plugin(std::unique_ptr<State> state) : state_(std::move(state)) {}

Plugin::~Plugin() = default;

const std::string& Plugin::path() const
{
    return state_->path;
}

std::string Plugin::frameworkVersion() const
{
    return state_->version;
}

const std::vector<const ClassEntry*>& Plugin::classes() const
{
    return state_->entries;
}

IObject* Plugin::create(const std::string& fullName, long interfaceId) const
{
    const DString wanted(fullName.c_str());
    for (const ClassEntry* entry : state_->entries)
        if (entry->fullName() == wanted) return entry->create(interfaceId);
    return nullptr;
}

}  // namespace tav
