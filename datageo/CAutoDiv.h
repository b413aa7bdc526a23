#pragma once

#include <span>
#include <utility>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/circle_memo.h"
#include "datageo/segments.h"
#include "rtree/CRTree.h"

namespace calcora {

/// Cuts segments and arcs at their mutual crossings, touchings and overlaps, so that the pieces
/// meet only at their ends. One object lives for one extraction.
///
/// What counts as a crossing is decided by IcommonFunc::intersectBulgePolylines with its ranges, on
/// pairs whose boxes overlap; boxes are compared without a tolerance. So a wall that ends a hair
/// short of an axis-parallel line is not tested against it, while against a slanted line gaps up to
/// about 2e-6 are cut; two segments whose lengths multiply to less than 1e-3 never cut each other;
/// and on a segment of 2000 two crossings 5e-5 apart make one cut, since a cut is told from the one
/// before by 1e-7 of the segment: split very long lines.
class CAutoDiv {
public:
    CAutoDiv();
    virtual ~CAutoDiv();
    CAutoDiv(const CAutoDiv&) = delete;
    CAutoDiv& operator=(const CAutoDiv&) = delete;

    /// The caller's stop request, read before each intersection test and on the way through all
    /// longer work. May be null.
    void setCancelFlag(bool* flag) { cancelFlag_ = flag; }

    /// Stores the segments of a set, all to be cut. Throws Cancelled when the flag is seen.
    void addSegments(SegmentSet set);

    /// Stores one segment. With a cut flag of 0 it gives no pieces but still cuts others; the second
    /// flag has no effect. Coordinates and bulge must be finite.
    void addSegment(const SegmentKey& segment, int cutFlag, int secondFlag);

    /// Cuts all stored segments and merges equal pieces (see mergeEqualSegments), then forgets the
    /// segments. With the cancel flag raised everything stays as it was and no pieces result.
    void divide(bool directed);

    /// The pieces of the last division.
    const SegmentSet& pieces() const { return pieces_; }
    SegmentSet takePieces() { return std::move(pieces_); }

private:
    struct StoredSegment {
        SegmentKey shape;
        bool isCut;
    };

    /// A place on the segment being cut: 0 at its first end, 1 at its second.
    struct Cut {
        tav::Point2DF point;
        double position;
    };

    static RTreeRect boxOf(const SegmentKey& segment);
    /// The pieces of one segment in a list of pieces; none of its own when nothing has cut it.
    struct PieceRange {
        std::size_t begin = 0;
        std::size_t end = 0;
        bool isWhole = false;
    };

    void cutAndMerge(bool directed);
    detail::BigVector<int> numberPieces(const detail::BigVector<PieceRange>& rangeOf,
                                        detail::BigVector<SegmentKey>& pieces);
    void cutAll(detail::BigVector<PieceRange>& rangeOf, detail::BigVector<SegmentKey>& pieces);
    void collectCuts(std::size_t index, std::span<void* const> hits);
    void appendCrossings(const SegmentKey& segment, const SegmentKey& other);
    void appendStraightCrossings(const SegmentKey& segment, const SegmentKey& other);
    void appendCut(const SegmentKey& segment, Cut cut);
    bool meetOnlyAtEnd(const SegmentKey& segment, const SegmentKey& other) const;
    bool appendPieces(const SegmentKey& segment, detail::BigVector<SegmentKey>& pieces) const;

    bool* cancelFlag_ = nullptr;
    detail::BigVector<StoredSegment> segments_;
    SegmentSet given_;  ///< the set that the stored segments are, if they came as one
    SegmentSet pieces_;
    CRTree tree_;

    // Work objects of one division.
    commonFunc geometry_;
    detail::CircleMemo circles_;
    std::vector<Cut> cuts_;
    tav::Vector<tav::Point2DF> points_, otherPoints_;
    tav::Vector<double> bulges_, otherBulges_;
};

}  // namespace calcora
