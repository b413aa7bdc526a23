// Loads the plugin and lists its classes, as any host does first.
#include <calcora/calcora.h>
#include <tavrel/PluginHost.h>
#include <tavrel/core.h>

#include <cstdio>

int main()
{
    try {
        const auto plugin = tav::Plugin::load("libquon_calcora.so");
        std::printf("framework %s\n", plugin->frameworkVersion().c_str());
        for (const tav::ClassEntry* entry : plugin->classes())
            std::printf("%s\n", entry->fullName().c_str());

        // An object lives as long as something refers to it, and no longer than the plugin.
        const auto unit = tav::Ref<IUnit>::create();
        if (!unit) return 1;
        std::printf("an object of class %s: 1 m is %.7f ft\n", unit->className().c_str(),
                    unit->meterToFoot(1.0));
    } catch (const tav::PluginError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}

// Prints:
//   framework 1.0.0
//   quon_calcora.cgeometric
//   quon_calcora.cgeosetup
//   quon_calcora.cunit
//   quon_calcora.datageo
//   quon_calcora.commonfunc
//   quon_calcora.crtree
//   an object of class cunit: 1 m is 3.2808399 ft
