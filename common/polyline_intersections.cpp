// Intersections of polylines: walks along the edges of one or two figures.
//
// Two figures are intersected edge of the first by edge of the first; each of its edges is walked
// along the edges of the second. An inner edge includes its start and excludes its end, so that a
// meeting at a shared vertex is found once; the last edge includes both. When both figures are
// large, boxes over the second one's edges tell each walk which edges come near; all others could
// not meet, so results and their order are those of the plain walk.

#include <algorithm>
#include <cmath>
#include <optional>

#include "common/commonFunc.h"
#include "common/detail/bulges.h"
#include "common/detail/edge_index.h"
#include "common/detail/meeting_limits.h"
#include "common/detail/segment_meeting.h"

using namespace calcora;
using detail::Box;
using detail::bulgeAt;
using detail::EdgeIndex;
using detail::largestCoordinate;
using detail::lengthSquared;
using detail::roundingReach;
using detail::WorkLease;
using detail::WorkPair;
using tav::Point2DF;

namespace {

using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

/// Drawing units of arc length: how far an arc reaches before its start, gives up before its end
/// (inner edge) or reaches beyond it (last edge).
constexpr double kArcStartReach = 1e-6;
constexpr double kArcEndReach = 1e-6;

/// Numbers of edges of the first and of the walked figure from which on an index pays.
constexpr int kIndexedFirstEdges = 4;
constexpr int kIndexedWalkEdges = 16;

/// Largest number of results per pair of edges: two segments or a segment and an arc 2, two arcs 4.
constexpr std::size_t kResultsPerStraightPair = 2;
constexpr std::size_t kResultsPerPair = 4;

using Range = detail::EdgeRange;
using detail::straightRange;

/// straightRange for an edge of the first figure, which is walked against points of which the largest
/// coordinate is given.
Range firstEdgeRange(const Point2DF& a, const Point2DF& b, double startReach, double largest,
                     bool isLast)
{
    const double rounding =
        roundingReach(std::max({largest, largestCoordinate(a), largestCoordinate(b)}));
    return straightRange(lengthSquared(b - a), startReach, rounding, isLast);
}

double arcExtra(bool isLast)
{
    return isLast ? kArcEndReach : -kArcEndReach;
}

/// Arc edges; a bulge that is not a number makes an arc, which meets nothing.
bool isArc(double bulge)
{
    return !(std::fabs(bulge) < detail::kStraightBulgeForMeeting);
}

double largestOf(const Points& points)
{
    double largest = 0.0;
    for (const Point2DF& p : points) largest = std::max(largest, largestCoordinate(p));
    return largest;
}

/// The edges of a polyline that a walk must look at: all, or those that an index finds near.
class NearEdges {
public:
    NearEdges(const Points& polyline, const EdgeIndex* index, const std::optional<Box>& query)
        : count_(polyline.size() - 1), index_(query ? index : nullptr), query_(query)
    {
    }
    int count() const { return count_; }
    int next(int from) const { return index_ ? index_->next(from, *query_) : from; }

private:
    int count_;
    const EdgeIndex* index_;
    std::optional<Box> query_;
};

/// The index if it was made for that polyline.
const EdgeIndex* indexOf(const EdgeIndex* index, const Points& polyline, const Values& bulges)
{
    return index && index->isOf(polyline, bulges) ? index : nullptr;
}

/// The box of the stretch of a segment that a range lets in; nothing when the index cannot serve
/// that segment.
std::optional<Box> segmentQuery(const EdgeIndex* index, const Point2DF& from, const Point2DF& to,
                                const Range& range)
{
    if (!index) return std::nullopt;
    const double chordSquared = lengthSquared(to - from);
    if (chordSquared > index->first().longestSquared) return std::nullopt;
    double reach = 0.0;
    if (chordSquared > 0) {
        const double chord = std::sqrt(chordSquared);
        double back = -range.lo / chord;
        if (!index->hasArcs()) back = std::min(back, detail::kFarthestBack * chord);
        reach = std::max({0.0, back, (range.hi - chordSquared) / chord});
    }
    return detail::edgeBox(from, to, 0.0, reach);
}

/// The same for an arc, whose box allows for the ranges that the walks ask.
std::optional<Box> arcQuery(const EdgeIndex* index, const Point2DF& from, const Point2DF& to,
                            double bulge, double lo, double extra)
{
    const bool isServed =
        index && index->first().hasArcs && -kArcStartReach <= lo && extra <= kArcEndReach;
    if (!isServed) return std::nullopt;
    return detail::edgeBox(from, to, bulge, 0.0);
}

/// What an index must know of the first figure, whose edges are walked one after the other.
EdgeIndex::FirstFigure describe(const Points& polyline, const Values& bulges)
{
    EdgeIndex::FirstFigure first;
    for (int i = 0; i + 1 < polyline.size(); ++i) {
        if (isArc(bulgeAt(bulges, i)))
            first.hasArcs = true;
        else
            first.longestSquared =
                std::max(first.longestSquared, lengthSquared(polyline[i + 1] - polyline[i]));
    }
    return first;
}

/// Keeps an index over the walked polyline in an object for the time of one call, where both
/// figures are large enough for it to pay.
class IndexedWalk {
public:
    IndexedWalk(const EdgeIndex*& slot, const Points& first, const Values& firstBulges,
                const Points& walked, const Values& walkedBulges)
        : slot_(slot), outer_(slot)
    {
        if (first.size() <= kIndexedFirstEdges || walked.size() <= kIndexedWalkEdges) return;
        index_.emplace(walked, walkedBulges, describe(first, firstBulges));
        slot_ = &*index_;
    }
    IndexedWalk(const IndexedWalk&) = delete;
    IndexedWalk& operator=(const IndexedWalk&) = delete;
    ~IndexedWalk() { slot_ = outer_; }

private:
    const EdgeIndex*& slot_;
    const EdgeIndex* outer_;
    std::optional<EdgeIndex> index_;
};

/// Walks all edges of a first figure and gathers their results in a work pair; their parameters
/// become edge number plus place on the edge. `walkEdge(i, points, params, &found)` writes at most
/// `room` results.
template <class WalkEdge>
int gatherEdges(WorkPair& work, int edges, std::size_t room, WalkEdge walkEdge)
{
    std::size_t gathered = 0;
    for (int i = 0; i < edges; ++i) {
        work.grow(gathered + room, gathered);
        int found = 0;
        walkEdge(i, work.points() + gathered, work.params() + gathered, &found);
        const std::size_t added = std::min(room, static_cast<std::size_t>(std::max(found, 0)));
        for (std::size_t k = gathered; k < gathered + added; ++k) work.params()[k] += i;
        gathered += added;
    }
    return static_cast<int>(gathered);
}

std::size_t roomFor(const Points& walked, std::size_t resultsPerEdge)
{
    return static_cast<std::size_t>(walked.size() - 1) * resultsPerEdge;
}

bool areWalkable(const Points& a, const Points& b)
{
    return a.size() >= 2 && b.size() >= 2;
}

}  // namespace

