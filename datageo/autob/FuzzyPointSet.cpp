#include "datageo/autob/FuzzyPointSet.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace AutoB {

namespace {

/// Edge of a grid cell in tolerances. Wide cells are rarely left by the search; narrow ones keep
/// few points, since distinct points are a tolerance apart.
constexpr double kCellTolerances = 8.0;

/// Share of a cell along its edges from which an equal point may lie in the neighbour: one
/// tolerance, and half as much again for the rounding of large cell numbers.
constexpr double kNeighbourMargin = 1.5 / kCellTolerances;

constexpr std::size_t kFirstBuckets = 64;

/// The neighbouring cell numbers to look into, besides the point's own.
struct Reach {
    double own;
    double other;
    bool hasOther;
};

Reach reachOf(double scaled)
{
    const double own = std::floor(scaled) + 0.0;  // no negative zero: cells are compared by bits
    const double inside = scaled - own;
    if (inside < kNeighbourMargin) return {own, own - 1.0 + 0.0, true};
    if (inside > 1.0 - kNeighbourMargin) return {own, own + 1.0 + 0.0, true};
    return {own, own, false};
}

}  // namespace

FuzzyPointSet::FuzzyPointSet(double tolerance)
    : tolerance_(tolerance > 0 ? tolerance : 0),
      cellsPerUnit_(tolerance > 0 ? 1.0 / (kCellTolerances * tolerance) : 1.0),
      firstInBucket_(kFirstBuckets, -1)
{
    // A tolerance so small that its inverse overflows still tells cells apart by their sign.
    if (!std::isfinite(cellsPerUnit_)) cellsPerUnit_ = 1.0;
}

void FuzzyPointSet::reserve(std::size_t count)
{
    points_.reserve(count);
    nextInBucket_.reserve(count);
    if (count > firstInBucket_.size()) grow(std::bit_ceil(count));
}

std::size_t FuzzyPointSet::bucketOf(const Cell& cell) const
{
    std::uint64_t h = std::bit_cast<std::uint64_t>(cell.x) * 0x9E3779B97F4A7C15ull;
    h = (h ^ (h >> 29)) + std::bit_cast<std::uint64_t>(cell.y) * 0xBF58476D1CE4E5B9ull;
    h = (h ^ (h >> 32)) * 0x94D049BB133111EBull;
    return static_cast<std::size_t>(h >> 20) & (firstInBucket_.size() - 1);
}

int FuzzyPointSet::earliestEqual(const Cell& cell, const tav::Point2DF& p, int best) const
{
    for (int i = firstInBucket_[bucketOf(cell)]; i >= 0;
         i = nextInBucket_[static_cast<std::size_t>(i)]) {
        const tav::Point2DF& q = points_[static_cast<std::size_t>(i)];
        if (std::fabs(q.x() - p.x()) < tolerance_ && std::fabs(q.y() - p.y()) < tolerance_ &&
            (best < 0 || i < best))
            best = i;
    }
    return best;
}

int FuzzyPointSet::findOrAdd(const tav::Point2DF& p)
{
    const Reach x = reachOf(p.x() * cellsPerUnit_);
    const Reach y = reachOf(p.y() * cellsPerUnit_);
    int found = earliestEqual({x.own, y.own}, p, -1);
    if (x.hasOther) found = earliestEqual({x.other, y.own}, p, found);
    if (y.hasOther) found = earliestEqual({x.own, y.other}, p, found);
    if (x.hasOther && y.hasOther) found = earliestEqual({x.other, y.other}, p, found);
    if (found >= 0) return found;

    if (points_.size() >= firstInBucket_.size()) grow(firstInBucket_.size() * 2);
    const int index = static_cast<int>(points_.size());
    int& first = firstInBucket_[bucketOf({x.own, y.own})];
    points_.push_back(p);
    nextInBucket_.push_back(first);
    first = index;
    return index;
}

void FuzzyPointSet::grow(std::size_t buckets)
{
    firstInBucket_.assign(buckets, -1);
    for (std::size_t i = 0; i < points_.size(); ++i) {
        const Cell cell{std::floor(points_[i].x() * cellsPerUnit_) + 0.0,
                        std::floor(points_[i].y() * cellsPerUnit_) + 0.0};
        int& first = firstInBucket_[bucketOf(cell)];
        nextInBucket_[i] = first;
        first = static_cast<int>(i);
    }
}

std::vector<int> FuzzyPointSet::ranks() const
{
    struct Entry {
        double key;
        int index;
    };
    const auto byKey = [](const Entry& a, const Entry& b) {
        return a.key < b.key || (a.key == b.key && a.index < b.index);
    };

    std::vector<Entry> order(points_.size());
    for (std::size_t i = 0; i < points_.size(); ++i)
        order[i] = {points_[i].x(), static_cast<int>(i)};
    std::sort(order.begin(), order.end(), byKey);

    for (std::size_t begin = 0; begin < order.size();) {
        std::size_t end = begin + 1;
        while (end < order.size() && order[end].key - order[end - 1].key < tolerance_) ++end;
        if (end - begin > 1) {
            for (std::size_t i = begin; i < end; ++i)
                order[i].key = points_[static_cast<std::size_t>(order[i].index)].y();
            std::sort(order.begin() + static_cast<std::ptrdiff_t>(begin),
                      order.begin() + static_cast<std::ptrdiff_t>(end), byKey);
        }
        begin = end;
    }

    std::vector<int> rank(points_.size());
    for (std::size_t place = 0; place < order.size(); ++place)
        rank[static_cast<std::size_t>(order[place].index)] = static_cast<int>(place);
    return rank;
}

}  // namespace AutoB
