#include "app/nesting.h"

#include <cmath>
#include <map>

#include "app/figures.h"

namespace calcora::app {

namespace {

using tav::Point2DF;

/// Vertices from which on a loop gets an index of its edges. Below, asking all edges is as fast.
constexpr int kManyVertices = 256;

/// Distance (scaled units) within which a point counts as on a loop, not in it; that of the
/// module's test of points in figures.
constexpr double kBoundaryBand = 1e-4;

/// What stands in a tree for an element of a list: its place in memory.
template <class T>
void* idOf(const T& element)
{
    return const_cast<T*>(&element);
}

template <class T>
int indexOf(void* id, const T* first)
{
    return static_cast<int>(static_cast<T*>(id) - first);
}

RTreeRect rectOf(const Box& box)
{
    return {box.minX, box.minY, box.maxX, box.maxY};
}

/// A loop with many vertices and its edges by place, for many questions about points inside.
class IndexedLoop {
public:
    IndexedLoop(const Host& host, IcommonFunc& common, const Loop& loop)
        : common_(common), loop_(loop), tree_(host.create<ICRTree>())
    {
        for (int i = 0; i < loop.points.size(); ++i) {
            const Box box = segmentBox(loop.points.at(i), end(i), loop.bulges.at(i));
            RTreeRect rect = rectOf(box);
            tree_->insertRect(&rect, idOf(loop.points.at(i)), 0);
            right_ = std::max(right_, box.maxX);
        }
    }

    /// Strictly inside: counts the edges that a ray to the right crosses.
    bool contains(const Point2DF& point) const
    {
        const RTreeRect ray{point.x() - kBoundaryBand, point.y() - kBoundaryBand,
                            std::max(right_, point.x()), point.y() + kBoundaryBand};
        tav::List<void*> hits;
        tree_->findOverlapping(&ray, &hits);
        bool inside = false;
        for (void* hit : std::as_const(hits)) {
            const int i = indexOf(hit, loop_.points.data());
            const Point2DF& a = loop_.points.at(i);
            const Point2DF& b = end(i);
            const double bulge = loop_.bulges.at(i);
            if (common_.pointBulgeSegmentDistSquared(point, a, b, bulge) <
                kBoundaryBand * kBoundaryBand)
                return false;
            inside = inside != (chordIsRightOf(a, b, point) != isUnderArc(a, b, bulge, point));
        }
        return inside;
    }

private:
    const Point2DF& end(int i) const
    {
        return loop_.points.at(i + 1 < loop_.points.size() ? i + 1 : 0);
    }

    static bool chordIsRightOf(const Point2DF& a, const Point2DF& b, const Point2DF& p)
    {
        if ((a.y() <= p.y()) == (b.y() <= p.y())) return false;
        return p.x() - a.x() < (b.x() - a.x()) * ((p.y() - a.y()) / (b.y() - a.y()));
    }

    /// True between the arc and its chord: there, and only there, arc and chord disagree.
    bool isUnderArc(const Point2DF& a, const Point2DF& b, double bulge, const Point2DF& p) const
    {
        if (bulge == 0.0) return false;
        const Point2DF chord = b - a;
        const Point2DF toPoint = p - a;
        const double side = chord.x() * toPoint.y() - chord.y() * toPoint.x();
        if ((bulge > 0) != (side < 0)) return false;
        Point2DF centre;
        double radius = 0;
        common_.bulgeArcCenter(a, b, bulge, centre, &radius);
        return centre.distanceTo(p) < radius;
    }

    IcommonFunc& common_;
    const Loop& loop_;
    tav::Ref<ICRTree> tree_;
    double right_ = -std::numeric_limits<double>::infinity();
};

class NestingFinder {
public:
    NestingFinder(const Host& host, const std::vector<Loop>& loops)
        : host_(host),
          loops_(loops),
          common_(host.create<IcommonFunc>()),
          tree_(host.create<ICRTree>())
    {
    }

    std::vector<bool> find()
    {
        for (int i = 0; i < static_cast<int>(loops_.size()); ++i) {
            RTreeRect rect = rectOf(figureBox(loop(i).points, loop(i).bulges, true));
            tree_->insertRect(&rect, idOf(loop(i)), 0);
        }
        std::vector<bool> nested;
        nested.reserve(loops_.size());
        for (int i = 0; i < static_cast<int>(loops_.size()); ++i) nested.push_back(isNested(i));
        return nested;
    }

private:
    const Loop& loop(int index) const { return loops_[static_cast<std::size_t>(index)]; }

    /// A loop inside another touches it in one point at most, so of two of its points one tells;
    /// a third one covers for a point that lies just beside the other's boundary.
    bool isNested(int index)
    {
        const Points& points = loop(index).points;
        const int count = points.size();
        Point2DF middle = points.at(0);
        common_->pointOnBulgeSegmentAtRatio(points.at(0), points.at(1), loop(index).bulges.at(0),
                                            0.5, middle);
        return isInsideLarger(points.at(0), index) || isInsideLarger(points.at(count / 2), index) ||
               isInsideLarger(middle, index);
    }

    bool isInsideLarger(const Point2DF& point, int index)
    {
        const RTreeRect place{point.x(), point.y(), point.x(), point.y()};
        tav::List<void*> hits;
        tree_->findOverlapping(&place, &hits);
        for (void* hit : std::as_const(hits))
            if (const int other = indexOf(hit, loops_.data());
                other > index && contains(other, point))
                return true;
        return false;
    }

    bool contains(int index, const Point2DF& point)
    {
        constexpr int kInside = -1;
        const Loop& large = loop(index);
        if (large.points.size() < kManyVertices)
            return common_->pointInBulgePolygon(large.points, large.bulges, point) == kInside;
        auto place = indexed_.find(index);
        if (place == indexed_.end())
            place = indexed_.try_emplace(index, host_, *common_, large).first;
        return place->second.contains(point);
    }

    const Host& host_;
    const std::vector<Loop>& loops_;
    tav::Ref<IcommonFunc> common_;
    tav::Ref<ICRTree> tree_;  ///< the loops' boxes
    std::map<int, IndexedLoop> indexed_;
};

}  // namespace

std::vector<bool> findNestedLoops(const Host& host, const std::vector<Loop>& loops)
{
    return NestingFinder(host, loops).find();
}

}  // namespace calcora::app
