// What other libraries do with the same line work: node it and find the faces that it bounds.
#pragma once

#include <memory>

#include "bench/workloads.h"

namespace peers {

/// Line work as a peer takes it, ready to be worked on again and again.
class Peer {
public:
    virtual ~Peer() = default;
    /// Nodes the line work and finds its faces; returns how many are bounded.
    virtual int countFaces() = 0;
};

/// GEOS, arcs as chords within 1e-3: its node operation, which goes over the lines until nothing
/// crosses; a single pass of its indexed noder; its noder that snaps to the work's tolerance.
std::unique_ptr<Peer> geosNode(const workloads::LineWork& work);
std::unique_ptr<Peer> geosSinglePass(const workloads::LineWork& work);
std::unique_ptr<Peer> geosSnapping(const workloads::LineWork& work);

/// The exact arrangements of CGAL: of straight segments, and of segments and circular arcs.
std::unique_ptr<Peer> cgalSegments(const workloads::LineWork& work);
std::unique_ptr<Peer> cgalCircles(const workloads::LineWork& work);

}  // namespace peers
