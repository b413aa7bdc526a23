#include "datageo/CAutoDiv.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "common/detail/arc_extremes.h"
#include "common/detail/prefetch.h"
#include "common/detail/segment_meeting.h"
#include "tavrel/NormalObject.h"

namespace calcora {

namespace {

/// Bulge from which a segment's box takes the extreme points of its circle in.
constexpr double kBoxArcBulge = 1e-7;

/// Bulge from which the pieces of a segment are arcs.
constexpr double kPieceArcBulge = 1e-6;

/// Share of a segment by which a cut differs from the one before it.
constexpr double kCutResolution = 1e-7;

/// Sine of the angle from which two lines with a common end are surely not one line.
constexpr double kApartSine = 1e-3;

/// Two single segments meet in at most two points, two arcs of one circle in four.
constexpr std::size_t kMaxCrossings = 4;

/// Up to this many cuts an insertion sort is quicker than a general one.
constexpr std::size_t kFewCuts = 24;

void* idOf(std::size_t index)
{
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(index + 1));
}

std::size_t indexOf(void* id)
{
    return static_cast<std::size_t>(reinterpret_cast<std::uintptr_t>(id)) - 1;
}

bool isSameNode(const tav::Point2DF& p, const tav::Point2DF& q)
{
    return std::fabs(p.x() - q.x()) < kNodeTolerance && std::fabs(p.y() - q.y()) < kNodeTolerance;
}

/// Ascending by position, equal positions in their order.
template <class Cuts>
void sortByPosition(Cuts& cuts)
{
    const auto before = [](const auto& a, const auto& b) { return a.position < b.position; };
    if (cuts.size() > kFewCuts) {
        std::stable_sort(cuts.begin(), cuts.end(), before);
        return;
    }
    for (std::size_t i = 1; i < cuts.size(); ++i)
        for (std::size_t j = i; j > 0 && before(cuts[j], cuts[j - 1]); --j)
            std::swap(cuts[j], cuts[j - 1]);
}

}  // namespace

CAutoDiv::CAutoDiv()
    : geometry_(tav::kObjectCapacity), points_(2), otherPoints_(2), bulges_(2), otherBulges_(2)
{
    geometry_.keepCirclesIn(&circles_);
}

CAutoDiv::~CAutoDiv() = default;

RTreeRect CAutoDiv::boxOf(const SegmentKey& segment)
{
    const auto [a, b, bulge] = segment;
    RTreeRect box{std::min(a.x(), b.x()), std::min(a.y(), b.y()), std::max(a.x(), b.x()),
                  std::max(a.y(), b.y())};
    if (!(std::fabs(bulge) >= kBoxArcBulge)) return box;
    // An extreme at an end of the arc can lie a rounding step inside it, so boxes only ever widen.
    detail::forEachPlainArcExtreme(
        a, b, bulge,
        [&](detail::ArcExtreme, const tav::Point2DF& p, const detail::PlainArcPlaces&) {
            box.minX = std::min(box.minX, p.x());
            box.minY = std::min(box.minY, p.y());
            box.maxX = std::max(box.maxX, p.x());
            box.maxY = std::max(box.maxY, p.y());
        });
    return box;
}

void CAutoDiv::addSegment(const SegmentKey& segment, int cutFlag, int /*secondFlag*/)
{
    RTreeRect box = boxOf(segment);
    segments_.push_back({segment, cutFlag != 0});
    tree_.insertRect(&box, idOf(segments_.size() - 1), 0);
}

void CAutoDiv::addSegments(SegmentSet set)
{
    segments_.reserve(set.segments.size());
    CancelCheck check(cancelFlag_);
    for (const SegmentKey& segment : set.segments) {
        check();
        addSegment(segment, 1, 0);
    }
    given_ = std::move(set);
}

void CAutoDiv::divide(bool directed)
{
    try {
        cutAndMerge(directed);
    } catch (const Cancelled&) {
    }
}

