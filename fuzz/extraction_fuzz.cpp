// Loops of line work. On a lattice the number of faces is known from Euler's formula; of any
// drawing the loops must be finite, in order and of the right sense.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <numeric>
#include <set>
#include <utility>

#include "common/commonFunc.h"
#include "datageo/DataGeo.h"
#include "fuzz/source.h"

namespace {

using fuzz::Points;
using fuzz::Values;
using tav::Point2DF;

struct Lines {
    DataGeo::PointLists points;
    DataGeo::ValueLists bulges;
};

void expect(bool holds, const char* what)
{
    if (holds) return;
    std::fprintf(stderr, "fuzz: extraction: %s\n", what);
    std::abort();
}

Lines loopsOf(const Lines& lines, bool outlines, double snap)
{
    Lines loops;
    DataGeo(0).buildRegions(lines.points, lines.bulges, loops.points, loops.bulges, outlines,
                            nullptr, snap);
    return loops;
}

/// Faces within a graph: edges - nodes + components.
template <class Node>
class Graph {
public:
    void join(const Node& a, const Node& b)
    {
        ++edges_;
        parents_[rootOf(a)] = rootOf(b);
    }
    int faces()
    {
        int components = 0;
        for (const auto& [node, parent] : parents_) components += node == parent;
        return edges_ - static_cast<int>(parents_.size()) + components;
    }

private:
    Node rootOf(Node node)
    {
        while (true) {
            const auto at = parents_.emplace(node, node).first;
            if (at->second == node) return node;
            node = at->second;
        }
    }
    std::map<Node, Node> parents_;
    int edges_ = 0;
};

/// Stretches of lattice lines, of which the same edges are covered again and again: as many loops
/// as the lattice graph has faces, whose edges make that number of faces again.
void checkLattice(fuzz::Source& source)
{
    using Node = std::pair<int, int>;
    // Turned and moved by whole numbers: what lies in line does so exactly.
    const double across = 1 + source.below(20), up = source.below(20);
    const Point2DF origin = source.oneIn(2) ? Point2DF(5e5, 4e6) : Point2DF();
    const auto place = [&](const Node& n) {
        return origin +
               Point2DF(across * n.first - up * n.second, up * n.first + across * n.second);
    };
    const int side = 2 + source.below(12);
    Lines lines;
    std::set<std::pair<Node, Node>> edges;
    for (int n = source.below(4 * side * side); n > 0; --n) {
        Node from{source.below(side), source.below(side)};
        const Node step = source.oneIn(2) ? Node{1, 0} : Node{0, 1};
        const Node first = from;
        for (int k = 1 + source.below(3); k > 0; --k) {
            const Node to{from.first + step.first, from.second + step.second};
            edges.insert({from, to});
            from = to;
        }
        Points line;
        for (const Node& end : {first, from}) line.append(place(end));
        if (source.oneIn(2)) line = {line.at(1), line.at(0)};
        lines.points.append(line);
        lines.bulges.append(Values{0, 0});
    }
    Graph<Node> graph;
    for (const auto& [a, b] : edges) graph.join(a, b);
    const Lines loops = loopsOf(lines, false, 0);
    expect(loops.points.size() == graph.faces(), "not as many loops as faces");

    using Place = std::pair<double, double>;
    std::set<std::pair<Place, Place>> sides;
    Graph<Place> ofLoops;
    for (const Points& loop : std::as_const(loops.points))
        for (int i = 0; i < loop.size(); ++i) {
            const Point2DF &a = loop[i], &b = loop[(i + 1) % loop.size()];
            const Place from{a.x(), a.y()}, to{b.x(), b.y()};
            expect(sides.insert({from, to}).second, "a side in two loops");
            if (!sides.contains({to, from})) ofLoops.join(from, to);
        }
    expect(ofLoops.faces() == loops.points.size(), "loops that do not close to faces");
}

/// Any line work, also such that nothing in it can be told.
void checkAnything(fuzz::Source& source)
{
    Lines lines;
    for (int n = source.below(10); n > 0; --n) {
        Points line;
        source.fill(line);
        Values bulges;
        source.fill(bulges, line.size());
        lines.points.append(line);
        lines.bulges.append(bulges);
    }
    const bool outlines = source.oneIn(3);
    const Lines loops =
        loopsOf(lines, outlines, source.oneIn(3) ? std::fabs(source.number()) / 64 : 0);
    expect(loops.points.size() == loops.bulges.size(), "lists of different length");
    commonFunc common(0);
    double last = 0;
    for (int i = 0; i < loops.points.size(); ++i) {
        const Points& loop = loops.points.at(i);
        expect(loop.size() == loops.bulges.at(i).size(), "a loop without all bulges");
        const double area = common.bulgePolygonArea(loop, loops.bulges.at(i));
        if (!source.isFinite()) continue;
        expect(std::isfinite(area), "an area that is not finite");
        expect(outlines ? area > -1e-9 : area < 1e-9, "a loop of the wrong sense");
        expect(std::fabs(area) >= last * (1 - 1e-9), "loops out of order");
        last = std::fabs(area);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Source source(data, size);
    source.oneIn(4) ? checkLattice(source) : checkAnything(source);
    return 0;
}
