// Boxes over the edges of a polyline, so that a walk along it visits only the edges that come near.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "calcora/IcommonFunc.h"
#include "common/detail/bulges.h"
#include "common/detail/meeting_limits.h"
#include "common/detail/vec.h"

namespace calcora::detail {

/// An axis-parallel box; empty until something is added.
struct Box {
    double minX = std::numeric_limits<double>::infinity();
    double minY = std::numeric_limits<double>::infinity();
    double maxX = -std::numeric_limits<double>::infinity();
    double maxY = -std::numeric_limits<double>::infinity();

    void add(const Point2DF& p)
    {
        minX = std::min(minX, p.x());
        minY = std::min(minY, p.y());
        maxX = std::max(maxX, p.x());
        maxY = std::max(maxY, p.y());
    }
    void add(const Box& other)
    {
        minX = std::min(minX, other.minX);
        minY = std::min(minY, other.minY);
        maxX = std::max(maxX, other.maxX);
        maxY = std::max(maxY, other.maxY);
    }
    void grow(double margin)
    {
        minX -= margin;
        minY -= margin;
        maxX += margin;
        maxY += margin;
    }
    bool meets(const Box& other) const
    {
        return minX <= other.maxX && other.minX <= maxX && minY <= other.maxY && other.minY <= maxY;
    }
};

/// Margins that keep a box test from losing what the ranges and tolerances of the intersections let
/// in. Two boxes add their margins.
///
/// Segments within an angle of 1e-6 of one line meet although they lie up to 1e-6 of the distance
/// of their starts, which is less than both lengths together, and of a length apart.
inline constexpr double kBoxMarginPerLength = 4e-6;
/// Drawing units: reach of arcs past their ends and of touching circles.
inline constexpr double kBoxMargin = 1e-5;
/// Drawing units: arcs of circles that count as the same, up to 1e-3 apart.
inline constexpr double kArcBoxMargin = 2e-3;
/// Per drawing unit of the largest coordinate: rounding.
inline constexpr double kBoxRounding = 4e-14;

/// The box of one edge, with margins. An arc of up to a half circle lies within its sagitta of the
/// chord, any other within its diameter of either end. Edges that are not finite, which meet
/// nothing, have an empty box; those too large to measure have the plane.
/// `reach` is how far a straight edge reaches back before its start and on after its end.
inline Box edgeBox(const Point2DF& a, const Point2DF& b, double bulge, double reach)
{
    Box box;
    if (!isFinite(a) || !isFinite(b) || !std::isfinite(bulge)) return box;
    const double chord = length(b - a);
    const double size = std::fabs(bulge);
    double margin = reach + kBoxMargin + kBoxMarginPerLength * chord;
    if (size >= kStraightBulgeForMeeting)
        margin += kArcBoxMargin + chord / 2 * (size <= 1 ? size : size + 1 / size);
    margin += kBoxRounding * std::max(largestCoordinate(a), largestCoordinate(b));
    box.add(a);
    box.add(b);
    box.grow(std::isfinite(margin) ? margin : std::numeric_limits<double>::infinity());
    return box;
}

/// A static hierarchy of boxes over the edges of one polyline. A box of level k covers 4^k
/// consecutive edges, so candidates come in the order of the walk.
class EdgeIndex {
public:
    using Points = tav::Vector<Point2DF>;
    using Values = tav::Vector<double>;

    /// What is asked of the index: the longest straight edge of the first figure (0 without one),
    /// and whether it has arcs.
    struct FirstFigure {
        double longestSquared = 0.0;
        bool hasArcs = false;
    };

    EdgeIndex(const Points& polyline, const Values& bulges, const FirstFigure& first)
        : polyline_(polyline), bulges_(bulges), first_(first)
    {
        const int edges = polyline.size() - 1;
        std::vector<Box>& leaves = levels_.emplace_back();
        leaves.reserve(static_cast<std::size_t>(edges));
        for (int i = 0; i < edges; ++i) {
            const Point2DF& a = polyline[i];
            const Point2DF& b = polyline[i + 1];
            const double bulge = bulgeAt(bulges, i);
            const double chordSquared = lengthSquared(b - a);
            // Edges too short for the first figure's straight edges meet nothing in them.
            const bool reaches =
                chordSquared > 0 &&
                (first.hasArcs || chordSquared * first.longestSquared >= kShortestMeetingProduct);
            const double reach = reaches ? kBulgeWalkStartReach / std::sqrt(chordSquared) : 0.0;
            hasArcs_ = hasArcs_ || !(std::fabs(bulge) < kStraightBulgeForMeeting);
            leaves.push_back(edgeBox(a, b, bulge, reach));
        }
        while (levels_.back().size() > kFanOut) levels_.push_back(coarser(levels_.back()));
    }

    /// Whether this index was made for that polyline. It holds the lists, so that equal addresses
    /// mean equal contents.
    bool isOf(const Points& polyline, const Values& bulges) const
    {
        return polyline.constData() == polyline_.constData() &&
               bulges.constData() == bulges_.constData();
    }
    const FirstFigure& first() const { return first_; }
    bool hasArcs() const { return hasArcs_; }

    /// The first edge from `from` on whose box meets `query`, or the number of edges.
    int next(int from, const Box& query) const
    {
        std::size_t level = 0;
        auto at = static_cast<std::size_t>(from);
        while (true) {
            // Climb as long as a whole parent box lies ahead.
            while (at % kFanOut == 0 && level + 1 < levels_.size()) {
                at /= kFanOut;
                ++level;
            }
            if (at >= levels_[level].size()) return static_cast<int>(levels_[0].size());
            while (levels_[level][at].meets(query)) {
                if (level == 0) return static_cast<int>(at);
                at *= kFanOut;
                --level;
            }
            ++at;
        }
    }

private:
    static constexpr std::size_t kFanOut = 4;

    static std::vector<Box> coarser(const std::vector<Box>& fine)
    {
        std::vector<Box> coarse((fine.size() + kFanOut - 1) / kFanOut);
        for (std::size_t i = 0; i < fine.size(); ++i) coarse[i / kFanOut].add(fine[i]);
        return coarse;
    }

    Points polyline_;
    Values bulges_;
    FirstFigure first_;
    bool hasArcs_ = false;
    std::vector<std::vector<Box>> levels_;
};

}  // namespace calcora::detail