void commonFunc::intersectSegmentPolyline(const Point2DF& start, const Point2DF& end,
                                          const Points& polyline, double lo, double hi,
                                          Point2DF* outPoints, double* outParams, int* count)
{
    if (!count) return;
    *count = 0;
    if (polyline.size() < 2 || !outPoints || !outParams) return;
    const Point2DF from = start;
    const Point2DF to = end;
    const EdgeIndex* index = indexOf(walkedEdges_, polyline, Values());
    const NearEdges edges(polyline, index, segmentQuery(index, from, to, {lo, hi}));
    int gathered = 0;
    for (int i = edges.next(0); i < edges.count(); i = edges.next(i + 1)) {
        const Point2DF& a = polyline[i];
        const Point2DF& b = polyline[i + 1];
        const Range range = straightRange(lengthSquared(b - a), detail::kEdgeStartReach,
                                          roundingReach(from, to, a, b), i + 1 == edges.count());
        int found = 0;
        intersectSegments(from, to - from, a, b - a, lo, hi, range.lo, range.hi,
                          outPoints + gathered, outParams + gathered, &found);
        gathered += std::clamp(found, 0, 2);
    }
    *count = gathered;
}

void commonFunc::intersectPolylines(const Points& a, const Points& b, Point2DF* outPoints,
                                    double* outParams, int* count)
{
    if (!count) return;
    *count = 0;
    if (!areWalkable(a, b) || !outPoints || !outParams) return;
    WorkLease work(polylineWork_);
    int found = gatherPolylines(a, b, work.pair);
    if (found > 1) removeDuplicatePointsRaw(work.pair.points(), work.pair.params(), &found);
    std::copy_n(work.pair.points(), found, outPoints);
    std::copy_n(work.pair.params(), found, outParams);
    *count = found;
}

void commonFunc::intersectPolylinesToLists(const Points& a, const Points& b, Points& outPoints,
                                           Values& outParams)
{
    if (!areWalkable(a, b) || outParams.size() < outPoints.size()) return;
    WorkLease work(polylineWork_);
    const int found = gatherPolylines(a, b, work.pair);
    for (int i = 0; i < found; ++i) {
        outPoints.append(work.pair.points()[i]);
        outParams.append(work.pair.params()[i]);
    }
    removeDuplicatePoints(outPoints, outParams);
}

int commonFunc::gatherPolylines(const Points& a, const Points& b, WorkPair& work)
{
    const IndexedWalk indexed(walkedEdges_, a, Values(), b, Values());
    const double largest = largestOf(b);
    const int edges = a.size() - 1;
    return gatherEdges(
        work, edges, roomFor(b, kResultsPerStraightPair),
        [&](int i, Point2DF* points, double* params, int* found) {
            const Range range =
                firstEdgeRange(a[i], a[i + 1], detail::kEdgeStartReach, largest, i + 1 == edges);
            intersectSegmentPolyline(a[i], a[i + 1], b, range.lo, range.hi, points, params, found);
        });
}

