// The segments of a line by place, for many questions about what lies near.
#pragma once

#include <vector>

#include "app/bounds_tree.h"
#include "app/host.h"

namespace calcora::app {

/// A straight segment or an arc.
struct Segment {
    tav::Point2DF from;
    tav::Point2DF to;
    double bulge = 0;
};

/// Flatter arcs are straight to the module.
inline constexpr double kArcBulge = 1e-6;

/// The segments of a line with a hierarchy of boxes over them.
class SegmentIndex {
public:
    /// The segments between the points of an open chain.
    SegmentIndex(const Points& points, const Values& bulges);
    explicit SegmentIndex(std::vector<Segment> segments);

    int count() const { return static_cast<int>(segments_.size()); }
    const Segment& segment(int i) const { return segments_[static_cast<std::size_t>(i)]; }

    /// BoundsTree::search over the segments' boxes.
    template <class Wanted, class Visit>
    void search(const tav::Point2DF& place, Wanted&& wanted, Visit&& visit) const
    {
        tree_.search(place, wanted, visit);
    }

private:
    std::vector<Segment> segments_;
    BoundsTree<Box> tree_;
};

/// The segment nearest to a point; -1 when there is none.
int nearestSegment(IcommonFunc& common, const SegmentIndex& index, const tav::Point2DF& point);

/// Whether a point lies inside a ring by the even-odd rule; undecided for a point on the ring.
bool isInside(IcommonFunc& common, const SegmentIndex& ring, const tav::Point2DF& point);

/// The place of a point of a segment, as share of its length.
double shareOf(IcommonFunc& common, const Segment& segment, const tav::Point2DF& point);

/// The point at a share of the segment; its ends exactly at 0 and 1.
tav::Point2DF pointAt(IcommonFunc& common, const Segment& segment, double share);

}  // namespace calcora::app
