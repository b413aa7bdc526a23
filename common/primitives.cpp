// Points and vectors.

#include "common/detail/primitives.h"

#include "common/commonFunc.h"

namespace detail = calcora::detail;

double commonFunc::lineAngle(const Point2DF& from, const Point2DF& to)
{
    return detail::lineAngle(from, to);
}

// Not the overflow-safe root: the distance and its square must agree for whoever compares either.
double commonFunc::pointDist(const Point2DF& a, const Point2DF& b)
{
    return std::sqrt(pointDistSquared(a, b));
}

double commonFunc::projectionRatio(const Point2DF& p, const Point2DF& a, const Point2DF& b)
{
    return detail::dot(p - a, b - a) / pointDistSquared(a, b);
}

double commonFunc::pointDistSquared(const Point2DF& a, const Point2DF& b)
{
    return detail::pointDistSquared(a, b);
}

void commonFunc::reverseDoubleList(Values& values)
{
    detail::reverseValues(values);
}

void commonFunc::reversePointList(Points& points)
{
    detail::reversePoints(points);
}

double commonFunc::dotProduct(const Point2DF& u, const Point2DF& v)
{
    return detail::dot(u, v);
}

double commonFunc::vectorDot(const Point2DF& u, const Point2DF& v)
{
    return detail::dot(u, v);
}

double commonFunc::innerProduct(const Point2DF& u, const Point2DF& v)
{
    return detail::dot(u, v);
}

double commonFunc::scalarProduct(const Point2DF& u, const Point2DF& v)
{
    return detail::dot(u, v);
}

double commonFunc::crossProduct(const Point2DF& u, const Point2DF& v)
{
    return dotProduct(detail::leftNormal(u), v);
}

double commonFunc::orientation3(const Point2DF& p1, const Point2DF& p2, const Point2DF& p3)
{
    return detail::cross(p1 - p3, p2 - p3);
}

double commonFunc::sweepAngle(const Point2DF& centre, const Point2DF& from, const Point2DF& to)
{
    const Point2DF u = from - centre;
    const Point2DF v = to - centre;
    const double sweep = detail::turnBetween(std::atan2(u.y(), u.x()), std::atan2(v.y(), v.x()));
    // A turn that is negative by rounding alone comes up as the full turn, which means none.
    return sweep >= detail::kTwoPi ? 0.0 : sweep;
}

tav::Point2DF commonFunc::closestPointOnSegment(const Point2DF& p, const Point2DF& a,
                                                const Point2DF& b)
{
    const double t = projectionRatio(p, a, b);
    if (t > 1) return b;
    // Not-a-number, the ratio on a segment without length, gives a as well.
    return t >= 0 ? a + t * (b - a) : a;
}

// Relative to point 0: far from the origin the trapezoids are large and their sum is all rounding.
double commonFunc::polygonArea(const Points& points)
{
    const int n = points.size();
    if (n < 2) return 0.0;
    double area = 0.0;
    Point2DF before;
    for (int i = 1; i <= n; ++i) {
        const Point2DF vertex = points[i == n ? 0 : i] - points[0];
        area += (before.x() + vertex.x()) * 0.5 * (before.y() - vertex.y());
        before = vertex;
    }
    return std::fabs(area);
}

double commonFunc::segmentParameter(const Point2DF& p, const Point2DF& a, const Point2DF& b)
{
    return detail::dot(p - a, b - a) / pointDistSquared(a, b);
}

void commonFunc::polarPoint(const Point2DF& base, double angle, double distance, Point2DF& out)
{
    out = detail::polarPoint(base, angle, distance);
}
