// The vertex of a polyline that lies farthest from the segment joining two others.
#pragma once

#include <cstddef>
#include <vector>

#include "common/detail/vec.h"
#include "common/detail/vertex_boxes.h"

namespace calcora::detail {

/// Vertices `first` to `last` of a polyline.
struct VertexRange {
    int first;
    int last;
};

struct FarthestVertex {
    int index = 0;
    double distanceSquared = -1.0;  ///< -1: there is no vertex between, or none with a distance
};

/// Finds the first of the vertices strictly inside a range whose computed squared distance from the
/// segment between the range's ends (PlainFunctions::pointSegmentDistSquared) is the largest; a
/// distance that is not a number is never the largest. The answer is that of a walk over all of
/// them, to the bit.
///
/// A walk takes most of its time for divisions and for branches that no processor foresees. So it
/// is told first, block by block, how far away its vertices come with a formula without either; the
/// distances themselves are only computed where the largest may be.
///
/// Walks over ranges that a vertex at an end is split off from, again and again, would take
/// quadratic time. When more has been walked than an even division takes, boxes over ever longer
/// stretches are set up, in two frames: along the axes, whose bound is that of the formula itself
/// evaluated at extreme values, so that stretches of vertices exactly as far as the best are passed
/// over too; and along the line from the first vertex to the last, which is narrow for a figure that
/// follows an oblique line.
class FarthestVertexSearch {
public:
    FarthestVertexSearch(const Point2DF* vertex, int count);

    FarthestVertex find(VertexRange range);

private:
    struct Stretch {
        VertexBox upright;
        VertexBox turned;
    };

    FarthestVertex walkPlainly(VertexRange range) const;
    FarthestVertex walkBlocks(VertexRange range);
    FarthestVertex searchStretches(VertexRange range) const;
    void visit(std::size_t level, std::size_t stretch, VertexRange range,
               FarthestVertex& farthest) const;
    double boundOf(const Stretch& stretch, VertexRange range) const;
    void setUpStretches();

    const Point2DF* vertex_;
    int count_;
    double slack_ = -1.0;  ///< more than the rounding of any distance; negative: walk plainly
    long long walked_ = 0;
    std::vector<double> blockLargest_;
    std::vector<std::vector<Stretch>> levels_;  ///< from short to long; empty: not set up
    Point2DF along_;                            ///< unit vector of the turned frame
};

}  // namespace calcora::detail
