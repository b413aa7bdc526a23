// What the curve operations share: which figures they accept, how fine a curve may get, and the
// halving of a piece of curve until its middle lies on the middle of the chord.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "common/detail/vec.h"
#include "common/detail/vec3.h"
#include "tavrel/Vector.h"

namespace calcora::detail {

/// Drawing units: the largest coordinate or elevation of a curve's input; squares of differences
/// of such numbers still are finite.
inline constexpr double kLargestCurveInput = 1e150;

/// The finest tolerance of a curve: a fraction of the figure's size, a fraction of its largest
/// coordinate (which is what rounding leaves), and a floor in drawing units whose square is not 0.
inline constexpr double kFinestOfSize = 1e-10;
inline constexpr double kFinestOfCoordinate = 1e-15;
inline constexpr double kFinestTolerance = 1e-150;

/// The numbers that go into one curve: whether they can be used, and how large the figure is.
class CurveInput {
public:
    void add(const tav::Point2DF& p)
    {
        x_.add(p.x());
        y_.add(p.y());
    }
    void addElevation(double z) { z_.add(z); }
    void add(const tav::Vector<tav::Point2DF>& points)
    {
        for (const tav::Point2DF& p : points) add(p);
    }
    /// The first `count` elevations; further ones take no part.
    void addElevations(const tav::Vector<double>& z, int count)
    {
        for (int i = 0; i < count; ++i) addElevation(z[i]);
    }

    /// False when a number is not finite or larger than kLargestCurveInput.
    bool isUsable() const { return largestCoordinate() <= kLargestCurveInput; }

    double largestCoordinate() const { return std::max({x_.largest, y_.largest, z_.largest}); }

    /// `wanted`, but not finer than the figure allows; a tolerance that is not a number, zero or
    /// negative is the finest one. It depends on the input alone, so that a smaller tolerance never
    /// gives fewer points.
    double tolerance(double wanted) const
    {
        const double size = std::max({x_.width(), y_.width(), z_.width()});
        const double finest = std::max(
            kFinestOfSize * size + kFinestOfCoordinate * largestCoordinate(), kFinestTolerance);
        return wanted >= finest ? wanted : finest;
    }

private:
    struct Axis {
        double low = std::numeric_limits<double>::infinity();
        double high = -std::numeric_limits<double>::infinity();
        double largest = 0.0;

        void add(double value)
        {
            const double size = std::fabs(value);
            low = std::min(low, value);
            high = std::max(high, value);
            if (!(size <= largest)) largest = size <= kLargestCurveInput ? size : kRefused;
        }
        double width() const { return high > low ? high - low : 0.0; }
    };

    static constexpr double kRefused = std::numeric_limits<double>::infinity();

    Axis x_, y_, z_;
};

/// How often a piece of curve is halved at most.
inline constexpr int kMaxHalvings = 32;

/// Points that one call produces before it accepts every piece as it stands, and what each span
/// adds to them.
inline constexpr std::int64_t kPointsPerCall = 4'194'304;
inline constexpr std::int64_t kPointsPerSpan = 64;

/// The points that one call may still produce by halving.
class PointBudget {
public:
    explicit PointBudget(std::int64_t spans) : left_(kPointsPerCall + kPointsPerSpan * spans) {}

    bool isSpent() const { return left_ <= 0; }
    void take(int points) { left_ -= points; }

private:
    std::int64_t left_;
};

/// A point of a curve with its parameter.
template <class Point>
struct CurveSample {
    double parameter;
    Point point;
};

/// A curve known by its points alone: `at(parameter)` gives a Point3DF.
template <class At>
class SampledCurve {
public:
    SampledCurve(const At& at, double tolerance) : at_(at), tolerance_(tolerance) {}

