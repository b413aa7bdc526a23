// Measures and moves of point lists.

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "common/commonFunc.h"
#include "common/detail/sort_points.h"

namespace {

using tav::Point2DF;

/// Drawing units: a steeper edge bounds no area below it. ringCentroid().
constexpr double kVerticalEdgeWidth = 1e-10;
/// Square units: a running weight nearer to 0 does not divide. ringCentroid().
constexpr double kSmallestWeight = 1e-10;
/// Drawing units: beyond this a ring is walked relative to its first vertex. ringCentroid().
constexpr double kLocalOriginLimit = 1e4;

/// The centre of parts added one by one, with their total signed area as weight.
struct WeightedCentre {
    double x = 0.0;
    double y = 0.0;
    double weight = 0.0;

    void add(double partX, double partY, double partWeight)
    {
        const double total = weight + partWeight;
        if (!(std::fabs(total) >= kSmallestWeight)) return;
        x = (weight * x + partWeight * partX) / total;
        y = (weight * y + partWeight * partY) / total;
        weight = total;
    }
};

/// Where to measure the ring from: its first vertex when it lies far out, else the origin.
Point2DF localOrigin(const tav::Vector<Point2DF>& ring)
{
    const bool farOut = std::any_of(ring.begin(), ring.end(), [](const Point2DF& p) {
        return std::fabs(p.x()) > kLocalOriginLimit || std::fabs(p.y()) > kLocalOriginLimit;
    });
    return farOut ? ring.first() : Point2DF();
}

/// Coordinates summed up, with their number.
struct Sum {
    double x = 0.0;
    double y = 0.0;
    long long count = 0;

    void add(const Point2DF& p)
    {
        x += p.x();
        y += p.y();
        ++count;
    }

    /// Adds the vertices of a ring, a repeated first vertex at its end only once.
    void addRing(const tav::Vector<Point2DF>& ring)
    {
        const int n = ring.size();
        const Point2DF* vertex = ring.constData();
        for (int i = 0; i + 1 < n; ++i) add(vertex[i]);
        if (n > 0 && !(vertex[n - 1] == vertex[0])) add(vertex[n - 1]);
    }

    Point2DF mean() const
    {
        return {x / static_cast<double>(count), y / static_cast<double>(count)};
    }
};

}  // namespace

// The area between the ring and the x axis, edge by edge, as a rectangle of the height of the
// edge's start and a triangle upon it.
tav::Point2DF commonFunc::ringCentroid(const Points& ring)
{
    const int n = ring.size();
    if (n == 0) return {};
    const Point2DF origin = localOrigin(ring);
    const Point2DF* vertex = ring.constData();
    WeightedCentre rightward;
    WeightedCentre leftward;
    for (int i = 0; i < n; ++i) {
        const Point2DF start = vertex[i] - origin;
        const Point2DF end = vertex[i + 1 < n ? i + 1 : 0] - origin;
        const double width = end.x() - start.x();
        const double rise = end.y() - start.y();
        if (!(std::fabs(width) >= kVerticalEdgeWidth)) continue;
        WeightedCentre& side = width > 0 ? rightward : leftward;
        side.add((start.x() + end.x()) / 2, start.y() / 2, width * start.y());
        side.add((start.x() + 2 * end.x()) / 3, (2 * start.y() + end.y()) / 3, width * rise / 2);
    }
    const double total = rightward.weight + leftward.weight;
    const double x = (rightward.weight * rightward.x + leftward.weight * leftward.x) / total;
    const double y = (rightward.weight * rightward.y + leftward.weight * leftward.y) / total;
    if (std::isfinite(x) && std::isfinite(y)) return Point2DF(x, y) + origin;
    return pointsBoxCenterPoint(ring);
}

int commonFunc::lowerLeftPointIndex(const Points& points)
{
    int best = 0;
    double smallest = std::numeric_limits<double>::infinity();
    const Point2DF* point = points.constData();
    for (int i = 0, n = points.size(); i < n; ++i) {
        const double sum = point[i].x() + point[i].y();
        if (sum < smallest) {
            smallest = sum;
            best = i;
        }
    }
    return best;
}

// Relative to vertex 0: far from the origin the trapezoids are large and their sum is all rounding.
bool commonFunc::isClockwiseRing(const Points& ring)
{
    const int n = ring.size();
    if (n == 0) return true;
    const Point2DF* vertex = ring.constData();
    const double x0 = vertex[0].x();
    const double y0 = vertex[0].y();
    double area = 0.0;
    double xBefore = 0.0;
    double yBefore = 0.0;
    for (int i = 1; i < n; ++i) {
        const double x = vertex[i].x() - x0;
        const double y = vertex[i].y() - y0;
        area += (y + yBefore) * (x - xBefore) * 0.5;
        xBefore = x;
        yBefore = y;
    }
    area += yBefore * -xBefore * 0.5;
    return area >= 0;
}

