#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "common/detail/ring_measure.h"
#include "datageo/autob/FuzzyPointSet.h"
#include "datageo/segments.h"
#include "tavrel/Vector.h"
#include "tavrel/points.h"

namespace AutoB {

/// One of the two directed half-edges of a polyline; its opposite is half-edge number ^ 1. The even one
/// runs along the input, the odd one against it.
struct CLoopEdge {
    int startNode;
    int next;  ///< the half-edge after it in its loop, where loops are linked before they are walked
};

/// What both half-edges of a polyline have in common.
struct CLoopLine {
    double bulge = 0.0;  ///< of the even half-edge's only segment, unless `shape` has several
    int shape = -1;  ///< index of the even one's points and bulges, the odd one's follow; -1: none
    int tag = 0;
    bool keepDirection = false;  ///< as its polyline was added
};

/// A node as walks see it: a range of the angular lists.
struct CLoopNode {
    std::int64_t visitStamp = -1;  ///< number of the walk that last entered the node
    int firstEdge = 0;
    int endEdge = 0;
};

/// Builds closed loops from line work that meets only at its ends.
///
/// The graph. Every polyline added becomes two opposite half-edges between the nodes at its ends;
/// ends within 1e-5 in both coordinates share a node, which keeps the point that made it. The
/// half-edges that leave a node are kept in angular order, largest angle first.
///
/// The walk. From a start node S a walk leaves by one half-edge and, at every node M it comes to,
/// goes on by the first half-edge met when turning clockwise from the way it came in, so that it
/// keeps a region on its left:
///
///            \ 2            arriving along e: tried in the order 1, 2, 3;
///      e ---> M ---- 1      straight back along e comes last
///            / 3
///
/// (1 is the first direction below that of the way back, which points against e). A walk never
/// enters a node twice. Back at S it is a loop; stuck, it goes back and tries the next half-edge.
/// A walk that closed, whether its loop is wanted or not, uses its half-edges up.
///
/// Which loops are wanted. The sign of a loop's area tells a region's boundary (counter-clockwise)
/// from the outline around it (clockwise). Because a walk enters no node twice, an outline is that
/// of a biconnected block: two squares joined by a bridge, or touching at a vertex, have one each.
/// Lines that end freely and bridges are part of no loop. Holes are no loops of their own, but what
/// lies inside a hole is found.
///
/// The cost is linear where the lists of half-edges are those of a drawing in the plane, as they are but
/// for rounding: then all loops are linked before they are walked (see faces.cpp). It is near-linear
/// elsewhere: an undirected walk stays inside one biconnected block, since an excursion out of it
/// could only come back through a node already entered. So a node where several blocks meet is walked
/// as one node per block, and half-edges outside all blocks are never walked.
class CAutoLoop {
public:
    using Points = tav::Vector<tav::Point2DF>;
    using Values = tav::Vector<double>;
    using Tags = tav::Vector<unsigned>;

    CAutoLoop();
    virtual ~CAutoLoop();
    CAutoLoop(const CAutoLoop&) = delete;
    CAutoLoop& operator=(const CAutoLoop&) = delete;

    /// The caller's stop request, read before each walk of buildLoops() and on the way through all
    /// longer work. May be null.
    void setCancelFlag(bool* flag) { cancelFlag_ = flag; }

    /// Loops found from now on get no tags.
    void leaveTagsOut() { keepsTags_ = false; }

    /// Adds the segments of a set, which become two-point polylines with tag 0. Throws Cancelled
    /// when the flag is seen.
    void addSegments(const calcora::SegmentSet& set, bool keepDirection);

    /// Adds a polyline; bulge i belongs to the segment from point i to point i + 1, missing bulges
    /// count as 0. Repeats (within 1e-7) at either end are dropped; fewer than two points left add
    /// nothing. Unless `keepDirection`, the polyline counts as running the other way. A closed one
    /// is split in two halves, which keep their direction and have tag 0.
    void addPolyline(Points points, Values bulges, bool keepDirection, int tag);

    /// The same for a single segment.
    void addSegment(const calcora::SegmentKey& segment, bool keepDirection, int tag);

    /// Traces the loops: mode 1 keeps the outlines, clockwise; any other mode the bounded regions,
    /// counter-clockwise. Half-edges in no loop stay; a second build sees what the first has left.
    void buildLoops(int mode);

    /// Traces loops along half-edges marked `againstInput` only; any other half-edge that a walk
    /// comes to is used up together with the walk. Keeps counter-clockwise loops of two or more
    /// points. The cancel flag is not looked at while loops are traced, before that it leaves none.
    void buildDirectedLoops();

    const std::vector<Points>& loops() const { return loops_; }
    const std::vector<Values>& loopBulges() const { return loopBulges_; }
    const std::vector<Tags>& loopTags() const { return loopTags_; }
    std::vector<Points> takeLoops() { return std::move(loops_); }
    std::vector<Values> takeLoopBulges() { return std::move(loopBulges_); }

    /// 1 outside, -1 inside, 0 within 1e-6 of the boundary or with fewer than three points.
    /// Crossings are counted along a ray towards larger x, a vertex belonging to the edge above it.
    static int pointInPolygon(const Points& polygon, double x, double y);

private:
    /// A place in a node's angular list. The angle is atan2 of the direction in which the half-edge
    /// leaves, a hundredth along, or another figure that
    /// grows with it where that tells all directions at the node apart.
    struct AngularEntry {
        double angle;
        int edge;
        int target;  ///< the node at its end
    };

