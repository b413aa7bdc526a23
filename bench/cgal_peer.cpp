#include <CGAL/Arr_circle_segment_traits_2.h>
#include <CGAL/Arr_segment_traits_2.h>
#include <CGAL/Arrangement_2.h>
#include <CGAL/Exact_predicates_exact_constructions_kernel.h>

#include <vector>

#include "bench/peers.h"

namespace peers {

namespace {

using Kernel = CGAL::Exact_predicates_exact_constructions_kernel;
using Point = Kernel::Point_2;
using SegmentTraits = CGAL::Arr_segment_traits_2<Kernel>;
using CircleTraits = CGAL::Arr_circle_segment_traits_2<Kernel>;
using workloads::LineWork;

template <class Traits>
class Arrangement : public Peer {
public:
    explicit Arrangement(std::vector<typename Traits::Curve_2> curves) : curves_(std::move(curves))
    {
    }
    int countFaces() override
    {
        CGAL::Arrangement_2<Traits> arrangement;
        CGAL::insert(arrangement, curves_.begin(), curves_.end());
        return static_cast<int>(arrangement.number_of_faces() -
                                arrangement.number_of_unbounded_faces());
    }

private:
    std::vector<typename Traits::Curve_2> curves_;
};

Point exact(const tav::Point2DF& p)
{
    return {p.x(), p.y()};
}

CircleTraits::Curve_2 curveOf(const tav::Point2DF& a, const tav::Point2DF& b, double bulge)
{
    if (bulge == 0) return {Kernel::Segment_2(exact(a), exact(b))};
    const double dx = b.x() - a.x();
    const double dy = b.y() - a.y();
    if (std::fabs(bulge) == 1) {
        // Halves of one circle have one circle, exactly.
        const Point centre = CGAL::midpoint(exact(a), exact(b));
        using End = CircleTraits::Point_2;
        const Kernel::Circle_2 circle(centre, CGAL::squared_distance(centre, exact(a)),
                                      bulge > 0 ? CGAL::COUNTERCLOCKWISE : CGAL::CLOCKWISE);
        return {circle, End(exact(a).x(), exact(a).y()), End(exact(b).x(), exact(b).y())};
    }
    const tav::Point2DF middle((a.x() + b.x()) / 2 + bulge * dy / 2,
                               (a.y() + b.y()) / 2 - bulge * dx / 2);
    return {exact(a), exact(middle), exact(b)};
}

}  // namespace

std::unique_ptr<Peer> cgalSegments(const LineWork& work)
{
    std::vector<SegmentTraits::Curve_2> curves;
    for (int i = 0; i < work.points.size(); ++i)
        for (int k = 0; k + 1 < work.points[i].size(); ++k)
            curves.emplace_back(exact(work.points[i][k]), exact(work.points[i][k + 1]));
    return std::make_unique<Arrangement<SegmentTraits>>(std::move(curves));
}

std::unique_ptr<Peer> cgalCircles(const LineWork& work)
{
    std::vector<CircleTraits::Curve_2> curves;
    for (int i = 0; i < work.points.size(); ++i)
        for (int k = 0; k + 1 < work.points[i].size(); ++k)
            curves.push_back(curveOf(work.points[i][k], work.points[i][k + 1], work.bulges[i][k]));
    return std::make_unique<Arrangement<CircleTraits>>(std::move(curves));
}

}  // namespace peers
