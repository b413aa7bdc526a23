// The tips that parallels have at corners that turn away from them.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "app/bounds_tree.h"
#include "app/segment_index.h"

namespace calcora::app {

/// The tip of a corner, a quadrangle:
///
///            tip
///           /   \            before, after: where the parallels of the corner's two segments
///     before     after       would end by themselves
///    -----  \   /  -----
///            vertex
///
/// Where a parallel is an arc, the quadrangle lies within what that arc bounds.
struct CornerTip {
    tav::Point2DF vertex, before, tip, after;
};

/// A straight line whose left side is meant.
struct Side {
    tav::Point2DF place;
    tav::Point2DF along;  ///< unit vector

    /// How far a point is from it, negative on the right.
    double depth(const tav::Point2DF& point) const;
    Side movedLeft(double distance) const;
};

/// A box and one turned by an eighth of a turn, of x + y and y - x: what is long and aslant fits the
/// one or the other.
struct TwoBoxes {
    Box upright, turned;

    void add(const tav::Point2DF& point);
    void add(const TwoBoxes& other);
    bool overlap(const TwoBoxes& other) const;
};

double boxDistance(const TwoBoxes& bounds, const tav::Point2DF& point);

/// The insides of tips, as far as they lie deeper than a distance under the two sides that meet in
/// the tip.
class CornerTips {
public:
    using Inside = std::array<Side, 4>;

    CornerTips(const std::vector<CornerTip>& tips, double depth);

    /// visit(inside) for those whose bounds are `wanted`; see BoundsTree::search.
    template <class Wanted, class Visit>
    void search(const tav::Point2DF& place, Wanted&& wanted, Visit&& visit) const
    {
        tree_.search(place, wanted, [&](int i) { visit(insides_[static_cast<std::size_t>(i)]); });
    }

private:
    std::vector<Inside> insides_;
    BoundsTree<TwoBoxes> tree_;
};

/// Whether a point lies on the left of all sides.
bool isInside(const CornerTips::Inside& sides, const tav::Point2DF& point);

/// The tip between the parallels of two segments that are carried on to it: from `before` to `tip`
/// and from `tip` to `after`, as straight lines or arcs. Nothing when no quadrangle fits in.
std::optional<CornerTip> cornerTip(IcommonFunc& common, const tav::Point2DF& vertex,
                                   const Segment& rising, const Segment& falling);

}  // namespace calcora::app
