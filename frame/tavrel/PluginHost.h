// The host's side of a plugin: loading it, taking over its classes, unloading it.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tavrel/ClassEntry.h"
#include "tavrel/export.h"

namespace tav {

/// What a plugin could not be loaded for, in one line.
class TAV_CORE_API PluginError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A loaded plugin. Its classes are registered for createObject() while it lives.
///
/// Destroying it takes its classes out of the registry, calls `TavFreePlugin`, deletes the class
/// entries and closes the library. Objects of the plugin must be released before.
class TAV_CORE_API Plugin {
public:
    /// Loads the library at `path`, calls `TavInitPlugin` and `initClasses` and registers the
    /// classes. A name without a "/" is looked for where the system looks for libraries. Throws
    /// PluginError when the file cannot be loaded, lacks one of the four functions or refuses to
    /// start; nothing of it stays loaded then.
    static std::unique_ptr<Plugin> load(const std::string& path);

    ~Plugin();
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    const std::string& path() const;
    /// The framework version that the plugin was built for.
    std::string frameworkVersion() const;
    /// The plugin's classes in the order in which it registered them; owned by the plugin.
    const std::vector<const ClassEntry*>& classes() const;

    /// A new object of the class with that full name, offering `interfaceId`, with one reference
    /// for the caller; null when there is no such class or it does not offer the interface.
    IObject* create(const std::string& fullName, long interfaceId) const;

private:
    struct State;
    explicit Plugin(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

/// Every class registered in this process, in order of registration.
TAV_CORE_API std::vector<const ClassEntry*> registeredClasses();

/// Asked before createObject() makes an object; false makes the creation fail.
using CreationFilter = bool (*)(const char* key, long interfaceId, void* context);

/// Installs a filter (null: none) for all creations of the process, for tests of what callers do
/// when the host has no object for them.
TAV_CORE_API void setCreationFilter(CreationFilter filter, void* context);

}  // namespace tav
