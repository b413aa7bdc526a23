// Reading drawings.
#pragma once

#include <string>
#include <vector>

#include "app/Drawing.h"

namespace calcora::app {

struct ReadOptions {
    std::vector<std::string> layers;  ///< the layers to take, in any case; empty: all
    /// Largest distance between an ellipse and its chords, in drawing units; 0 or less: a
    /// thousandth of the larger semi-axis.
    double ellipseTolerance = 0;
};

/// Reads the model space of a DXF file: LINE, ARC, CIRCLE, ELLIPSE (as chords), LWPOLYLINE and
/// POLYLINE. Blocks are not looked into; a block's inserts count as not taken. Throws UserError for
/// a file that cannot be read, with the line where that is known, and for a layer in `options` on
/// which nothing lies.
Drawing readDxf(const std::string& path, const ReadOptions& options);

/// The same for a text; `name` stands for the file in messages.
Drawing readDxfText(const std::string& text, const std::string& name, const ReadOptions& options);

}  // namespace calcora::app
