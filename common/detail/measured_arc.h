// An arc as the intersections see it: its circle, its length, and where a point lies along it.
#pragma once

#include <cmath>

#include "calcora/IcommonFunc.h"
#include "common/detail/arc.h"
#include "common/detail/circle_memo.h"
#include "common/detail/primitives.h"

namespace calcora::detail {

/// |bulge|: the centre of an arc with a smaller one lies too far away (more than 250,000 chords) to
/// be computed with; such a flat arc is treated in the frame of its chord.
inline constexpr double kFlatBulge = 1e-6;

/// The circle  curvature |P|^2 + linear . P + constant = 0.
struct CircleEquation {
    double curvature = 0.0;
    Point2DF linear;
    double constant = 0.0;

    double at(const Point2DF& p) const
    {
        return curvature * lengthSquared(p) + dot(linear, p) + constant;
    }
};

/// The real roots of a t^2 + b t + c = 0 without cancellation; roots that overflow are infinite.
struct QuadraticRoots {
    int count = 0;
    double larger = 0.0;
    double smaller = 0.0;

    QuadraticRoots(double a, double b, double c)
    {
        const double discriminant = b * b - 4 * a * c;
        if (!(discriminant >= 0)) return;
        const double q = -(b + std::copysign(std::sqrt(discriminant), b)) / 2;
        const double first = q / a;
        const double second = q == 0 ? 0.0 : c / q;
        count = 2;
        larger = std::fmax(first, second);
        smaller = std::fmin(first, second);
    }
};

/// An arc of either kind. A round one is measured by the operations of the interface; a flat one
/// (|bulge| < kFlatBulge) in the frame of its chord, with x from start to end and y to the left,
/// where its circle is  bulge (x^2 + y^2 - chord x) - (chord / 2)(1 - bulge^2) y = 0.
class MeasuredArc {
public:
    /// `isPlain`: the object is known to override nothing. Then `circles`, which may be null, is asked
    /// first.
    MeasuredArc(IcommonFunc& common, bool isPlain, CircleMemo* circles, const Point2DF& start,
                const Point2DF& end, double bulge)
        : common_(common),
          start_(start),
          end_(end),
          bulge_(bulge),
          isPlain_(isPlain),
          isFlat_(isFlatBulge(bulge))
    {
        const double chordSquared =
            isPlain ? detail::pointDistSquared(start, end) : common.pointDistSquared(start, end);
        if (!(chordSquared > 0) || bulge == 0) return;
        chord_ = std::sqrt(chordSquared);
        along_ = {(end.x() - start.x()) / chord_, (end.y() - start.y()) / chord_};
        if (isFlat_) return;
        if (!isPlain) {
            common.bulgeArcCenter(start, end, bulge, centre_, &radius_);
            return;
        }
        const Circle circle = circles ? circles->circleOf(end - start, bulge)
                                      : plainArcCircle(Point2DF(), end - start, bulge);
        centre_ = start + circle.centre;
        radius_ = circle.radius;
        places_ = PlainArcPlaces(centre_, start, end, bulge < 0);
        const double size = std::fabs(bulge);
        isTellable_ = kSmallestTold < size && size < 1 / kSmallestTold && chord_ > kShortestTold &&
                      radius_ < kLargestTold && std::fabs(centre_.x()) < kLargestTold &&
                      std::fabs(centre_.y()) < kLargestTold;
    }

    static bool isFlatBulge(double bulge) { return std::fabs(bulge) < kFlatBulge; }

    /// False for coincident ends and for a bulge of 0: such an arc meets nothing.
    bool isProper() const { return chord_ > 0; }
    bool isFlat() const { return isFlat_; }
    const Point2DF& start() const { return start_; }
    const Point2DF& end() const { return end_; }
    const Point2DF& along() const { return along_; }    ///< unit vector from start to end
    const Point2DF& centre() const { return centre_; }  ///< of a round arc
    double radius() const { return radius_; }           ///< of a round arc
    double chord() const { return chord_; }
    double curvature() const { return std::fabs(bulge_) / chord_; }  ///< but for a factor of 4

    Point2DF middle() const
    {
        return midpoint(start_, end_) - (bulge_ * chord_ / 2) * leftNormal(along_);
    }

    double length() const
    {
        if (isFlat_) return chord_ * (1 + bulge_ * bulge_) * std::atan(bulge_) / bulge_;
        if (!isPlain_) return common_.arcLength(centre_, radius_, start_, end_, bulge_ < 0);
        return radius_ * places_.sweep();
    }

