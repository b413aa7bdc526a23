// The model space of a DXF text, checked and cut down to what the reader takes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/Drawing.h"

namespace calcora::app {

/// Flag (code 70) that marks, in DxfModelSpace::text, a chain that stood as LWPOLYLINE in the file;
/// the library makes no difference.
inline constexpr int kLightPolylineFlag = 1 << 20;

/// What is left of a DXF text for the DXF library: complete entities of the kinds that are taken,
/// every number finite and of sensible size, every count right, so that nothing that a damaged or
/// hostile file holds reaches the library.
struct DxfModelSpace {
    std::string text;  ///< a DXF text of its own; the layer names in it are indices into `layers`
    std::vector<std::string> layers;
    KindCounts notTaken;
    int onOtherLayers = 0;
};

/// Checks the text and collects its model space: the entities section without paper space.
/// `wantedLayers` (upper and lower case are one) limits it to some layers; empty takes all.
/// Throws UserError, with file and line, for a text that is no DXF or not a whole one, for numbers
/// that are none, and for entities that lack what their kind needs.
DxfModelSpace collectModelSpace(std::string_view text, const std::string& file,
                                const std::vector<std::string>& wantedLayers);

}  // namespace calcora::app
