// Where a polyline runs with respect to a ring.
//
// The polyline is cut at its vertices and where it meets the ring, and each piece is judged by its
// middle. Edges that keep clear of the ring have the place of the clear edge before them, so that a
// long polyline costs no point location for each of its edges.

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/bulges.h"
#include "common/detail/edge_index.h"

using namespace calcora;
using detail::bulgeAt;
using tav::Point2DF;

namespace {

using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

enum Location : int { kInside = -1, kOnBoundary = 0, kOutside = 1, kTooFewVertices = -2 };
enum Relation : int { kPartly = 2, kNoRelation = -2 };

/// What the place of a segment is in a ring that is too small.
constexpr int kRingTooSmall = 2;
/// Vertices that a straight-edged ring must have here.
constexpr int kFewestRingPoints = 4;

/// Drawing units: a shorter piece of the polyline tells nothing, its middle is next to the ring.
constexpr double kShortestJudged = 1e-3;
/// Drawing units: an edge that is farther from the ring has no point on the boundary.
constexpr double kClearOfRing = 2e-4;

/// Results of two edges that meet.
constexpr int kMostMeetings = 4;

/// A ring as it is met: closed by its first vertex.
struct ClosedRing {
    Points points;
    const Values& bulges;

    ClosedRing(const Points& ring, const Values& ringBulges) : points(ring), bulges(ringBulges)
    {
        const Points& given = ring;
        if (!(given.first() == given.last())) points.append(given.first());
    }
    int edges() const { return points.size() - 1; }

    /// Whether boxes hold the ring; an edge that is not finite is in none of them.
    bool isFinite() const
    {
        const Points& read = points;
        return std::all_of(read.begin(), read.end(), detail::isFinite) &&
               std::all_of(bulges.begin(), bulges.end(), [](double b) { return std::isfinite(b); });
    }
};

/// A part of one edge of the polyline.
struct Piece {
    int edge = 0;
    double from = 0.0;  ///< fractions of the edge
    double to = 0.0;
    double length = -1.0;
};

/// Cuts a polyline at a ring and gathers where its pieces lie.
///
/// `Meet` intersects two edges given as polylines, `Locate` tells the place of a piece.
template <class Meet, class Locate>
class PartsInRing {
public:
    PartsInRing(IcommonFunc& geometry, const Points& polyline, const Values& bulges,
                const ClosedRing& ring, Meet meet, Locate locate)
        : geometry_(geometry),
          polyline_(polyline),
          bulges_(bulges),
          ring_(ring),
          ringIsFinite_(ring.isFinite()),
          index_(ring.points, ring.bulges, {0.0, true}),
          meet_(meet),
          locate_(locate)
    {
    }

    int relation()
    {
        bool isKnown = false;  // the place of a clear run of edges that is under way
        for (int i = 0; i + 1 < polyline_.size() && !isSettled(); ++i) {
            if (!isMeasured(i)) {
                isKnown = false;
                continue;
            }
            detail::Box reach = edgeBox(i);
            reach.grow(kClearOfRing);
            const int nearest = index_.next(0, reach);
            const bool isClear = ringIsFinite_ && nearest >= ring_.edges();
            if (isClear && isKnown) continue;
            isKnown = judgeEdge(i, reach, nearest) && isClear;
        }
        if (!isJudged_ && longest_.length >= 0) judge(longest_);
        if (isSettled()) return kPartly;
        return hasInside_ ? kInside : hasOutside_ ? kOutside : kOnBoundary;
    }

private:
    bool isSettled() const { return hasInside_ && hasOutside_; }

    detail::Box edgeBox(int i) const
    {
        return detail::edgeBox(polyline_[i], polyline_[i + 1], bulgeAt(bulges_, i), 0.0);
    }
    bool isMeasured(int i) const
    {
        return detail::isFinite(polyline_[i]) && detail::isFinite(polyline_[i + 1]) &&
               std::isfinite(bulgeAt(bulges_, i));
    }

