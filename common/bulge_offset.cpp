// The parallel of a polyline with bulges.
//
// Every segment is moved on its own (detail::SidewiseMove) and joined to the next where their lines
// and circles meet; an outer corner where they do not gets a connecting arc, which is a piece of the
// chain like any other. A piece that its joints leave no length, or that would run against its own
// direction, has vanished: it is taken out and its neighbours are joined instead. Pieces go one at
// a time, first the one that is most overrun for its length, which is the one that vanishes first
// when the distance grows from 0; long pieces that only seemed overrun because of it then come out
// whole.
//
// What remains after a narrow slot is its two sides, which have changed places:
//
//          j |   | i                 One goes, and the other is left as the step between a and b,
//      - - - +---+ - - -  b          which need not lie on one level. Were the wrong one to stay, it
//   a  ------+---+                   would be overrun by them.
//
// Of two other pieces that have no joint the one goes that lies within reach of the other. Where
// neither does, as in the sharp end of a sliver between two arcs, a bridge leads from one to the
// other; else one bad corner would take all the arcs behind it along, since hardly any two of them
// meet. Each step takes a segment's piece away and puts in a bridge at most, so the number of steps
// is that of the segments; a heap finds the next.

#include <cmath>
#include <limits>
#include <optional>
#include <queue>
#include <utility>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/bulges.h"
#include "common/detail/offset_pieces.h"

namespace detail = calcora::detail;

namespace {

using detail::MovedPiece;
using tav::Point2DF;
using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

/// Square drawing units: ends closer than this make a figure closed.
constexpr double kClosedDistanceSquared = 1e-8;
/// Square drawing units: a vertex closer than this to the one before it is a repeat.
constexpr double kRepeatedVertexSquared = 1e-6;
/// Radians: an arc that its joints lengthen to this sweep meets itself.
constexpr double kWholeTurn = detail::kTwoPi - 1e-9;

constexpr int kNobody = -1;

/// The figure without repeated vertices, relative to its first one. The vertices of a closed figure
/// are not repeated at the end: its last bulge leads back to vertex 0.
struct Figure {
    Points points;
    Values bulges;
    bool isClosed = false;

