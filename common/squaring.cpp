// Squaring of rings and of single corners.

#include <algorithm>
#include <cmath>
#include <utility>

#include "common/commonFunc.h"
#include "common/detail/edge_directions.h"

namespace {

using namespace calcora::detail;
using Points = IcommonFunc::Points;

/// Fewer vertices have no two pairs of parallel sides.
constexpr int kFewestCorners = 4;

/// Radians: a corner nearer to the right angle is left as it is. squareCorners().
constexpr double kRightAngle = 1e-6;

/// Corners examined before squareCorners() gives up coming to rest.
constexpr long long kCornerVisits = 1'000'000;
constexpr long long kCornerVisitsPerVertex = 20;

bool isFinite(const Points& points)
{
    return std::all_of(points.begin(), points.end(),
                       [](const Point2DF& p) { return calcora::detail::isFinite(p); });
}

/// The points from `first` on, then those before it.
Points startingAt(const Points& points, int first)
{
    if (first <= 0 || first >= points.size()) return points;
    Points turned;
    turned.reserve(points.size());
    for (int i = 0; i < points.size(); ++i) turned.append(points[(first + i) % points.size()]);
    return turned;
}

/// Squares one ring to a direction and the one across it.
///
/// The edges are taken one after the other. The edge before a vertex is swung about its start to
/// run along or across, and the vertex slides along the edge after it until it meets the swung one;
/// so the edge after it keeps its line until its own turn comes.
class RingSquarer {
public:
    RingSquarer(IcommonFunc& functions, double along)
        : functions_(functions), along_(along), across_(along + kPi / 2)
    {
        if (across_ > kPi / 2) across_ -= kPi;
    }

    /// The ring squared, clockwise from its lower left corner and closed; the ring itself when
    /// there is too little of it.
    Points squared(const Points& ring) const
    {
        Points vertices = ring;
        if (ring.size() > 1 && samePlace(functions_, ring.last(), ring.first()))
            vertices.removeLast();
        if (vertices.size() < kFewestCorners || !isFinite(ring)) return ring;

        const Point2DF origin = ring.first();
        for (Point2DF& p : vertices) p -= origin;
        if (!functions_.isClockwiseRing(vertices)) functions_.reversePointList(vertices);
        vertices = corners(startingAt(vertices, functions_.lowerLeftPointIndex(vertices)));
        vertices = corners(swung(vertices));
        if (vertices.size() < kFewestCorners) return ring;
        for (Point2DF& p : vertices) p += origin;
        vertices.append(std::as_const(vertices).first());
        return vertices;
    }

private:
    /// An edge whose start is settled, before it is swung.
    struct Edge {
        Point2DF start;
        double direction;
    };

    double direction(const Point2DF& a, const Point2DF& b) const
    {
        return foldedDirection(functions_, a, b);
    }

    bool runsAlong(double direction) const
    {
        return lineDifference(direction, along_) < kSameDirection;
    }

    Points corners(const Points& ring) const
    {
        return cornersOf(
            functions_, ring, [this](const Point2DF& a, const Point2DF& b, const Point2DF& c) {
                return lineDifference(direction(a, b), direction(b, c)) < kSameDirection;
            });
    }

    /// Which way to swing an edge of a direction that is not along, before one that runs `after`.
    double swungDirection(double before, double after, bool atLastVertex) const
    {
        if (runsAlong(after)) return across_;
        if (atLastVertex) return along_;
        return lineDifference(before, along_) < kPi / 4 ? along_ : across_;
    }

