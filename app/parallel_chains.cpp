#include "app/parallel_chains.h"

#include <algorithm>
#include <cmath>
#include <deque>

#include "app/place_grid.h"

namespace calcora::app {

namespace {

using tav::Point2DF;

constexpr int kNobody = -1;

/// Where a piece ends or begins at a node.
struct PieceEnd {
    int piece = 0;
    bool leaves = false;
    double angle = 0;  ///< of the way from the node into the piece
};

class Chainer {
public:
    Chainer(IcommonFunc& common, const std::vector<ParallelPiece>& pieces, int nodeCount,
            double reach)
        : common_(common),
          pieces_(pieces),
          reach_(reach),
          isThere_(pieces.size(), 1),
          next_(pieces.size(), kNobody),
          previous_(pieces.size(), kNobody),
          nodes_(static_cast<std::size_t>(nodeCount))
    {
    }

    std::vector<PieceChain> chains()
    {
        dropDoubles();
        for (int i = 0; i < count(); ++i)
            if (isThere(i)) {
                node(piece(i).end).push_back({i, false});
                node(piece(i).start).push_back({i, true});
            }
        std::deque<int> open;
        for (int n = 0; n < static_cast<int>(nodes_.size()); ++n) {
            sortEnds(node(n));
            match(node(n));
            open.push_back(n);
        }
        while (!open.empty()) {
            const int n = open.front();
            open.pop_front();
            match(node(n));
            dropUnmatched(n, open);
        }
        joinLooseEnds();
        return follow();
    }

private:
    int count() const { return static_cast<int>(pieces_.size()); }
    const ParallelPiece& piece(int i) const { return pieces_[static_cast<std::size_t>(i)]; }
    bool isThere(int i) const { return isThere_[static_cast<std::size_t>(i)] != 0; }
    int& next(int i) { return next_[static_cast<std::size_t>(i)]; }
    int& previous(int i) { return previous_[static_cast<std::size_t>(i)]; }
    std::vector<PieceEnd>& node(int n) { return nodes_[static_cast<std::size_t>(n)]; }

    Point2DF middle(int i) const { return pointAt(common_, piece(i).path, 0.5); }

    void dropDoubles()
    {
        std::vector<int> order;
        for (int i = 0; i < count(); ++i) order.push_back(i);
        const auto ends = [&](int i) { return std::minmax(piece(i).start, piece(i).end); };
        std::sort(order.begin(), order.end(), [&](int a, int b) {
            const auto [lowA, highA] = ends(a);
            const auto [lowB, highB] = ends(b);
            if (lowA != lowB) return lowA < lowB;
            return highA != highB ? highA < highB : a < b;
        });
        for (std::size_t k = 0; k < order.size(); ++k)
            for (std::size_t m = k + 1;
                 m < order.size() && isThere(order[k]) && ends(order[m]) == ends(order[k]); ++m) {
                const int a = order[k];
                const int b = order[m];
                if (!isThere(b) || middle(a).distanceTo(middle(b)) > reach_) continue;
                isThere_[static_cast<std::size_t>(b)] = 0;
                if (piece(a).start != piece(b).start) isThere_[static_cast<std::size_t>(a)] = 0;
            }
    }

    /// Counter-clockwise, as seen at a distance from the node at which all pieces are still there:
    /// at the node itself tangential arcs have one direction.
    void sortEnds(std::vector<PieceEnd>& ends) const
    {
        if (ends.size() < 3) return;
        const auto length = [&](const PieceEnd& end) {
            const Segment& path = piece(end.piece).path;
            return common_.bulgeSegmentLength(path.from, path.to, path.bulge);
        };
        double shortest = length(ends.front());
        for (const PieceEnd& end : ends) shortest = std::min(shortest, length(end));
        for (PieceEnd& end : ends) {
            const Segment& path = piece(end.piece).path;
            const double share = shortest / 2 / length(end);
            const Point2DF way = end.leaves ? pointAt(common_, path, share) - path.from
                                            : pointAt(common_, path, 1 - share) - path.to;
            end.angle = std::atan2(way.y(), way.x());
        }
        std::sort(ends.begin(), ends.end(), [](const PieceEnd& a, const PieceEnd& b) {
            return a.angle != b.angle ? a.angle < b.angle : a.piece < b.piece;
        });
    }

