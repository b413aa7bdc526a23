// A small host: loads the plugin, creates objects of two classes, calls them.
#include <calcora/calcora.h>
#include <geo/geometry.h>
#include <tavrel/PluginHost.h>
#include <tavrel/core.h>

#include <cstdio>

int main()
{
    try {
        const auto calcora = tav::Plugin::load(CALCORA_PLUGIN);
        const auto geometry = tav::Plugin::load(GEOMETRY_PLUGIN);
        std::printf("framework %s\n", calcora->frameworkVersion().c_str());
        for (const tav::ClassEntry* entry : calcora->classes())
            std::printf("class %s\n", entry->fullName().c_str());

        const auto unit = tav::Ref<IUnit>::create();
        void* out = nullptr;
        createObject("N", tav::interfaceId("IcommonFunc"), &out);
        const auto common = tav::Ref<IcommonFunc>::adopt(static_cast<IcommonFunc*>(out));
        if (!unit || !common) return 1;
        std::printf("feet %.7f\n", unit->meterToFoot(1.0));
        std::printf("distance %.1f\n", common->pointDist({0.0, 0.0}, {3.0, 4.0}));
    } catch (const tav::PluginError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
