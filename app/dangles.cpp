#include "app/dangles.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <unordered_map>

#include "app/figures.h"

namespace calcora::app {

namespace {

using tav::Point2DF;

/// How far a loop may run beside the segment that it was made from: nodes merge ends that are up to
/// 1e-5 apart in each coordinate. Scaled units.
constexpr double kNodeReach = 2e-5;

/// The same where ends are snapped first, as a multiple of the snap tolerance.
constexpr double kSnapReach = 1.5;

struct Segment {
    Point2DF a;
    Point2DF b;
    double bulge = 0;
    int layer = 0;
};

/// A segment whatever its direction, for exact comparison.
struct SegmentKey {
    std::array<std::uint64_t, 5> bits{};

    explicit SegmentKey(const Segment& segment)
    {
        Point2DF a = segment.a;
        Point2DF b = segment.b;
        double bulge = segment.bulge;
        if (b.x() < a.x() || (b.x() == a.x() && b.y() < a.y())) {
            std::swap(a, b);
            bulge = -bulge;
        }
        // Adding 0 makes one zero of the two.
        const std::array values = {a.x() + 0.0, a.y() + 0.0, b.x() + 0.0, b.y() + 0.0, bulge + 0.0};
        for (std::size_t i = 0; i < values.size(); ++i)
            bits[i] = std::bit_cast<std::uint64_t>(values[i]);
    }
    friend bool operator==(const SegmentKey& a, const SegmentKey& b) = default;
};

std::size_t mixed(std::uint64_t hash, std::uint64_t bits)
{
    hash ^= bits + 0x9e3779b97f4a7c15u + (hash << 6) + (hash >> 2);
    hash *= 0xff51afd7ed558ccdu;
    return hash ^ hash >> 32;
}

struct SegmentHash {
    std::size_t operator()(const SegmentKey& key) const
    {
        std::size_t hash = 0;
        for (const std::uint64_t bits : key.bits) hash = mixed(hash, bits);
        return hash;
    }
};

/// Counts points near places of interest: how many lie within a reach of them in both coordinates.
class PlaceCounter {
public:
    explicit PlaceCounter(double reach) : reach_(reach) {}

    /// Points near this place will be kept.
    void watch(const Point2DF& place)
    {
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy) cells_.try_emplace(cell(place, dx, dy));
    }

    void add(const Point2DF& point)
    {
        const auto found = cells_.find(cell(point, 0, 0));
        if (found != cells_.end()) found->second.push_back(point);
    }

    /// Counts up to 2; the place must have been watched.
    int countNear(const Point2DF& place) const
    {
        int count = 0;
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy) {
                for (const Point2DF& point : cells_.at(cell(place, dx, dy)))
                    if (std::fabs(point.x() - place.x()) < reach_ &&
                        std::fabs(point.y() - place.y()) < reach_ && ++count == 2)
                        return count;
            }
        return count;
    }

private:
    struct Cell {
        double x, y;
        friend bool operator==(const Cell& a, const Cell& b) = default;
    };
    struct CellHash {
        std::size_t operator()(const Cell& cell) const
        {
            return mixed(std::bit_cast<std::uint64_t>(cell.x + 0.0),
                         std::bit_cast<std::uint64_t>(cell.y + 0.0));
        }
    };
    Cell cell(const Point2DF& point, int dx, int dy) const
    {
        return {std::floor(point.x() / reach_) + dx, std::floor(point.y() / reach_) + dy};
    }

    double reach_;
    std::unordered_map<Cell, std::vector<Point2DF>, CellHash> cells_;
};

/// Part of a segment, as shares of its sweep or length.
struct Stretch {
    double from = 0;
    double to = 1;
};

class DangleFinder {
public:
    DangleFinder(IcommonFunc& common, ICRTree& tree, double snap)
        : common_(common),
          tree_(tree),
          snap_(std::max(snap, 0.0)),
          reach_(std::max(kNodeReach, kSnapReach * snap_)),
          ends_(reach_)
    {
    }

