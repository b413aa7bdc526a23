// Loops linked before they are walked.
//
// Where every node's list of half-edges is that of a drawing in the plane, walking on by the list at
// every node goes round a face of the drawing:
//
//        .--------------.
//        |      x--o    |     the face inside, from a on: a b c c' d ..., with the spur c out and
//        |      |b      |     back, for its outline touches itself at node x
//        '--a---+---d---'
//
// A face goes round what hangs into it (a spur, a bridge and what is behind, another block that touches
// at a node), while the walks of the builder enter no node twice and so pass all that by. Cut out of a
// face whatever lies between two visits of one node, and all that is left are its loops: those of
// single blocks, and pairs of a bridge's two sides, which are no loops. For a drawing in the plane
// these are the walks of the builder, since what hangs into a face hangs there at one node.
//
// Whether the lists of a connected part are those of a drawing in the plane is told by Euler's number,
// nodes - edges + faces = 2: lists of anything else give less. There, and where directions are not
// told apart, walks find their way themselves.
#include <cmath>
#include <numeric>

#include "datageo/autob/CAutoLoop.h"

namespace AutoB {

namespace {

constexpr int kInThePlane = 2;

/// Difference of bulges below which two half-edges between the same nodes may run along each other.
constexpr double kSameCurve = 1e-12;

/// Connected parts by the union of their nodes; the least node stands for a part.
class Parts {
public:
    explicit Parts(std::size_t nodes) : parent_(nodes)
    {
        std::iota(parent_.begin(), parent_.end(), 0);
    }
    int rootOf(int node)
    {
        while (parentOf(node) != node) {
            parentOf(node) = parentOf(parentOf(node));
            node = parentOf(node);
        }
        return node;
    }
    void unite(int a, int b)
    {
        a = rootOf(a);
        b = rootOf(b);
        if (a < b)
            parentOf(b) = a;
        else
            parentOf(a) = b;
    }

private:
    int& parentOf(int node) { return parent_[static_cast<std::size_t>(node)]; }

    calcora::detail::BigVector<int> parent_;
};

}  // namespace

/// Links every half-edge to the one after it on its face: the next below its opposite in the list of
/// the node where it ends. A half-edge back to its own node is linked to itself.
void CAutoLoop::linkAroundNodes()
{
    calcora::CancelCheck check(cancelFlag_);
    for (std::size_t node = 0; node < nodePoints_.size(); ++node) {
        check();
        int first = -1;
        int last = -1;
        for (const AngularEntry& entry : listOf(node)) {
            if (entry.target == static_cast<int>(node)) {
                edges_[static_cast<std::size_t>(entry.edge)].next = entry.edge;
                continue;
            }
            if (last >= 0) edges_[static_cast<std::size_t>(last ^ 1)].next = entry.edge;
            if (first < 0) first = entry.edge;
            last = entry.edge;
        }
        if (last >= 0) edges_[static_cast<std::size_t>(last ^ 1)].next = first;
    }
}

/// For every node the least node of its connected part.
calcora::detail::BigVector<int> CAutoLoop::componentOfNodes()
{
    calcora::CancelCheck check(cancelFlag_);
    Parts parts(nodePoints_.size());
    for (std::size_t e = 0; e < edges_.size(); e += 2) {
        check();
        parts.unite(edges_[e].startNode, edges_[e + 1].startNode);
    }
    calcora::detail::BigVector<int> component(nodePoints_.size());
    for (std::size_t node = 0; node < component.size(); ++node) {
        check();
        component[node] = parts.rootOf(static_cast<int>(node));
    }
    return component;
}

/// Goes round the face of a half-edge and cuts it into loops. `stackPlace` has for every node on the
/// way one more than its place there, 0 for all others. False when two half-edges of a loop may run
/// along each other.
bool CAutoLoop::linkFace(int first, calcora::detail::BigVector<int>& stackPlace,
                         calcora::CancelCheck& check)
{
    bool isClear = true;
    int edge = first;
    do {
        check();
        way_.push_back(edge);
        mark(edge, kFaceWalked);
        stackPlace[static_cast<std::size_t>(startOf(edge))] = static_cast<int>(way_.size());
        const int place = stackPlace[static_cast<std::size_t>(startOf(edge ^ 1))];
        const int next = edges_[static_cast<std::size_t>(edge)].next;
        if (place > 0) {
            const auto from = static_cast<std::size_t>(place - 1);
            isClear = closeLinkedLoop(from, stackPlace) && isClear;
        }
        edge = next;
    } while (edge != first);
    return isClear;
}

/// Closes the loop of the steps from a place on, and takes them off the path.
bool CAutoLoop::closeLinkedLoop(std::size_t from, calcora::detail::BigVector<int>& stackPlace)
{
    const std::span<const int> loop(way_.begin() + static_cast<std::ptrdiff_t>(from), way_.end());
    int last = loop.back();
    for (const int edge : loop) {
        edges_[static_cast<std::size_t>(last)].next = edge;
        stackPlace[static_cast<std::size_t>(startOf(edge))] = 0;
        last = edge;
    }
    bool isClear = true;
    if (loop.size() == 2) {
        const int a = loop[0];
        const int b = loop[1];
        if (a == (b ^ 1)) {
            mark(a, kNoLoop);
            mark(b, kNoLoop);
        } else {
            isClear = std::fabs(bulgeOf(a) - bulgeOf(b ^ 1)) >= kSameCurve;
        }
    }
    way_.resize(from);
    return isClear;
}

/// Links the loops of all connected parts where that gives those of the walks, and marks their
/// half-edges; true when that is everywhere.
bool CAutoLoop::linkLoops()
{
    if (!shapes_.empty() || hasWalked_) return false;
    linkAroundNodes();
    const calcora::detail::BigVector<int> component = componentOfNodes();
    const auto componentOf = [&](int edge) {
        return static_cast<std::size_t>(component[static_cast<std::size_t>(startOf(edge))]);
    };
    calcora::detail::BigVector<int> euler(nodePoints_.size(), 0);
    calcora::detail::BigVector<char> isWalked(nodePoints_.size(), 0);
    calcora::CancelCheck check(cancelFlag_);
    for (std::size_t node = 0; node < nodePoints_.size(); ++node) {
        check();
        if (listBegin_[node] == listBegin_[node + 1]) continue;
        ++euler[static_cast<std::size_t>(component[node])];
        if (isTied_[node]) isWalked[static_cast<std::size_t>(component[node])] = 1;
    }
    calcora::detail::BigVector<int> stackPlace(nodePoints_.size(), 0);
    way_.clear();
    const auto edgeCount = static_cast<int>(edges_.size());
    for (int edge = 0; edge < edgeCount; ++edge) {
        check();
        if (startOf(edge) == startOf(edge ^ 1)) continue;
        if ((edge & 1) == 0) --euler[componentOf(edge)];
        if (has(edge, kFaceWalked)) continue;
        ++euler[componentOf(edge)];
        if (!linkFace(edge, stackPlace, check)) isWalked[componentOf(edge)] = 1;
    }
    bool areAllLinked = true;
    for (int edge = 0; edge < edgeCount; ++edge) {
        check();
        const std::size_t part = componentOf(edge);
        const bool isLinked = euler[part] == kInThePlane && !isWalked[part];
        marks_[static_cast<std::size_t>(edge)] &= isLinked ? kNoLoop : 0;
        if (isLinked) mark(edge, kLinked);
        areAllLinked = areAllLinked && isLinked;
    }
    return areAllLinked;
}

}  // namespace AutoB
