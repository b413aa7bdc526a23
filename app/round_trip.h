// A short way past many places.
#pragma once

#include <vector>

#include "tavrel/points.h"

namespace calcora::app {

/// The numbers of the places in the order in which a curve comes to them that fills their box from
/// one small square to the next: nearly all steps are short.
std::vector<int> roundTrip(const std::vector<tav::Point2DF>& places);

}  // namespace calcora::app