    std::vector<Dangle> find(const LineWork& work, const std::vector<Loop>& loops);

private:
    void collectSegments(const LineWork& work);
    void collectEdges(const std::vector<Loop>& loops);
    void cover(const Segment& edge);
    bool runsAlong(const Segment& segment, const Point2DF& point) const;
    double share(const Segment& segment, const Point2DF& point) const;
    void appendDangles(int index, std::vector<Dangle>& dangles);
    void findPlaces(std::vector<Dangle>& dangles, const std::vector<Loop>& loops);
    Point2DF pointAt(const Segment& segment, double share) const;

    static constexpr int kNoSegment = -1;

    const Segment& segment(int index) const { return segments_[static_cast<std::size_t>(index)]; }

    IcommonFunc& common_;
    ICRTree& tree_;
    double snap_;
    double reach_;  ///< within which a loop runs along a segment

    std::vector<Segment> segments_;  ///< each once, in the order of the drawing
    /// Of segments, and kNoSegment for edges of loops that are none.
    std::unordered_map<SegmentKey, int, SegmentHash> numbers_;
    std::vector<char> isLoopEdge_;  ///< the whole segment is an edge of a loop
    std::vector<std::vector<Stretch>> covered_;
    std::vector<Segment> edges_;  ///< edges of loops, each once
    PlaceCounter ends_;           ///< ends of segments, vertices of loops
};

std::vector<Dangle> DangleFinder::find(const LineWork& work, const std::vector<Loop>& loops)
{
    collectSegments(work);
    collectEdges(loops);

    tree_.removeAll();
    for (int i = 0; i < static_cast<int>(segments_.size()); ++i) {
        if (isLoopEdge_[static_cast<std::size_t>(i)]) continue;
        const Box box = segmentBox(segment(i).a, segment(i).b, segment(i).bulge);
        RTreeRect rect{box.minX - reach_, box.minY - reach_, box.maxX + reach_, box.maxY + reach_};
        tree_.insertRect(&rect, &segments_[static_cast<std::size_t>(i)], 0);
    }
    covered_.resize(segments_.size());
    for (const Segment& edge : edges_) cover(edge);

    std::vector<Dangle> dangles;
    for (int i = 0; i < static_cast<int>(segments_.size()); ++i)
        if (!isLoopEdge_[static_cast<std::size_t>(i)]) appendDangles(i, dangles);
    findPlaces(dangles, loops);
    std::stable_partition(dangles.begin(), dangles.end(),
                          [](const Dangle& dangle) { return dangle.hasFreeEnd; });
    return dangles;
}

void DangleFinder::collectSegments(const LineWork& work)
{
    for (int i = 0; i < work.points.size(); ++i) {
        const Points& points = work.points.at(i);
        const Values& bulges = work.bulges.at(i);
        for (int k = 0; k + 1 < points.size(); ++k) {
            const Segment segment{points.at(k), points.at(k + 1), bulges.at(k),
                                  work.layers[static_cast<std::size_t>(i)]};
            if (segment.a == segment.b) continue;
            const int number = static_cast<int>(segments_.size());
            if (!numbers_.try_emplace(SegmentKey(segment), number).second) continue;
            segments_.push_back(segment);
        }
    }
}

void DangleFinder::collectEdges(const std::vector<Loop>& loops)
{
    isLoopEdge_.resize(segments_.size());
    for (const Loop& loop : loops) {
        const int count = loop.points.size();
        for (int k = 0; k < count; ++k) {
            const Segment edge{loop.points.at(k), loop.points.at((k + 1) % count),
                               loop.bulges.at(k)};
            const auto [place, isNew] = numbers_.try_emplace(SegmentKey(edge), kNoSegment);
            char* mark = place->second == kNoSegment
                             ? nullptr
                             : &isLoopEdge_[static_cast<std::size_t>(place->second)];
            if (isNew || (mark && !*mark)) edges_.push_back(edge);
            if (mark) *mark = 1;
        }
    }
}

