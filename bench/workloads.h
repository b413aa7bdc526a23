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
    double snapTolerance = 0.0;  ///< with which it is meant to be read

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
inline LineWork streets(int segments, tav::Point2DF origin = {}, std::uint64_t seed = 0)
{
    const int side = gridSide(segments);
    const Grid grid(side, 30, origin, 1 + seed);
    LineWork work;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            if (x + 1 < side) work.add({grid.at(x, y), grid.at(x + 1, y)});
            if (y + 1 < side) work.add({grid.at(x, y), grid.at(x, y + 1)});
        }
    return work;
}

/// Lines of random place and direction that cross about four others each.
inline LineWork crossing(int segments, std::uint64_t seed = 0)
{
    Random random(2 + seed);
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
inline LineWork arcsAndDiscs(int segments, std::uint64_t seed = 0)
{
    const int side = gridSide(segments * 2 / 3);
    const Grid grid(side, 20, {}, 3 + seed);
    Random random(4 + seed);
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

/// Islands in islands, four of one centre.
inline LineWork nestedIslands(int segments)
{
    const int side = 1 + static_cast<int>(std::sqrt(segments / 32.0));
    LineWork work;
    for (int i = 0; work.segments < segments; ++i)
        for (const double radius : {10, 20, 30, 40})
            addEightCorners(work, i % side * kSpacing, static_cast<double>(i / side) * kSpacing,
                            radius);
    return work;
}

/// Walls of a plan on whole coordinates: they cross, overlap and end at each other.
inline LineWork plan(int segments, std::uint64_t seed = 0)
{
    Random random(8 + seed);
    constexpr double kModule = 50;
    const auto whole = [&random](double below) { return std::floor(random.between(0, below)); };
    const double modules = std::sqrt(2.0 * segments);
    LineWork work;
    while (work.segments < segments) {
        const tav::Point2DF a(kModule * whole(modules), kModule * whole(modules));
        const double length = kModule * (1 + whole(6));
        const bool level = random.between(0, 1) < 0.5;
        work.add({a, {a.x() + (level ? length : 0), a.y() + (level ? 0 : length)}});
    }
    return work;
}

/// Discs that touch their neighbours, some drawn again as halves that overlap the first ones.
inline LineWork touchingDiscs(int segments, std::uint64_t seed = 0)
{
    Random random(9 + seed);
    const int side = 1 + static_cast<int>(std::sqrt(segments / 3.0));
    constexpr double r = kSpacing / 2;
    LineWork work;
    for (int i = 0; work.segments < segments; ++i) {
        const double x = i % side * kSpacing;
        const double y = static_cast<double>(i / side) * kSpacing;
        work.add({{x - r, y}, {x + r, y}, {x - r, y}}, {1, 1, 0});
        if (random.between(0, 1) < 0.5) work.add({{x, y - r}, {x, y + r}}, {1, 0});
        if (random.between(0, 1) < 0.5) work.add({{x - r, y - r}, {x + r, y + r}});
    }
    return work;
}

/// Street blocks whose lines end up to 1e-4 beside the corners, each in its own way.
inline LineWork sloppy(int segments)
{
    const LineWork exact = streets(segments);
    Random random(10);
    const auto beside = [&random](const tav::Point2DF& p) {
        return tav::Point2DF(p.x() + random.between(-1e-4, 1e-4),
                             p.y() + random.between(-1e-4, 1e-4));
    };
    LineWork work;
    for (int i = 0; i < exact.points.size(); ++i)
        work.add({beside(exact.points[i][0]), beside(exact.points[i][1])});
    work.snapTolerance = 2e-4;
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

enum Peers : unsigned { kGeos = 1, kGeosSnapping = 2, kCgal = 4, kCgalCircles = 8 };

struct Named {
    const char* name;
    std::function<LineWork(int)> make;
    unsigned peers = kGeos;  ///< that can do the work
};

inline std::vector<Named> all()
{
    return {{"streets", [](int n) { return streets(n); }},
            {"survey_streets",
             [](int n) {
                 return streets(n, {5e5, 4e6});
             }},
            {"crossing", [](int n) { return crossing(n); }, kGeos | kCgal},
            {"arcs_and_discs", [](int n) { return arcsAndDiscs(n); }, kGeos | kCgalCircles},
            {"river", river},
            {"islands", islands},
            {"nested_islands", nestedIslands},
            {"ring", ring},
            {"plan", [](int n) { return plan(n); }, kGeos | kCgal},
            {"sloppy", sloppy, kGeosSnapping}};
}

/// Line work whose faces are counted against an exact arrangement.
struct Counted {
    const char* name;
    std::function<LineWork(int, std::uint64_t)> make;
};

inline std::vector<Counted> allCounted()
{
    return {{"streets", [](int n, std::uint64_t seed) { return streets(n, {}, seed); }},
            {"survey_streets",
             [](int n, std::uint64_t seed) {
                 return streets(n, {5e5, 4e6}, seed);
             }},
            {"crossing", crossing},
            {"arcs_and_discs", arcsAndDiscs},
            {"touching_discs", touchingDiscs},
            {"plan", plan}};
}

}  // namespace workloads
