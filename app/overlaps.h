// Straight segments that lie on each other.
#pragma once

#include <vector>

#include "app/clearance.h"

namespace calcora::app {

/// For every segment the parts of it, in their order, that lie on no earlier one running the same
/// way: what is left covers the same places, once. `tolerance` is how far apart, across, segments
/// may be that lie on each other. Arcs stay whole.
///
/// The tops of a comb's teeth have parallels of one line that reach far over each other; each would
/// be cut at the ends of all others.
std::vector<std::vector<Stretch>> withoutOverlaps(const std::vector<Segment>& segments,
                                                  double tolerance);

}  // namespace calcora::app
