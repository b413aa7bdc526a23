// Looking up points near a place among points gathered one by one.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "common/detail/vec.h"

namespace calcora::detail {

/// Points in order of arrival, found by nearness in constant time.
///
/// The plane is cut into square cells a few times as wide as the reach, and cells are hashed into
/// buckets. Cell numbers are whole doubles, since 1e300 fits no integer. What counts as near is the
/// caller's test: any test that accepts no two points farther apart than the reach in x or in y gives
/// the answer of a plain scan over all points. A point that is not finite is counted but never found.
class PointGrid {
public:
    static constexpr int kNone = -1;

    /// `reach` in drawing units. With a reach that is not above 0 only points of equal coordinates
    /// are sure to be offered to the test.
    explicit PointGrid(double reach, int expectedPoints = 0)
        : cellsPerUnit_(reach > 0 ? std::min(1 / (kCellSizeInReaches * reach), kFinestGrid)
                                  : kFinestGrid)
    {
        reserve(static_cast<std::size_t>(std::max(expectedPoints, 0)));
    }

    void reserve(std::size_t count)
    {
        points_.reserve(count);
        nextInBucket_.reserve(count);
        const std::size_t buckets = std::bit_ceil(std::max(count, kFewestBuckets));
        if (buckets > firstInBucket_.size()) spread(buckets);
    }

    int size() const { return static_cast<int>(points_.size()); }
    const Point2DF& point(int index) const { return points_[static_cast<std::size_t>(index)]; }
    const std::vector<Point2DF>& points() const { return points_; }

    /// Adds a point; returns its number, which counts from 0.
    int add(const Point2DF& p)
    {
        if (points_.size() >= firstInBucket_.size()) spread(firstInBucket_.size() * 2);
        const int index = size();
        points_.push_back(p);
        nextInBucket_.push_back(kNone);
        if (isFinite(p)) link(index);
        return index;
    }

    /// The lowest number of a point q near p with isNear(q), kNone if there is none.
    template <class IsNear>
    int findEarliest(const Point2DF& p, IsNear&& isNear) const
    {
        if (!isFinite(p)) return kNone;
        const Span x = cellsAround(p.x());
        const Span y = cellsAround(p.y());
        int found = earliestInBucket(x.own, y.own, isNear, kNone);
        if (x.hasOther) found = earliestInBucket(x.other, y.own, isNear, found);
        if (y.hasOther) found = earliestInBucket(x.own, y.other, isNear, found);
        if (x.hasOther && y.hasOther) found = earliestInBucket(x.other, y.other, isNear, found);
        return found;
    }

private:
    /// Wide cells are rarely left by a search; narrow ones hold few points.
    static constexpr double kCellSizeInReaches = 16.0;
    /// Share of a cell along its edges from which a near point may lie in the neighbour: one reach,
    /// and half as much again for the rounding of large cell numbers.
    static constexpr double kNeighbourMargin = 1.5 / kCellSizeInReaches;
    static constexpr double kFinestGrid = 1e200;
    static constexpr double kIntegersReach = 0x1p62;
    static constexpr std::size_t kFewestBuckets = 16;

    /// Numbers along one axis of the cells to look into.
    struct Span {
        double own;
        double other;
        bool hasOther;
    };

    /// The next whole number below, without a call as far as integers reach; never -0, since cells
    /// are hashed by their bits.
    static double wholeBelow(double value)
    {
        if (!(std::fabs(value) < kIntegersReach)) return std::floor(value) + 0.0;
        const auto whole = static_cast<double>(static_cast<std::int64_t>(value));
        return whole > value ? whole - 1.0 : whole;
    }

    double cellOf(double coordinate) const { return wholeBelow(coordinate * cellsPerUnit_); }

    Span cellsAround(double coordinate) const
    {
        const double scaled = coordinate * cellsPerUnit_;
        const double own = wholeBelow(scaled);
        const double inside = scaled - own;
        if (inside < kNeighbourMargin) return {own, own - 1.0 + 0.0, true};
        if (inside > 1.0 - kNeighbourMargin) return {own, own + 1.0 + 0.0, true};
        return {own, own, false};
    }

    std::size_t bucketOf(double cellX, double cellY) const
    {
        std::uint64_t h = std::bit_cast<std::uint64_t>(cellX) * 0x9E3779B97F4A7C15u;
        h = (h ^ (h >> 29)) + std::bit_cast<std::uint64_t>(cellY) * 0xBF58476D1CE4E5B9u;
        h = (h ^ (h >> 32)) * 0x94D049BB133111EBu;
        return static_cast<std::size_t>(h >> 20) & (firstInBucket_.size() - 1);
    }

    std::size_t ownBucket(const Point2DF& p) const
    {
        return bucketOf(cellOf(p.x()), cellOf(p.y()));
    }

    template <class IsNear>
    int earliestInBucket(double cellX, double cellY, IsNear& isNear, int found) const
    {
        for (int i = firstInBucket_[bucketOf(cellX, cellY)]; i != kNone;
             i = nextInBucket_[static_cast<std::size_t>(i)])
            if ((found == kNone || i < found) && isNear(point(i))) found = i;
        return found;
    }

    void link(int index)
    {
        const Point2DF& p = point(index);
        int& first = firstInBucket_[ownBucket(p)];
        nextInBucket_[static_cast<std::size_t>(index)] = first;
        first = index;
    }

    void spread(std::size_t buckets)
    {
        firstInBucket_.assign(buckets, kNone);
        for (int i = 0; i < size(); ++i)
            if (isFinite(point(i))) link(i);
    }

    double cellsPerUnit_;
    std::vector<Point2DF> points_;
    std::vector<int> nextInBucket_;   ///< per point, kNone ends the chain
    std::vector<int> firstInBucket_;  ///< per bucket, a power of two of them
};

}  // namespace calcora::detail
