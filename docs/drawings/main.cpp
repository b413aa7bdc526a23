// Writes the drawings of the manual into a folder.
//   manual_drawings FOLDER

#include <tavrel/PluginHost.h>

#include <cstdio>
#include <fstream>

#include "drawings.h"

int main(int argc, char** argv)
{
    if (argc != 2) return 2;
    struct Drawing {
        const char* name;
        std::string (*make)();
    };
    constexpr Drawing kDrawings[] = {
        {"bulges", drawings::bulges},
        {"sagitta", drawings::sagitta},
        {"axis_stations", drawings::stations},
        {"location", drawings::location},
        {"sides", drawings::sides},
        {"intersections", drawings::intersections},
        {"offset_joins", drawings::offsetJoins},
        {"loop_walk", drawings::loopWalk},
        {"tension_and_spline", drawings::tensionAndSpline},
        {"tidy_lines", drawings::tidyLines},
        {"paths", drawings::paths},
        {"rtree", drawings::rtree},
        {"bearings", drawings::bearings},
    };
    try {
        const auto calcora = tav::Plugin::load(CALCORA_PLUGIN);
        const auto geometry = tav::Plugin::load(CALCORA_GEOMETRY_PLUGIN);
        for (const Drawing& drawing : kDrawings) {
            const std::string path = std::string(argv[1]) + "/" + drawing.name + ".svg";
            std::ofstream out(path, std::ios::binary);
            out << drawing.make() << std::flush;
            if (!out) {
                std::fprintf(stderr, "%s cannot be written\n", path.c_str());
                return 1;
            }
        }
    } catch (const tav::PluginError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
