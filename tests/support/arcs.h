// Arcs made from a circle, and small things that tests of plane geometry share.
#pragma once

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "tavrel/Vector.h"
#include "tavrel/points.h"

namespace test_support {

using tav::Point2DF;
using Points = tav::Vector<Point2DF>;
using Values = tav::Vector<double>;
using PointLists = tav::Vector<Points>;

constexpr double kPi = std::numbers::pi;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Survey coordinates: large enough for absolute formulas to lose what they promise.
constexpr tav::Point2DF kSurvey{5e5, 4e6};

/// What an output holds before a call that is to leave it alone.
constexpr tav::Point2DF kUntouched{777, 777};

inline double uniform(std::mt19937& random, double low, double high)
{
    return std::uniform_real_distribution<double>(low, high)(random);
}

inline double dist(const tav::Point2DF& a, const tav::Point2DF& b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

inline tav::Vector<tav::Point2DF> moved(const tav::Vector<tav::Point2DF>& points,
                                        const tav::Point2DF& by)
{
    tav::Vector<tav::Point2DF> result;
    for (const tav::Point2DF& p : points) result.append(p + by);
    return result;
}

/// `perEdge` points of each edge of the ring, so many that its arcs are as good as followed.
template <class Geometry>
tav::Vector<tav::Point2DF> sampledRing(Geometry& geometry, const tav::Vector<tav::Point2DF>& ring,
                                       const tav::Vector<double>& bulges, int perEdge)
{
    tav::Vector<tav::Point2DF> result;
    for (int k = 0; k < perEdge * ring.size(); ++k) {
        const int i = k / perEdge;
        tav::Point2DF at;
        geometry.pointOnBulgeSegmentAtRatio(ring[i], ring[(i + 1) % ring.size()], bulges[i],
                                            double(k % perEdge) / perEdge, at);
        result.append(at);
    }
    return result;
}

struct Arc {
    tav::Point2DF centre;
    double radius = 1.0;
    double from = 0.0;   ///< radians
    double sweep = 1.0;  ///< radians, negative clockwise

    tav::Point2DF at(double t) const
    {
        const double angle = from + t * sweep;
        return centre + radius * tav::Point2DF(std::cos(angle), std::sin(angle));
    }
    tav::Point2DF start() const { return at(0); }
    tav::Point2DF end() const { return at(1); }
    double bulge() const { return std::tan(sweep / 4); }
    double length() const { return radius * std::fabs(sweep); }
};

/// Any direction, radius 0.5 to 20, sweep 0.05 to 2 pi - 0.05 either way, centre near `origin`.
inline Arc randomArc(std::mt19937& random, const tav::Point2DF& origin)
{
    const tav::Point2DF offset(uniform(random, -50, 50), uniform(random, -50, 50));
    const double sweep = uniform(random, 0.05, 2 * kPi - 0.05);
    return {origin + offset, uniform(random, 0.5, 20), uniform(random, 0, 2 * kPi),
            uniform(random, 0, 1) < 0.5 ? sweep : -sweep};
}

}  // namespace test_support