    /// Evaluates the curve at the middle's parameter; true when it lies farther than the tolerance
    /// from the middle of the chord, false also when that is not a number.
    bool mustHalve(const CurveSample<Point3DF>& start, CurveSample<Point3DF>& middle,
                   const CurveSample<Point3DF>& end, int) const
    {
        middle.point = at_(middle.parameter);
        const Point3DF chordMiddle = scaled(0.5, sum(start.point, end.point));
        return length(difference(middle.point, chordMiddle)) > tolerance_;
    }

private:
    const At& at_;
    double tolerance_;
};

/// What the second derivative of a cubic over 0 to 1 tells about its pieces, most often without
/// evaluating it: as f'' is linear, the middle m of a piece of width h lies exactly h^2 f''(m) / 8
/// from the middle of its chord.
class CubicDeviation {
public:
    /// `start` is f''(0) / 8, `growth` what that grows by up to 1. `size` and `coordinate` are the
    /// sizes of the numbers that a point of the curve is summed up from, and of the point itself.
    CubicDeviation(const Point2DF& start, const Point2DF& growth, double tolerance, double size,
                   double coordinate)
        : start_(start), growth_(growth)
    {
        const double rounding = kRoundingOfSum * size + kRoundingOfPoint * coordinate;
        const double least = std::max(tolerance - rounding, 0.0), most = tolerance + rounding;
        within_ = least * least * (1 - kRoundingOfSum);
        beyond_ = most * most * (1 + kRoundingOfSum);
    }

    /// Whether a piece, the result of so many halvings, deviates by less than the tolerance, or by
    /// more, whatever rounding does to its evaluation. Both may be false.
    bool isSurelyWithin(double middle, int halvings) const
    {
        return squared(middle, halvings) < within_;
    }
    bool isSurelyBeyond(double middle, int halvings) const
    {
        return squared(middle, halvings) > beyond_;
    }

private:
    /// Far more than what a dozen roundings make of a sum, and one of a coordinate.
    static constexpr double kRoundingOfSum = 1e-13;
    static constexpr double kRoundingOfPoint = 1e-15;

    double squared(double middle, int halvings) const
    {
        static constexpr auto kWidthToFourth = [] {
            std::array<double, kMaxHalvings + 1> powers{1.0};
            for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] / 16;
            return powers;
        }();
        return kWidthToFourth[static_cast<std::size_t>(halvings)] *
               lengthSquared(start_ + middle * growth_);
    }

    Point2DF start_, growth_;
    double within_, beyond_;  ///< squares
};

/// Cuts pieces of curve into chords, halving them at the middle parameter; one for each call.
class ChordSampler {
public:
    /// `spans` is the number of pieces that run() will be given.
    explicit ChordSampler(std::int64_t spans) : budget_(spans) {}

    /// Halves the piece of curve from `start` to `end` while its middle deviates from the middle of
    /// its chord: `curve.mustHalve(start, middle, end, halvings)` tells. Only that is looked at: a
    /// piece that is symmetric about a point stays one chord.
    ///
    /// A piece stays as it is when it is the result of kMaxHalvings halvings (`halvings` were made
    /// before), so few that there always is a parameter between those of its ends (from 0 up to a
    /// number of spans), and when the budget is spent. The samples between the ends go to `emit` from
    /// first to last.
    ///
    /// The walk goes from left to right and keeps the right ends of the pieces that wait, one for
    /// each halving, so its cost is linear in the samples that come out.
    template <class Curve, class Sample, class Emit>
    void run(const Curve& curve, Sample start, const Sample& end, int halvings, const Emit& emit)
    {
        std::array<Sample, kMaxHalvings + 1> ends;
        std::array<int, kMaxHalvings + 1> made;
        std::size_t top = 0;
        ends[0] = end;
        made[0] = halvings;
        for (;;) {
            Sample middle;
            middle.parameter = (start.parameter + ends[top].parameter) / 2;
            if (made[top] < kMaxHalvings && !budget_.isSpent() &&
                curve.mustHalve(start, middle, ends[top], made[top])) {
                made[top + 1] = ++made[top];
                ends[++top] = middle;
                continue;
            }
            if (top == 0) return;
            start = ends[top--];
            emit(start);
            budget_.take(1);
        }
    }

private:
    PointBudget budget_;
};

/// Room for `extra` more elements, growing so that many small additions stay linear.
template <class T>
void makeRoomFor(tav::Vector<T>& list, std::int64_t extra)
{
    const std::int64_t wanted = list.size() + extra;
    if (wanted <= list.capacity() || wanted > std::numeric_limits<int>::max()) return;
    const std::int64_t doubled =
        std::min<std::int64_t>(2 * std::int64_t{list.size()}, std::numeric_limits<int>::max());
    list.reserve(static_cast<int>(std::max(wanted, doubled)));
}

}  // namespace calcora::detail