/// Notes which stretches of segments the edge of a loop covers.
void DangleFinder::cover(const Segment& edge)
{
    const Point2DF middle = pointAt(edge, 0.5);
    const RTreeRect place{middle.x(), middle.y(), middle.x(), middle.y()};
    tav::List<void*> hits;
    tree_.findOverlapping(&place, &hits);
    const tav::List<void*>& found = hits;
    for (void* hit : found) {
        const auto* candidate = static_cast<const Segment*>(hit);
        if (!runsAlong(*candidate, middle) || !runsAlong(*candidate, edge.a) ||
            !runsAlong(*candidate, edge.b))
            continue;
        const double first = share(*candidate, edge.a);
        const double second = share(*candidate, edge.b);
        covered_[static_cast<std::size_t>(candidate - segments_.data())].push_back(
            {std::min(first, second), std::max(first, second)});
    }
}

bool DangleFinder::runsAlong(const Segment& segment, const Point2DF& point) const
{
    return common_.pointBulgeSegmentDistSquared(point, segment.a, segment.b, segment.bulge) <=
           reach_ * reach_;
}

double DangleFinder::share(const Segment& segment, const Point2DF& point) const
{
    constexpr double kArcBulge = 1e-6;  // flatter ones are straight to the module
    if (std::fabs(segment.bulge) < kArcBulge)
        return common_.projectionRatio(point, segment.a, segment.b);
    Point2DF centre;
    double radius = 0;
    common_.bulgeArcCenter(segment.a, segment.b, segment.bulge, centre, &radius);
    return common_.arcSweepFraction(point, centre, segment.a, segment.b, segment.bulge < 0);
}

Point2DF DangleFinder::pointAt(const Segment& segment, double share) const
{
    if (share <= 0) return segment.a;
    if (share >= 1) return segment.b;
    Point2DF point = segment.a;
    common_.pointOnBulgeSegmentAtRatio(segment.a, segment.b, segment.bulge, share, point);
    return point;
}

/// Appends what is left of the segment between its covered stretches. What the merging of nodes and
/// the snapping may eat of a segment is no dangle.
void DangleFinder::appendDangles(int index, std::vector<Dangle>& dangles)
{
    std::vector<Stretch>& covered = covered_[static_cast<std::size_t>(index)];
    const Segment& whole = segment(index);
    const double length = common_.bulgeSegmentLength(whole.a, whole.b, whole.bulge);
    const double slack = (covered.empty() ? std::max(2 * kNodeReach, snap_) : 2 * reach_) / length;
    std::sort(covered.begin(), covered.end(),
              [](const Stretch& a, const Stretch& b) { return a.from < b.from; });
    covered.push_back({1.0, 1.0});
    double end = 0;
    for (const Stretch& next : covered) {
        const double from = std::min(next.from, 1.0);
        if (from - end > slack)
            dangles.push_back({.from = pointAt(whole, end),
                               .to = pointAt(whole, from),
                               .bulge = std::tan(std::atan(whole.bulge) * (from - end)),
                               .length = length * (from - end),
                               .layer = whole.layer});
        end = std::max(end, next.to);
    }
}

/// Tells the dangles with a free end from the others.
void DangleFinder::findPlaces(std::vector<Dangle>& dangles, const std::vector<Loop>& loops)
{
    if (dangles.empty()) return;
    for (const Dangle& dangle : dangles) {
        ends_.watch(dangle.from);
        ends_.watch(dangle.to);
    }
    for (const Segment& segment : segments_) {
        ends_.add(segment.a);
        ends_.add(segment.b);
    }
    for (const Loop& loop : loops)
        for (const Point2DF& vertex : loop.points) {
            ends_.add(vertex);
            ends_.add(vertex);
        }
    for (Dangle& dangle : dangles) {
        // The end of a segment counts itself once; at a vertex of a loop nothing is free, whether
        // a segment ends there or not, so these count twice.
        const bool firstIsFree = ends_.countNear(dangle.from) < 2;
        dangle.hasFreeEnd = firstIsFree || ends_.countNear(dangle.to) < 2;
        if (dangle.hasFreeEnd)
            dangle.place = firstIsFree ? dangle.from : dangle.to;
        else
            dangle.place = pointAt({dangle.from, dangle.to, dangle.bulge}, 0.5);
    }
}

}  // namespace

std::vector<Dangle> findDangles(IcommonFunc& common, ICRTree& tree, const LineWork& work,
                                const std::vector<Loop>& loops, double snap)
{
    return DangleFinder(common, tree, snap).find(work, loops);
}

}  // namespace calcora::app
