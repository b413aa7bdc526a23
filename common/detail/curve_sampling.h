// What the curve operations share: which figures they accept, how fine a curve may get, and the
// halving of a piece of curve until its middle lies on the middle of the chord.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

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
struct CurveSample {
    double parameter = 0.0;
    Point3DF point;
};

/// Cuts pieces of curve into chords, halving them at the middle parameter; one for each call.
class ChordSampler {
public:
    /// `spans` is the number of pieces that run() will be given, `tolerance` in drawing units.
    ChordSampler(double tolerance, std::int64_t spans) : tolerance_(tolerance), budget_(spans) {}

    /// Halves the piece of curve from `first` to `last` while the curve's middle lies farther than
    /// the tolerance (in space) from the middle of the chord. Only the middle is looked at: a piece
    /// that is symmetric about a point stays one chord.
    ///
    /// A piece stays as it is when it is the result of kMaxHalvings halvings (`halvings` were made
    /// before), when no parameter lies between those of its ends, when the budget is spent, or when
    /// the deviation is not a number. `at(parameter)` gives a Point3DF; the points between the ends
    /// go to `emit(Point3DF)` from first to last.
    ///
    /// The walk goes from left to right and keeps the right ends of the pieces that wait, one for
    /// each halving, so its cost is linear in the points that come out.
    template <class Curve, class Emit>
    void run(const Curve& at, CurveSample first, const CurveSample& last, int halvings, Emit&& emit)
    {
        std::size_t top = 0;
        waiting_[0] = {last, halvings};
        for (CurveSample start = first;;) {
            Waiting& piece = waiting_[top];
            const double middle = (start.parameter + piece.end.parameter) / 2;
            if (piece.halvings < kMaxHalvings && start.parameter < middle &&
                middle < piece.end.parameter && !budget_.isSpent()) {
                const Point3DF point = at(middle);
                const Point3DF chordMiddle = scaled(0.5, sum(start.point, piece.end.point));
                if (length(difference(point, chordMiddle)) > tolerance_) {
                    ++piece.halvings;
                    waiting_[++top] = {{middle, point}, piece.halvings};
                    continue;
                }
            }
            if (top == 0) return;
            start = piece.end;
            emit(start.point);
            budget_.take(1);
            --top;
        }
    }

private:
    struct Waiting {
        CurveSample end;
        int halvings = 0;
    };

    double tolerance_;
    PointBudget budget_;
    std::array<Waiting, kMaxHalvings + 1> waiting_;
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