    int segments() const { return isClosed ? points.size() : points.size() - 1; }
};

/// With a repeat goes the segment that leads to it, and its bulge.
Figure withoutRepeats(IcommonFunc& geometry, const Points& points, const Values& bulges)
{
    const int n = points.size();
    const auto isRepeat = [&](const Point2DF& a, const Point2DF& b) {
        return geometry.pointDistSquared(a, b) < kRepeatedVertexSquared;
    };
    Figure figure;
    figure.isClosed = geometry.pointDistSquared(points[n - 1], points[0]) < kClosedDistanceSquared;
    const int vertices = figure.isClosed ? n - 1 : n;
    Point2DF last;
    double bulge = bulges[0];
    figure.points.append(last);
    for (int i = 1; i < vertices; ++i) {
        const Point2DF at = points[i] - points[0];
        if (!isRepeat(last, at)) {
            figure.points.append(at);
            figure.bulges.append(bulge);
            last = at;
        }
        bulge = bulges[i];
    }
    if (!figure.isClosed) return figure;
    // The ring's seam: a vertex that repeats the first one.
    const Point2DF first;
    while (figure.points.size() > 1 && isRepeat(figure.points.last(), first)) {
        bulge = figure.bulges.last();
        figure.points.removeLast();
        figure.bulges.removeLast();
    }
    figure.bulges.append(bulge);
    return figure;
}

/// The moved segments of a figure in their order, with connecting arcs where they need them.
std::vector<MovedPiece> movedPieces(const detail::SidewiseMove& move, const Figure& figure)
{
    const int n = figure.segments();
    const int corners = figure.isClosed ? n : n - 1;
    const Points& points = figure.points;
    const auto index = [](int i) { return static_cast<std::size_t>(i); };
    const auto following = [n](int i) { return i + 1 < n ? i + 1 : 0; };

    std::vector<MovedPiece> moved;
    for (int i = 0; i < n; ++i)
        moved.push_back(move.move(points[i], points[i + 1 < points.size() ? i + 1 : 0],
                                  std::as_const(figure.bulges)[i]));
    const auto exists = [&](const MovedPiece& piece) {
        return !piece.isArc || move.isThere(piece.radius);
    };
    std::vector<std::optional<Point2DF>> joints(index(n));
    for (int i = 0; i < corners; ++i) {
        const MovedPiece& before = moved[index(i)];
        const MovedPiece& after = moved[index(following(i))];
        if (exists(before) && exists(after)) joints[index(i)] = move.joint(before, after, {});
    }
    // An arc that its joints would lengthen until it meets itself keeps its ends.
    std::vector<bool> keepsEnds(index(n));
    for (int i = 0; i < n; ++i) {
        const MovedPiece& piece = moved[index(i)];
        const auto& first = joints[index(i > 0 ? i - 1 : n - 1)];
        const auto& last = joints[index(i)];
        keepsEnds[index(i)] =
            piece.isArc && move.sweepBetween(piece, first.value_or(piece.start),
                                             last.value_or(piece.end)) >= kWholeTurn;
    }
    std::vector<MovedPiece> pieces;
    for (int i = 0; i < n; ++i) {
        const MovedPiece& before = moved[index(i)];
        const MovedPiece& after = moved[index(following(i))];
        pieces.push_back(before);
        const bool isJoined =
            joints[index(i)] && !keepsEnds[index(i)] && !keepsEnds[index(following(i))];
        if (i < corners && !isJoined && !move.endsCoincide(before, after) &&
            move.isOuterCorner(before, after))
            pieces.push_back(move.connect(before, after));
    }
    return pieces;
}

/// Directions of the figure at the ends of a piece. A connecting arc stands at a vertex and has
/// those of its own ends.
Point2DF directionBefore(const MovedPiece& piece)
{
    return directionAt(piece, piece.from == piece.to ? piece.start : piece.from);
}
Point2DF directionAfter(const MovedPiece& piece)
{
    return directionAt(piece, piece.from == piece.to ? piece.end : piece.to);
}

/// By how much the figure turns along a piece.
double turnAlong(const MovedPiece& piece)
{
    return piece.clockwise ? -piece.sweep : piece.sweep;
}

/// The moved pieces in their order, joined where they are still there.
class ParallelChain {
public:
    ParallelChain(IcommonFunc& geometry, const Figure& figure, double distance)
        : move_(geometry, distance), isClosed_(figure.isClosed)
    {
        for (const MovedPiece& piece : movedPieces(move_, figure)) {
            const int i = left_++;
            links_.push_back({piece, i - 1, i + 1});
        }
        count_ = left_;
        links_.front().previous = isClosed_ ? left_ - 1 : kNobody;
        links_.back().next = isClosed_ ? 0 : kNobody;
        for (Link& link : links_)
            if (link.next != kNobody)
                link.turn = detail::turnOf(directionAfter(link.piece),
                                           directionBefore(at(link.next).piece));
    }

    /// Joins all pieces and takes out what vanishes; false if nothing is left.
    bool settle()
    {
        const int n = left_;
        for (int i = 0; i < n; ++i) {
            const MovedPiece& piece = at(i).piece;
            if (piece.isArc && !move_.isThere(piece.radius)) takeOut(i);
        }
        for (int i = 0; i < n && isLeft(); ++i) {
            if (at(i).isThere) joinAfter(i);
        }
        while (isLeft() && !doomed_.empty()) {
            const Doomed next = doomed_.top();
            doomed_.pop();
            if (!at(next.piece).isThere || at(next.piece).version != next.version) continue;
            const int previous = at(next.piece).previous;
            takeOut(next.piece);
            if (previous != kNobody)
                joinAfter(previous);
            else
                startWith(at(next.piece).next);
        }
        return isLeft();
    }

    /// How often a closed chain turns round counter-clockwise, from one piece to the next and along
    /// the arcs.
    double turns() const
    {
        double turn = 0.0;
        forEachLeft([&](int i, int next) {
            const MovedPiece& piece = at(i).piece;
            const double sweep =
                piece.isArc ? move_.sweepBetween(piece, startOf(i), endOf(i)) : 0.0;
            turn += piece.clockwise ? -sweep : sweep;
            turn += detail::turnOf(directionAt(piece, endOf(i)),
                                   directionAt(at(next).piece, startOf(next)));
        });
        return turn / detail::kTwoPi;
    }

