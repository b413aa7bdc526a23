// Where two chords meet in space.
#include <algorithm>
#include <cmath>

#include "frame/detail/vec3.h"
#include "geometric/CGeometric.h"
#include "geometric/detail/auxiliary.h"

using namespace calcora::paths;

namespace {

/// Drawing units: segments this near each other meet, and longer common stretches are overlaps.
/// intersectSegments3d().
constexpr double kMeeting = 1e-6;

constexpr short kInvalid = -1;
constexpr short kNone = 0;
constexpr short kOnePlace = 1;
constexpr short kOverlap = 2;

/// Two segments told from the start of the first: s·u and w + t·v, s and t from 0 to 1.
struct SegmentPair {
    Vec3 u;
    Vec3 w;
    Vec3 v;
};

struct Approach {
    double s = 0.0;
    double distance = 0.0;
};

/// The nearest place of the segment from `start` along `d` to p, as a share of it.
double nearestShare(const Vec3& start, const Vec3& d, const Vec3& p)
{
    return std::clamp(dot(p - start, d) / dot(d, d), 0.0, 1.0);
}

/// The closest approach: within both segments if their common perpendicular meets both, else at
/// one of the four ends. Parallel lines have ends only.
Approach closestApproach(const SegmentPair& pair)
{
    const Vec3 &u = pair.u, &w = pair.w, &v = pair.v;
    const auto approach = [&](double s, double t) {
        return Approach{s, length(w + t * v - s * u)};
    };
    const auto fromFirst = [&](double s) { return approach(s, nearestShare(w, v, s * u)); };
    const auto fromSecond = [&](double t) { return approach(nearestShare({}, u, w + t * v), t); };
    Approach best = fromFirst(0.0);
    for (const Approach& other : {fromFirst(1.0), fromSecond(0.0), fromSecond(1.0)})
        if (other.distance < best.distance) best = other;
    const Vec3 n = cross(u, v);
    const double s = dot(cross(w, v), n) / dot(n, n);
    const double t = dot(cross(w, u), n) / dot(n, n);
    if (0 <= s && s <= 1 && 0 <= t && t <= 1) {
        const Approach inside = approach(s, t);
        if (inside.distance < best.distance) best = inside;
    }
    return best;
}

/// Whether the segments run together over more than a point; `s` becomes the start of the stretch.
bool overlap(const SegmentPair& pair, double& s)
{
    const Vec3 &u = pair.u, &w = pair.w, &v = pair.v;
    const double size = length(u);
    const double start = dot(w, u) / size;  // of the second segment, along the first
    const double end = dot(w + v, u) / size;
    const double low = std::max(0.0, std::min(start, end));
    const double high = std::min(size, std::max(start, end));
    if (!(high - low > kMeeting)) return false;
    for (const double along : {low, high}) {
        const Vec3 onSecond = w + ((along - start) / (end - start)) * v;
        if (!(length(onSecond - (along / size) * u) <= kMeeting)) return false;
    }
    s = low / size;
    return true;
}

}  // namespace

short CGeometric::intersectSegments3d(const PathRef& a, int i, const PathRef& b, int j,
                                      Point3DF& point)
{
    const PathView first(a);
    const PathView second(b);
    if (!first.hasSegment(i) || !second.hasSegment(j)) return kInvalid;
    const Point3DF origin = first.point(i);
    const Point3DF other = second.point(j);
    const SegmentPair pair{between(origin, first.point(i + 1)), between(origin, other),
                           between(other, second.point(j + 1))};
    if (!isUsableLength(length(pair.u)) || !isUsableLength(length(pair.v)) || !isFinite(pair.w))
        return kInvalid;

    double s = 0.0;
    if (overlap(pair, s)) {
        point = moved(origin, s * pair.u);
        return kOverlap;
    }
    const Approach closest = closestApproach(pair);
    if (!(closest.distance <= kMeeting)) return kNone;
    point = moved(origin, closest.s * pair.u);
    return kOnePlace;
}
