// A polyline against a polygon: inside, outside, or across its boundary.

#include <algorithm>

#include "common/commonFunc.h"

namespace {

using tav::Point2DF;

/// Drawing units: a line whose x difference is smaller is vertical.
constexpr double kVertical = 1e-6;
/// Slopes that differ by less belong to parallel lines.
constexpr double kParallelSlopes = 1e-6;

constexpr int kAcross = 0;
constexpr int kTooFewVertices = -2;

bool boxesMeet(const Point2DF& a1, const Point2DF& a2, const Point2DF& b1, const Point2DF& b2)
{
    const auto [aLeft, aRight] = std::minmax({a1.x(), a2.x()});
    const auto [bLeft, bRight] = std::minmax({b1.x(), b2.x()});
    const auto [aLow, aHigh] = std::minmax({a1.y(), a2.y()});
    const auto [bLow, bHigh] = std::minmax({b1.y(), b2.y()});
    return aLeft <= bRight && bLeft <= aRight && aLow <= bHigh && bLow <= aHigh;
}

/// Whether the line through `start` with that slope meets the vertical segment strictly between
/// its ends.
bool meetsVertical(const Point2DF& start, double slope, const Point2DF& v1, const Point2DF& v2)
{
    const double height = slope * (v1.x() - start.x());
    const auto [low, high] = std::minmax({v1.y() - start.y(), v2.y() - start.y()});
    return low < height && height < high;
}

/// Whether a place `along` in x from a segment's start lies on the segment, ends included.
bool isOnRun(double along, double run)
{
    return run > 0 ? 0 <= along && along <= run : run <= along && along <= 0;
}

/// Whether two segments cross, by the slopes of their lines. Ends count for two sloped lines, not
/// for a vertical one.
bool segmentsCross(const Point2DF& a1, const Point2DF& a2, const Point2DF& b1, const Point2DF& b2)
{
    const Point2DF a = a2 - a1;
    const Point2DF b = b2 - b1;
    const bool aIsVertical = std::fabs(a.x()) < kVertical;
    const bool bIsVertical = std::fabs(b.x()) < kVertical;
    if (aIsVertical && bIsVertical) return false;
    if (aIsVertical) return meetsVertical(b1, b.y() / b.x(), a1, a2);
    if (bIsVertical) return meetsVertical(a1, a.y() / a.x(), b1, b2);
    const double slopeA = a.y() / a.x();
    const double slopeB = b.y() / b.x();
    const double slopes = slopeA - slopeB;
    if (!(std::fabs(slopes) >= kParallelSlopes)) return false;
    // Each from its own start, so that a start on the other line gives exactly 0.
    const Point2DF between = b1 - a1;
    const double alongA = (between.y() - slopeB * between.x()) / slopes;
    const double alongB = (between.y() - slopeA * between.x()) / slopes;
    return isOnRun(alongA, a.x()) && isOnRun(alongB, b.x());
}

/// Whether the segment from p to q shares an end with an edge of the ring or crosses one. A closing
/// edge that the list does not hold is not looked at.
bool touchesRing(const tav::Vector<Point2DF>& ring, const Point2DF& p, const Point2DF& q)
{
    for (int e = 0; e + 1 < ring.size(); ++e) {
        const Point2DF& b1 = ring[e];
        const Point2DF& b2 = ring[e + 1];
        if (!boxesMeet(p, q, b1, b2)) continue;
        if (p == b1 || p == b2 || q == b1 || q == b2) return true;
        if (segmentsCross(p, q, b1, b2)) return true;
    }
    return false;
}

}  // namespace

int commonFunc::polylineRegionRelation(const Points& ring, const Points& polyline)
{
    int relation = kTooFewVertices;
    for (int k = 0; k + 1 < polyline.size(); ++k) {
        if (touchesRing(ring, polyline[k], polyline[k + 1])) return kAcross;
        relation = pointInPolygon(ring, polyline[k]);
        if (relation == kAcross) return kAcross;
    }
    return relation;
}