    /// The vertices and bulges of what is left, moved by `origin`; the last bulge is 0 and a closed
    /// figure ends on its first vertex.
    Figure result(const Point2DF& origin) const
    {
        Figure figure;
        figure.isClosed = isClosed_;
        forEachLeft([&](int i, int next) {
            figure.points.append(origin + startOf(i));
            figure.bulges.append(move_.bulgeBetween(at(i).piece, startOf(i), endOf(i)));
            if (next == kNobody) figure.points.append(origin + endOf(i));
        });
        if (isClosed_) {
            const Point2DF start = std::as_const(figure.points).first();
            figure.points.append(start);
        }
        figure.bulges.append(0.0);
        return figure;
    }

private:
    struct Link {
        MovedPiece piece;
        int previous = kNobody;
        int next = kNobody;
        double turn = 0.0;  ///< of the figure from the piece's end to the start of the next one
        bool isThere = true;
        bool isBridge = false;
        int version = 0;  ///< grows with every review, so that older findings are known as such
        std::optional<Point2DF> joint = std::nullopt;  ///< with the next piece
    };

    /// A piece that has to go, unless it is looked at anew before its turn.
    struct Doomed {
        double urgency = 0.0;  ///< the smaller the sooner
        int piece = 0;
        int version = 0;

        bool operator<(const Doomed& other) const  // the heap's top is the largest
        {
            return urgency != other.urgency ? urgency > other.urgency : piece > other.piece;
        }
    };

    Link& at(int i) { return links_[static_cast<std::size_t>(i)]; }
    const Link& at(int i) const { return links_[static_cast<std::size_t>(i)]; }

    /// A single piece cannot close.
    bool isLeft() const { return left_ >= (isClosed_ ? 2 : 1); }

    bool areNeighbours(int i, int j) const
    {
        if (at(i).isBridge || at(j).isBridge) return false;
        return j == i + 1 || (j == 0 && i + 1 == count_);
    }

    /// visit(piece, next piece or nobody) from the first that is left on.
    template <class Visit>
    void forEachLeft(Visit&& visit) const
    {
        int first = 0;
        while (!at(first).isThere) ++first;
        int i = first;
        do {
            visit(i, at(i).next);
            i = at(i).next;
        } while (i != kNobody && i != first);
    }

    Point2DF startOf(int i) const
    {
        const Link& link = at(i);
        return link.previous == kNobody ? link.piece.start
                                        : at(link.previous).joint.value_or(link.piece.start);
    }
    Point2DF endOf(int i) const { return at(i).joint.value_or(at(i).piece.end); }

    /// What lies between the piece and the one that follows now.
    detail::Between between(int i) const { return {areNeighbours(i, at(i).next), at(i).turn}; }

    /// Length of the parallel before it is joined: of a tight arc little may be left, and all that
    /// comes near it would miss its circle.
    double movedLength(int i) const
    {
        const MovedPiece& piece = at(i).piece;
        return piece.isArc ? piece.radius * piece.sweep : piece.length;
    }

    void takeOut(int i)
    {
        const int previous = at(i).previous;
        const int next = at(i).next;
        at(i).isThere = false;
        --left_;
        if (previous != kNobody) {
            at(previous).turn = turnOver(previous);
            at(previous).next = next;
        }
        if (next != kNobody) at(next).previous = previous;
    }

    /// The pieces of an open chain that stood before i are gone. No end is a bridge.
    void startWith(int i)
    {
        while (i != kNobody && at(i).isBridge) {
            takeOut(i);
            i = at(i).next;
        }
        if (i != kNobody) review(i);
    }

