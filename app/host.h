// calcora as a host: where the plugin lies, and the objects that it makes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "calcora/calcora.h"
#include "tavrel/PluginHost.h"
#include "tavrel/Ref.h"

namespace calcora::app {

/// Name of the environment variable with the folder of the plugins.
inline constexpr const char* kPluginFolderVariable = "CALCORA_PLUGIN_DIR";

inline constexpr const char* kMainPlugin = "libquon_calcora.so";
inline constexpr const char* kGeometryPlugin = "libtavrel_geometry.so";

/// The folders in which plugins are looked for, in this order: `asked` and nothing else when it is
/// not empty; likewise the environment variable's; else the folders beside the program and the one
/// that the program was configured for.
std::vector<std::string> pluginFolders(const std::string& asked);

/// The loaded plugin. Objects made through it must be gone before it.
class Host {
public:
    /// Loads the plugin; throws UserError when it is not found or does not start.
    explicit Host(const std::string& askedFolder);

    const tav::Plugin& plugin() const { return *plugin_; }

    /// Loads the plugin with paths and matrices, which IGeometric works on, from the folder of the
    /// first; throws UserError as the constructor does.
    void loadGeometry();

    /// A new object that offers I; throws UserError when the plugin has none.
    template <class I>
    tav::Ref<I> create() const
    {
        auto object = tav::Ref<I>::create();
        if (!object) failToCreate(I::kInterfaceName);
        return object;
    }

private:
    [[noreturn]] void failToCreate(const char* interfaceName) const;
    std::unique_ptr<tav::Plugin> plugin_;
    std::unique_ptr<tav::Plugin> geometry_;
};

}  // namespace calcora::app
