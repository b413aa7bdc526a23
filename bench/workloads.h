// Line work of the kinds that drawings hold, for the loop benchmarks. The same seed gives the same
// drawing everywhere.
#pragma once

#include <cmath>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tavrel/Vector.h"
#include "tavrel/points.h"

namespace workloads {

struct LineWork {
    tav::Vector<tav::Vector<tav::Point2DF>> points;
    tav::Vector<tav::Vector<double>> bulges;
    int segments = 0;

    void add(tav::Vector<tav::Point2DF> line, tav::Vector<double> lineBulges = {})
    {
        lineBulges.resize(line.size());
        segments += line.size() - 1;
        points.append(std::move(line));
        bulges.append(std::move(lineBulges));
    }
};

/// A small generator with the same numbers on every machine (SplitMix64).
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    double between(double low, double high)
    {
        state_ += 0x9E3779B97F4A7C15ull;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        z ^= z >> 31;
        return low + (high - low) * static_cast<double>(z >> 11) * 0x1.0p-53;
    }

private:
    std::uint64_t state_;
};

inline constexpr double kSpacing = 100.0;

/// Nodes of a square grid, each moved by up to `jitter`.
class Grid {
public:
    Grid(int side, double jitter, tav::Point2DF origin, std::uint64_t seed) : side_(side)
    {
        Random random(seed);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
                nodes_.emplace_back(origin.x() + x * kSpacing + random.between(-jitter, jitter),
                                    origin.y() + y * kSpacing + random.between(-jitter, jitter));
    }
    const tav::Point2DF& at(int x, int y) const
    {
        return nodes_[static_cast<std::size_t>(y) * static_cast<std::size_t>(side_) +
                      static_cast<std::size_t>(x)];
    }

private:
    int side_;
    std::vector<tav::Point2DF> nodes_;
};

inline int gridSide(int segments)
{
    return 1 + static_cast<int>(std::sqrt(segments / 2.0));
}

/// Street blocks: every edge of a jittered grid as a line of its own.
inline LineWork streets(int segments, tav::Point2DF origin = {})
{
    const int side = gridSide(segments);
    const Grid grid(side, 30, origin, 1);
    LineWork work;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            if (x + 1 < side) work.add({grid.at(x, y), grid.at(x + 1, y)});
            if (y + 1 < side) work.add({grid.at(x, y), grid.at(x, y + 1)});
        }
    return work;
}

/// Lines of random place and direction that cross about four others each.
inline LineWork crossing(int segments)
{
    Random random(2);
    const double extent = kSpacing * std::sqrt(static_cast<double>(segments));
    const double length = kSpacing * std::sqrt(2 * 3.14159265358979);
    LineWork work;
    for (int i = 0; i < segments; ++i) {
        const tav::Point2DF a(random.between(0, extent), random.between(0, extent));
        const double angle = random.between(0, 6.283185307179586);
        work.add({a, {a.x() + length * std::cos(angle), a.y() + length * std::sin(angle)}});
    }
    return work;
}

/// A street grid whose edges are lines and arcs by turns, under discs that overlap them.
inline LineWork arcsAndDiscs(int segments)
{
    const int side = gridSide(segments * 2 / 3);
    const Grid grid(side, 20, {}, 3);
    Random random(4);
    LineWork work;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            if (x + 1 < side)
                work.add({grid.at(x, y), grid.at(x + 1, y)},
                         {x % 2 ? random.between(-0.3, 0.3) : 0, 0});
            if (y + 1 < side)
                work.add({grid.at(x, y), grid.at(x, y + 1)},
                         {y % 2 ? random.between(-0.3, 0.3) : 0, 0});
        }
    while (work.segments + 1 < segments) {
        const double extent = side * kSpacing;
        const tav::Point2DF c(random.between(0, extent), random.between(0, extent));
        const double r = random.between(20, 60);
        work.add({{c.x() - r, c.y()}, {c.x() + r, c.y()}, {c.x() - r, c.y()}}, {1, 1, 0});
    }
    return work;
}

/// A tree of streams over a jittered grid: every node flows to its left or lower neighbour.
inline LineWork river(int segments)
{
    const int side = 1 + static_cast<int>(std::sqrt(static_cast<double>(segments)));
    const Grid grid(side, 30, {}, 5);
    Random random(6);
    LineWork work;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            if (x == 0 && y == 0) continue;
            const bool left = y == 0 || (x > 0 && random.between(0, 1) < 0.5);
            work.add({grid.at(x, y), left ? grid.at(x - 1, y) : grid.at(x, y - 1)});
        }
    return work;
}

inline void addEightCorners(LineWork& work, double x, double y, double radius)
{
    const auto corner = [&](int i) {
        const double angle = (i % 8) * 0.7853981633974483;
        return tav::Point2DF(x + radius * std::cos(angle), y + radius * std::sin(angle));
    };
    for (int i = 0; i < 8; ++i) work.add({corner(i), corner(i + 1)});
}

/// Islands of eight corners that touch nothing, drawn line by line.
inline LineWork islands(int segments)
{
    const int side = 1 + static_cast<int>(std::sqrt(segments / 8.0));
    LineWork work;
    for (int i = 0; work.segments < segments; ++i)
        addEightCorners(work, i % side * kSpacing, static_cast<double>(i / side) * kSpacing, 40);
    return work;
}

/// One ragged ring of many vertices, drawn as a single polyline.
inline LineWork ring(int segments)
{
    Random random(7);
    tav::Vector<tav::Point2DF> vertices;
    const double radius = segments * 2.0;
    for (int i = 0; i < segments; ++i) {
        const double angle = 6.283185307179586 * i / segments;
        const double r = radius + random.between(-100, 100);
        vertices.append({r * std::cos(angle), r * std::sin(angle)});
    }
    vertices.append(tav::Point2DF(std::as_const(vertices).first()));
    LineWork work;
    work.add(vertices);
    return work;
}

struct Named {
    const char* name;
    std::function<LineWork(int)> make;
};

inline std::vector<Named> all()
{
    return {{"streets", [](int n) { return streets(n); }},
            {"survey_streets",
             [](int n) {
                 return streets(n, {5e5, 4e6});
             }},
            {"crossing", crossing},
            {"arcs_and_discs", arcsAndDiscs},
            {"river", river},
            {"islands", islands},
            {"ring", ring}};
}

}  // namespace workloads
