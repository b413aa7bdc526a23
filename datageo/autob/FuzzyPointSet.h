// Points that count as one when they lie within a tolerance in both coordinates.
#pragma once

#include <cstddef>
#include <vector>

#include "common/detail/point_grid.h"
#include "datageo/cancel.h"
#include "tavrel/points.h"

namespace AutoB {

/// A set of points in order of arrival. Two points are equal when |dx| and |dy| are both below the
/// tolerance (strictly). That relation is not transitive, so the set is a hash grid and not a
/// sorted container: of several equal points the earliest is found, whatever lies between them.
///
/// Coordinates must be finite; a tolerance that is not above 0 makes no two points equal.
class FuzzyPointSet {
public:
    explicit FuzzyPointSet(double tolerance);

    void reserve(std::size_t count) { grid_.reserve(count); }

    /// Index of the earliest point equal to p, which is added when there is none.
    int findOrAdd(const tav::Point2DF& p);

    const std::vector<tav::Point2DF>& points() const { return grid_.points(); }

    /// For every point its place in the fuzzy order: by x, or by y where the x values are within
    /// the tolerance. Where chains of x values make that order contradict itself, all points of a
    /// chain form one column and are ordered by y, then by arrival.
    std::vector<int> ranks(calcora::CancelCheck& check) const;

private:
    double tolerance_;
    calcora::detail::PointGrid grid_;
};

}  // namespace AutoB
