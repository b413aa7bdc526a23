// The segments of a line by place, for many questions about what lies near.
#pragma once

#include <vector>

#include "app/Drawing.h"
#include "app/figures.h"
#include "app/host.h"

namespace calcora::app {

/// A straight segment or an arc.
struct Segment {
    tav::Point2DF from;
    tav::Point2DF to;
    double bulge = 0;
};

/// How far a point is from a box; 0 inside.
double boxDistance(const Box& box, const tav::Point2DF& point);

/// A static hierarchy of boxes over the segments of a line, each box over four in a row of the level
/// below. Neighbours along the line are neighbours in place, so the boxes stay small.
class SegmentIndex {
public:
    /// The segments between the points of an open chain.
    SegmentIndex(const Points& points, const Values& bulges);

    int count() const { return static_cast<int>(segments_.size()); }
    const Segment& segment(int i) const { return segments_[static_cast<std::size_t>(i)]; }

    /// Calls visit(i) for the segments whose box and all boxes over it are `wanted`, those near a
    /// place rather first. `wanted` is asked late, so that it may change with every visit.
    template <class Wanted, class Visit>
    void search(const tav::Point2DF& place, Wanted&& wanted, Visit&& visit) const
    {
        if (levels_.back().empty()) return;
        std::vector<Node> open = {{static_cast<int>(levels_.size()) - 1, 0}};
        while (!open.empty()) {
            const Node node = open.back();
            open.pop_back();
            if (!wanted(box(node))) continue;
            if (node.level == 0)
                visit(node.index);
            else
                pushChildren(node, place, open);
        }
    }

private:
    struct Node {
        int level = 0;
        int index = 0;
        double distance = 0;  ///< from the place
    };
    static constexpr int kFanOut = 4;

    const Box& box(const Node& node) const
    {
        return levels_[static_cast<std::size_t>(node.level)][static_cast<std::size_t>(node.index)];
    }
    void pushChildren(const Node& node, const tav::Point2DF& place, std::vector<Node>& open) const;

    std::vector<Segment> segments_;
    std::vector<std::vector<Box>> levels_;  ///< from the segments' boxes up to a single one
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
