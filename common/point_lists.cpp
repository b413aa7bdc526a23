// Measures and moves of point lists.

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "common/commonFunc.h"
#include "common/detail/plain_functions.h"
#include "common/detail/sort_points.h"
#include "detail/roots.h"

namespace {

using tav::Point2DF;

/// Drawing units: a steeper edge bounds no area below it. ringCentroid().
constexpr double kVerticalEdgeWidth = 1e-10;
/// Square units: a running weight nearer to 0 does not divide. ringCentroid().
constexpr double kSmallestWeight = 1e-10;
/// Drawing units: beyond this a ring is measured from its first vertex. ringCentroid().
constexpr double kLocalOriginLimit = 1e4;

/// An area below this share of its parts is their rounding. ringCentroid().
constexpr double kAreaRounding = 2e-15;

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

/// The centre of parts added one by one, with their total signed area as weight.
struct WeightedCentre {
    double x = 0.0;
    double y = 0.0;
    double weight = 0.0;
    double size = 0.0;  ///< of all parts, without sign

    void add(double partX, double partY, double partWeight)
    {
        size += std::fabs(partWeight);
        const double total = weight + partWeight;
        if (!(std::fabs(total) >= kSmallestWeight)) return;
        x = (weight * x + partWeight * partX) / total;
        y = (weight * y + partWeight * partY) / total;
        weight = total;
    }
};

/// The common centre; not a number when the weights cancel but for rounding.
Point2DF centreOf(const WeightedCentre& a, const WeightedCentre& b)
{
    const double total = a.weight + b.weight;
    if (!(std::fabs(total) > kAreaRounding * (a.size + b.size))) return {kNoNumber, kNoNumber};
    return {(a.weight * a.x + b.weight * b.x) / total, (a.weight * a.y + b.weight * b.y) / total};
}

bool liesFarOut(const tav::Vector<Point2DF>& ring)
{
    return std::any_of(ring.begin(), ring.end(), [](const Point2DF& p) {
        return std::fabs(p.x()) > kLocalOriginLimit || std::fabs(p.y()) > kLocalOriginLimit;
    });
}

/// The centre of area from the triangles over vertex 0; not a number without an area.
Point2DF centreAboutFirst(const tav::Vector<Point2DF>& ring)
{
    const Point2DF& origin = ring.first();
    double area = 0, size = 0, x = 0, y = 0;
    for (int i = 1; i + 1 < ring.size(); ++i) {
        const Point2DF u = ring[i] - origin;
        const Point2DF v = ring[i + 1] - origin;
        const double part = calcora::detail::cross(u, v);
        area += part;
        size += std::fabs(part);
        x += part * (u.x() + v.x());
        y += part * (u.y() + v.y());
    }
    const double base = std::fabs(area) > kAreaRounding * size ? 3 * area : kNoNumber;
    return origin + Point2DF(x / base, y / base);
}

/// For each term of a sum, the share of all terms' sizes by which two orders of adding it up may
/// differ: one rounding of 2^-53 each, and a little.
constexpr double kSumRounding = 2.5e-16;
/// Square units: a sum of sizes from which halving the terms loses nothing that matters.
constexpr double kHalvedExactly = 1e-290;

/// Signed area of the ring, positive when clockwise, and the sum of the sizes of its terms.
struct TrapezoidSum {
    double area = 0.0;
    double size = 0.0;
};

/// Relative to vertex 0: far from the origin the trapezoids are large and their sum is all rounding.
double plainTrapezoids(const tav::Vector<Point2DF>& ring)
{
    const int n = ring.size();
    if (n == 0) return 0.0;
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
    return area + yBefore * -xBefore * 0.5;
}

/// Twice the same terms, added up two by two.
TrapezoidSum doubledTrapezoids(const tav::Vector<Point2DF>& ring)
{
    const int n = ring.size();
    TrapezoidSum sum;
    int i = 1;
#if defined(__SSE2__)
    if (n > 2) {
        const auto* coordinates = reinterpret_cast<const double*>(ring.constData());
        const __m128d origin = _mm_loadu_pd(coordinates);
        const __m128d sign = _mm_set1_pd(-0.0);
        __m128d area = _mm_setzero_pd();
        __m128d size = _mm_setzero_pd();
        __m128d before = _mm_setzero_pd();
        for (; i + 1 < n; i += 2) {
            const __m128d a = _mm_sub_pd(_mm_loadu_pd(coordinates + 2 * i), origin);
            const __m128d b = _mm_sub_pd(_mm_loadu_pd(coordinates + 2 * i + 2), origin);
            const __m128d width = _mm_sub_pd(_mm_unpacklo_pd(a, b), _mm_unpacklo_pd(before, a));
            const __m128d height = _mm_add_pd(_mm_unpackhi_pd(a, b), _mm_unpackhi_pd(before, a));
            const __m128d term = _mm_mul_pd(height, width);
            area = _mm_add_pd(area, term);
            size = _mm_add_pd(size, _mm_andnot_pd(sign, term));
            before = b;
        }
        sum.area = _mm_cvtsd_f64(area) + _mm_cvtsd_f64(_mm_unpackhi_pd(area, area));
        sum.size = _mm_cvtsd_f64(size) + _mm_cvtsd_f64(_mm_unpackhi_pd(size, size));
    }
#endif
    const Point2DF* vertex = ring.constData();
    Point2DF before = i > 1 ? vertex[i - 1] - vertex[0] : Point2DF();
    for (; i <= n; ++i) {
        const Point2DF next = i < n ? vertex[i] - vertex[0] : Point2DF();
        const double term = (next.y() + before.y()) * (next.x() - before.x());
        sum.area += term;
        sum.size += std::fabs(term);
        before = next;
    }
    return sum;
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
    Point2DF centre;
    if (liesFarOut(ring)) {
        centre = centreAboutFirst(ring);
    } else {
        const Point2DF* vertex = ring.constData();
        WeightedCentre rightward;
        WeightedCentre leftward;
        for (int i = 0; i < n; ++i) {
            const Point2DF& start = vertex[i];
            const Point2DF& end = vertex[i + 1 < n ? i + 1 : 0];
            const double width = end.x() - start.x();
            const double rise = end.y() - start.y();
            if (!(std::fabs(width) >= kVerticalEdgeWidth)) continue;
            WeightedCentre& side = width > 0 ? rightward : leftward;
            side.add((start.x() + end.x()) / 2, start.y() / 2, width * start.y());
            side.add((start.x() + 2 * end.x()) / 3, (2 * start.y() + end.y()) / 3,
                     width * rise / 2);
        }
        centre = centreOf(rightward, leftward);
    }
    if (std::isfinite(centre.x()) && std::isfinite(centre.y())) return centre;
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

bool commonFunc::isClockwiseRing(const Points& ring)
{
    const TrapezoidSum quick = doubledTrapezoids(ring);
    const double noise = kSumRounding * ring.size() * quick.size;
    const bool isSure = std::fabs(quick.area) > noise && quick.size > kHalvedExactly;
    return isSure ? quick.area > 0 : plainTrapezoids(ring) >= 0;
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
    const Point2DF* point = points.constData();
    const int n = points.size();
    double length = 0.0;
    if (!calcora::detail::isExactly(*this)) {
        for (int i = 1; i < n; ++i) length += pointDist(point[i - 1], point[i]);
        return length;
    }
    constexpr int kLanes = 32;
    double chords[kLanes];
    int i = 1;
    for (; i + kLanes <= n; i += kLanes) {
        for (int k = 0; k < kLanes; ++k)
            chords[k] = calcora::detail::pointDistSquared(point[i + k - 1], point[i + k]);
        calcora::detail::takeRoots(chords);
        for (const double chord : chords) length += chord;
    }
    for (; i < n; ++i)
        length += std::sqrt(calcora::detail::pointDistSquared(point[i - 1], point[i]));
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
