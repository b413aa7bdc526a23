// Walks along paths at 1e3 to 1e6 segments; the time per segment is to stay what it is.
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <numbers>

#include "calcora/IGeometric.h"
#include "tavrel/PluginHost.h"

namespace {

using geo::PathRef;
using tav::Point3DF;

/// The plugins stay loaded while their objects are in use.
struct Host {
    std::unique_ptr<tav::Plugin> geometry = tav::Plugin::load(CALCORA_GEOMETRY_PLUGIN);
    std::unique_ptr<tav::Plugin> calcora = tav::Plugin::load(CALCORA_PLUGIN);
};

/// A closed ring of n segments round a wavy circle in survey coordinates; every second segment is
/// an arc when `arcs` is set.
PathRef ring(int n, bool arcs)
{
    const auto points = tav::Ref<geo::IPointCollection>::create();
    const auto at = [n](double k) {
        const double angle = 2 * std::numbers::pi * k / n;
        const double radius = n * (1 + 0.1 * std::sin(5 * angle));
        return Point3DF(5e5 + radius * std::cos(angle), 4e6 + radius * std::sin(angle), 100);
    };
    for (int i = 0; i < n; ++i) points->addPoint(at(i));
    points->addPoint(at(0));
    for (int i = 0; arcs && i < n; i += 2) {
        const Point3DF a = at(i), b = at(i + 1);
        const double dx = b.x() - a.x(), dy = b.y() - a.y();
        const Point3DF m((a.x() + b.x()) / 2 + dy / 5, (a.y() + b.y()) / 2 - dx / 5, 100);
        points->addArcRecord(tav::Radian{i, m});
    }
    return points.query<geo::IPath>();
}

template <class Operation>
void run(benchmark::State& state, bool arcs, Operation operation)
{
    const Host host;
    const int n = static_cast<int>(state.range(0));
    const auto geometric = tav::Ref<IGeometric>::create();
    const PathRef path = ring(n, arcs);
    for (auto _ : state) benchmark::DoNotOptimize(operation(*geometric, path));
    state.counters["ns_per_segment"] = benchmark::Counter(
        n * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void lastStation(benchmark::State& state, bool arcs)
{
    const Host host;
    const auto geometric = tav::Ref<IGeometric>::create();
    const double length = geometric->polylineLength2d(ring(static_cast<int>(state.range(0)), arcs));
    run(state, arcs, [length](IGeometric& g, const PathRef& path) {
        Point3DF point;
        return g.pointDistFromPolyline(path, 0.999 * length, point);
    });
}

void length2d(benchmark::State& state, bool arcs)
{
    run(state, arcs, [](IGeometric& g, const PathRef& path) { return g.polylineLength2d(path); });
}

void centroid(benchmark::State& state)
{
    run(state, false, [](IGeometric& g, const PathRef& path) {
        Point3DF point;
        return g.polygonCentroid(path, point);
    });
}

BENCHMARK_CAPTURE(lastStation, straight, false)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK_CAPTURE(lastStation, arcs, true)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK_CAPTURE(length2d, straight, false)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK_CAPTURE(length2d, arcs, true)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(centroid)->RangeMultiplier(10)->Range(1000, 1000000);

}  // namespace
