// The walks of the loop builder: from half-edge to half-edge until they close.
#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "common/detail/primitives.h"
#include "datageo/autob/CAutoLoop.h"

namespace AutoB {

namespace {

/// A loop whose signed area is above this runs clockwise or encloses nothing.
constexpr double kNegativeArea = -1e-20;

/// Squared distance and sum of bulges within which a half-edge runs back along another.
constexpr double kSamePointSquared = 1e-12;
constexpr double kSameBulge = 1e-12;

/// Radians by which directed walks pass over directions next to the way back: straight back comes
/// last there in spite of rounding, since a wrong half-edge would use the whole walk up.
constexpr double kBackTurn = 1e-7;

constexpr int kOutlines = 1;

int opposite(int edge)
{
    return edge ^ 1;
}

}  // namespace

void CAutoLoop::buildLoops(int mode)
{
    try {
        buildAngularLists(false);
        if (!linkLoops()) splitNodesByBlock();
        walkAll({false, mode == kOutlines});
    } catch (const calcora::Cancelled&) {
        // The loops found so far are the result.
    }
}

void CAutoLoop::buildDirectedLoops()
{
    try {
        buildAngularLists(true);
        keepNodesWhole();
        walkAll({true, false});
    } catch (const calcora::Cancelled&) {
        // Thrown before the first walk.
    }
}

/// Nodes with more than two half-edges, then those with two, then those with one; each in set
/// order.
calcora::detail::BigVector<int> CAutoLoop::orderedNodes() const
{
    calcora::CancelCheck check(cancelFlag_);
    calcora::detail::BigVector<int> inSetOrder(nodePoints_.size());
    if (nodesAreInSetOrder_) {
        std::iota(inSetOrder.begin(), inSetOrder.end(), 0);
    } else {
        const std::vector<int> ranks = nodeSet_.ranks(check);
        for (std::size_t node = 0; node < ranks.size(); ++node)
            inSetOrder[static_cast<std::size_t>(ranks[node])] = static_cast<int>(node);
    }

    calcora::detail::BigVector<int> ordered;
    ordered.reserve(nodePoints_.size());
    const auto append = [&](auto accepts) {
        for (const int node : inSetOrder) {
            check();
            const auto n = static_cast<std::size_t>(node);
            if (accepts(listBegin_[n + 1] - listBegin_[n])) ordered.push_back(node);
        }
    };
    append([](int degree) { return degree > 2; });
    append([](int degree) { return degree == 2; });
    append([](int degree) { return degree == 1; });
    return ordered;
}

bool CAutoLoop::isWalkable(int edge, const Search& search) const
{
    if (has(edge, kUsedUp | kNoLoop)) return false;
    if (has(edge, kLinked)) return true;
    if (walkNodeOf_[static_cast<std::size_t>(edge)] < 0) return false;
    return !search.directed || (edge & 1) != 0;
}

/// Starts a walk from every half-edge of every node.
void CAutoLoop::walkAll(const Search& search)
{
    hasWalked_ = true;
    for (const int n : orderedNodes()) {
        const int end = listBegin_[static_cast<std::size_t>(n) + 1];
        for (int place = listBegin_[static_cast<std::size_t>(n)]; place < end; ++place) {
            const int edge = angular_[static_cast<std::size_t>(place)].edge;
            if (!isWalkable(edge, search)) continue;
            ++walkNumber_;
            if (!search.directed && calcora::isRaised(cancelFlag_)) return;
            const WalkResult result =
                has(edge, kLinked) ? followLinks(edge, search) : walk(edge, search);
            if (result == WalkResult::Accepted) recordLoop();
        }
    }
}

/// The walk along the links of a loop: its half-edges are used up, whatever becomes of it.
CAutoLoop::WalkResult CAutoLoop::followLinks(int start, const Search& search)
{
    path_.clear();
    outline_.clear();
    outlineBulges_.clear();
    int edge = start;
    do {
        const double bulge = lineOf(edge).bulge;
        outline_.push_back(pointOf(startOf(edge)));
        outlineBulges_.push_back((edge & 1) != 0 ? -bulge : bulge);
        if (keepsTags_) path_.push_back({edge});
        mark(edge, kUsedUp);
        edge = edges_[static_cast<std::size_t>(edge)].next;
    } while (edge != start);
    return loopAreaNotNegative() == search.acceptNotNegative ? WalkResult::Accepted
                                                             : WalkResult::Dropped;
}

/// One walk. Finished walks have used their half-edges up; the outline of a closed one is left in
/// outline_ and outlineBulges_.
CAutoLoop::WalkResult CAutoLoop::walk(int start, const Search& search)
{
    const int startNode = walkNodeOf_[static_cast<std::size_t>(start)];
    path_.clear();
    path_.push_back({start});
    calcora::CancelCheck check(search.directed ? nullptr : cancelFlag_);
    bool advanced = true;  // the last step has not been looked at yet
    while (!path_.empty()) {
        check();
        const int edge = path_.back().edge;
        if (advanced) {
            if (walkNodeOf_[static_cast<std::size_t>(opposite(edge))] == startNode)
                return closeWalk(search);
            CLoopNode& node = walkNodeAtEnd(edge);
            if (node.visitStamp == walkNumber_) {
                path_.pop_back();
                advanced = false;
                continue;
            }
            node.visitStamp = walkNumber_;
            path_.back() = enteredStep(edge, node, search);
        }
        const int candidate = takeCandidate(path_.back(), walkNodeAtEnd(edge));
        advanced = candidate >= 0;
        if (!advanced) {
            path_.pop_back();
            continue;
        }
        if (search.directed && (candidate & 1) == 0) {
            mark(candidate, kUsedUp);
            useUpPath();
            return WalkResult::DeadEnd;
        }
        path_.push_back({candidate});
    }
    return WalkResult::NothingFound;
}

CLoopNode& CAutoLoop::walkNodeAtEnd(int edge)
{
    const int node = walkNodeOf_[static_cast<std::size_t>(opposite(edge))];
    return walkNodes_[static_cast<std::size_t>(node)];
}

/// The step with its candidates set up: clockwise from the way back. The way back along a half-edge
/// is the direction in which its opposite leaves.
CAutoLoop::Step CAutoLoop::enteredStep(int edge, const CLoopNode& node, const Search& search) const
{
    using namespace calcora::detail;
    double back = angleOf_[static_cast<std::size_t>(opposite(edge))];
    if (search.directed) {
        if (back < -kPi + kBackTurn) back += kTwoPi;
        back -= kBackTurn;
    }
    const int first = firstBelow(node, back);
    return {edge, first, first, false};
}

/// The next half-edge to try at the node, or -1 when all have been tried.
int CAutoLoop::takeCandidate(Step& step, const CLoopNode& node) const
{
    for (;;) {
        if (!step.wrapped && step.nextCandidate == node.endEdge) {
            step.wrapped = true;
            step.nextCandidate = node.firstEdge;
        }
        if (step.wrapped && step.nextCandidate >= step.firstCandidate) return -1;
        const int candidate = angular_[static_cast<std::size_t>(step.nextCandidate++)].edge;
        if (!has(candidate, kUsedUp) && !runsStraightBack(candidate, step.edge)) return candidate;
    }
}

/// Whether the candidate ends at the start of the walk and merely runs back along its last
/// half-edge.
bool CAutoLoop::runsStraightBack(int candidate, int last) const
{
    const int startNode = walkNodeOf_[static_cast<std::size_t>(path_.front().edge)];
    if (walkNodeOf_[static_cast<std::size_t>(opposite(candidate))] != startNode) return false;
    const int back = opposite(last);
    const double distance =
        calcora::detail::pointDistSquared(secondPoint(candidate), secondPoint(back));
    return distance < kSamePointSquared &&
           std::fabs(bulgeOf(candidate) - bulgeOf(back)) < kSameBulge;
}

CAutoLoop::WalkResult CAutoLoop::closeWalk(const Search& search)
{
    traceOutline();
    const bool accepted = loopAreaNotNegative() == search.acceptNotNegative &&
                          (!search.directed || outline_.size() > 1);
    // The half-edges of a loop that is kept are used up once its tags are read.
    if (accepted) return WalkResult::Accepted;
    useUpPath();
    return WalkResult::Dropped;
}

void CAutoLoop::useUpPath()
{
    for (const Step& step : path_) mark(step.edge, kUsedUp);
}

/// Points and bulges of the closed path: every half-edge without its last point.
void CAutoLoop::traceOutline()
{
    outline_.clear();
    outlineBulges_.clear();
    for (const Step& step : path_) {
        const CLoopLine& line = lineOf(step.edge);
        if (line.shape < 0) {
            outline_.push_back(pointOf(startOf(step.edge)));
            outlineBulges_.push_back((step.edge & 1) != 0 ? -line.bulge : line.bulge);
            continue;
        }
        const Shape& shape = shapes_[static_cast<std::size_t>(line.shape + (step.edge & 1))];
        for (int i = 0; i + 1 < shape.points.size(); ++i) {
            outline_.push_back(shape.points[i]);
            outlineBulges_.push_back(shape.bulges[i]);
        }
    }
}

bool CAutoLoop::loopAreaNotNegative()
{
    const double area =
        outline_.empty()
            ? 0.0
            : measure_.polygonArea(outline_.data(), static_cast<int>(outline_.size()),
                                   outlineBulges_.data(), static_cast<int>(outlineBulges_.size()));
    return area > kNegativeArea;
}

void CAutoLoop::recordLoop()
{
    if (keepsTags_) {
        Tags tags;
        tags.reserve(static_cast<int>(path_.size()));
        for (const Step& step : path_) tags.append(static_cast<unsigned>(lineOf(step.edge).tag));
        loopTags_.push_back(std::move(tags));
    }
    // Copies sized to the loop: the work lists keep their room for the next one.
    loops_.emplace_back(outline_.begin(), outline_.end());
    loopBulges_.emplace_back(outlineBulges_.begin(), outlineBulges_.end());
    useUpPath();
}

}  // namespace AutoB
