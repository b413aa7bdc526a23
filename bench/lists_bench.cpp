// Operations on point lists against Boost.Geometry, same points: simplification, hull, place in a
// polygon, distance, length, orientation.
//
// "plain" rows: the simplification as its rule says it, every vertex looked at in every range; for
// the rest an object of a class of its own, whose operations call each other through the interface.
#include <benchmark/benchmark.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/linestring.hpp>
#include <boost/geometry/geometries/multi_point.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <string>
#include <vector>

#include "bench/workloads.h"
#include "common/commonFunc.h"

namespace {

namespace bg = boost::geometry;
using BoostPoint = bg::model::d2::point_xy<double>;
using BoostLine = bg::model::linestring<BoostPoint>;
using BoostRing = bg::model::polygon<BoostPoint>;
using Points = IcommonFunc::Points;
using tav::Point2DF;

/// Drawing units; removes about nine in ten vertices of the digitised line.
constexpr double kTolerance = 2.0;
/// Drawing units; keeps every vertex of the saw-tooth.
constexpr double kToothTolerance = 0.3;
class Overridden : public commonFunc {
public:
    using commonFunc::commonFunc;
};

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

/// Teeth of one height: the farthest vertex of a range is always the one next to its end.
Points sawTooth(int count)
{
    Points points;
    for (int i = 0; i < count; ++i) points.append({i * 1.0, i % 2 * 1.0});
    return points;
}

/// Places around the middle of a ring of that many vertices, or of a line.
std::vector<Point2DF> places(const Points& points)
{
    const bg::model::box<BoostPoint> box = [&] {
        bg::model::multi_point<BoostPoint> all;
        for (const Point2DF& p : points) bg::append(all, BoostPoint(p.x(), p.y()));
        return bg::return_envelope<bg::model::box<BoostPoint>>(all);
    }();
    workloads::Random random(13);
    std::vector<Point2DF> result;
    for (int i = 0; i < 16; ++i)
        result.emplace_back(random.between(box.min_corner().x(), box.max_corner().x()),
                            random.between(box.min_corner().y(), box.max_corner().y()));
    return result;
}

template <class Container>
Container boostPoints(const Points& points)
{
    Container container;
    for (const Point2DF& p : points) bg::append(container, BoostPoint(p.x(), p.y()));
    bg::correct(container);
    return container;
}

/// Reports the time for a vertex of each of `passes` runs over the points.
void reportVertex(benchmark::State& state, std::size_t passes = 1)
{
    const auto vertices = static_cast<double>(state.range(0)) * static_cast<double>(passes);
    state.counters["each"] = benchmark::Counter(
        vertices, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

using Make = Points (*)(int);

Points pointsFor(const benchmark::State& state, Make make)
{
    return make(static_cast<int>(state.range(0)));
}

template <class Functions>
void hullOurs(benchmark::State& state, Make make)
{
    const Points points = pointsFor(state, make);
    Functions geometry(0);
    for (auto _ : state) {
        Points work = points;
        Points hull;
        geometry.convexHull(work, hull);
        benchmark::DoNotOptimize(hull.data());
    }
    reportVertex(state);
}

void hullBoost(benchmark::State& state, Make make)
{
    const auto points = boostPoints<bg::model::multi_point<BoostPoint>>(pointsFor(state, make));
    for (auto _ : state) {
        BoostRing hull;
        bg::convex_hull(points, hull);
        benchmark::DoNotOptimize(hull.outer().data());
    }
    reportVertex(state);
}

template <class Functions>
void simplifyOurs(benchmark::State& state, Make make, double tolerance)
{
    const Points points = pointsFor(state, make);
    Functions geometry(0);
    int kept = 0;
    for (auto _ : state) {
        Points simplified;
        geometry.simplifyPolyline(points, simplified, tolerance);
        kept = simplified.size();
    }
    reportVertex(state);
    state.counters["kept"] = kept;
}

void simplifyBoost(benchmark::State& state, Make make, double tolerance)
{
    const auto line = boostPoints<BoostLine>(pointsFor(state, make));
    std::size_t kept = 0;
    for (auto _ : state) {
        BoostLine simplified;
        bg::simplify(line, simplified, tolerance);
        kept = simplified.size();
    }
    reportVertex(state);
    state.counters["kept"] = static_cast<double>(kept);
}

/// A measure asked at several places, through the interface as a host asks it.
template <class Functions, class Ask>
void askOurs(benchmark::State& state, Make make, Ask ask)
{
    const Points points = pointsFor(state, make);
    const std::vector<Point2DF> asked = places(points);
    Functions functions(0);
    IcommonFunc* geometry = &functions;
    benchmark::DoNotOptimize(geometry);
    for (auto _ : state)
        for (const Point2DF& p : asked) benchmark::DoNotOptimize(ask(*geometry, points, p));
    reportVertex(state, asked.size());
}

template <class Figure, class Ask>
void askBoost(benchmark::State& state, Make make, Ask ask)
{
    const Points points = pointsFor(state, make);
    const std::vector<Point2DF> asked = places(points);
    const auto figure = boostPoints<Figure>(points);
    for (auto _ : state)
        for (const Point2DF& p : asked)
            benchmark::DoNotOptimize(ask(figure, BoostPoint(p.x(), p.y())));
    reportVertex(state, asked.size());
}

template <class Run>
void add(const std::string& name, int from, int to, Run run)
{
    for (int size = from; size <= to; size *= 10)
        benchmark::RegisterBenchmark(name.c_str(), run)->Arg(size)->Unit(benchmark::kMicrosecond);
}

void addHull(const std::string& task, Make make)
{
    const auto at = [&](const char* contender, auto run) {
        add(task + "/" + contender, 1000, 1000000,
            [=](benchmark::State& state) { run(state, make); });
    };
    at("calcora", hullOurs<commonFunc>);
    at("boost", hullBoost);
    at("plain", hullOurs<Overridden>);
}

void addSimplify(const std::string& task, Make make, double tolerance, int boostLimit,
                 int plainLimit)
{
    const auto at = [&](const char* contender, int to, auto run) {
        add(task + "/" + contender, 1000, to,
            [=](benchmark::State& state) { run(state, make, tolerance); });
    };
    at("calcora", 1000000, simplifyOurs<commonFunc>);
    at("boost", boostLimit, simplifyBoost);
    at("plain", plainLimit, simplifyOurs<Overridden>);
}

template <class Figure, class Ours, class Boost>
void addMeasure(const std::string& task, Make make, Ours ours, Boost boost)
{
    const auto at = [&](const char* contender, auto run) {
        add(task + "/" + contender, 100, 1000000, run);
    };
    at("calcora", [=](benchmark::State& state) { askOurs<commonFunc>(state, make, ours); });
    at("boost", [=](benchmark::State& state) { askBoost<Figure>(state, make, boost); });
    at("plain", [=](benchmark::State& state) { askOurs<Overridden>(state, make, ours); });
}

const bool kRowsAdded = [] {
    addSimplify("simplify_digitised", digitised, kTolerance, 1000000, 100000);
    addSimplify("simplify_saw", sawTooth, kToothTolerance, 100000, 10000);
    addHull("hull_ring", ring);
    addHull("hull_cloud", cloud);
    addMeasure<BoostRing>(
        "point_in_polygon", ring,
        [](IcommonFunc& geometry, const Points& points, const Point2DF& p) {
            return geometry.pointInPolygon(points, p);
        },
        [](const BoostRing& figure, const BoostPoint& p) { return bg::within(p, figure); });
    addMeasure<BoostLine>(
        "point_distance", digitised,
        [](IcommonFunc& geometry, const Points& points, const Point2DF& p) {
            return geometry.pointPolylineDistSquared(p, points);
        },
        [](const BoostLine& figure, const BoostPoint& p) { return bg::distance(p, figure); });
    addMeasure<BoostLine>(
        "length", digitised,
        [](IcommonFunc& geometry, const Points& points, const Point2DF&) {
            return geometry.polylineLength(points);
        },
        [](const BoostLine& figure, const BoostPoint&) { return bg::length(figure); });
    addMeasure<BoostRing>(
        "orientation", ring,
        [](IcommonFunc& geometry, const Points& points, const Point2DF&) {
            return geometry.isClockwiseRing(points);
        },
        [](const BoostRing& figure, const BoostPoint&) { return bg::area(figure); });
    return true;
}();

}  // namespace