    /// Joins piece i to the one that follows now. Where that cannot be, one of the two goes and the
    /// next pair is tried, or a bridge joins them.
    void joinAfter(int i)
    {
        while (i != kNobody && isLeft()) {
            const int j = at(i).next;
            at(i).joint = std::nullopt;
            if (j == kNobody && !at(i).isBridge) {
                review(i);
                return;
            }
            const bool isUsed = j != kNobody && isUsedStrip(i, j);
            if (j != kNobody && !isUsed)
                at(i).joint = move_.joint(at(i).piece, at(j).piece, between(i));
            const int gone = j == kNobody ? i : at(i).joint ? kNobody : oneToGo(i, j, isUsed);
            if (gone == kNobody) {
                if (!at(i).joint) bridge(i, j);
                review(i);
                review(j);
                return;
            }
            const bool bothGo = isUsed && !move_.isThere(lengthWithoutNext(i)) &&
                                !move_.isThere(lengthWithoutPrevious(j));
            if (gone == j || bothGo) takeOut(j);
            if (gone == i || bothGo) {
                takeOut(i);
                const int previous = at(i).previous;
                if (previous == kNobody) startWith(at(i).next);
                i = previous;
            }
        }
    }

    /// Whether two lines are the sides of a strip of which nothing is left.
    bool isUsedStrip(int i, int j) const
    {
        const MovedPiece& before = at(i).piece;
        const MovedPiece& after = at(j).piece;
        if (move_.haveCollided(before, after, between(i))) return true;
        if (areNeighbours(i, j) || !detail::runAgainst(before, after)) return false;
        const auto joint = move_.joint(before, after, between(i));
        return joint && !move_.isThere(move_.lengthBetween(before, startOf(i), *joint)) &&
               !move_.isThere(move_.lengthBetween(after, *joint, endOf(j)));
    }

    /// Which of two pieces without a joint has to go, if one has: of the sides of a strip the one
    /// without which more is left of the other; else one that lies within reach of the other, the
    /// shorter one rather. A bridge that cannot be joined always goes.
    int oneToGo(int i, int j, bool areUsedStrip) const
    {
        const auto [shorter, longer] =
            movedLength(i) < movedLength(j) ? std::pair(i, j) : std::pair(j, i);
        for (const int k : {shorter, longer})
            if (at(k).isBridge) return k;
        if (areUsedStrip) {
            const double first = lengthWithoutNext(i);
            const double second = lengthWithoutPrevious(j);
            return first == second ? shorter : first > second ? j : i;
        }
        for (const auto& [k, other] : {std::pair(shorter, longer), std::pair(longer, shorter)})
            if (move_.isWithinReach(at(k).piece, at(other).piece)) return k;
        return kNobody;
    }

    /// What would be left of the piece if the one after it were not there; nothing when the two
    /// that came together then have no joint.
    double lengthWithoutNext(int i) const
    {
        const int gone = at(i).next;
        const int j = at(gone).next;
        if (j == kNobody) return at(i).piece.length;
        if (j == i) return 0.0;
        const auto joint = move_.joint(at(i).piece, at(j).piece, {false, turnOver(i)});
        return joint ? move_.lengthBetween(at(i).piece, startOf(i), *joint) : 0.0;
    }
    double lengthWithoutPrevious(int j) const
    {
        const int gone = at(j).previous;
        const int i = at(gone).previous;
        if (i == kNobody) return at(j).piece.length;
        if (i == j) return 0.0;
        const auto joint = move_.joint(at(i).piece, at(j).piece, {false, turnOver(i)});
        return joint ? move_.lengthBetween(at(j).piece, *joint, endOf(j)) : 0.0;
    }

    /// The turn of the figure from the piece to the one after the next.
    double turnOver(int i) const
    {
        const Link& next = at(at(i).next);
        return at(i).turn + next.turn + (next.isBridge ? 0.0 : turnAlong(next.piece));
    }

    /// Leads from piece i to the one that follows, both with their own ends.
    void bridge(int i, int j)
    {
        const MovedPiece& before = at(i).piece;
        const MovedPiece& after = at(j).piece;
        Link link{areNeighbours(i, j) ? move_.connect(before, after) : move_.lead(before, after), i,
                  j};
        link.isBridge = true;
        link.joint = after.start;
        at(i).joint = before.end;
        at(i).next = at(j).previous = static_cast<int>(links_.size());
        links_.push_back(link);
        ++left_;
    }

