#include "app/corner_tips.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace calcora::app {

namespace {

using tav::Point2DF;

double cross(const Point2DF& a, const Point2DF& b)
{
    return a.x() * b.y() - a.y() * b.x();
}

Point2DF turned(const Point2DF& point)
{
    return {point.x() + point.y(), point.y() - point.x()};
}

bool overlap(const Box& a, const Box& b)
{
    return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
}

Side sideThrough(const Point2DF& from, const Point2DF& to)
{
    return {from, (1 / from.distanceTo(to)) * (to - from)};
}

CornerTips::Inside insideOf(const CornerTip& tip, double depth)
{
    const bool isClockwise = cross(tip.tip - tip.vertex, tip.after - tip.vertex) < 0;
    const auto [first, last] =
        isClockwise ? std::pair(tip.after, tip.before) : std::pair(tip.before, tip.after);
    // Counter-clockwise: vertex, first, tip, last.
    return {sideThrough(tip.vertex, first), sideThrough(first, tip.tip).movedLeft(depth),
            sideThrough(tip.tip, last).movedLeft(depth), sideThrough(last, tip.vertex)};
}

/// Where two sides in a row meet.
Point2DF cornerOf(const Side& side, const Side& next)
{
    const double share = next.depth(side.place) / -cross(next.along, side.along);
    return side.place + share * side.along;
}

/// The end of a side at its foot: its own when it is straight or bulges away from the vertex, else
/// where the tangent at the tip meets the way from the vertex to the foot.
std::optional<Point2DF> footOf(IcommonFunc& common, const Point2DF& vertex, const Point2DF& foot,
                               const Point2DF& tip, double bulge)
{
    const bool bulgesAway = cross(tip - foot, vertex - foot) * bulge >= 0;
    if (std::fabs(bulge) < kArcBulge || bulgesAway) return foot;
    Point2DF centre;
    common.bulgeArcCenter(foot, tip, bulge, centre, nullptr);
    const Point2DF out = tip - centre;
    const Point2DF tangent(-out.y(), out.x());
    const Point2DF way = foot - vertex;
    const double share = cross(tip - vertex, tangent) / cross(way, tangent);
    if (!(share > 0 && share <= 1)) return std::nullopt;
    return vertex + share * way;
}

}  // namespace

double Side::depth(const Point2DF& point) const
{
    return cross(along, point - place);
}

Side Side::movedLeft(double distance) const
{
    return {place + distance * Point2DF(-along.y(), along.x()), along};
}

void TwoBoxes::add(const Point2DF& point)
{
    upright.add(point);
    turned.add(calcora::app::turned(point));
}

void TwoBoxes::add(const TwoBoxes& other)
{
    upright.add(other.upright);
    turned.add(other.turned);
}

bool TwoBoxes::overlap(const TwoBoxes& other) const
{
    return calcora::app::overlap(upright, other.upright) &&
           calcora::app::overlap(turned, other.turned);
}

double boxDistance(const TwoBoxes& bounds, const Point2DF& point)
{
    return boxDistance(bounds.upright, point);
}

CornerTips::CornerTips(const std::vector<CornerTip>& tips, double depth)
{
    std::vector<TwoBoxes> boxes;
    for (const CornerTip& tip : tips) {
        // Deeper than the tip is high nothing is left of it.
        const Inside inside = insideOf(tip, depth);
        const Point2DF top = cornerOf(inside[1], inside[2]);
        if (!(inside[0].depth(top) > 0 && inside[3].depth(top) > 0)) continue;
        insides_.push_back(inside);
        TwoBoxes& box = boxes.emplace_back();
        for (const Point2DF& corner :
             {tip.vertex, cornerOf(inside[0], inside[1]), top, cornerOf(inside[2], inside[3])})
            box.add(corner);
    }
    tree_ = BoundsTree(std::move(boxes));
}

bool isInside(const CornerTips::Inside& sides, const Point2DF& point)
{
    return std::all_of(sides.begin(), sides.end(),
                       [&](const Side& side) { return side.depth(point) > 0; });
}

std::optional<CornerTip> cornerTip(IcommonFunc& common, const Point2DF& vertex,
                                   const Segment& rising, const Segment& falling)
{
    const auto before = footOf(common, vertex, rising.from, rising.to, rising.bulge);
    const auto after = footOf(common, vertex, falling.to, falling.from, -falling.bulge);
    if (!before || !after) return std::nullopt;
    return CornerTip{vertex, *before, rising.to, *after};
}

}  // namespace calcora::app