void commonFunc::polylinesExtents(const PointLists& lists, double& minX, double& minY, double& maxX,
                                  double& maxY)
{
    double left = 0.0;
    double low = 0.0;
    double right = 0.0;
    double high = 0.0;
    if (!lists.isEmpty() && !lists.first().isEmpty()) {
        pointsExtents(lists.first(), left, low, right, high);
        for (int i = 1; i < lists.size(); ++i) {
            double listLeft = 0.0;
            double listLow = 0.0;
            double listRight = 0.0;
            double listHigh = 0.0;
            pointsExtents(lists[i], listLeft, listLow, listRight, listHigh);
            if (listLeft < left) left = listLeft;
            if (listLow < low) low = listLow;
            if (listRight > right) right = listRight;
            if (listHigh > high) high = listHigh;
        }
    }
    minX = left;
    minY = low;
    maxX = right;
    maxY = high;
}

int commonFunc::pointsExtents(const Points& points, double& minX, double& minY, double& maxX,
                              double& maxY)
{
    const int n = points.size();
    const Point2DF* point = points.constData();
    double left = n > 0 ? point[0].x() : 0.0;
    double low = n > 0 ? point[0].y() : 0.0;
    double right = left;
    double high = low;
    for (int i = 1; i < n; ++i) {
        const double x = point[i].x();
        const double y = point[i].y();
        left = x < left ? x : left;
        right = x > right ? x : right;
        low = y < low ? y : low;
        high = y > high ? y : high;
    }
    minX = left;
    minY = low;
    maxX = right;
    maxY = high;
    return n;
}

tav::RectF commonFunc::polylinesRect(const PointLists& lists)
{
    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;
    polylinesExtents(lists, minX, minY, maxX, maxY);
    return {minX, minY, maxX - minX, maxY - minY};
}

tav::RectF commonFunc::pointsRect(const Points& points)
{
    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;
    pointsExtents(points, minX, minY, maxX, maxY);
    return {minX, minY, maxX - minX, maxY - minY};
}

void commonFunc::translatePolylines(const PointLists& lists, double dx, double dy, PointLists& out)
{
    PointLists moved;
    moved.reserve(lists.size());
    for (const Points& list : lists) {
        moved.append(Points());
        translatePoints(list, dx, dy, moved.last());
    }
    out = std::move(moved);
}

int commonFunc::translatePoints(const Points& points, double dx, double dy, Points& out)
{
    const int n = points.size();
    Points moved(n);
    const Point2DF* point = points.constData();
    Point2DF* target = moved.data();
    for (int i = 0; i < n; ++i) target[i] = {point[i].x() - dx, point[i].y() - dy};
    out = std::move(moved);
    return n;
}

int commonFunc::centerPointsOnBox(const Points& points, double& cx, double& cy, Points& out)
{
    pointsBoxCenter(points, cx, cy);
    return translatePoints(points, cx, cy, out);
}

double commonFunc::polylineLength(const Points& points)
{
    double length = 0.0;
    const Point2DF* point = points.constData();
    for (int i = 1, n = points.size(); i < n; ++i) length += pointDist(point[i - 1], point[i]);
    return length;
}

double commonFunc::triangleArea(const Point2DF& a, const Point2DF& b, const Point2DF& c)
{
    return std::fabs((b.x() - a.x()) * (c.y() - a.y()) - (c.x() - a.x()) * (b.y() - a.y())) * 0.5;
}

tav::Point2DF commonFunc::triangleCentroid(const Point2DF& a, const Point2DF& b, const Point2DF& c)
{
    return {(a.x() + b.x() + c.x()) / 3, (a.y() + b.y() + c.y()) / 3};
}

tav::Point2DF commonFunc::pointsBoxCenterPoint(const Points& points)
{
    double cx = 0.0;
    double cy = 0.0;
    pointsBoxCenter(points, cx, cy);
    return {cx, cy};
}

void commonFunc::pointsBoxCenter(const Points& points, double& cx, double& cy)
{
    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;
    pointsExtents(points, minX, minY, maxX, maxY);
    cx = (minX + maxX) * 0.5;
    cy = (minY + maxY) * 0.5;
}

tav::Point2DF commonFunc::polylinesMeanPoint(const PointLists& rings)
{
    Sum sum;
    const Points* firstRing = nullptr;
    for (const Points& ring : rings) {
        if (!firstRing && !ring.isEmpty()) firstRing = &ring;
        sum.addRing(ring);
    }
    if (sum.count > 0) return sum.mean();
    return firstRing ? firstRing->first() : Point2DF();
}

tav::Point2DF commonFunc::ringMeanPoint(const Points& ring)
{
    double x = 0.0;
    double y = 0.0;
    ringMean(ring, x, y);
    return {x, y};
}

void commonFunc::ringMean(const Points& ring, double& x, double& y)
{
    if (ring.isEmpty()) return;
    Sum sum;
    sum.addRing(ring);
    const Point2DF mean = sum.count > 0 ? sum.mean() : ring.first();
    x = mean.x();
    y = mean.y();
}

void commonFunc::sortPointsByKey(Points& points, Values& keys)
{
    calcora::detail::sortPointsByKey(points, keys);
}