    /// Puts the piece on the list of those that have to go, if it has to: run over by its joints,
    /// or an arc lengthened until it meets itself.
    void review(int i)
    {
        Link& link = at(i);
        ++link.version;
        if (link.isBridge) return;
        const double length = move_.lengthBetween(link.piece, startOf(i), endOf(i));
        const bool meetsItself = link.piece.isArc && !(length < kWholeTurn * link.piece.radius);
        if (move_.isThere(length) && !meetsItself) return;
        const double share = length / link.piece.length;
        constexpr double kAtOnce = -std::numeric_limits<double>::infinity();
        doomed_.push({std::isnan(share) ? kAtOnce : share, i, link.version});
    }

    detail::SidewiseMove move_;
    bool isClosed_;
    int left_ = 0;
    int count_ = 0;            ///< of pieces in the beginning
    std::vector<Link> links_;  ///< bridges at the end
    std::priority_queue<Doomed> doomed_;
};

/// How often a closed figure turns round counter-clockwise; 0 when it turns straight back at a
/// corner, since that may be counted either way.
double turnsOf(IcommonFunc& geometry, const Figure& figure)
{
    const detail::SidewiseMove unmoved(geometry, 0.0);
    const int n = figure.segments();
    const auto piece = [&](int i) {
        return unmoved.move(figure.points[i % n], figure.points[(i + 1) % n], figure.bulges[i % n]);
    };
    double turn = 0.0;
    MovedPiece before = piece(0);
    for (int i = 1; i <= n; ++i) {
        const MovedPiece after = piece(i);
        const Point2DF arriving = directionAt(before, before.to);
        const Point2DF leaving = directionAt(after, after.from);
        if (detail::turnsBack(arriving, leaving)) return 0.0;
        turn += turnAlong(before);
        turn += detail::turnOf(arriving, leaving);
        before = after;
    }
    return turn / detail::kTwoPi;
}

/// Whether a closed figure has gone and what is left of its pieces is its inside turned out: then
/// neither the turns nor the area of the parallel have the figure's sign. A loop more on the
/// parallel changes its turns alone; parts turned out, of a figure that is still there elsewhere,
/// may change the area.
bool isTurnedInsideOut(IcommonFunc& geometry, const Figure& figure, const Figure& parallel,
                       double parallelTurns)
{
    const double turns = std::round(turnsOf(geometry, figure));
    if (turns == 0 || turns * std::round(parallelTurns) > 0) return false;
    const double area = geometry.bulgePolygonArea(figure.points, figure.bulges);
    return !(area * geometry.bulgePolygonArea(parallel.points, parallel.bulges) > 0);
}

bool isFinite(const Points& points, const Values& bulges, int bulgeCount)
{
    for (const Point2DF& p : points) {
        if (!detail::isFinite(p)) return false;
    }
    for (int i = 0; i < bulgeCount; ++i) {
        if (!std::isfinite(bulges[i])) return false;
    }
    return true;
}

/// The figure itself, with bulge lists and closing vertex as a parallel has them.
Figure unmoved(const Points& points, const Values& bulges, bool isClosed)
{
    Figure figure{points, bulges, isClosed};
    figure.bulges.resize(points.size());
    figure.bulges.last() = 0.0;
    if (isClosed) figure.points.last() = points.first();
    return figure;
}

}  // namespace

bool commonFunc::offsetBulgePolyline(Points points, Values bulges, double distance,
                                     Points& outPoints, Values& outBulges)
{
    const Points& line = points;
    const int n = line.size();
    detail::padBulges(bulges, n);
    if (n < 2 || !std::isfinite(distance) || !isFinite(line, bulges, n - 1)) return false;
    const Figure figure = withoutRepeats(*this, line, bulges);
    if (figure.points.size() < 2) return false;

    Figure parallel;
    if (distance == 0) {
        parallel = unmoved(line, bulges, figure.isClosed);
    } else {
        ParallelChain chain(*this, figure, distance);
        if (!chain.settle()) return false;
        parallel = chain.result(line[0]);
        if (figure.isClosed && isTurnedInsideOut(*this, figure, parallel, chain.turns()))
            return false;
    }
    if (!isFinite(parallel.points, parallel.bulges, parallel.bulges.size())) return false;
    outPoints = std::move(parallel.points);
    outBulges = std::move(parallel.bulges);
    return true;
}
