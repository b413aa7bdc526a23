// Numbers, points and lists out of a fuzzer's bytes.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>

#include "tavrel/Vector.h"
#include "tavrel/points.h"

namespace fuzz {

using tav::Point2DF;
using tav::Point3DF;
using Points = tav::Vector<Point2DF>;
using Values = tav::Vector<double>;

/// Where figures are placed: turned about the origin, then moved. Ordinary figures stay on a raster
/// of 2^-20, so that moving them by whole units changes no difference of coordinates.
struct Frame {
    double angle = 0.0;
    Point2DF move;

    Point2DF place(const Point2DF& p) const
    {
        if (angle == 0) return p + move;
        const double c = std::cos(angle), s = std::sin(angle);
        const auto onRaster = [](double v) { return std::nearbyint(v * 0x1p20) * 0x1p-20; };
        return Point2DF(onRaster(c * p.x() - s * p.y()), onRaster(s * p.x() + c * p.y())) + move;
    }
};

/// Kinds of numbers that one input is made of.
enum class Manner {
    Clear,    ///< finite drawings; figures meet exactly or clearly
    Lattice,  ///< finite drawings full of coincidences, off by a threshold now and then
    Hostile   ///< all there is
};

/// Reads the bytes handed in, then goes on with a generator that they seed, so that a short input
/// makes long lists. The same bytes give the same values everywhere.
class Source {
public:
    Source(const std::uint8_t* data, std::size_t size) : data_(data), end_(data + size)
    {
        for (std::size_t i = 0; i < size; ++i) seed_ = (seed_ ^ data[i]) * 0x100000001B3ull;
        manner = static_cast<Manner>(below(3));
        if (isFinite()) return;
        static constexpr double kScales[] = {1, 1, 1, 1e-5, 4e6, 1e-140, 1e140};
        scale_ = kScales[below(std::size(kScales))];
        rarity_ = 1 << (2 * below(5));
    }

    Manner manner;
    Frame frame;

    bool isFinite() const { return manner != Manner::Hostile; }

    unsigned byte()
    {
        if (data_ < end_) return *data_++;
        seed_ += 0x9E3779B97F4A7C15ull;
        std::uint64_t z = seed_;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return static_cast<unsigned>(z >> 56);
    }
    /// 0 to n - 1; n is at least 1.
    int below(int n)
    {
        const unsigned low = byte();
        if (n <= 256) return static_cast<int>(low) % n;
        return static_cast<int>(low + 256 * byte()) % n;
    }
    bool oneIn(int n) { return below(n) == n - 1; }

    /// Places around n items: -2 to n + 2, at times far off.
    int index(int n)
    {
        if (!isFinite() && oneIn(32))
            return oneIn(2) ? std::numeric_limits<int>::max() : std::numeric_limits<int>::min();
        return below(n + 5) - 2;
    }

    /// The length of a list: mostly a few, at most 300.
    int length()
    {
        const int kind = below(512);
        return kind < 420 ? below(9) : kind < 511 ? below(40) : below(301);
    }

    /// A coordinate before the frame.
    double coordinate()
    {
        switch (manner) {
            case Manner::Clear:
                return (below(4096) - 2048) / 16.0;
            case Manner::Lattice:
                return below(9) + (oneIn(8) ? threshold() : 0.0);
            default:
                return oneIn(rarity_) ? threshold() : scale_ * (below(512) - 256) / 16;
        }
    }
    Point2DF point()
    {
        const double x = coordinate();
        return frame.place({x, coordinate()});
    }

    /// A number that is no coordinate: a bulge, a share, a tolerance, a length, an angle.
    double number()
    {
        static constexpr double kUsual[] = {
            0, 1, 0.5, -0.5, 0.25, 2, -1, 3, 10, 90, 1.5707963267948966, 0.41421356237309503};
        const int kind = below(8);
        if (kind < 3) return kUsual[below(std::size(kUsual))];
        if (kind < 6 || manner == Manner::Clear) return (below(2048) - 1024) / 128.0;
        return threshold();
    }

    /// A curve's tolerance: rarely one that asks for millions of points, as most do beside one point
    /// far out.
    double tolerance()
    {
        if (oneIn(2000)) return number();
        const double usual = (1 + below(400)) / 64.0;
        return isFinite() || oneIn(64) ? usual : usual * 1e150;
    }

    /// A polyline or ring: neighbours in steps, repeats, vertices in line, at times closed.
    void fill(Points& points)
    {
        const int n = length();
        const bool isClear = manner == Manner::Clear;
        while (points.size() < n) {
            const int kind = points.size() < 2 ? 9 : below(10);
            const Points& made = points;
            if (kind == 0)  // in clear figures no line runs back, so there are no ties
                points.append(Point2DF(isClear ? made.last() : made[below(made.size())]));
            else if (kind == 1)
                points.append(made.last() + made.last() - made[made.size() - 2]);
            else if (kind == 2 && !isClear)
                points.append(made[below(made.size())] + Point2DF(threshold(), threshold()));
            else
                points.append(point());
        }
        if (n > 2 && oneIn(3)) points.append(Point2DF(std::as_const(points).first()));
    }

    /// Bulges, stations or plain numbers for a list of `n`, at times too many or too few.
    void fill(Values& values, int n)
    {
        const int wanted = !oneIn(6) ? n : oneIn(2) ? length() : n - 2 + below(4);
        const int kind = below(4);
        double sum = 0;
        while (values.size() < std::min(wanted, 301)) {
            if (kind == 0) values.append(0.0);
            if (kind == 1) values.append(number());
            if (kind == 2) values.append(oneIn(2) ? 0.0 : number() / 4);
            if (kind == 3) values.append(sum += std::fabs(number()));
        }
    }

private:
    /// What operations compare with, and numbers at the ends of the range; finite and not huge
    /// unless everything goes.
    double threshold()
    {
        static constexpr double kSmall[] = {0,    1e-3,  1e-4,  1e-5,  1e-6,  1e-7,   1e-8,
                                            1e-9, 1e-10, 1e-12, 1e-14, 1e-20, 3.2e-4, 0.001745};
        static constexpr double kAny[] = {std::numeric_limits<double>::quiet_NaN(),
                                          std::numeric_limits<double>::infinity(),
                                          std::numeric_limits<double>::max(),
                                          std::numeric_limits<double>::min(),
                                          std::numeric_limits<double>::denorm_min(),
                                          1e300,
                                          1e-300,
                                          1e154,
                                          1e150,
                                          1e-150,
                                          1e77,
                                          1e-77,
                                          1e15,
                                          1e9,
                                          2147483648.0,
                                          4503599627370496.5,
                                          4e6,
                                          1e-310};
        double value = manner != Manner::Hostile || oneIn(2) ? kSmall[below(std::size(kSmall))]
                                                             : kAny[below(std::size(kAny))];
        const int step = below(4);
        if (step == 1) value = std::nextafter(value, -1.0);
        if (step == 2) value = std::nextafter(value, 1e308);
        return oneIn(2) ? -value : value;
    }

    double scale_ = 1;  ///< of hostile coordinates
    int rarity_ = 1;    ///< of hostile values among coordinates
    const std::uint8_t* data_;
    const std::uint8_t* end_;
    std::uint64_t seed_ = 0xCBF29CE484222325ull;
};

}  // namespace fuzz
