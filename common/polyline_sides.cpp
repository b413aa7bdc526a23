// On which side of a polyline points and polylines lie, and whether polylines share their ends.
//
// The side of a point is judged where the polyline comes nearest to it: the direction of travel
// there against the probe, the vector from that place to the point. At a vertex there are two
// directions of travel, and the one more across the probe decides. The nearest point being a
// corner, the probe lies in the wedge outside it, and of the two directions that one always has the
// probe on its true side, however sharp the corner is.

#include <cmath>
#include <optional>

#include "common/commonFunc.h"
#include "common/detail/bulges.h"
#include "common/detail/primitives.h"

using namespace calcora;
using tav::Point2DF;

namespace {

using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

enum Side : int { kRight = -1, kOn = 0, kLeft = 1, kBothSides = 2 };

/// Square drawing units: a point nearer to the polyline than the root of this is on it.
constexpr double kOnPolylineSquared = 1e-6;
/// Square drawing units: a nearest point nearer to a vertex than the root of this is at its corner.
constexpr double kAtCornerSquared = 1e-6;
/// Radians: a probe nearer to a direction of travel lies in line with it.
constexpr double kInLine = 1e-6;
/// |bulge|: a smaller one is a straight segment, as for the nearest point.
constexpr double kStraightForSide = 1e-6;
/// Square drawing units: ends nearer than the root of this are the same.
constexpr double kSameEndSquared = 1e-8;

/// The directions of travel along a polyline.
class Travel {
public:
    Travel(const Points& points, const Values& bulges)
        : points_(points),
          bulges_(bulges),
          segments_(points.size() - 1),
          isClosed_(points.first() == points.last())
    {
    }

    /// The unit tangent of segment i at a fraction of it: the chord's direction, turned by what is
    /// left of half the sweep.
    Point2DF on(int i, double fraction) const
    {
        const Point2DF chord = points_[i + 1] - points_[i];
        const Point2DF along = (1 / detail::length(chord)) * chord;
        const double bulge = detail::bulgeAt(bulges_, i);
        if (std::fabs(bulge) < kStraightForSide) return along;
        const double turn = 2 * std::atan(bulge) * (2 * fraction - 1);
        return std::cos(turn) * along + std::sin(turn) * detail::leftNormal(along);
    }

    /// On arriving at vertex v, along the last segment before it that has a length. Nothing at the
    /// start of an open polyline.
    std::optional<Point2DF> into(int v) const
    {
        for (int i = v - 1; i >= 0; --i)
            if (hasLength(i)) return on(i, 1);
        for (int i = segments_ - 1; isClosed_ && i >= v; --i)
            if (hasLength(i)) return on(i, 1);
        return std::nullopt;
    }

    /// On leaving vertex v, likewise.
    std::optional<Point2DF> outOf(int v) const
    {
        for (int i = v; i < segments_; ++i)
            if (hasLength(i)) return on(i, 0);
        for (int i = 0; isClosed_ && i < v; ++i)
            if (hasLength(i)) return on(i, 0);
        return std::nullopt;
    }

private:
    bool hasLength(int i) const { return detail::lengthSquared(points_[i + 1] - points_[i]) > 0; }

    const Points& points_;
    const Values& bulges_;
    int segments_;
    bool isClosed_;
};

/// The place of a polyline that is nearest to a point.
struct Nearest {
    Point2DF point;
    int segment = -1;
    double parameter = 0.0;  ///< segment + fraction
};

/// Gathers how far to the side of one or two directions of travel a probe points.
class SideOfTravel {
public:
    explicit SideOfTravel(const Point2DF& probe) : probe_((1 / detail::length(probe)) * probe) {}

    void compare(const std::optional<Point2DF>& direction)
    {
        if (!direction) return;
        const double sine = detail::cross(*direction, probe_);
        if (std::fabs(sine) > std::fabs(sine_)) sine_ = sine;
    }
    int side() const
    {
        if (!(std::fabs(sine_) >= kInLine)) return kOn;
        return sine_ > 0 ? kLeft : kRight;
    }

private:
    Point2DF probe_;
    double sine_ = 0.0;
};

int sideOf(IcommonFunc& geometry, const Point2DF& p, const Points& points, const Values& bulges,
           const Nearest& nearest)
{
    const int i = nearest.segment;
    if (!(0 <= i && i + 1 < points.size())) return kOn;
    if (!(geometry.pointDistSquared(p, nearest.point) >= kOnPolylineSquared)) return kOn;
    const Travel travel(points, bulges);
    SideOfTravel side(p - nearest.point);
    const double toStart = geometry.pointDistSquared(nearest.point, points[i]);
    const double toEnd = geometry.pointDistSquared(nearest.point, points[i + 1]);
    if (toStart < kAtCornerSquared || toEnd < kAtCornerSquared) {
        const int corner = toEnd < toStart ? i + 1 : i;
        side.compare(travel.into(corner));
        side.compare(travel.outOf(corner));
    } else {
        side.compare(travel.on(i, nearest.parameter - i));
    }
    return side.side();
}

/// The one side that places were found on, whatever else lies on the polyline.
class CommonSide {
public:
    /// False as soon as both sides were found.
    bool add(int side)
    {
        hasRight_ = hasRight_ || side == kRight;
        hasLeft_ = hasLeft_ || side == kLeft;
        return !(hasRight_ && hasLeft_);
    }
    int side() const
    {
        if (hasRight_ && hasLeft_) return kBothSides;
        return hasRight_ ? kRight : hasLeft_ ? kLeft : kOn;
    }

private:
    bool hasRight_ = false;
    bool hasLeft_ = false;
};

}  // namespace

int commonFunc::pointSideOfBulgePolyline(const Point2DF& p, const Points& polyline, Values bulges)
{
    if (polyline.size() < 2) return kOn;
    Nearest nearest;
    nearestOnBulgePolylineEx(p, polyline, bulges, nearest.point, &nearest.segment,
                             &nearest.parameter);
    return sideOf(*this, p, polyline, bulges, nearest);
}

short commonFunc::pointSideOfPolyline(const Point2DF& p, const Points& polyline)
{
    if (polyline.size() < 2) return kOn;
    Nearest nearest;
    nearestOnPolyline(p, polyline, nearest.point, &nearest.segment, &nearest.parameter);
    return static_cast<short>(sideOf(*this, p, polyline, Values(), nearest));
}

int commonFunc::segmentsSideOfPolyline(const Points& a, const Points& b)
{
    CommonSide common;
    for (int i = 1; i < a.size(); ++i)
        if (!common.add(pointSideOfPolyline(detail::midpoint(a[i - 1], a[i]), b))) break;
    return common.side();
}

int commonFunc::polylineSideOfPolyline(const Points& a, const Points& b)
{
    CommonSide common;
    for (const Point2DF& p : a)
        if (!common.add(pointSideOfPolyline(p, b))) break;
    return common.side() == kOn ? segmentsSideOfPolyline(a, b) : common.side();
}

bool commonFunc::haveSameEnds(const Points& a, const Points& b)
{
    if (a.isEmpty() || b.isEmpty()) return false;
    const auto isSame = [this](const Point2DF& p, const Point2DF& q) {
        return pointDistSquared(p, q) < kSameEndSquared;
    };
    return (isSame(a.first(), b.first()) && isSame(a.last(), b.last())) ||
           (isSame(a.last(), b.first()) && isSame(a.first(), b.last()));
}

int commonFunc::findSameEnds(const PointLists& lists, const Points& a)
{
    for (int i = 0; i < lists.size(); ++i)
        if (haveSameEnds(lists[i], a)) return i;
    return -1;
}
