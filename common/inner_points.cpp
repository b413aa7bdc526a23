// Points inside rings and regions.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/bulges.h"
#include "common/detail/ring_pieces.h"
#include "common/detail/work_pair.h"

using namespace calcora;
using tav::Point2DF;

namespace {

using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

constexpr int kInside = -1;

/// Drawing units by which a region's scan line reaches beyond its box on both sides.
constexpr double kRegionScanReach = 0.0001;
/// Entries up to which the order of equal distances and lengths is that of pairwise exchanges.
constexpr std::size_t kMostExchanged = 2000;

/// Sorts ascending by key, exchanging each entry with every later one that is strictly smaller.
/// That is not a stable order, but the one that decides between pieces of equal length. A key that
/// is not a number moves nothing; in long lists, which are sorted stably, it goes last.
template <class Entry, class Key>
void sortByExchange(std::vector<Entry>& entries, Key key)
{
    if (entries.size() <= kMostExchanged) {
        for (std::size_t i = 0; i < entries.size(); ++i)
            for (std::size_t j = i + 1; j < entries.size(); ++j)
                if (key(entries[j]) < key(entries[i])) std::swap(entries[i], entries[j]);
        return;
    }
    std::stable_sort(entries.begin(), entries.end(), [&](const Entry& a, const Entry& b) {
        return key(a) < key(b) || (std::isnan(key(b)) && !std::isnan(key(a)));
    });
}

/// Where a horizontal line through the middle of a figure's box meets its rings.
class ScanLine {
public:
    ScanLine(IcommonFunc& geometry, double minX, double minY, double maxX, double maxY)
        : geometry_(geometry),
          line_{Point2DF(minX, (minY + maxY) / 2), Point2DF(maxX, (minY + maxY) / 2)}
    {
    }

    void meet(const Points& ring, const Values& bulges)
    {
        if (ring.size() < 2) return;
        constexpr std::size_t kMostPerEdge = 4;
        detail::WorkPair found(kMostPerEdge * static_cast<std::size_t>(ring.size()));
        int count = 0;
        if (geometry_.hasBulges(bulges))
            geometry_.intersectBulgePolylines(line_, Values{0.0, 0.0}, ring, bulges, found.points(),
                                              found.params(), &count);
        else
            geometry_.intersectPolylines(line_, ring, found.points(), found.params(), &count);
        for (int i = 0; i < count; ++i)
            meetings_.push_back(
                {geometry_.pointDistSquared(line_.first(), found.points()[i]), found.points()[i]});
    }

    /// The only meeting, else the middle of the longest piece between meetings that `isInside`
    /// accepts, else `fallback`.
    template <class IsInside>
    Point2DF innerPoint(const Point2DF& fallback, IsInside isInside)
    {
        if (meetings_.size() == 1) return meetings_.front().point;
        sortByExchange(meetings_, [](const Meeting& m) { return m.distanceSquared; });
        std::vector<Piece> pieces;
        for (std::size_t i = 1; i < meetings_.size(); ++i) {
            const Point2DF& from = meetings_[i - 1].point;
            const Point2DF& to = meetings_[i].point;
            pieces.push_back({geometry_.pointDistSquared(from, to), detail::midpoint(from, to)});
        }
        sortByExchange(pieces, [](const Piece& p) { return p.lengthSquared; });
        const auto longest = std::find_if(pieces.rbegin(), pieces.rend(),
                                          [&](const Piece& p) { return isInside(p.middle); });
        return longest == pieces.rend() ? fallback : longest->middle;
    }

private:
    struct Meeting {
        double distanceSquared = 0.0;
        Point2DF point;
    };
    struct Piece {
        double lengthSquared = 0.0;
        Point2DF middle;
    };