void commonFunc::intersectLineWithBulgePolyline(const Point2DF& s0, const Point2DF& s1,
                                                const Points& polyline, const Values& bulges,
                                                double lo, double hi, Point2DF* outPoints,
                                                double* outParams, int* count)
{
    if (!count) return;
    *count = 0;
    if (polyline.size() < 2 || !outPoints || !outParams) return;
    const Point2DF from = s0;
    const Point2DF to = s1;
    const EdgeIndex* index = indexOf(walkedEdges_, polyline, bulges);
    const NearEdges edges(polyline, index, segmentQuery(index, from, to, {lo, hi}));
    int gathered = 0;
    for (int i = edges.next(0); i < edges.count(); i = edges.next(i + 1)) {
        const Point2DF& a = polyline[i];
        const Point2DF& b = polyline[i + 1];
        const double bulge = bulgeAt(bulges, i);
        const bool isLast = i + 1 == edges.count();
        int found = 0;
        if (isArc(bulge)) {
            intersectSegmentArc(from, to, a, b, bulge, lo, hi, -kArcStartReach, arcExtra(isLast),
                                outPoints + gathered, outParams + gathered, &found);
        } else {
            const Range range = straightRange(lengthSquared(b - a), detail::kBulgeWalkStartReach,
                                              roundingReach(from, to, a, b), isLast);
            intersectSegments(from, to - from, a, b - a, lo, hi, range.lo, range.hi,
                              outPoints + gathered, outParams + gathered, &found);
        }
        gathered += std::clamp(found, 0, 2);
    }
    *count = gathered;
}

void commonFunc::intersectArcWithBulgePolyline(const Point2DF& a0, const Point2DF& a1, double bulge,
                                               const Points& polyline, const Values& bulges,
                                               double lo, double extra, Point2DF* outPoints,
                                               double* outParams, int* count)
{
    if (!count) return;
    *count = 0;
    if (polyline.size() < 2 || !outPoints || !outParams) return;
    const Point2DF from = a0;
    const Point2DF to = a1;
    const EdgeIndex* index = indexOf(walkedEdges_, polyline, bulges);
    const NearEdges edges(polyline, index, arcQuery(index, from, to, bulge, lo, extra));
    int gathered = 0;
    for (int i = edges.next(0); i < edges.count(); i = edges.next(i + 1)) {
        const Point2DF& a = polyline[i];
        const Point2DF& b = polyline[i + 1];
        const double edgeBulge = bulgeAt(bulges, i);
        const bool isLast = i + 1 == edges.count();
        int found = 0;
        if (isArc(edgeBulge)) {
            intersectArcArc(from, to, bulge, a, b, edgeBulge, lo, extra, -kArcStartReach,
                            arcExtra(isLast), outPoints + gathered, outParams + gathered, &found);
            gathered += std::clamp(found, 0, 4);
        } else {
            const Range range = straightRange(lengthSquared(b - a), detail::kEdgeStartReach,
                                              roundingReach(from, to, a, b), isLast);
            intersectArcSegment(from, to, bulge, a, b, lo, extra, range.lo, range.hi,
                                outPoints + gathered, outParams + gathered, &found);
            gathered += std::clamp(found, 0, 2);
        }
    }
    *count = gathered;
}

void commonFunc::intersectBulgePolylines(const Points& a, const Values& aBulges, const Points& b,
                                         const Values& bBulges, Point2DF* outPoints,
                                         double* outParams, int* count)
{
    if (!count) return;
    *count = 0;
    if (!areWalkable(a, b) || !outPoints || !outParams) return;
    const int edges = a.size() - 1;
    const double largest = largestOf(b);
    const auto walkEdge = [&](int i, Point2DF* points, double* params, int* found) {
        const double bulge = bulgeAt(aBulges, i);
        const bool isLast = i + 1 == edges;
        if (isArc(bulge)) {
            intersectArcWithBulgePolyline(a[i], a[i + 1], bulge, b, bBulges, -kArcStartReach,
                                          arcExtra(isLast), points, params, found);
        } else {
            const Range range =
                firstEdgeRange(a[i], a[i + 1], detail::kBulgeWalkStartReach, largest, isLast);
            intersectLineWithBulgePolyline(a[i], a[i + 1], b, bBulges, range.lo, range.hi, points,
                                           params, found);
        }
    };
    const auto handOut = [&](Point2DF* points, double* params, int found) {
        if (found > 1) removeDuplicatePointsRaw(points, params, &found);
        std::copy_n(points, found, outPoints);
        std::copy_n(params, found, outParams);
        *count = found;
    };
    if (edges == 1 && b.size() == 2) {  // the inner loop of segment division: no work array
        Point2DF points[kResultsPerPair];
        double params[kResultsPerPair];
        int found = 0;
        walkEdge(0, points, params, &found);
        handOut(points, params, std::clamp(found, 0, static_cast<int>(kResultsPerPair)));
        return;
    }
    WorkLease work(bulgePolylineWork_);
    const IndexedWalk indexed(walkedEdges_, a, aBulges, b, bBulges);
    const int found = gatherEdges(work.pair, edges, roomFor(b, kResultsPerPair), walkEdge);
    handOut(work.pair.points(), work.pair.params(), found);
}