    /// Position of a point of the circle as a fraction of the sweep; not a number for a point that
    /// no fraction of a flat arc reaches.
    double fraction(const Point2DF& p) const
    {
        if (!isFlat_ && isPlain_) return roundFraction(p);
        if (!isFlat_) return common_.arcSweepFraction(p, centre_, start_, end_, bulge_ < 0);
        if (p == start_) return 0.0;
        if (p == end_) return 1.0;
        const double sweep = 4 * std::atan(bulge_);
        const double x = dot(p - start_, along_);
        return 0.5 - std::asin((1 - 2 * x / chord_) * std::sin(sweep / 2)) / sweep;
    }

    /// Whether fraction(p) * length() of a meeting point lies in [lo, length() + extra].
    ///
    /// The chord parts the circle into the arc and the rest, and a point of the circle is at least
    /// as far from either end, along the arc, as from the chord: far enough from it, its side
    /// decides without an angle.
    bool holds(const Point2DF& p, double lo, double extra) const
    {
        if (isTellable_ && -kWidestRange <= lo && lo <= 0 && 0 <= extra && extra <= kWidestRange) {
            if (p == start_ || p == end_) return true;
            const Point2DF fromCentre = p - centre_;
            const double side = cross(along_, p - start_);
            const double offCircle = lengthSquared(fromCentre) - radius_ * radius_;
            if (std::fabs(offCircle) <= kOnCircle * radius_ && std::fabs(side) >= kClearSide)
                return (side < 0) == (bulge_ > 0);
        }
        const double whole = length();
        const double place = fraction(p) * whole;
        return lo <= place && place <= whole + extra;
    }

    /// Whether a point of a flat arc's circle is on the near side of it at all.
    bool isNear(const Point2DF& p) const
    {
        return !isFlat_ || std::fabs(cross(along_, p - start_)) <= chord_;
    }

    CircleEquation equation() const
    {
        if (!isFlat_) {
            const double distance = detail::length(centre_);
            return {1.0, -2.0 * centre_, (distance - radius_) * (distance + radius_)};
        }
        const double rise = chord_ / 2 * (1 - bulge_ * bulge_);
        const Point2DF linear = -bulge_ * chord_ * along_ - rise * leftNormal(along_);
        return {bulge_, linear - 2 * bulge_ * start_,
                bulge_ * lengthSquared(start_) - dot(linear, start_)};
    }

    /// How far a point lies off the circle; for a flat arc this holds near the arc.
    double distanceOffCircle(const Point2DF& p) const
    {
        if (!isFlat_) return std::fabs(detail::length(p - centre_) - radius_);
        return std::fabs(flatValue(p - start_)) / (chord_ / 2);
    }

    /// Where the line from + t * direction meets the circle of a flat arc.
    QuadraticRoots meetLine(const Point2DF& from, const Point2DF& direction) const
    {
        const Point2DF a = from - start_;
        return {bulge_ * lengthSquared(direction), slopeAlong(a, direction), flatValue(a)};
    }

    /// The second parameter at which the line end + t * direction meets the circle of a flat arc,
    /// `end` being one of the two ends of the arc (the first parameter is 0).
    double secondMeeting(const Point2DF& end, const Point2DF& direction) const
    {
        return -slopeAlong(end - start_, direction) / (bulge_ * lengthSquared(direction));
    }

private:
    /// The circle's equation at a point given from the start of a flat arc, and how fast it grows
    /// in a direction there.
    double flatValue(const Point2DF& a) const
    {
        return bulge_ * (lengthSquared(a) - chord_ * dot(a, along_)) -
               chord_ / 2 * (1 - bulge_ * bulge_) * cross(along_, a);
    }
    double slopeAlong(const Point2DF& a, const Point2DF& direction) const
    {
        return bulge_ * (2 * dot(a, direction) - chord_ * dot(direction, along_)) -
               chord_ / 2 * (1 - bulge_ * bulge_) * cross(along_, direction);
    }

    /// Bulges, lengths of chords and sizes of circles that holds() tells places on without an angle.
    static constexpr double kSmallestTold = 1e-5;
    static constexpr double kShortestTold = 1e-6;
    static constexpr double kLargestTold = 1e8;
    /// Drawing units: the ranges beyond an arc's ends that it allows for, how far a point may be off
    /// the circle (as a difference of squares, by the radius), and from the chord on it tells.
    static constexpr double kWidestRange = 1e-5;
    static constexpr double kOnCircle = 1e-5;
    static constexpr double kClearSide = 1e-4;

    /// arcSweepFraction() of a round arc.
    double roundFraction(const Point2DF& p) const
    {
        if (isTellable_ && p == start_) return 0.0;
        if (isTellable_ && p == end_) return 1.0;
        return places_.fraction(p);
    }

    IcommonFunc& common_;
    Point2DF start_, end_;
    double bulge_;
    bool isPlain_;
    bool isFlat_;
    bool isTellable_ = false;
    double chord_ = 0.0;
    Point2DF along_;
    Point2DF centre_;
    double radius_ = 0.0;
    PlainArcPlaces places_;  ///< of a round arc
};

}  // namespace calcora::detail