    /// Whether a piece of edge i was long enough to be judged.
    bool judgeEdge(int i, const detail::Box& reach, int nearest)
    {
        findCuts(i, reach, nearest);
        const double length =
            geometry_.bulgeSegmentLength(polyline_[i], polyline_[i + 1], bulgeAt(bulges_, i));
        bool wasJudged = false;
        for (std::size_t k = 0; k + 1 < cuts_.size(); ++k) {
            const Piece piece{i, cuts_[k], cuts_[k + 1], (cuts_[k + 1] - cuts_[k]) * length};
            if (piece.length > longest_.length) longest_ = piece;
            if (!(piece.length >= kShortestJudged)) continue;
            judge(piece);
            wasJudged = true;
        }
        return wasJudged;
    }

    /// The fractions of edge i at which it is cut, its ends included.
    void findCuts(int i, const detail::Box& reach, int nearest)
    {
        cuts_.assign({0.0, 1.0});
        const Points edge{polyline_[i], polyline_[i + 1]};
        const Values bulge{bulgeAt(bulges_, i)};
        for (int k = nearest; k < ring_.edges(); k = index_.next(k + 1, reach)) {
            std::array<Point2DF, kMostMeetings> points;
            std::array<double, kMostMeetings> params{};
            int count = 0;
            meet_(edge, bulge, Points{ring_.points[k], ring_.points[k + 1]},
                  Values{bulgeAt(ring_.bulges, k)}, points.data(), params.data(), &count);
            for (int m = 0; m < std::min(count, kMostMeetings); ++m) {
                const double at = params[static_cast<std::size_t>(m)];
                if (0 < at && at < 1) cuts_.push_back(at);
            }
        }
        std::sort(cuts_.begin(), cuts_.end());
    }

    void judge(const Piece& piece)
    {
        const int place = locate_(piece);
        isJudged_ = true;
        hasInside_ = hasInside_ || place == kInside;
        hasOutside_ = hasOutside_ || place == kOutside;
    }

    IcommonFunc& geometry_;
    const Points& polyline_;
    const Values& bulges_;
    const ClosedRing& ring_;
    bool ringIsFinite_;
    detail::EdgeIndex index_;
    Meet meet_;
    Locate locate_;

    std::vector<double> cuts_;
    Piece longest_;  ///< decides alone when no piece is long enough
    bool isJudged_ = false;
    bool hasInside_ = false;
    bool hasOutside_ = false;
};

}  // namespace

int commonFunc::segmentMidpointInRing(const Points& ring, const Point2DF& p1, const Point2DF& p2)
{
    if (ring.size() < kFewestRingPoints) return kRingTooSmall;
    return pointInPolygon(ring, detail::midpoint(p1, p2));
}

int commonFunc::polylineRingRelation(const Points& polyline, const Values& polylineBulges,
                                     const Points& ring, const Values& ringBulges)
{
    if (polyline.size() < 2 || ring.size() < 2) return kNoRelation;
    if (pointInBulgePolygon(ring, ringBulges, polyline.first()) == kTooFewVertices)
        return kNoRelation;
    const ClosedRing closed(ring, ringBulges);
    const auto meet = [this](const Points& a, const Values& aBulges, const Points& b,
                             const Values& bBulges, Point2DF* points, double* params, int* count) {
        intersectBulgePolylines(a, aBulges, b, bBulges, points, params, count);
    };
    const auto locate = [&](const Piece& piece) {
        const int i = piece.edge;
        Point2DF middle;
        pointOnBulgeSegmentAtRatio(polyline[i], polyline[i + 1], bulgeAt(polylineBulges, i),
                                   (piece.from + piece.to) / 2, middle);
        return pointInBulgePolygon(ring, ringBulges, middle);
    };
    return PartsInRing(*this, polyline, polylineBulges, closed, meet, locate).relation();
}

int commonFunc::polylinePartsInRing(const Points& ring, const Points& polyline)
{
    if (polyline.size() < 2 || ring.size() < kFewestRingPoints) return kNoRelation;
    const Values straight;
    const ClosedRing closed(ring, straight);
    const auto meet = [this](const Points& a, const Values&, const Points& b, const Values&,
                             Point2DF* points, double* params,
                             int* count) { intersectPolylines(a, b, points, params, count); };
    const auto locate = [&](const Piece& piece) {
        const Point2DF& start = polyline[piece.edge];
        const Point2DF along = polyline[piece.edge + 1] - start;
        return segmentMidpointInRing(ring, start + piece.from * along, start + piece.to * along);
    };
    return PartsInRing(*this, polyline, straight, closed, meet, locate).relation();
}
