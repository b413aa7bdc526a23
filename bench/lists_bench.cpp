// Hull and simplification of point lists against Boost.Geometry, same points.
#include <benchmark/benchmark.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/linestring.hpp>
#include <boost/geometry/geometries/multi_point.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>

#include "bench/workloads.h"
#include "common/commonFunc.h"
#include "tavrel/NormalObject.h"

namespace {

namespace bg = boost::geometry;
using BoostPoint = bg::model::d2::point_xy<double>;
using Points = IcommonFunc::Points;

/// Drawing units; removes about nine in ten vertices of the digitised line.
constexpr double kTolerance = 2.0;

Points cloud(int count)
{
    workloads::Random random(11);
    Points points;
    for (int i = 0; i < count; ++i) points.append({random.between(0, 1e4), random.between(0, 1e4)});
    return points;
}

Points ring(int count)
{
    Points points = workloads::ring(count).points[0];
    points.removeLast();
    return points;
}

/// A line as a hand digitises it: a steady course with a shake.
Points digitised(int count)
{
    workloads::Random random(12);
    Points points;
    for (int i = 0; i < count; ++i)
        points.append({i * 1.0, 200 * std::sin(i * 0.002) + random.between(-1, 1)});
    return points;
}

template <class Container>
Container boostPoints(const Points& points)
{
    Container container;
    for (const tav::Point2DF& p : points) bg::append(container, BoostPoint(p.x(), p.y()));
    return container;
}

void countPoints(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <Points (*make)(int)>
void hullOurs(benchmark::State& state)
{
    const Points points = make(static_cast<int>(state.range(0)));
    commonFunc geometry(tav::kObjectCapacity);
    for (auto _ : state) {
        Points work = points;
        Points hull;
        geometry.convexHull(work, hull);
        benchmark::DoNotOptimize(hull.data());
    }
    countPoints(state);
}

template <Points (*make)(int)>
void hullBoost(benchmark::State& state)
{
    const auto points =
        boostPoints<bg::model::multi_point<BoostPoint>>(make(static_cast<int>(state.range(0))));
    for (auto _ : state) {
        bg::model::polygon<BoostPoint> hull;
        bg::convex_hull(points, hull);
        benchmark::DoNotOptimize(hull.outer().data());
    }
    countPoints(state);
}

void simplifyOurs(benchmark::State& state)
{
    const Points points = digitised(static_cast<int>(state.range(0)));
    commonFunc geometry(tav::kObjectCapacity);
    for (auto _ : state) {
        Points simplified;
        geometry.simplifyPolyline(points, simplified, kTolerance);
        benchmark::DoNotOptimize(simplified.data());
    }
    countPoints(state);
}

void simplifyBoost(benchmark::State& state)
{
    const auto line =
        boostPoints<bg::model::linestring<BoostPoint>>(digitised(static_cast<int>(state.range(0))));
    for (auto _ : state) {
        bg::model::linestring<BoostPoint> simplified;
        bg::simplify(line, simplified, kTolerance);
        benchmark::DoNotOptimize(simplified.data());
    }
    countPoints(state);
}

BENCHMARK(hullOurs<cloud>)->Name("hull_cloud/calcora")->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(hullBoost<cloud>)->Name("hull_cloud/boost")->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(hullOurs<ring>)->Name("hull_ring/calcora")->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(hullBoost<ring>)->Name("hull_ring/boost")->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(simplifyOurs)->Name("simplify/calcora")->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(simplifyBoost)->Name("simplify/boost")->RangeMultiplier(10)->Range(1000, 1000000);

}  // namespace
