// Writing drawings.
#pragma once

#include <string>
#include <vector>

#include "app/Drawing.h"
#include "app/output_file.h"

namespace calcora::app {

struct DxfLayer {
    std::string name;
    int colour = 7;  ///< colour number of the format: 1 red … 7 black or white
};

/// Writes figures as LWPOLYLINEs (bulges as arcs) into a DXF file of the version of the year 2000,
/// which every program with DXF reads. Numbers are written so that they read back bit for bit.
/// Figures whose elevation changes along the way become 3D POLYLINEs when they are straight; with
/// arcs they take the elevation of their first point. `Figure::layer` is an index into `layers`,
/// which must not be empty; layers of one name (in any case) are written once.
void writeDxf(OutputFile& out, const std::vector<DxfLayer>& layers,
              const std::vector<Figure>& figures);

}  // namespace calcora::app
