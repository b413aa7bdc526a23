// Simplification of polylines (D. Douglas, T. Peucker 1973).

#include <algorithm>
#include <utility>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/farthest_vertex.h"
#include "common/detail/plain_functions.h"

namespace {

namespace detail = calcora::detail;
using Range = detail::VertexRange;
using tav::Point2DF;

/// Drawing units: a smaller tolerance simplifies nothing.
constexpr double kSmallestTolerance = 1e-7;
/// Square units: ends of a range that lie nearer count as one point.
constexpr double kSameEndsSquared = 1e-10;

/// The farthest vertex of ranges of one polyline. Any override of the distance is seen.
class FarthestFinder {
public:
    FarthestFinder(commonFunc& functions, const Point2DF* vertex, int count)
        : functions_(functions),
          vertex_(vertex),
          isPlain_(detail::isExactly(functions)),
          search_(vertex, isPlain_ ? count : 0)
    {
    }

    detail::FarthestVertex find(Range range)
    {
        if (isPlain_) return search_.find(range);
        detail::FarthestVertex farthest;
        const Point2DF& start = vertex_[range.first];
        const Point2DF& end = vertex_[range.last];
        for (int i = range.first + 1; i < range.last; ++i) {
            const double d = functions_.pointSegmentDistSquared(vertex_[i], start, end);
            if (d > farthest.distanceSquared) farthest = {i, d};
        }
        return farthest;
    }

private:
    IcommonFunc& functions_;
    const Point2DF* vertex_;
    bool isPlain_;
    detail::FarthestVertexSearch search_;
};

bool simplifies(const tav::Vector<Point2DF>& points, double tolerance)
{
    return points.size() >= 3 && tolerance >= kSmallestTolerance;
}

}  // namespace

// Ranges wait on a stack instead of being recursed into: a spiral splits off one vertex at a time.
void commonFunc::simplifyRange(Points points, int first, int last, double toleranceSquared,
                               tav::Vector<int>& kept)
{
    if (!(0 <= first && first < last && last < points.size())) return;
    const Point2DF* vertex = points.constData();
    FarthestFinder finder(*this, vertex, points.size());
    std::vector<Range> waiting{{first, last}};
    while (!waiting.empty()) {
        Range range = waiting.back();
        waiting.pop_back();
        while (range.first < range.last &&
               pointDistSquared(vertex[range.first], vertex[range.last]) < kSameEndsSquared) {
            if (--range.last > range.first) kept.append(range.last);
        }
        const detail::FarthestVertex middle = finder.find(range);
        if (!(middle.distanceSquared > 0 && middle.distanceSquared > toleranceSquared)) continue;
        kept.append(middle.index);
        waiting.push_back({middle.index, range.last});
        waiting.push_back({range.first, middle.index});
    }
}

void commonFunc::simplifyPolylineWithValues(const Points& points, const Values& valuesA,
                                            const Values& valuesB, Points& outPoints, Values& outA,
                                            Values& outB, double tolerance)
{
    // Copies share the caller's lists, so that any output may be any input.
    const Points vertices = points;
    const Values a = valuesA;
    const Values b = valuesB;
    if (!simplifies(vertices, tolerance)) {
        outPoints = vertices;
        outA = a;
        outB = b;
        return;
    }
    const int n = vertices.size();
    if (a.size() < n || b.size() < n) return;

    tav::Vector<int> kept{0, n - 1};
    int last = n - 1;
    while (last > 0 && pointDistSquared(vertices[last], vertices[0]) < kSameEndsSquared) {
        if (--last > 0) kept.append(last);
    }
    if (last > 0) simplifyRange(vertices, 0, last, tolerance * tolerance, kept);
    std::sort(kept.begin(), kept.end());
    for (const int index : std::as_const(kept)) {
        if (index < 0 || index >= n) continue;
        outPoints.append(vertices[index]);
        outA.append(a[index]);
        outB.append(b[index]);
    }
}

void commonFunc::simplifyPolyline(const Points& points, Points& out, double tolerance)
{
    const Points vertices = points;
    if (!simplifies(vertices, tolerance)) {
        out = vertices;
        return;
    }
    const Point2DF* vertex = vertices.constData();
    const double toleranceSquared = tolerance * tolerance;
    FarthestFinder finder(*this, vertex, vertices.size());
    std::vector<Range> waiting{{0, vertices.size() - 1}};
    while (!waiting.empty()) {
        const Range range = waiting.back();
        waiting.pop_back();
        const detail::FarthestVertex middle = finder.find(range);
        if (middle.distanceSquared >= toleranceSquared) {
            waiting.push_back({middle.index, range.last});
            waiting.push_back({range.first, middle.index});
        } else {
            out.append(vertex[range.first]);
        }
    }
    out.append(vertices.last());
}
