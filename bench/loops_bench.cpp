// Loop extraction against node + polygonize of GEOS (arcs as chords within 1e-3), same line work.
#include <benchmark/benchmark.h>
#include <geos_c.h>

#include <memory>

#include "bench/workloads.h"
#include "datageo/DataGeo.h"

namespace {

using workloads::LineWork;

/// Largest size that the peer is measured at; it grows too slow beyond.
constexpr int kPeerLimit = 100000;

/// A figure over the loops that changes when any of their coordinates does.
double checksum(const IDataGeo::PointLists& loops, const IDataGeo::ValueLists& bulges)
{
    double sum = 0;
    double weight = 1;
    for (int i = 0; i < loops.size(); ++i)
        for (int k = 0; k < loops[i].size(); ++k) {
            weight = weight > 1e6 ? 1 : weight * 1.0001;
            sum += weight * (loops[i][k].x() + 3 * loops[i][k].y() + 7 * bulges[i][k]);
        }
    return sum;
}

void extractLoops(benchmark::State& state, const workloads::Named& workload)
{
    const LineWork work = workload.make(static_cast<int>(state.range(0)));
    IDataGeo::PointLists loops;
    IDataGeo::ValueLists bulges;
    DataGeo data(0);
    for (auto _ : state) {
        data.buildRegions(work.points, work.bulges, loops, bulges, false, nullptr, 0);
        benchmark::DoNotOptimize(loops);
    }
    state.counters["loops"] = loops.size();
    state.counters["checksum"] = checksum(loops, bulges);
    state.counters["ns_per_segment"] =
        benchmark::Counter(work.segments * 1e-9, benchmark::Counter::kIsIterationInvariantRate |
                                                     benchmark::Counter::kInvert);
}

/// GEOS objects are destroyed through their library's context.
struct Geos {
    GEOSContextHandle_t handle = GEOS_init_r();
    ~Geos() { GEOS_finish_r(handle); }

    GEOSGeometry* line(const std::vector<tav::Point2DF>& points) const
    {
        GEOSCoordSequence* sequence =
            GEOSCoordSeq_create_r(handle, static_cast<unsigned>(points.size()), 2);
        for (unsigned i = 0; i < points.size(); ++i)
            GEOSCoordSeq_setXY_r(handle, sequence, i, points[i].x(), points[i].y());
        return GEOSGeom_createLineString_r(handle, sequence);
    }
};

/// The polyline with every arc as chords within 1e-3.
std::vector<tav::Point2DF> chords(const tav::Vector<tav::Point2DF>& points,
                                  const tav::Vector<double>& bulges)
{
    std::vector<tav::Point2DF> result{points.first()};
    for (int i = 0; i + 1 < points.size(); ++i) {
        const tav::Point2DF& a = points[i];
        const tav::Point2DF& b = points[i + 1];
        const double half = 2 * std::atan(bulges[i]);
        if (half != 0) {
            const double radius = a.distanceTo(b) / (2 * std::fabs(std::sin(half)));
            const int steps = 1 + static_cast<int>(std::fabs(half) / std::acos(1 - 1e-3 / radius));
            for (int k = 1; k < steps; ++k) {
                const double t = static_cast<double>(k) / steps;
                const double scale = std::sin(t * half) / std::sin(half);
                const double turn = -(1 - t) * half;
                const double dx = b.x() - a.x();
                const double dy = b.y() - a.y();
                result.emplace_back(a.x() + scale * (dx * std::cos(turn) - dy * std::sin(turn)),
                                    a.y() + scale * (dx * std::sin(turn) + dy * std::cos(turn)));
            }
        }
        result.push_back(b);
    }
    return result;
}

void polygonize(benchmark::State& state, const workloads::Named& workload)
{
    const LineWork work = workload.make(static_cast<int>(state.range(0)));
    const Geos geos;
    std::vector<GEOSGeometry*> lines;
    for (int i = 0; i < work.points.size(); ++i)
        lines.push_back(geos.line(chords(work.points[i], work.bulges[i])));
    GEOSGeometry* collection = GEOSGeom_createCollection_r(
        geos.handle, GEOS_MULTILINESTRING, lines.data(), static_cast<unsigned>(lines.size()));
    int faces = 0;
    for (auto _ : state) {
        GEOSGeometry* noded = GEOSNode_r(geos.handle, collection);
        GEOSGeometry* polygons = GEOSPolygonize_r(geos.handle, &noded, 1);
        faces = GEOSGetNumGeometries_r(geos.handle, polygons);
        GEOSGeom_destroy_r(geos.handle, polygons);
        GEOSGeom_destroy_r(geos.handle, noded);
    }
    GEOSGeom_destroy_r(geos.handle, collection);
    state.counters["loops"] = faces;
    state.counters["ns_per_segment"] =
        benchmark::Counter(work.segments * 1e-9, benchmark::Counter::kIsIterationInvariantRate |
                                                     benchmark::Counter::kInvert);
}

}  // namespace

int main(int argc, char** argv)
{
    for (const workloads::Named& workload : workloads::all())
        for (const int size : {1000, 10000, 100000, 1000000}) {
            const std::string name = std::string("loops_") + workload.name;
            benchmark::RegisterBenchmark(
                (name + "/calcora").c_str(),
                [workload](benchmark::State& state) { extractLoops(state, workload); })
                ->Arg(size)
                ->Unit(benchmark::kMillisecond);
            if (size <= kPeerLimit)
                benchmark::RegisterBenchmark(
                    (name + "/geos").c_str(),
                    [workload](benchmark::State& state) { polygonize(state, workload); })
                    ->Arg(size)
                    ->Unit(benchmark::kMillisecond);
        }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
