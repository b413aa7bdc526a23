// The half-edges that leave a node, in angular order.
#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "common/detail/primitives.h"
#include "datageo/autob/CAutoLoop.h"
#include "datageo/autob/blocks.h"

namespace AutoB {

namespace {

/// Radians: half-edges whose angles differ by less leave in one direction; which comes first is
/// then decided by how they run along their polylines.
constexpr double kAngleTie = 1e-7;

/// Up to this many half-edges a node's list is searched and built by plain scans.
constexpr std::size_t kFewEdges = 32;

/// Figures of directions that differ by more come from angles that differ by more than kAngleTie.
constexpr double kSurelyApart = 4e-7;

/// Bulge from which a direction bends away from its chord.
constexpr double kDirectionArcBulge = 1e-10;

/// Share of the first segment at which a half-edge's direction is taken, so that arcs that leave
/// along one tangent are told apart.
constexpr double kDirectionShare = 0.01;

/// Direction from p0 towards the point a hundredth along the segment or arc to p1, as atan2 gives
/// it.
///
/// The chord from p0 to the point at share t of an arc of sweep s is the chord to p1 turned by
/// -(1 - t) s / 2, which loses nothing for flat arcs far from the origin.
double leavingAngle(const tav::Point2DF& p0, const tav::Point2DF& p1, double bulge)
{
    using calcora::detail::kPi;
    using calcora::detail::kTwoPi;
    const double chord = std::atan2(p1.y() - p0.y(), p1.x() - p0.x());
    if (!(std::fabs(bulge) >= kDirectionArcBulge)) return chord;
    const double angle = chord - (1 - kDirectionShare) * 2 * std::atan(bulge);
    if (angle > kPi) return angle - kTwoPi;
    return angle < -kPi ? angle + kTwoPi : angle;
}

/// The arc tangent but for 2e-8 (Abramowitz and Stegun 4.4.49).
double roughArcTangent(double value)
{
    const bool isSteep = std::fabs(value) > 1;
    const double x = isSteep ? 1 / value : value;
    const double q = x * x;
    const double series =
        1 +
        q * (-0.3333314528 +
             q * (0.1999355085 +
                  q * (-0.1420889944 +
                       q * (0.1065626393 +
                            q * (-0.0752896400 +
                                 q * (0.0429096138 + q * (-0.0161657367 + q * 0.0028662257)))))));
    return isSteep ? std::copysign(calcora::detail::kPi / 2, x) - x * series : x * series;
}

/// A figure in [-2, 2] that grows with atan2(dy, dx), by half to the whole of it; not a number where
/// that cannot be told.
double turnFigure(double dx, double dy)
{
    const double size = std::fabs(dx) + std::fabs(dy);
    if (!(size <= std::numeric_limits<double>::max())) return std::nan("");
    const double rise = dy / size;
    if (dx >= 0) return rise;
    return std::signbit(dy) ? -2 - rise : 2 - rise;
}

/// The figure of the direction in which an arc leaves, that of the chord turned as in leavingAngle():
/// back by half the sweep, by way of rational functions of the bulge, and on by a hundredth of it.
/// Not a number where its error, less than 1e-9, could carry it past the ends of the range.
double arcTurnFigure(double dx, double dy, double bulge)
{
    const double squared = bulge * bulge;
    const double cosine = (1 - squared) / (1 + squared);
    const double sine = 2 * bulge / (1 + squared);
    const double x = dx * cosine + dy * sine;
    const double y = dy * cosine - dx * sine;
    const double turn = 2 * kDirectionShare * roughArcTangent(bulge);
    const double turnSquared = turn * turn;
    const double s = turn * (1 - turnSquared / 6 * (1 - turnSquared / 20));
    const double c = 1 - turnSquared / 2 * (1 - turnSquared / 12);
    const double figure = turnFigure(x * c - y * s, x * s + y * c);
    return std::fabs(figure) < 2 - kSurelyApart ? figure : std::nan("");
}

/// Sorts a list by its figures, largest first. False when two are not surely apart.
template <class Entry>
bool sortByFigure(std::span<Entry> list)
{
    if (list.size() > kFewEdges) {
        for (const Entry& entry : list)
            if (std::isnan(entry.angle)) return false;
        std::sort(list.begin(), list.end(),
                  [](const Entry& a, const Entry& b) { return a.angle > b.angle; });
    } else {
        for (std::size_t i = 1; i < list.size(); ++i) {
            const Entry entry = list[i];
            std::size_t place = i;
            for (; place > 0 && list[place - 1].angle < entry.angle; --place)
                list[place] = list[place - 1];
            list[place] = entry;
        }
    }
    bool areApart = true;
    for (std::size_t i = 1; i < list.size(); ++i)
        areApart = areApart && list[i - 1].angle - list[i].angle > kSurelyApart;
    return areApart;
}

/// Puts the last entry of the list where the scan from the front stops.
template <class Entry>
void insertLast(std::span<Entry> list, bool first)
{
    const Entry entry = list.back();
    std::size_t place = 0;
    for (; place + 1 < list.size(); ++place) {
        const double angle = list[place].angle;
        if (std::fabs(entry.angle - angle) < kAngleTie) {
            if (first) break;
        } else if (entry.angle > angle) {
            break;
        }
    }
    std::rotate(list.begin() + static_cast<std::ptrdiff_t>(place), list.end() - 1, list.end());
}

/// The same order for many half-edges by one sort: largest angle first, and within each direction
/// those that go first in reverse order of arrival, then the others as they arrived. Chains of
/// directions are cut where they have spread by the tie.
template <class Entry, class GoesFirst>
void sortList(std::span<Entry> list, GoesFirst&& goesFirst)
{
    std::sort(list.begin(), list.end(), [](const Entry& a, const Entry& b) {
        return a.angle > b.angle || (a.angle == b.angle && a.edge < b.edge);
    });
    const auto rankInTie = [&](const Entry& entry) {
        return goesFirst(entry.edge) ? -1 - entry.edge : entry.edge;
    };
    for (std::size_t begin = 0; begin < list.size();) {
        std::size_t end = begin + 1;
        while (end < list.size() && list[begin].angle - list[end].angle < kAngleTie) ++end;
        std::sort(list.begin() + static_cast<std::ptrdiff_t>(begin),
                  list.begin() + static_cast<std::ptrdiff_t>(end),
                  [&](const Entry& a, const Entry& b) { return rankInTie(a) < rankInTie(b); });
        begin = end;
    }
}

}  // namespace

double CAutoLoop::angleOf(int edge) const
{
    const CLoopLine& line = lineOf(edge);
    const tav::Point2DF& start =
        line.shape < 0 ? pointOf(startOf(edge))
                       : shapes_[static_cast<std::size_t>(line.shape + (edge & 1))].points.first();
    return leavingAngle(start, secondPoint(edge), bulgeOf(edge));
}

std::span<CAutoLoop::AngularEntry> CAutoLoop::listOf(std::size_t node)
{
    return {angular_.data() + listBegin_[node], angular_.data() + listBegin_[node + 1]};
}

/// Puts the living half-edges into the lists of the nodes they leave, as they arrived; unless
/// `trueAngles`, with the figures of their directions.
void CAutoLoop::fillAngularLists(bool trueAngles)
{
    calcora::CancelCheck check(cancelFlag_);
    listBegin_.assign(nodePoints_.size() + 2, 0);
    for (std::size_t e = 0; e < edges_.size(); ++e) {
        check();
        if (!has(static_cast<int>(e), kUsedUp))
            ++listBegin_[static_cast<std::size_t>(edges_[e].startNode) + 2];
    }
    for (std::size_t i = 2; i < listBegin_.size(); ++i) listBegin_[i] += listBegin_[i - 1];
    angular_.resize(static_cast<std::size_t>(listBegin_.back()));
    // One place too far until all are in: listBegin_[n + 1] is where node n's next one goes.
    const auto put = [this](int edge, int node, int target, double figure) {
        if (has(edge, kUsedUp)) return;
        const int place = listBegin_[static_cast<std::size_t>(node) + 1]++;
        angular_[static_cast<std::size_t>(place)] = {figure, edge, target};
    };
    for (std::size_t pair = 0; pair < lines_.size(); ++pair) {
        check();
        const auto edge = static_cast<int>(2 * pair);
        const int a = edges_[2 * pair].startNode;
        const int b = edges_[2 * pair + 1].startNode;
        double figure = std::nan("");
        double opposite = figure;
        if (!trueAngles && lines_[pair].shape < 0) {
            const double bulge = lines_[pair].bulge;
            const tav::Point2DF& from = pointOf(a);
            const tav::Point2DF& to = pointOf(b);
            const double dx = to.x() - from.x();
            const double dy = to.y() - from.y();
            const double backX = from.x() - to.x();  // with its own sign of zero
            const double backY = from.y() - to.y();
            const bool isArc = std::fabs(bulge) >= kDirectionArcBulge;
            figure = isArc ? arcTurnFigure(dx, dy, bulge) : turnFigure(dx, dy);
            opposite = isArc ? arcTurnFigure(backX, backY, -bulge) : turnFigure(backX, backY);
        }
        put(edge, a, b, figure);
        put(edge + 1, b, a, opposite);
    }
    listBegin_.pop_back();
}

/// Sorts the lists: by true angles, or by the figures of directions where they tell these apart.
void CAutoLoop::buildAngularLists(bool trueAngles)
{
    marks_.resize(edges_.size(), 0);
    for (unsigned char& marks : marks_) marks &= kUsedUp;
    fillAngularLists(trueAngles);
    calcora::CancelCheck check(cancelFlag_);
    isTied_.assign(nodePoints_.size(), 0);
    for (std::size_t node = 0; node < nodePoints_.size(); ++node) {
        check();
        const std::span<AngularEntry> list = listOf(node);
        if (list.empty() || (!trueAngles && sortByFigure(list))) continue;
        std::sort(list.begin(), list.end(),
                  [](const AngularEntry& a, const AngularEntry& b) { return a.edge < b.edge; });
        takeTrueAngles(list);
        const auto goesFirst = [this](int edge) {
            return ((edge & 1) != 0) == lineOf(edge).keepDirection;
        };
        if (list.size() > kFewEdges) {
            sortList(list, goesFirst);
        } else {
            for (std::size_t count = 2; count <= list.size(); ++count)
                insertLast(list.first(count), goesFirst(list[count - 1].edge));
        }
        // Half-edges back to the node itself are loops of their own, whatever is beside them.
        double last = HUGE_VAL;
        for (const AngularEntry& entry : list) {
            if (entry.target == static_cast<int>(node)) continue;
            if (!(entry.angle < last)) isTied_[node] = 1;
            last = entry.angle;
        }
    }
}

void CAutoLoop::takeTrueAngles(std::span<AngularEntry> list)
{
    for (AngularEntry& entry : list) entry.angle = angleOf(entry.edge);
}

/// Keeps the angles of a list for walks, which come to a half-edge from its other end.
void CAutoLoop::keepAngles(std::span<const AngularEntry> list)
{
    for (const AngularEntry& entry : list)
        angleOf_[static_cast<std::size_t>(entry.edge)] = entry.angle;
}

/// Lets walks see every node as it is.
void CAutoLoop::keepNodesWhole()
{
    walkNodes_.resize(nodePoints_.size());
    angleOf_.resize(edges_.size());
    for (std::size_t node = 0; node < nodePoints_.size(); ++node) {
        walkNodes_[node] = {-1, listBegin_[node], listBegin_[node + 1]};
        keepAngles(listOf(node));
    }
    walkNodeOf_.resize(edges_.size());
    for (std::size_t e = 0; e < edges_.size(); ++e) walkNodeOf_[e] = edges_[e].startNode;
}

/// Lets walks see one node per block that meets at a node, with that block's half-edges in the
/// order of the node's list; half-edges outside all blocks are not walked.
void CAutoLoop::splitNodesByBlock()
{
    calcora::CancelCheck check(cancelFlag_);
    std::vector<std::pair<int, int>> ends(edges_.size() / 2, {-1, -1});
    for (std::size_t pair = 0; pair < ends.size(); ++pair) {
        check();
        const auto edge = static_cast<int>(2 * pair);
        if (!has(edge, kUsedUp | kLinked) && !has(edge + 1, kUsedUp | kLinked))
            ends[pair] = {startOf(edge), startOf(edge + 1)};
    }
    const std::vector<int> blocks =
        biconnectedBlocks(static_cast<int>(nodePoints_.size()), ends, check);
    const auto blockOf = [&](const AngularEntry& entry) {
        return blocks[static_cast<std::size_t>(entry.edge / 2)];
    };

    walkNodes_.clear();
    angleOf_.resize(edges_.size());
    walkNodeOf_.assign(edges_.size(), -1);
    std::vector<AngularEntry> mixed;
    const auto addWalkNode = [&](int first, int end) {
        for (int place = first; place < end; ++place)
            walkNodeOf_[static_cast<std::size_t>(angular_[static_cast<std::size_t>(place)].edge)] =
                static_cast<int>(walkNodes_.size());
        walkNodes_.push_back({-1, first, end});
    };
    for (std::size_t node = 0; node < nodePoints_.size(); ++node) {
        check();
        const std::span<AngularEntry> list = listOf(node);
        if (list.empty() || has(list.front().edge, kLinked)) continue;
        takeTrueAngles(list);
        keepAngles(list);
        const int firstBlock = blockOf(list.front());
        const bool oneBlock = std::all_of(list.begin(), list.end(), [&](const AngularEntry& entry) {
            return blockOf(entry) == firstBlock;
        });
        if (oneBlock) {
            if (firstBlock != kNoBlock) addWalkNode(listBegin_[node], listBegin_[node + 1]);
            continue;
        }
        mixed.assign(list.begin(), list.end());
        std::stable_sort(
            mixed.begin(), mixed.end(),
            [&](const AngularEntry& a, const AngularEntry& b) { return blockOf(a) < blockOf(b); });
        for (std::size_t begin = 0; begin < mixed.size();) {
            std::size_t end = begin + 1;
            while (end < mixed.size() && blockOf(mixed[end]) == blockOf(mixed[begin])) ++end;
            if (blockOf(mixed[begin]) != kNoBlock) {
                const int first = static_cast<int>(angular_.size());
                angular_.insert(angular_.end(), mixed.begin() + static_cast<std::ptrdiff_t>(begin),
                                mixed.begin() + static_cast<std::ptrdiff_t>(end));
                addWalkNode(first, static_cast<int>(angular_.size()));
            }
            begin = end;
        }
    }
}

/// Place of the first living half-edge of the node whose angle is below `angle`; the end of the
/// node's list when there is none.
int CAutoLoop::firstBelow(const CLoopNode& node, double angle) const
{
    int place = node.firstEdge;
    if (static_cast<std::size_t>(node.endEdge - node.firstEdge) > kFewEdges) {
        // Angles fall along the list but for ties: go to the last place that is surely too early.
        const auto surelyBefore = [&](const AngularEntry& entry) {
            return entry.angle >= angle + 2 * kAngleTie;
        };
        const auto found = std::partition_point(angular_.begin() + node.firstEdge,
                                                angular_.begin() + node.endEdge, surelyBefore);
        place = static_cast<int>(found - angular_.begin());
    }
    for (; place < node.endEdge; ++place) {
        const AngularEntry& entry = angular_[static_cast<std::size_t>(place)];
        if (entry.angle < angle && !has(entry.edge, kUsedUp)) break;
    }
    return place;
}

}  // namespace AutoB