void CAutoDiv::cutAndMerge(bool directed)
{
    const CancelCheck check(cancelFlag_);
    detail::BigVector<PieceRange> rangeOf(segments_.size());
    detail::BigVector<SegmentKey> pieces;
    cutAll(rangeOf, pieces);
    const bool allWhole =
        !directed && given_.segments.size() == segments_.size() &&
        std::all_of(rangeOf.begin(), rangeOf.end(), [](const PieceRange& r) { return r.isWhole; });
    // A set that nothing has cut is its own set of pieces.
    if (allWhole) {
        pieces_ = std::move(given_);
    } else {
        const detail::BigVector<int> arrivals = numberPieces(rangeOf, pieces);
        pieces_ = mergeEqualSegments(pieces, directed, check, arrivals);
    }
    given_ = {};
    tree_.removeAll();
    segments_.clear();
}

/// Adds the segments that nothing has cut to the pieces, and numbers all in the order of the segments
/// that they come from.
detail::BigVector<int> CAutoDiv::numberPieces(const detail::BigVector<PieceRange>& rangeOf,
                                              detail::BigVector<SegmentKey>& pieces)
{
    CancelCheck check(cancelFlag_);
    detail::BigVector<int> arrivals(pieces.size());
    int arrival = 0;
    for (std::size_t i = 0; i < segments_.size(); ++i) {
        check();
        const PieceRange& range = rangeOf[i];
        if (range.isWhole) {
            detail::makeRoomFor(pieces, 1, check);
            pieces.push_back(segments_[i].shape);
            arrivals.push_back(arrival++);
        }
        for (std::size_t piece = range.begin; piece < range.end; ++piece)
            arrivals[piece] = arrival++;
    }
    return arrivals;
}

/// Cuts every segment that is to be cut, in the order of the tree's leaves: neighbours there are
/// neighbours in the drawing, and share a search.
void CAutoDiv::cutAll(detail::BigVector<PieceRange>& rangeOf, detail::BigVector<SegmentKey>& pieces)
{
    CancelCheck check(cancelFlag_);
    tree_.forEachWithOverlaps([&](void* id, std::span<void* const> hits) {
        const std::size_t i = indexOf(id);
        check();
        if (!segments_[i].isCut) return CRTree::Walk::On;
        collectCuts(i, hits);
        detail::makeRoomFor(pieces, cuts_.size(), check);
        rangeOf[i].begin = pieces.size();
        rangeOf[i].isWhole = appendPieces(segments_[i].shape, pieces);
        if (rangeOf[i].isWhole) pieces.pop_back();
        rangeOf[i].end = pieces.size();
        return CRTree::Walk::On;
    });
}

/// Gathers the sorted cuts of one segment.
void CAutoDiv::collectCuts(std::size_t index, std::span<void* const> hits)
{
    const SegmentKey& segment = segments_[index].shape;
    cuts_.clear();
    cuts_.push_back({segment.a, 0.0});
    points_[0] = segment.a;
    points_[1] = segment.b;
    bulges_[0] = segment.bulge;
    for (void* const hit : hits) detail::prefetch(&segments_[indexOf(hit)]);
    for (void* const hit : hits) {
        const std::size_t other = indexOf(hit);
        if (other == index) continue;
        if (isRaised(cancelFlag_)) throw Cancelled();
        appendCrossings(segment, segments_[other].shape);
    }
    sortByPosition(cuts_);
    cuts_.push_back({segment.b, 1.0});
}

/// Whether two straight segments share an end exactly and run apart from there: a common vertex, which
/// cuts neither.
bool CAutoDiv::meetOnlyAtEnd(const SegmentKey& segment, const SegmentKey& other) const
{
    if (segment.bulge != 0 || other.bulge != 0) return false;
    // Without branches: which end is shared is not foreseen.
    const auto isSame = [](const tav::Point2DF& p, const tav::Point2DF& q) {
        return static_cast<int>(p.x() == q.x()) & static_cast<int>(p.y() == q.y());
    };
    if ((isSame(segment.a, other.a) | isSame(segment.a, other.b) | isSame(segment.b, other.a) |
         isSame(segment.b, other.b)) == 0)
        return false;
    const tav::Point2DF u = segment.b - segment.a;
    const tav::Point2DF v = other.b - other.a;
    const double turn = detail::cross(u, v);
    return turn * turn >
           kApartSine * kApartSine * detail::lengthSquared(u) * detail::lengthSquared(v);
}

