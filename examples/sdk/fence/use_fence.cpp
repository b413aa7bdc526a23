// A host with two plugins that know each other only by their interfaces.
#include <tavrel/PluginHost.h>
#include <tavrel/Ref.h>

#include <cstdio>

#include "IFence.h"

int main(int argc, char** argv)
{
    const auto fencePlugin = tav::Plugin::load(argc > 1 ? argv[1] : FENCE_PLUGIN);
    const auto fence = tav::Ref<IFence>::create();

    // A plot of 20 by 10 with a half circle at its right end.
    const IFence::Points plot{{0, 0}, {20, 0}, {20, 10}, {0, 10}};
    const IFence::Values bulges{0, 1, 0, 0};
    IFence::Points posts;
    std::printf("without the plugin of IcommonFunc: %.1f m of wire\n",
                fence->placePosts(plot, bulges, 12.0, posts));

    const auto calcora = tav::Plugin::load("libquon_calcora.so");
    const double wire = fence->placePosts(plot, bulges, 12.0, posts);
    std::printf("%.1f m of wire, %d posts\n", wire, posts.size());
    for (const tav::Point2DF& post : posts) std::printf("  (%.3f, %.3f)\n", post.x(), post.y());
}

// Prints:
//   without the plugin of IcommonFunc: 0.0 m of wire
//   65.7 m of wire, 6 posts
//     (0.000, 0.000)
//     (10.951, 0.000)
//     (21.857, 0.358)
//     (22.702, 9.207)
//     (11.903, 10.000)
//     (0.951, 10.000)
