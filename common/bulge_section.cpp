// Cutting a polyline with bulges at two of its points.

#include <cmath>
#include <utility>

#include "common/commonFunc.h"
#include "common/detail/bulges.h"

namespace detail = calcora::detail;

namespace {

using tav::Point2DF;
using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

/// Share of a segment: a cut nearer to a vertex is at the vertex.
constexpr double kCutAtVertex = 1e-6;

/// A place on the polyline: the point at `fraction` of a segment, below 1. The last vertex is
/// fraction 0 of the segment that would follow.
struct Cut {
    int segment = -1;
    double fraction = 0.0;
    Point2DF point;

    bool isBefore(const Cut& other) const
    {
        return segment != other.segment ? segment < other.segment : fraction < other.fraction;
    }
};

/// The polyline that is cut, with its values if it has any.
struct Line {
    Points points;
    Values bulges;
    Values values;

    Cut vertexCut(int i) const { return {i, 0.0, points[i]}; }

    double valueAt(const Cut& cut) const
    {
        const double value = values[cut.segment];
        return cut.fraction > 0 ? value + (values[cut.segment + 1] - value) * cut.fraction : value;
    }

    /// The bulge of the part of a segment from one fraction to another.
    double partBulge(int segment, double from, double to) const
    {
        const double bulge = detail::bulgeAt(bulges, segment);
        return to - from < 1 ? std::tan((to - from) * std::atan(bulge)) : bulge;
    }
};

/// The place on the line nearest to p; segment -1 if there is none. Past an end of the nearest
/// segment it is that end; its bare parameter would lie in the middle of another segment.
Cut locate(IcommonFunc& geometry, const Line& line, const Point2DF& p)
{
    Cut cut;
    double parameter = 0.0;
    geometry.nearestOnBulgePolylineEx(p, line.points, line.bulges, cut.point, &cut.segment,
                                      &parameter);
    const int last = line.points.size() - 1;
    if (!(0 <= cut.segment && cut.segment <= last) || std::isnan(parameter)) return {};
    if (cut.segment == last) return line.vertexCut(last);
    cut.fraction = parameter - cut.segment;
    if (cut.fraction < kCutAtVertex) return line.vertexCut(cut.segment);
    if (1 - cut.fraction < kCutAtVertex) return line.vertexCut(cut.segment + 1);
    return cut;
}

/// The line from one cut to a later one; a single point if they are the same place.
Line pieceBetween(const Line& line, const Cut& from, const Cut& to)
{
    const bool hasValues = !line.values.isEmpty();
    Line piece;
    const auto append = [&](const Cut& at) {
        piece.points.append(at.point);
        if (hasValues) piece.values.append(line.valueAt(at));
    };
    append(from);
    for (int i = from.segment; i < to.segment || (i == to.segment && to.fraction > 0); ++i) {
        const bool startsHere = i == from.segment;
        const bool endsHere = i == to.segment;
        if (startsHere && endsHere && !from.isBefore(to)) break;
        const Cut end = endsHere ? to : line.vertexCut(i + 1);
        piece.bulges.append(
            line.partBulge(i, startsHere ? from.fraction : 0.0, endsHere ? to.fraction : 1.0));
        append(end);
    }
    piece.bulges.append(0.0);
    return piece;
}

}  // namespace

void commonFunc::bulgePolylineSection(const Point2DF& cutA, const Point2DF& cutB,
                                      const Points& points, Values bulges, const Values& values,
                                      PointLists& outPoints, ValueLists& outBulges,
                                      ValueLists& outValues, bool /*flag*/)
{
    const int n = points.size();
    if (!values.isEmpty() && values.size() < n) return;
    detail::padBulges(bulges, n);
    const Line line{points, bulges, values};
    Cut first = locate(*this, line, cutA);
    Cut second = locate(*this, line, cutB);
    if (first.segment < 0 || second.segment < 0) return;
    if (second.isBefore(first)) std::swap(first, second);

    const Cut start = line.vertexCut(0);
    const Cut end = line.vertexCut(n - 1);
    for (const Line& piece : {pieceBetween(line, start, first), pieceBetween(line, first, second),
                              pieceBetween(line, second, end)}) {
        outPoints.append(piece.points);
        outBulges.append(piece.bulges);
        outValues.append(piece.values);
    }
}
