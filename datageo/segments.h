// Single segments of line work, and the set order that merges equal ones.
#pragma once

#include <span>
#include <utility>
#include <vector>

#include "datageo/cancel.h"
#include "datageo/node_order.h"
#include "tavrel/points.h"

namespace calcora {

/// A segment or arc from `a` to `b`; the bulge is the tangent of a quarter of its sweep.
struct SegmentKey {
    tav::Point2DF a;
    tav::Point2DF b;
    double bulge = 0.0;
};

/// Distinct segments in set order, with the places where their ends meet.
struct SegmentSet {
    detail::BigVector<SegmentKey> segments;

    /// The distinct ends in the fuzzy order of AutoB::FuzzyPointSet, and for every segment the
    /// numbers of its ends among them.
    detail::BigVector<tav::Point2DF> ends;
    detail::BigVector<std::pair<int, int>> endsOf;

    /// See NodeOrder: whether every segment's ends are, bit for bit, the points that stand for them,
    /// whether these are the same in any order of arrival, and where their own order may not be.
    bool endsAreExact = true;
    bool endsAreClear = true;
    std::vector<std::pair<int, int>> columns;
};

/// Merges equal segments and puts the rest in set order.
///
/// Two segments are equal when their first ends and their second ends lie within kNodeTolerance in
/// both coordinates and their bulges differ by less than 1e-7. Unless `directed`, each segment is
/// compared as if turned so that its first end is the smaller (turning negates the bulge), so that a
/// segment and its reverse are equal. Of equal segments the first stays, in its own direction.
/// Segments arrive in the order of the list or, where there are `arrivals`, as these number them from
/// 0 on. The order is that of the first ends, then of the second ends, then of the bulges (turned where
/// turned), ends in the order of AutoB::FuzzyPointSet::ranks().
SegmentSet mergeEqualSegments(std::span<const SegmentKey> segments, bool directed,
                              CancelCheck check = CancelCheck(),
                              std::span<const int> arrivals = {});

}  // namespace calcora
