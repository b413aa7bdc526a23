// Points per second of the curves at a thousand, a hundred thousand and a million points that come
// out. The Akima curve, at fixed parameters, stands beside the Catmull-Rom curve of Boost.Math
// evaluated at as many; nothing else samples with a tolerance.
//
// The line wanders over the plane in steps of about ten units; each curve gets as many of its
// points, at one tolerance, as make the wanted number. The output list is reused, as a host does
// that draws one line after another. The size is the wanted number, `points` the one made.
#include <array>
#include <boost/math/interpolators/catmull_rom.hpp>
#include <random>
#include <utility>
#include <vector>

#include "benchmark/benchmark.h"
#include "common/commonFunc.h"

namespace {

using tav::Point2DF;
using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

constexpr double kTolerance = 0.002;

Points wanderingLine(int n)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> step(5.0, 15.0);
    std::uniform_real_distribution<double> rise(-8.0, 8.0);
    Points points{{0, 0}};
    while (points.size() < n) points.append(points.last() + Point2DF(step(random), rise(random)));
    return points;
}

/// A line over which `draw` makes about `wanted` points.
template <class Draw>
Points lineFor(const Draw& draw, int wanted)
{
    constexpr int kTrial = 2000;
    Points out;
    Values z;
    draw(wanderingLine(kTrial), out, z);
    const double perVertex = static_cast<double>(out.size()) / kTrial;
    return wanderingLine(static_cast<int>(wanted / perVertex) + 4);
}

template <class Draw>
void run(benchmark::State& state, const Draw& draw)
{
    const Points line = lineFor(draw, static_cast<int>(state.range(0)));
    Points out;
    Values z;
    for (auto _ : state) {
        out.clear();
        z.clear();
        draw(line, out, z);
        benchmark::DoNotOptimize(std::as_const(out).data());
    }
    state.SetItemsProcessed(state.iterations() * out.size());
    state.counters["points"] = out.size();
}

Values heightsOf(const Points& line)
{
    Values heights;
    for (const Point2DF& p : line) heights.append(p.y() / 10);
    return heights;
}

void spline(benchmark::State& state)
{
    commonFunc f(0);
    run(state, [&](const Points& line, Points& out, Values&) {
        f.splineInterpolate(line, out, false, kTolerance);
    });
}

void closedSpline(benchmark::State& state)
{
    commonFunc f(0);
    run(state, [&](const Points& line, Points& out, Values&) {
        f.splineInterpolate(line, out, true, kTolerance);
    });
}

void tension(benchmark::State& state)
{
    commonFunc f(0);
    run(state, [&](const Points& line, Points& out, Values&) {
        f.tensionCurve(line, out, false, 0, 0, kTolerance);
    });
}

void tensionWithValues(benchmark::State& state)
{
    commonFunc f(0);
    run(state, [&](const Points& line, Points& out, Values& z) {
        f.tensionCurveZ(line, heightsOf(line), out, z, false, 0, 0, kTolerance);
    });
}

void akima(benchmark::State& state)
{
    commonFunc f(0);
    run(state, [&](const Points& line, Points& out, Values&) { f.akimaCurve(line, out); });
}

/// The handles of the whole line, then every span cut into chords.
void bezier(benchmark::State& state)
{
    commonFunc f(0);
    run(state, [&](const Points& line, Points& out, Values&) {
        IcommonFunc::PointLists spans;
        f.bezierCurveSpans(line, spans);
        Points chords;
        for (int i = 0; i < spans.size(); ++i) {
            const Points& handles = std::as_const(spans)[i];
            f.bezierSpanToPolyline(line[i], handles[0], handles[1], line[i + 1], chords,
                                   kTolerance);
            out.append(chords);
        }
    });
}

void bspline(benchmark::State& state)
{
    commonFunc f(0);
    run(state, [&](const Points& line, Points& out, Values&) {
        f.bsplineToPolyline(line, out, 3, kTolerance);
    });
}

void bsplineWithElevations(benchmark::State& state)
{
    commonFunc f(0);
    run(state, [&](const Points& line, Points& out, Values& z) {
        f.bsplineToPolyline3d(line, heightsOf(line), out, z, 3, kTolerance);
    });
}

/// Sixteen parameters for each span; not adaptive.
void catmullRomOfBoost(benchmark::State& state)
{
    constexpr int kPerSpan = 16;
    const Points line = wanderingLine(static_cast<int>(state.range(0)) / kPerSpan);
    Points out;
    for (auto _ : state) {
        out.clear();
        std::vector<std::array<double, 2>> vertices;
        vertices.reserve(static_cast<std::size_t>(line.size()));
        for (const Point2DF& p : line) vertices.push_back({p.x(), p.y()});
        const boost::math::catmull_rom<std::array<double, 2>> curve(std::move(vertices));
        const int samples = line.size() * kPerSpan;
        const double step = curve.max_parameter() / samples;
        for (int i = 0; i < samples; ++i) {
            const std::array<double, 2> p = curve(i * step);
            out.append({p[0], p[1]});
        }
        benchmark::DoNotOptimize(std::as_const(out).data());
    }
    state.SetItemsProcessed(state.iterations() * out.size());
    state.counters["points"] = out.size();
}

void sizes(benchmark::internal::Benchmark* b)
{
    b->Arg(1'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(spline)->Name("spline/calcora")->Apply(sizes);
BENCHMARK(closedSpline)->Name("closed_spline/calcora")->Apply(sizes);
BENCHMARK(tension)->Name("tension/calcora")->Apply(sizes);
BENCHMARK(tensionWithValues)->Name("tension_with_values/calcora")->Apply(sizes);
BENCHMARK(akima)->Name("akima/calcora")->Apply(sizes);
BENCHMARK(catmullRomOfBoost)->Name("akima/boost_catmull_rom")->Apply(sizes);
BENCHMARK(bezier)->Name("bezier/calcora")->Apply(sizes);
BENCHMARK(bspline)->Name("bspline/calcora")->Apply(sizes);
BENCHMARK(bsplineWithElevations)->Name("bspline_with_elevations/calcora")->Apply(sizes);

}  // namespace
