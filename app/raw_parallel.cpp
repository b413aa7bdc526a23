#include "app/raw_parallel.h"

#include <cmath>
#include <optional>

namespace calcora::app {

namespace {

using tav::Point2DF;

/// Vertices that are nearer to each other are one to IcommonFunc::offsetBulgePolyline; a chain
/// whose ends are is closed.
constexpr double kRepeatDistance = 1e-3;

/// A corner whose tip would be farther from the vertex than this multiple of the distance, one
/// below 11.5 degrees, is rounded.
constexpr double kFarthestTip = 10;

/// A segment moved by itself, and what its corners make of its ends.
struct Moved {
    std::optional<Segment> segment;  ///< nothing when an arc has vanished
    std::optional<Point2DF> start, end;
};

/// Two moved neighbours: where they meet, or what connects them.
struct Corner {
    std::optional<Point2DF> joint;
    std::optional<Segment> connection;
};

class RawMaker {
public:
    RawMaker(IcommonFunc& common, const SegmentIndex& chain, double distance)
        : common_(common), chain_(chain), distance_(distance)
    {
    }

    RawParallel make(bool closed) const
    {
        const int count = chain_.count();
        std::vector<Moved> moved;
        for (int i = 0; i < count; ++i) moved.push_back({movedAlone(chain_.segment(i)), {}, {}});
        std::vector<std::optional<Segment>> connections(moved.size());
        for (int i = 0; i < (closed ? count : count - 1); ++i) {
            Moved& before = moved[static_cast<std::size_t>(i)];
            Moved& after = moved[static_cast<std::size_t>((i + 1) % count)];
            const Corner corner = cornerOf(i, before, after);
            before.end = after.start = corner.joint;
            if (!corner.connection) continue;
            before.end = corner.connection->from;
            after.start = corner.connection->to;
            connections[static_cast<std::size_t>(i)] = corner.connection;
        }
        RawParallel raw;
        for (std::size_t i = 0; i < moved.size(); ++i) {
            if (const auto piece = betweenItsEnds(moved[i])) raw.segments.push_back(*piece);
            if (connections[i]) raw.segments.push_back(*connections[i]);
            if (const auto tip = tipAfter(static_cast<int>(i), moved)) raw.tips.push_back(*tip);
        }
        return raw;
    }

private:
    std::optional<Segment> movedAlone(const Segment& segment) const
    {
        Points points;
        Values bulges;
        if (!common_.offsetBulgePolyline({segment.from, segment.to}, {segment.bulge, 0.0},
                                         distance_, points, bulges))
            return std::nullopt;
        return Segment{points.first(), points.last(), bulges.first()};
    }

    /// The two segments from i on as a line of their own, whose ends must not close it.
    Corner cornerOf(int i, const Moved& before, const Moved& after) const
    {
        const Segment& first = chain_.segment(i);
        const Segment& second = chain_.segment((i + 1) % chain_.count());
        Points points{first.from, first.to, second.to};
        Values bulges{first.bulge, second.bulge, 0.0};
        if (first.from.distanceTo(second.to) < kRepeatDistance) {
            points.last() = pointAt(common_, second, 0.5);
            bulges[1] = std::tan(std::atan(second.bulge) / 2);
        }
        Points parallel;
        Values parallelBulges;
        if (!common_.offsetBulgePolyline(points, bulges, distance_, parallel, parallelBulges))
            return {};
        const int own = before.segment ? 1 : 0;
        const int both = own + (after.segment ? 1 : 0);
        const int pieces = parallel.size() - 1;
        if (pieces == both + 1)
            return {{}, Segment{parallel.at(own), parallel.at(own + 1), parallelBulges.at(own)}};
        if (pieces != 2 || both != 2) return {};
        const Point2DF& joint = parallel.at(1);
        const bool isTip = shareOf(joint, *before.segment, 1) > 1;
        if (isTip && joint.distanceTo(first.to) > kFarthestTip * std::fabs(distance_))
            return {{}, arcAbout(first.to, before.segment->to, after.segment->from)};
        return {joint, {}};
    }

    /// At a corner that turns away from the parallel.
    Segment arcAbout(const Point2DF& vertex, const Point2DF& from, const Point2DF& to) const
    {
        return {from, to,
                common_.bulgeFromRadius(vertex, from, to, std::fabs(distance_), distance_ > 0)};
    }

    /// Nothing when the ends have run past each other.
    std::optional<Segment> betweenItsEnds(const Moved& moved) const
    {
        if (!moved.segment) return std::nullopt;
        const Segment& whole = *moved.segment;
        const double from = shareOf(moved.start, whole, 0);
        const double to = shareOf(moved.end, whole, 1);
        if (!(to > from)) return std::nullopt;
        return Segment{moved.start.value_or(whole.from), moved.end.value_or(whole.to),
                       std::tan(std::atan(whole.bulge) * (to - from))};
    }

    /// The tip at the end of segment i, if both its sides are there in full.
    std::optional<CornerTip> tipAfter(int i, const std::vector<Moved>& moved) const
    {
        const Moved& before = moved[static_cast<std::size_t>(i)];
        const Moved& after = moved[static_cast<std::size_t>((i + 1) % chain_.count())];
        const auto rising = carriedOn(before);
        const auto falling = carriedBack(after);
        if (!rising || !falling || !(rising->to == falling->from)) return std::nullopt;
        return cornerTip(common_, chain_.segment(i).to, *rising, *falling);
    }

    /// The part of a moved segment beyond its own end, where the joint is, and before its own start.
    std::optional<Segment> carriedOn(const Moved& moved) const
    {
        if (!moved.segment || !moved.end || shareOf(moved.start, *moved.segment, 0) > 1)
            return std::nullopt;
        const double beyond = shareOf(moved.end, *moved.segment, 1) - 1;
        if (!(beyond > 0)) return std::nullopt;
        return Segment{moved.segment->to, *moved.end,
                       std::tan(std::atan(moved.segment->bulge) * beyond)};
    }
    std::optional<Segment> carriedBack(const Moved& moved) const
    {
        if (!moved.segment) return std::nullopt;
        const Segment& whole = *moved.segment;
        const auto back =
            carriedOn({Segment{whole.to, whole.from, -whole.bulge}, moved.end, moved.start});
        if (!back) return std::nullopt;
        return Segment{back->to, back->from, -back->bulge};
    }

    double shareOf(const std::optional<Point2DF>& place, const Segment& segment, double none) const
    {
        return place ? app::shareOf(common_, segment, *place) : none;
    }

    IcommonFunc& common_;
    const SegmentIndex& chain_;
    double distance_;
};

}  // namespace

RawParallel rawParallel(IcommonFunc& common, const SegmentIndex& chain, bool closed,
                        double distance)
{
    return RawMaker(common, chain, distance).make(closed);
}

void removeRepeats(Points& points, Values& bulges)
{
    Points kept;
    Values keptBulges;
    for (int i = 0; i < points.size(); ++i) {
        if (!kept.isEmpty() &&
            points.at(i).distanceTo(kept.at(kept.size() - 1)) < kRepeatDistance) {
            keptBulges.last() = bulges.at(i);
            continue;
        }
        kept.append(points.at(i));
        keptBulges.append(bulges.at(i));
    }
    if (!kept.isEmpty()) kept.last() = points.last();
    points = kept;
    bulges = keptBulges;
}

}  // namespace calcora::app