    IcommonFunc& geometry_;
    const Points line_;
    std::vector<Meeting> meetings_;
};

// A label point is looked for in three rounds: the largest vertex triangles and arc pieces; scan
// lines half way between neighbouring heights of vertices, which see every part of a ring without
// crossings; scan lines at even distances, for all other rings. Each round is bounded, so that the
// cost stays near-linear.

/// Triangles and arc pieces that are tried, largest first, and scan lines of either kind.
constexpr std::size_t kMostPatches = 64;
constexpr std::size_t kMostScanLines = 64;

/// A part of a ring's plane that may be inside: the triangle at vertex i, or the piece between arc
/// i and its chord.
struct Patch {
    double area = 0.0;
    int index = 0;
    bool isArc = false;
};

bool isTriedBefore(const Patch& a, const Patch& b)
{
    if (a.area != b.area) return a.area > b.area;
    return a.index != b.index ? a.index < b.index : a.isArc < b.isArc;
}

/// The vertices of a ring taken round, without a closing copy of the first.
class RingVertices {
public:
    explicit RingVertices(const Points& ring) : ring_(ring), count_(ring.size())
    {
        if (count_ > 1 && ring.first() == ring.last()) --count_;
    }
    int count() const { return count_; }
    const Point2DF& operator[](int i) const { return ring_[(i + count_) % count_]; }

private:
    const Points& ring_;
    int count_;
};

/// The patches of a ring that are tried, in their order.
std::vector<Patch> largestPatches(const RingVertices& ring, const Values& bulges)
{
    std::vector<Patch> patches;
    const auto offer = [&](const Patch& patch) {
        if (patch.area > 0) patches.push_back(patch);
    };
    for (int i = 0; i < ring.count(); ++i) {
        const Point2DF next = ring[i + 1] - ring[i];
        offer({std::fabs(detail::cross(next, ring[i - 1] - ring[i])) / 2, i, false});
        const double bulge = detail::bulgeAt(bulges, i);
        if (std::fabs(bulge) >= detail::kStraightInRing)
            offer({detail::areaBesideChord(detail::lengthSquared(next), bulge), i, true});
    }
    const auto kept = static_cast<std::ptrdiff_t>(std::min(patches.size(), kMostPatches));
    std::partial_sort(patches.begin(), patches.begin() + kept, patches.end(), isTriedBefore);
    patches.resize(static_cast<std::size_t>(kept));
    return patches;
}

/// Heights between which the ring's pieces run straight through, least first.
std::vector<double> vertexHeights(const std::vector<detail::RingPiece>& pieces)
{
    std::vector<double> heights;
    heights.reserve(pieces.size());
    for (const detail::RingPiece& piece : pieces)
        if (std::isfinite(piece.from.y())) heights.push_back(piece.from.y());
    std::sort(heights.begin(), heights.end());
    heights.erase(std::unique(heights.begin(), heights.end()), heights.end());
    return heights;
}

std::vector<double> scanHeights(const std::vector<detail::RingPiece>& pieces)
{
    const std::vector<double> vertices = vertexHeights(pieces);
    std::vector<double> scans;
    if (vertices.size() < 2) return scans;
    const std::size_t gaps = vertices.size() - 1;
    const std::size_t between = std::min(gaps, kMostScanLines);
    for (std::size_t k = 0; k < between; ++k) {
        const std::size_t gap = (2 * k + 1) * gaps / (2 * between);
        scans.push_back(vertices[gap] + (vertices[gap + 1] - vertices[gap]) / 2);
    }
    const double rise = vertices.back() - vertices.front();
    for (std::size_t k = 0; k < kMostScanLines; ++k)
        scans.push_back(vertices.front() + rise * (static_cast<double>(k) + 0.5) /
                                               static_cast<double>(kMostScanLines));
    return scans;
}

/// x of the piece, which crosses that height. From its lower end, so that an edge gives the same x
/// in both directions.
double crossingX(const detail::RingPiece& piece, double y)
{
    const auto [low, high] = piece.from.y() < piece.to.y() ? std::pair(piece.from, piece.to)
                                                           : std::pair(piece.to, piece.from);
    if (!(std::fabs(piece.bulge) >= detail::kStraightInRing))
        return low.x() + (high.x() - low.x()) * ((y - low.y()) / (high.y() - low.y()));
    const auto& [centre, radius] = piece.circle;
    const double rise = y - centre.y();
    const double run = std::sqrt(std::max(0.0, (radius - rise) * (radius + rise)));
    const bool isRight = detail::midpoint(low, high).x() > centre.x();
    const auto [left, right] = std::minmax({low.x(), high.x()});
    return std::clamp(centre.x() + (isRight ? run : -run), left, right);
}

/// The middle of the widest stretch at that height that lies inside by the even-odd rule; not a
/// number when there is none.
Point2DF widestMiddle(const std::vector<detail::RingPiece>& pieces, double y,
                      std::vector<double>& crossings)
{
    crossings.clear();
    for (const detail::RingPiece& piece : pieces) {
        if ((piece.from.y() > y) == (piece.to.y() > y)) continue;
        const double x = crossingX(piece, y);
        if (std::isfinite(x)) crossings.push_back(x);
    }
    std::sort(crossings.begin(), crossings.end());
    double widest = 0.0;
    double middle = std::nan("");
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
        const double width = crossings[i + 1] - crossings[i];
        if (!(width > widest)) continue;
        widest = width;
        middle = crossings[i] + width / 2;
    }
    return {middle, y};
}

}  // namespace