    /// The vertices with every edge swung in turn. A vertex whose edges do not meet near it once
    /// the first is swung is no corner: it goes, and the edge after it is swung in one with its own.
    Points swung(const Points& vertices) const
    {
        const int n = vertices.size();
        if (n < kFewestCorners) return vertices;
        Points settled;
        settled.reserve(n);
        Edge before{vertices[n - 1], direction(vertices[n - 1], vertices[0])};
        for (int i = 0; i < n; ++i) {
            const bool atLastVertex = i == n - 1;
            // The ring ends where it has been squared to, not where it once began.
            const bool endsSettled = atLastVertex && !settled.isEmpty();
            const Point2DF next =
                endsSettled ? std::as_const(settled).first() : vertices[(i + 1) % n];
            const double after = direction(vertices[i], next);
            Point2DF corner = vertices[i];
            if (!runsAlong(before.direction)) {
                const bool isInLine = lineDifference(before.direction, after) < kSameDirection;
                const double to = swungDirection(before.direction, after, atLastVertex);
                if ((isInLine && !atLastVertex) ||
                    !meet(before.start, to, vertices[i], next, after, corner)) {
                    before.direction = after;
                    continue;
                }
            }
            settled.append(corner);
            before = {corner, after};
        }
        return settled;
    }

    /// Where the line through `start` meets the edge from `vertex` to `next`; false where they are
    /// parallel or meet farther from the vertex than its two edges are long.
    bool meet(const Point2DF& start, double startDirection, const Point2DF& vertex,
              const Point2DF& next, double edgeDirection, Point2DF& corner) const
    {
        if (lineDifference(startDirection, edgeDirection) < kSameDirection) return false;
        Point2DF meeting = vertex;
        functions_.intersectDirectionLines(start, startDirection, next, edgeDirection, meeting);
        const double reach = length(vertex - start) + length(next - vertex);
        if (!(length(meeting - vertex) <= reach)) return false;
        corner = meeting;
        return true;
    }

    IcommonFunc& functions_;
    double along_;
    double across_;
};

}  // namespace

void commonFunc::squareRings(const PointLists& rings, PointLists& out)
{
    const PointLists given = rings;
    const RingSquarer squarer(*this, dominantEdgeDirection(given));
    for (const Points& ring : given) out.append(squarer.squared(ring));
}

// Of the circle over a-c, whose every point sees a-c under a right angle, the point nearest to b.
bool commonFunc::squareCorner(const Point2DF& a, Point2DF& b, const Point2DF& c)
{
    double direction = 0.0;
    double chord = 0.0;
    polarFromCoordinates(a.x(), a.y(), c.x(), c.y(), direction, chord);
    const double radius = chord / 2;
    const double height = std::fabs(orientation3(a, c, b)) / chord;
    if (!(chord > 0 && height > 0 && height <= radius)) return false;
    const Point2DF middle = midpoint(a, c);
    const Point2DF fromMiddle = b - middle;
    const Point2DF moved = middle + (radius / length(fromMiddle)) * fromMiddle;
    if (!calcora::detail::isFinite(moved)) return false;
    b = moved;
    return true;
}

bool commonFunc::squareCorners(Points& ring, double toleranceDegrees)
{
    const int n = std::as_const(ring).size();
    if (n < 3) return false;
    const double tolerance = toleranceDegrees * kPi / 180;
    Points vertices = ring;
    Point2DF* vertex = vertices.data();
    const bool closed = vertex[0] == vertex[n - 1];
    const long long visits = kCornerVisits + kCornerVisitsPerVertex * n;
    int unchanged = 0;
    int i = 0;
    for (long long visit = 0; visit < visits && unchanged < n - 1; ++visit) {
        // Corner i stands at vertex i + 1; the last one at the vertex where the ring closes.
        const int at = i + 1 < n - 1 ? i + 1 : 0;
        const Point2DF before = vertex[i];
        const Point2DF after = vertex[at + 1];
        i = at;
        ++unchanged;
        if ((at == 0 && !closed) || before == vertex[at] || vertex[at] == after) continue;
        const double off = std::fabs(angleBetweenDirections(before, vertex[at], after) - kPi / 2);
        if (!(off >= kRightAngle && off <= tolerance)) continue;
        Point2DF corner = vertex[at];
        if (!squareCorner(before, corner, after)) continue;
        vertex[at] = corner;
        if (at == 0) vertex[n - 1] = corner;
        unchanged = 0;
    }
    ring = std::move(vertices);
    return true;
}