    /// What is known of a half-edge, as bits.
    enum Mark : unsigned char {
        kUsedUp = 1,      ///< a finished walk has used it up
        kLinked = 2,      ///< its `next` holds: the loops at it are walked as linked
        kNoLoop = 4,      ///< linked, and in no loop
        kFaceWalked = 8,  ///< while loops are linked: its face is done
    };

    /// Points and bulges of a polyline of more than one segment.
    struct Shape {
        Points points;
        Values bulges;
    };

    /// One half-edge of a walk and the candidates to go on by at its end.
    struct Step {
        int edge;
        int firstCandidate = 0;  ///< place in the angular lists
        int nextCandidate = 0;
        bool wrapped = false;
    };

    enum class WalkResult { Accepted, Dropped, DeadEnd, NothingFound };

    /// What a build looks for.
    struct Search {
        bool directed;
        bool acceptNotNegative;
    };

    void walkAll(const Search& search);

    // Graph: CAutoLoop.cpp
    void addOpenPolyline(Points points, Values bulges, bool keepDirection, int tag);
    void addEdge(int startNode, int endNode, double bulge, bool keepDirection, int tag);
    void addEdgePair(int startNode, int endNode, const CLoopLine& line);
    int findOrAddNode(const tav::Point2DF& point);
    const tav::Point2DF& pointOf(int node) const
    {
        return nodePoints_[static_cast<std::size_t>(node)];
    }
    int startOf(int edge) const { return edges_[static_cast<std::size_t>(edge)].startNode; }
    const CLoopLine& lineOf(int edge) const { return lines_[static_cast<std::size_t>(edge >> 1)]; }
    bool has(int edge, unsigned marks) const
    {
        return (marks_[static_cast<std::size_t>(edge)] & marks) != 0;
    }
    void mark(int edge, unsigned marks)
    {
        marks_[static_cast<std::size_t>(edge)] |= static_cast<unsigned char>(marks);
    }
    double bulgeOf(int edge) const;
    double angleOf(int edge) const;
    tav::Point2DF secondPoint(int edge) const;

    // Angular lists: angular_order.cpp
    void buildAngularLists(bool trueAngles);
    void fillAngularLists(bool trueAngles);
    void takeTrueAngles(std::span<AngularEntry> list);
    void keepAngles(std::span<const AngularEntry> list);
    std::span<AngularEntry> listOf(std::size_t node);
    void splitNodesByBlock();
    void keepNodesWhole();
    int firstBelow(const CLoopNode& node, double angle) const;

    // Loops linked before they are walked: faces.cpp
    bool linkLoops();
    void linkAroundNodes();
    calcora::detail::BigVector<int> componentOfNodes();
    bool linkFace(int first, calcora::detail::BigVector<int>& stackPlace,
                  calcora::CancelCheck& check);
    bool closeLinkedLoop(std::size_t from, calcora::detail::BigVector<int>& stackPlace);

    // Walks: walk.cpp
    calcora::detail::BigVector<int> orderedNodes() const;
    bool isWalkable(int edge, const Search& search) const;
    WalkResult followLinks(int start, const Search& search);
    WalkResult walk(int start, const Search& search);
    CLoopNode& walkNodeAtEnd(int edge);
    Step enteredStep(int edge, const CLoopNode& node, const Search& search) const;
    int takeCandidate(Step& step, const CLoopNode& node) const;
    bool runsStraightBack(int candidate, int last) const;
    WalkResult closeWalk(const Search& search);
    void useUpPath();
    void traceOutline();
    bool loopAreaNotNegative();
    void recordLoop();

    bool* cancelFlag_ = nullptr;

    FuzzyPointSet nodeSet_{calcora::kNodeTolerance};
    calcora::detail::BigVector<tav::Point2DF> nodePoints_;
    bool nodesAreInSetOrder_ = false;  ///< they came with a set, and nodeSet_ is empty
    calcora::detail::BigVector<CLoopEdge> edges_;
    calcora::detail::BigVector<CLoopLine> lines_;
    calcora::detail::BigVector<unsigned char> marks_;  ///< per half-edge, Mark bits
    std::vector<Shape> shapes_;

    calcora::detail::BigVector<int> listBegin_;  ///< per node, and the end of the last
    calcora::detail::BigVector<AngularEntry> angular_;
    calcora::detail::BigVector<char> isTied_;  ///< per node: directions at it are not told apart

    // What walks see where loops are not linked: every node whole, or one node per block that meets
    // there.
    calcora::detail::BigVector<CLoopNode> walkNodes_;
    calcora::detail::BigVector<int>
        walkNodeOf_;  ///< per half-edge, the node it leaves; -1: not walked
    calcora::detail::BigVector<double> angleOf_;  ///< per half-edge that is walked

    std::vector<Points> loops_;
    std::vector<Values> loopBulges_;
    std::vector<Tags> loopTags_;
    bool keepsTags_ = true;
    bool hasWalked_ = false;  ///< a build has used up half-edges

    // State of the walk in progress.
    std::int64_t walkNumber_ = 0;
    std::vector<Step> path_;
    calcora::detail::BigVector<int> way_;  ///< half-edges of the face that is being linked
    std::vector<tav::Point2DF> outline_;
    std::vector<double> outlineBulges_;
    calcora::detail::RingMeasure measure_{true};
};

}  // namespace AutoB