tav::Point2DF commonFunc::innerPointOfRing(const Points& ring, const Values& bulges)
{
    if (ring.isEmpty()) return {};
    double minX = 0, minY = 0, maxX = 0, maxY = 0;
    pointsExtents(ring, minX, minY, maxX, maxY);
    ScanLine scan(*this, minX, minY, maxX, maxY);
    scan.meet(ring, bulges);
    const bool hasArcs = hasBulges(bulges);
    return scan.innerPoint(ring.first(), [&](const Point2DF& p) {
        return (hasArcs ? pointInBulgePolygon(ring, bulges, p) : pointInPolygon(ring, p)) ==
               kInside;
    });
}

tav::Point2DF commonFunc::innerPointOfRegion(const PointLists& rings, const ValueLists& bulgeLists)
{
    PointLists filled;  // an empty ring would pull the box to the origin
    for (const Points& ring : rings)
        if (!ring.isEmpty()) filled.append(ring);
    if (filled.isEmpty()) return {};
    double minX = 0, minY = 0, maxX = 0, maxY = 0;
    polylinesExtents(filled, minX, minY, maxX, maxY);
    ScanLine scan(*this, minX - kRegionScanReach, minY, maxX + kRegionScanReach, maxY);
    for (int i = 0; i < rings.size(); ++i)
        scan.meet(rings[i], i < bulgeLists.size() ? bulgeLists[i] : Values());
    return scan.innerPoint(filled.at(0).at(0), [&](const Point2DF& p) {
        return pointInBulgeRegion(rings, bulgeLists, p) == kInside;
    });
}

tav::Point2DF commonFunc::innerPointByTriangles(const Points& ring)
{
    for (int i = 1; i + 1 < ring.size(); ++i) {
        const Point2DF centroid = triangleCentroid(ring[i - 1], ring[i], ring[i + 1]);
        if (pointInPolygon(ring, centroid) == kInside) return centroid;
    }
    return {};
}

bool commonFunc::labelPoint(const Points& ring, const Values& bulges, Point2DF& out)
{
    const auto isFound = [&](const Point2DF& p) {
        if (!detail::isFinite(p) || pointInBulgePolygon(ring, bulges, p) != kInside) return false;
        out = p;
        return true;
    };
    const RingVertices vertices(ring);
    for (const auto& [area, i, isArc] : largestPatches(vertices, bulges)) {
        const Point2DF from = vertices[i];
        const Point2DF to = vertices[i + 1];
        const Point2DF inPatch =
            isArc ? detail::midpoint(detail::midpoint(from, to), arcMidPoint(from, to, bulges[i]))
                  : triangleCentroid(vertices[i - 1], from, to);
        if (isFound(inPatch)) return true;
    }

    if (ring.isEmpty()) return false;
    const Point2DF origin = ring.first();
    const auto pieces = detail::cutRingAtArcExtremes(*this, ring, bulges, origin);
    std::vector<double> crossings;
    for (const double y : scanHeights(pieces))
        if (isFound(origin + widestMiddle(pieces, y, crossings))) return true;
    return false;
}
