// Finds the loops that crossing lines and arcs form, and measures them.
#include <calcora/calcora.h>
#include <tavrel/PluginHost.h>
#include <tavrel/Ref.h>

#include <cmath>
#include <cstdio>

int main()
{
    const auto plugin = tav::Plugin::load("libquon_calcora.so");
    const auto geo = tav::Ref<IDataGeo>::create();
    const auto common = tav::Ref<IcommonFunc>::create();

    // A plot whose right side is a half circle, a road across it, a pond of two half circles, and
    // a path that ends inside the plot. Nobody has cut anything where it crosses something else.
    const IDataGeo::PointLists lines{{{0, 0}, {40, 0}, {40, 40}, {0, 40}, {0, 0}},
                                     {{-5, 25}, {70, 25}},
                                     {{10, 10}, {20, 10}, {10, 10}},
                                     {{30, -5}, {30, 12}}};
    const IDataGeo::ValueLists bulges{{0, 1, 0, 0, 0}, {0, 0}, {1, 1, 0}, {0, 0}};

    IDataGeo::PointLists loops;
    IDataGeo::ValueLists loopBulges;
    geo->buildRegions(lines, bulges, loops, loopBulges, false, nullptr, 0.0);

    for (int i = 0; i < loops.size(); ++i) {
        int arcs = 0;
        for (const double bulge : loopBulges[i])
            if (bulge != 0.0) ++arcs;
        tav::Point2DF label;
        common->labelPoint(loops[i], loopBulges[i], label);
        std::printf("loop %d: area %8.3f, %d vertices, %d arcs, label at (%.1f, %.1f)\n", i + 1,
                    std::abs(common->bulgePolygonArea(loops[i], loopBulges[i])), loops[i].size(),
                    arcs, label.x(), label.y());
    }
}

// Prints:
//   loop 1: area   78.540, 2 vertices, 2 arcs, label at (15.0, 7.5)
//   loop 2: area  815.211, 4 vertices, 1 arcs, label at (19.8, 30.0)
//   loop 3: area 1413.108, 5 vertices, 1 arcs, label at (19.8, 16.7)