    void match(const std::vector<PieceEnd>& ends)
    {
        for (const PieceEnd& end : ends)
            (end.leaves ? previous(end.piece) : next(end.piece)) = kNobody;
        for (std::size_t k = 0; k < ends.size(); ++k) {
            const PieceEnd& arriving = ends[k];
            const PieceEnd& leaving = ends[(k + ends.size() - 1) % ends.size()];
            if (arriving.leaves || !leaving.leaves) continue;
            next(arriving.piece) = leaving.piece;
            previous(leaving.piece) = arriving.piece;
        }
    }

    void dropUnmatched(int n, std::deque<int>& open)
    {
        const std::vector<PieceEnd> ends = node(n);
        const auto leaves = [](const PieceEnd& end) { return end.leaves; };
        if (std::all_of(ends.begin(), ends.end(), leaves) ||
            std::none_of(ends.begin(), ends.end(), leaves))
            return;
        for (const PieceEnd& end : ends)
            if (isThere(end.piece) &&
                (end.leaves ? previous(end.piece) : next(end.piece)) == kNobody)
                dropRun(end.piece, end.leaves, open);
    }

    /// Drops the pieces from this one on, forwards or backwards, up to a node where others pass.
    void dropRun(int i, bool forwards, std::deque<int>& open)
    {
        while (i != kNobody && isThere(i)) {
            isThere_[static_cast<std::size_t>(i)] = 0;
            for (const int n : {piece(i).start, piece(i).end}) {
                std::erase_if(node(n), [&](const PieceEnd& end) { return end.piece == i; });
                open.push_back(n);
            }
            const int beyond = forwards ? next(i) : previous(i);
            const int far = forwards ? piece(i).end : piece(i).start;
            i = node(far).size() == 1 ? beyond : kNobody;
        }
    }

    void joinLooseEnds()
    {
        PlaceGrid grid(reach_);
        std::vector<int> starts;
        for (int i = 0; i < count(); ++i)
            if (isThere(i) && previous(i) == kNobody) {
                grid.add(piece(i).path.from, static_cast<int>(starts.size()));
                starts.push_back(i);
            }
        for (int i = 0; i < count(); ++i) {
            if (!isThere(i) || next(i) != kNobody) continue;
            const Point2DF& end = piece(i).path.to;
            int best = kNobody;
            double least = reach_;
            grid.forEachNear(end, [&](const Point2DF& start, int k) {
                const int candidate = starts[static_cast<std::size_t>(k)];
                const double distance = start.distanceTo(end);
                if (previous(candidate) != kNobody || !(distance <= least)) return;
                least = distance;
                best = candidate;
            });
            if (best == kNobody) continue;
            next(i) = best;
            previous(best) = i;
        }
    }

    std::vector<PieceChain> follow()
    {
        std::vector<PieceChain> chains;
        std::vector<char> isTaken(pieces_.size(), 0);
        const auto take = [&](int first) {
            PieceChain chain;
            int i = first;
            do {
                chain.pieces.push_back(i);
                isTaken[static_cast<std::size_t>(i)] = 1;
                i = next(i);
            } while (i != kNobody && i != first);
            chain.closed = i == first;
            chains.push_back(std::move(chain));
        };
        for (int i = 0; i < count(); ++i)
            if (isThere(i) && previous(i) == kNobody) take(i);
        for (int i = 0; i < count(); ++i)
            if (isThere(i) && isTaken[static_cast<std::size_t>(i)] == 0) take(i);
        return chains;
    }

    IcommonFunc& common_;
    const std::vector<ParallelPiece>& pieces_;
    double reach_;
    std::vector<char> isThere_;
    std::vector<int> next_;
    std::vector<int> previous_;
    std::vector<std::vector<PieceEnd>> nodes_;  ///< ends counter-clockwise
};

}  // namespace

std::vector<PieceChain> chainPieces(IcommonFunc& common, const std::vector<ParallelPiece>& pieces,
                                    int nodeCount, double reach)
{
    return Chainer(common, pieces, nodeCount, reach).chains();
}

}  // namespace calcora::app
