// Akima curve through points.
//
// The tangent at a point is the mean of the chords before and after it, each weighted with how much
// the line turns on the other side: with d the differences between consecutive points,
//
//     T[j] = |d[j] x d[j+1]| d[j-1] + |d[j-2] x d[j-1]| d[j],
//
// made a unit vector. So a straight run stays straight up to the corner that ends it. At the ends
// of an open line two points are added on either side by constant second differences. Each segment
// is the cubic with these tangents, times its chord r, at its ends. (H. Akima, A new method of
// interpolation and smooth curve fitting based on local procedures, Journal of the ACM 17, 1970;
// the form for curves in the plane.)

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/curve_sampling.h"
#include "common/detail/vec.h"

namespace {

using calcora::detail::CurveInput;
using tav::Point2DF;

/// Drawing units squared: ends of a line whose squared distance is smaller make a closed figure.
constexpr double kClosureDistanceSquared = 1e-7;

/// Step of a segment's parameter, added up from 0 on, and how many sums are below 1.
constexpr double kParameterStep = 0.02;
constexpr int kSamplesPerSegment = 50;

/// A turn between two differences counts as none when it is not larger than what rounding of
/// coordinates of the figure's size makes of collinear points.
constexpr double kTurnOfRounding = 1e-15;

/// The power of two that the smallest differences are scaled up by at most.
constexpr int kLargestScaling = 1000;

/// The differences between consecutive points, from two before the first segment to two behind the
/// last: entry i + 2 belongs to segment i.
std::vector<Point2DF> differences(const tav::Vector<Point2DF>& points, int n, bool closed)
{
    const int segments = closed ? n : n - 1;
    std::vector<Point2DF> d(static_cast<std::size_t>(segments) + 4);
    for (int i = 0; i < segments; ++i)
        d[static_cast<std::size_t>(i) + 2] = points[i + 1 < n ? i + 1 : 0] - points[i];
    const std::size_t last = d.size() - 3;
    if (closed) {
        d[1] = d[last];
        d[0] = d[last - 1];
        d[last + 1] = d[2];
        d[last + 2] = d[3];
    } else {
        d[1] = 2 * d[2] - d[3];
        d[0] = 3 * d[2] - 2 * d[3];
        d[last + 1] = 2 * d[last] - d[last - 1];
        d[last + 2] = 3 * d[last] - 2 * d[last - 1];
    }
    return d;
}

double largestComponent(const Point2DF& v)
{
    return std::max(std::fabs(v.x()), std::fabs(v.y()));
}

/// |p x q|, or 0 where it is not larger than rounding makes it.
double turn(const Point2DF& p, const Point2DF& q, double largestCoordinate)
{
    const double found = std::fabs(calcora::detail::cross(p, q));
    const double rounding = kTurnOfRounding * largestCoordinate *
                            (calcora::detail::length(p) + calcora::detail::length(q));
    return found > rounding ? found : 0.0;
}

/// The unit vector of v; false when v is 0.
bool unit(const Point2DF& v, Point2DF& out)
{
    const double length = std::hypot(v.x(), v.y());
    if (!(length > 0)) return false;
    out = {v.x() / length, v.y() / length};
    return true;
}

/// The unit tangent between the differences d[1] and d[2]; 0 when both are. Where the weights or
/// their sum vanish both chords count alike; where they cancel each other it is the second.
Point2DF tangent(const Point2DF* d, double largestCoordinate)
{
    const double size = std::max({largestComponent(d[0]), largestComponent(d[1]),
                                  largestComponent(d[2]), largestComponent(d[3])});
    if (!(size > 0)) return {};
    // By a power of two, so that products neither overflow nor vanish and no digit changes.
    const double scale = std::ldexp(1.0, std::min(-std::ilogb(size), kLargestScaling));
    const Point2DF before = scale * d[1], after = scale * d[2];
    double weightAfter = turn(scale * d[0], before, scale * largestCoordinate);
    double weightBefore = turn(after, scale * d[3], scale * largestCoordinate);
    const double larger = std::max(weightBefore, weightAfter);
    Point2DF found;
    if (larger > 0) {
        weightBefore /= larger;
        weightAfter /= larger;
        if (unit(weightBefore * before + weightAfter * after, found)) return found;
    }
    if (unit(before + after, found) || unit(after, found)) return found;
    return {};
}

/// Appends the samples of one segment from its start on, its end not included.
void appendSegment(const Point2DF& start, const Point2DF& d, const Point2DF& tangentStart,
                   const Point2DF& tangentEnd, tav::Vector<Point2DF>& out)
{
    const double r = std::hypot(d.x(), d.y());
    const Point2DF c1 = r * tangentStart;
    const Point2DF c2 = 3 * d - r * (2 * tangentStart + tangentEnd);
    const Point2DF c3 = r * (tangentStart + tangentEnd) - 2 * d;
    double t = 0.0;
    for (int i = 0; i < kSamplesPerSegment; ++i, t += kParameterStep)
        out.append(start + t * (c1 + t * (c2 + t * c3)));
}

}  // namespace

void commonFunc::akimaCurve(Points points, Points& out)
{
    const Points& given = points;
    CurveInput input;
    input.add(given);
    if (!input.isUsable() || given.isEmpty()) return;

    const Point2DF span = given.last() - given.first();
    const bool closed = calcora::detail::lengthSquared(span) < kClosureDistanceSquared;
    const int n = closed ? given.size() - 1 : given.size();
    if (n >= 3) {
        const std::int64_t segments = closed ? n : n - 1;
        const std::int64_t samples = kSamplesPerSegment * segments + 1;
        if (samples + out.size() > std::numeric_limits<int>::max()) return;
        calcora::detail::makeRoomFor(out, samples);
        const std::vector<Point2DF> d = differences(given, n, closed);
        const double largest = input.largestCoordinate();
        Point2DF tangentStart = tangent(&d[0], largest);
        for (int i = 0; i < segments; ++i) {
            const auto k = static_cast<std::size_t>(i);
            const Point2DF tangentEnd = tangent(&d[k + 1], largest);
            appendSegment(given[i], d[k + 2], tangentStart, tangentEnd, out);
            tangentStart = tangentEnd;
        }
    }
    out.append(closed ? given.first() : given.last());
}
