// Single segments of line work, and the set order that merges equal ones.
#pragma once

#include <utility>
#include <vector>

#include "datageo/cancel.h"
#include "tavrel/points.h"

namespace calcora {

/// Drawing units: ends closer than this in both coordinates are one end, and one node of the graph.
inline constexpr double kNodeTolerance = 1e-5;

/// A segment or arc from `a` to `b`; the bulge is the tangent of a quarter of its sweep.
struct SegmentKey {
    tav::Point2DF a;
    tav::Point2DF b;
    double bulge = 0.0;
};

/// Distinct segments in set order, with the places where their ends meet.
struct SegmentSet {
    std::vector<SegmentKey> segments;

    /// The distinct ends in the fuzzy order of AutoB::FuzzyPointSet, and for every segment the
    /// numbers of its ends among them.
    std::vector<tav::Point2DF> ends;
    std::vector<std::pair<int, int>> endsOf;

    /// True when every segment's ends are, bit for bit, the points that stand for them.
    bool endsAreExact = true;
};

/// Merges equal segments and puts the rest in set order.
///
/// Two segments are equal when their first ends and their second ends lie within kNodeTolerance in
/// both coordinates and their bulges differ by less than 1e-7. Unless `directed`, each segment is
/// compared as if turned so that its first end is the smaller (turning negates the bulge), so that a
/// segment and its reverse are equal. Of equal segments the first stays, in its own direction.
/// The order is that of the first ends, then of the second ends, then of the bulges (turned where
/// turned), ends in the order of AutoB::FuzzyPointSet::ranks().
SegmentSet mergeEqualSegments(const std::vector<SegmentKey>& segments, bool directed,
                              CancelCheck check = CancelCheck());

}  // namespace calcora
