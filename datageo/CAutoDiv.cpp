#include "datageo/CAutoDiv.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "common/detail/arc_extremes.h"
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
}

CAutoDiv::~CAutoDiv() = default;

RTreeRect CAutoDiv::boxOf(const SegmentKey& segment)
{
    const auto [a, b, bulge] = segment;
    RTreeRect box{std::min(a.x(), b.x()), std::min(a.y(), b.y()), std::max(a.x(), b.x()),
                  std::max(a.y(), b.y())};
    if (!(std::fabs(bulge) >= kBoxArcBulge)) return box;
    detail::Circle circle;
    geometry_.bulgeArcCenter(a, b, bulge, circle.centre, &circle.radius);
    const auto fractionOf = [&, start = a, end = b, clockwise = bulge < 0](const tav::Point2DF& p) {
        return geometry_.arcSweepFraction(p, circle.centre, start, end, clockwise);
    };
    // An extreme at an end of the arc can lie a rounding step inside it, so boxes only ever widen.
    detail::forEachArcExtreme(circle, fractionOf,
                              [&](detail::ArcExtreme, const tav::Point2DF& p, double) {
                                  box.minX = std::min(box.minX, p.x());
                                  box.minY = std::min(box.minY, p.y());
                                  box.maxX = std::max(box.maxX, p.x());
                                  box.maxY = std::max(box.maxY, p.y());
                              });
    return box;
}

void CAutoDiv::addSegment(const SegmentKey& segment, int cutFlag, int /*secondFlag*/)
{
    StoredSegment stored{segment, boxOf(segment), cutFlag != 0};
    segments_.push_back(stored);
    tree_.insertRect(&stored.box, idOf(segments_.size() - 1), 0);
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
    CancelCheck check(cancelFlag_);
    std::vector<PieceRange> rangeOf(segments_.size());
    std::vector<SegmentKey> cutPieces;
    cutAll(rangeOf, cutPieces);
    const bool allWhole =
        !directed && given_.segments.size() == segments_.size() &&
        std::all_of(rangeOf.begin(), rangeOf.end(), [](const PieceRange& r) { return r.isWhole; });
    // A set that nothing has cut is its own set of pieces.
    if (allWhole) {
        pieces_ = std::move(given_);
    } else {
        std::vector<SegmentKey> pieces;
        pieces.reserve(segments_.size() + cutPieces.size());
        for (std::size_t i = 0; i < segments_.size(); ++i) {
            check();
            if (rangeOf[i].isWhole) pieces.push_back(segments_[i].shape);
            pieces.insert(pieces.end(),
                          cutPieces.begin() + static_cast<std::ptrdiff_t>(rangeOf[i].begin),
                          cutPieces.begin() + static_cast<std::ptrdiff_t>(rangeOf[i].end));
        }
        pieces_ = mergeEqualSegments(pieces, directed, check);
    }
    given_ = {};
    tree_.removeAll();
    segments_.clear();
}

/// Cuts every segment that is to be cut, in the order of the tree's leaves: neighbours there are
/// neighbours in the drawing, and share a search.
void CAutoDiv::cutAll(std::vector<PieceRange>& rangeOf, std::vector<SegmentKey>& pieces)
{
    CancelCheck check(cancelFlag_);
    tree_.forEachWithOverlaps([&](void* id, std::span<void* const> hits) {
        const std::size_t i = indexOf(id);
        check();
        if (!segments_[i].isCut) return CRTree::Walk::On;
        collectCuts(i, hits);
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
    otherPoints_[0] = other.a;
    otherPoints_[1] = other.b;
    otherBulges_[0] = other.bulge;
    std::array<tav::Point2DF, kMaxCrossings> crossings;
    std::array<double, kMaxCrossings> positions{};
    int count = 0;
    geometry_.intersectBulgePolylines(points_, bulges_, otherPoints_, otherBulges_,
                                      crossings.data(), positions.data(), &count);
    for (std::size_t k = 0; k < static_cast<std::size_t>(count); ++k) {
        Cut cut{crossings[k], positions[k]};
        // A crossing at an end is that end up to rounding: vertices come back bit for bit.
        if (std::fabs(cut.position) < kCutResolution && isSameNode(cut.point, segment.a))
            cut.point = segment.a;
        else if (std::fabs(cut.position - 1) < kCutResolution && isSameNode(cut.point, segment.b))
            cut.point = segment.b;
        cuts_.push_back(cut);
    }
}

/// Appends the pieces between the cuts; true when the only one is the segment itself.
bool CAutoDiv::appendPieces(const SegmentKey& segment, std::vector<SegmentKey>& pieces) const
{
    const bool isArc = std::fabs(segment.bulge) >= kPieceArcBulge;
    const std::size_t before = pieces.size();
    const Cut* last = &cuts_.front();
    for (const Cut& cut : cuts_) {
        const double share = cut.position - last->position;
        if (!(std::fabs(share) >= kCutResolution)) continue;
        double bulge = 0;
        if (isArc) bulge = share == 1 ? segment.bulge : std::tan(std::atan(segment.bulge) * share);
        pieces.push_back({last->point, cut.point, bulge});
        last = &cut;
    }
    return pieces.size() == before + 1 && pieces.back().a == segment.a &&
           pieces.back().b == segment.b && pieces.back().bulge == segment.bulge;
}

}  // namespace calcora