void CAutoDiv::appendCrossings(const SegmentKey& segment, const SegmentKey& other)
{
    if (meetOnlyAtEnd(segment, other)) return;
    if (std::fabs(segment.bulge) < detail::kStraightBulgeForMeeting &&
        std::fabs(other.bulge) < detail::kStraightBulgeForMeeting) {
        appendStraightCrossings(segment, other);
        return;
    }
    otherPoints_[0] = other.a;
    otherPoints_[1] = other.b;
    otherBulges_[0] = other.bulge;
    std::array<tav::Point2DF, kMaxCrossings> crossings;
    std::array<double, kMaxCrossings> positions{};
    int count = 0;
    geometry_.intersectBulgePolylines(points_, bulges_, otherPoints_, otherBulges_,
                                      crossings.data(), positions.data(), &count);
    for (std::size_t k = 0; k < static_cast<std::size_t>(count); ++k)
        appendCut(segment, {crossings[k], positions[k]});
}

/// What intersectBulgePolylines finds for two straight segments, without lists.
void CAutoDiv::appendStraightCrossings(const SegmentKey& segment, const SegmentKey& other)
{
    const tav::Point2DF along = segment.b - segment.a;
    const tav::Point2DF otherAlong = other.b - other.a;
    const auto rangeOf = [&](double lengthSquared) {
        const double rounding = detail::roundingReach(segment.a, segment.b, other.a, other.b);
        return detail::straightRange(lengthSquared, detail::kBulgeWalkStartReach, rounding, true);
    };
    // What is surely in needs no range.
    const auto holds = [&](double reach, double lengthSquared) {
        return (0 <= reach && reach <= lengthSquared) || rangeOf(lengthSquared).holds(reach);
    };
    double place = 0;
    const detail::SegmentMeeting meeting =
        detail::crossSegments(segment.a, along, other.a, otherAlong, holds, holds, place);
    if (meeting == detail::SegmentMeeting::Crossing)
        appendCut(segment, {segment.a + place * along, place});
    if (meeting != detail::SegmentMeeting::Parallel) return;

    const detail::EdgeRange range = rangeOf(detail::lengthSquared(along));
    const detail::EdgeRange otherRange = rangeOf(detail::lengthSquared(otherAlong));
    std::array<tav::Point2DF, 2> points;
    std::array<double, 2> positions{};
    int count = 0;
    geometry_.intersectSegments(segment.a, along, other.a, otherAlong, range.lo, range.hi,
                                otherRange.lo, otherRange.hi, points.data(), positions.data(),
                                &count);
    if (count > 1) geometry_.removeDuplicatePointsRaw(points.data(), positions.data(), &count);
    for (std::size_t k = 0; k < static_cast<std::size_t>(count); ++k)
        appendCut(segment, {points[k], positions[k]});
}

/// Appends a cut. A crossing at an end is that end up to rounding: vertices come back bit for bit.
void CAutoDiv::appendCut(const SegmentKey& segment, Cut cut)
{
    if (std::fabs(cut.position) < kCutResolution && isSameNode(cut.point, segment.a))
        cut.point = segment.a;
    else if (std::fabs(cut.position - 1) < kCutResolution && isSameNode(cut.point, segment.b))
        cut.point = segment.b;
    cuts_.push_back(cut);
}

/// Appends the pieces between the cuts; true when the only one is the segment itself.
bool CAutoDiv::appendPieces(const SegmentKey& segment, detail::BigVector<SegmentKey>& pieces) const
{
    const bool isArc = std::fabs(segment.bulge) >= kPieceArcBulge;
    const double quarterSweep = isArc ? std::atan(segment.bulge) : 0.0;
    const std::size_t before = pieces.size();
    const Cut* last = &cuts_.front();
    for (const Cut& cut : cuts_) {
        const double share = cut.position - last->position;
        if (!(std::fabs(share) >= kCutResolution)) continue;
        double bulge = 0;
        if (isArc) bulge = share == 1 ? segment.bulge : std::tan(quarterSweep * share);
        pieces.push_back({last->point, cut.point, bulge});
        last = &cut;
    }
    return pieces.size() == before + 1 && pieces.back().a == segment.a &&
           pieces.back().b == segment.b && pieces.back().bulge == segment.bulge;
}

}  // namespace calcora
