// The circular arc through three points, in plan (z = 0) or in space.
#pragma once

#include <optional>

#include "frame/detail/vec3.h"

namespace calcora::paths {

inline constexpr double kPi = std::numbers::pi;
inline constexpr double kTwoPi = 2 * std::numbers::pi;

/// Drawing units: an arc whose ends differ by less in every coordinate is a full circle with the
/// arc point opposite.
inline constexpr double kFullCircleTolerance = 1e-6;

inline bool endsMeetInPlan(const tav::Point3DF& a, const tav::Point3DF& b)
{
    return std::fabs(a.x() - b.x()) < kFullCircleTolerance &&
           std::fabs(a.y() - b.y()) < kFullCircleTolerance;
}

inline bool endsMeetInSpace(const tav::Point3DF& a, const tav::Point3DF& b)
{
    return endsMeetInPlan(a, b) && std::fabs(a.z() - b.z()) < kFullCircleTolerance;
}

/// An arc seen from its start, where it stays exact however flat it is: the point at angle psi lies
/// at the end of a chord of length 2 r sin(psi/2) that leaves the tangent by psi/2.
struct Arc {
    tav::Point3DF start;
    double radius = 0.0;
    double sweep = 0.0;  ///< radians, above 0, at most 2 pi
    Vec3 tangent;        ///< unit, direction in which the arc leaves its start
    Vec3 inward;         ///< unit, from the start to the centre

    double arcLength() const { return radius * sweep; }
    tav::Point3DF centre() const { return moved(start, radius * inward); }

    /// The point `angle` along the arc.
    tav::Point3DF pointAt(double angle) const
    {
        const double half = angle / 2;
        const double chord = 2 * radius * std::sin(half);
        return moved(start, chord * (std::cos(half) * tangent + std::sin(half) * inward));
    }

    /// How far round the circle, in [0, 2 pi], the ray from the centre through p meets it; 0 for
    /// the centre itself.
    double angleTowards(const tav::Point3DF& p) const
    {
        const Vec3 d = between(start, p);
        const double angle = std::atan2(dot(d, tangent), radius - dot(d, inward));
        return angle < 0 ? angle + kTwoPi : angle;
    }
};

/// The unit normal nearest the z axis of the planes that hold the unit vector w; (0, 1, 0) for an
/// upright one, where all are level.
inline Vec3 mostUprightNormal(const Vec3& w)
{
    const double level = std::hypot(w.x, w.y);
    if (!(level > 0)) return {0, 1, 0};
    return {-w.z * (w.x / level), -w.z * (w.y / level), level};
}

/// The full circle that starts at a and has m opposite, counter-clockwise about the normal nearest
/// the z axis.
inline std::optional<Arc> fullCircle(const tav::Point3DF& a, const tav::Point3DF& m)
{
    const double diameter = length(between(a, m));
    if (!isUsableLength(diameter)) return std::nullopt;
    const Vec3 inward = between(a, m) / diameter;
    return Arc{a, diameter / 2, kTwoPi, cross(inward, mostUprightNormal(inward)), inward};
}

/// The arc from a through m to b; nothing when the three are collinear. Its sweep is twice the
/// angle by which the way a, m, b turns at m, which needs no centre and holds beyond a half circle.
inline std::optional<Arc> arcThrough(const tav::Point3DF& a, const tav::Point3DF& m,
                                     const tav::Point3DF& b)
{
    if (endsMeetInSpace(a, b)) return fullCircle(a, m);
    if (areCollinear(a, b, m)) return std::nullopt;
    const Vec3 u = between(a, b);
    const Vec3 v = between(a, m);
    const Vec3 w = u - v;
    const Vec3 n = cross(u, v);
    const double area = length(n);
    const double chord = length(u);
    const double sweep = 2 * std::atan2(area, dot(v, w));
    const double radius = chord * (length(v) / area) * (length(w) / 2);
    const Vec3 axis = -n / area;
    const Vec3 along = u / chord;
    const Vec3 outward = cross(along, axis);  // across the chord, to the arc's side
    const Vec3 tangent = std::cos(sweep / 2) * along + std::sin(sweep / 2) * outward;
    const Arc arc{a, radius, sweep, tangent, cross(axis, tangent)};
    if (!isUsableLength(radius) || !isUsableLength(sweep) || !isFinite(tangent))
        return std::nullopt;
    return arc;
}

/// The same in plan.
inline std::optional<Arc> planArcThrough(const tav::Point3DF& a, const tav::Point3DF& m,
                                         const tav::Point3DF& b)
{
    return arcThrough(inPlan(a), inPlan(m), inPlan(b));
}

}  // namespace calcora::paths
