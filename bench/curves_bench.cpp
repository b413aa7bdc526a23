// Points per second of the curves at a thousand to a million points that come out. Beside them the
// Catmull-Rom curve of Boost.Math over the same line, built and evaluated at as many even
// parameters: nothing else samples with a tolerance, so the peer is spared the search for where
// points are needed.
//
// The line wanders over the plane in steps of about ten units; each curve gets as many of its
// points, at one tolerance, as make the wanted number. The output lists are reused, as a host does
// that draws one line after another. The size is the wanted number, `points` the one made. The
// Bezier samples are those of spans whose handles are there; the fit that finds handles (two for
// each segment) is a row of its own.
#include <algorithm>
#include <array>
#include <boost/math/interpolators/catmull_rom.hpp>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "benchmark/benchmark.h"
#include "common/commonFunc.h"

namespace {

using tav::Point2DF;
using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;
using PointLists = IcommonFunc::PointLists;

constexpr double kTolerance = 0.002;

/// A line to draw over, with heights and the handles of a Bezier curve.
struct Line {
    Points points;
    Values heights;
    PointLists handles;
};

Line wanderingLine(int n)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> step(5.0, 15.0);
    std::uniform_real_distribution<double> rise(-8.0, 8.0);
    Line line{{{0, 0}}, {0}, {}};
    while (line.points.size() < n) {
        line.points.append(line.points.last() + Point2DF(step(random), rise(random)));
        line.heights.append(std::as_const(line.points).last().y() / 10);
    }
    commonFunc(0).bezierCurveSpans(line.points, line.handles);
    return line;
}

struct Output {
    Points points;
    Values heights;
};

/// Every span cut into chords, in a list that is used again.
void drawSpans(IcommonFunc& f, const Line& line, Output& out)
{
    const Points& p = line.points;
    Points chords;
    for (int i = 0; i < line.handles.size(); ++i) {
        const Points& handles = line.handles[i];
        f.bezierSpanToPolyline(p[i], handles[0], handles[1], p[i + 1], chords, kTolerance);
        out.points.append(chords);
    }
}

struct Kind {
    const char* name;
    void (*draw)(IcommonFunc&, const Line&, Output&);
    bool hasPeer = false;
};

constexpr Kind kKinds[] = {
    {"spline",
     [](IcommonFunc& f, const Line& line, Output& out) {
         f.splineInterpolate(line.points, out.points, false, kTolerance);
     },
     true},
    {"bezier", drawSpans, true},
    {"akima",
     [](IcommonFunc& f, const Line& line, Output& out) { f.akimaCurve(line.points, out.points); },
     true},
    {"closed_spline",
     [](IcommonFunc& f, const Line& line, Output& out) {
         f.splineInterpolate(line.points, out.points, true, kTolerance);
     }},
    {"tension",
     [](IcommonFunc& f, const Line& line, Output& out) {
         f.tensionCurve(line.points, out.points, false, 0, 0, kTolerance);
     }},
    {"tension_with_values",
     [](IcommonFunc& f, const Line& line, Output& out) {
         f.tensionCurveZ(line.points, line.heights, out.points, out.heights, false, 0, 0,
                         kTolerance);
     }},
    {"bspline", [](IcommonFunc& f, const Line& line,
                   Output& out) { f.bsplineToPolyline(line.points, out.points, 3, kTolerance); }},
    {"bspline_with_elevations",
     [](IcommonFunc& f, const Line& line, Output& out) {
         f.bsplineToPolyline3d(line.points, line.heights, out.points, out.heights, 3, kTolerance);
     }},
};

/// A line over which the kind of curve makes about `wanted` points.
Line lineFor(const Kind& kind, std::int64_t wanted)
{
    constexpr int kTrial = 2000;
    commonFunc f(0);
    Output out;
    kind.draw(f, wanderingLine(kTrial), out);
    const double perVertex = static_cast<double>(out.points.size()) / kTrial;
    return wanderingLine(
        std::max(4, static_cast<int>(static_cast<double>(wanted) / perVertex) + 1));
}

void tell(benchmark::State& state, int points)
{
    state.SetItemsProcessed(state.iterations() * points);
    state.counters["points"] = points;
}

void ours(benchmark::State& state, const Kind& kind)
{
    commonFunc f(0);
    const Line line = lineFor(kind, state.range(0));
    Output out;
    kind.draw(f, line, out);  // the lists have grown
    for (auto _ : state) {
        out.points.clear();
        out.heights.clear();
        kind.draw(f, line, out);
        benchmark::DoNotOptimize(std::as_const(out.points).data());
    }
    tell(state, out.points.size());
}

void catmullRomOfBoost(benchmark::State& state, const Kind& kind)
{
    commonFunc f(0);
    const Line line = lineFor(kind, state.range(0));
    Output sameNumber;
    kind.draw(f, line, sameNumber);
    const int samples = sameNumber.points.size();
    Points out(samples);
    for (auto _ : state) {
        out.clear();
        std::vector<std::array<double, 2>> vertices;
        vertices.reserve(static_cast<std::size_t>(line.points.size()));
        for (const Point2DF& p : line.points) vertices.push_back({p.x(), p.y()});
        const boost::math::catmull_rom<std::array<double, 2>> curve(std::move(vertices));
        const double step = curve.max_parameter() / samples;
        for (int i = 0; i < samples; ++i) {
            const std::array<double, 2> p = curve(i * step);
            out.append({p[0], p[1]});
        }
        benchmark::DoNotOptimize(std::as_const(out).data());
    }
    tell(state, samples);
}

void bezierFit(benchmark::State& state)
{
    commonFunc f(0);
    const Line line = wanderingLine(static_cast<int>(state.range(0)) / 2 + 1);
    PointLists handles;
    for (auto _ : state) {
        f.bezierCurveSpans(line.points, handles);
        benchmark::DoNotOptimize(std::as_const(handles).data());
    }
    tell(state, 2 * handles.size());
}

void sizes(benchmark::internal::Benchmark* b)
{
    for (const int points : {1'000, 10'000, 100'000, 1'000'000}) b->Arg(points);
    b->Unit(benchmark::kMillisecond);
}

[[maybe_unused]] const bool registered = [] {
    for (const Kind& kind : kKinds) {
        const std::string name = kind.name;
        sizes(benchmark::RegisterBenchmark((name + "/calcora").c_str(),
                                           [&](benchmark::State& state) { ours(state, kind); }));
        if (kind.hasPeer)
            sizes(benchmark::RegisterBenchmark(
                (name + "/boost_catmull_rom").c_str(),
                [&](benchmark::State& state) { catmullRomOfBoost(state, kind); }));
    }
    sizes(benchmark::RegisterBenchmark("bezier_fit/calcora", bezierFit));
    return true;
}();

}  // namespace
