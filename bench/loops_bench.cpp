// Loop extraction against other libraries on the same line work.
//
//   loops_bench [OPTIONS OF GOOGLE BENCHMARK...]   times, with a checksum over the loops
//   loops_bench --faces                            faces found, beside those of exact arrangements
#include <benchmark/benchmark.h>

#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <string>

#include "bench/peers.h"
#include "bench/workloads.h"
#include "datageo/DataGeo.h"

namespace {

using workloads::LineWork;

/// Largest size that peers are measured at; they grow too slow beyond.
constexpr int kPeerLimit = 100000;

/// Size and seeds of the drawings whose faces are counted.
constexpr int kCountedSize = 3000;
constexpr int kSeeds = 4;

/// A figure over every bit of the loops, in their order (FNV-1a over 64-bit words).
std::string checksum(const IDataGeo::PointLists& loops, const IDataGeo::ValueLists& bulges)
{
    std::uint64_t hash = 0xCBF29CE484222325u;
    const auto add = [&hash](std::uint64_t word) { hash = (hash ^ word) * 0x100000001B3u; };
    for (int i = 0; i < loops.size(); ++i) {
        add(static_cast<std::uint64_t>(loops[i].size()));
        for (int k = 0; k < loops[i].size(); ++k)
            for (const double value : {loops[i][k].x(), loops[i][k].y(), bulges[i][k]})
                add(std::bit_cast<std::uint64_t>(value));
    }
    std::array<char, 17> text;
    std::snprintf(text.data(), text.size(), "%016llx", static_cast<unsigned long long>(hash));
    return text.data();
}

void reportSegments(benchmark::State& state, int segments)
{
    state.counters["each"] = benchmark::Counter(
        segments, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void extractLoops(benchmark::State& state, const workloads::Named& workload)
{
    const LineWork work = workload.make(static_cast<int>(state.range(0)));
    IDataGeo::PointLists loops;
    IDataGeo::ValueLists bulges;
    DataGeo data(0);
    for (auto _ : state) {
        data.buildRegions(work.points, work.bulges, loops, bulges, false, nullptr,
                          work.snapTolerance);
        benchmark::DoNotOptimize(loops);
    }
    state.counters["loops"] = loops.size();
    state.SetLabel(checksum(loops, bulges));
    reportSegments(state, work.segments);
}

using MakePeer = std::unique_ptr<peers::Peer> (*)(const LineWork&);

void runPeer(benchmark::State& state, const workloads::Named& workload, MakePeer make)
{
    const LineWork work = workload.make(static_cast<int>(state.range(0)));
    const auto peer = make(work);
    int faces = 0;
    for (auto _ : state) faces = peer->countFaces();
    state.counters["loops"] = faces;
    reportSegments(state, work.segments);
}

void addRows(const workloads::Named& workload, int size)
{
    const std::string task = std::string("loops_") + workload.name;
    const auto add = [&](const char* contender, auto run) {
        benchmark::RegisterBenchmark((task + "/" + contender).c_str(), run)
            ->Arg(size)
            ->Unit(benchmark::kMillisecond);
    };
    const auto addPeer = [&](unsigned which, const char* contender, MakePeer make) {
        if ((workload.peers & which) == 0 || size > kPeerLimit) return;
        add(contender, [=](benchmark::State& state) { runPeer(state, workload, make); });
    };
    add("calcora", [=](benchmark::State& state) { extractLoops(state, workload); });
    addPeer(workloads::kGeos, "geos", peers::geosNode);
    addPeer(workloads::kGeos, "geos_single", peers::geosSinglePass);
    addPeer(workloads::kGeosSnapping, "geos_snapping", peers::geosSnapping);
    addPeer(workloads::kCgal, "cgal", peers::cgalSegments);
    addPeer(workloads::kCgalCircles, "cgal", peers::cgalCircles);
}

int countFaces()
{
    bool areSame = true;
    std::printf("%-16s %5s %9s %9s %9s\n", "faces", "seed", "calcora", "exact", "geos");
    for (const workloads::Counted& workload : workloads::allCounted())
        for (int seed = 0; seed < kSeeds; ++seed) {
            const LineWork work =
                workload.make(kCountedSize, static_cast<std::uint64_t>(seed) * 100);
            IDataGeo::PointLists loops;
            IDataGeo::ValueLists bulges;
            DataGeo(0).buildRegions(work.points, work.bulges, loops, bulges, false, nullptr, 0);
            const int exact = peers::cgalCircles(work)->countFaces();
            areSame = areSame && loops.size() == exact;
            std::printf("%-16s %5d %9d %9d %9d%s\n", workload.name, seed, loops.size(), exact,
                        peers::geosNode(work)->countFaces(),
                        loops.size() == exact ? "" : "  DIFFERENT");
        }
    return areSame ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::string(argv[1]) == "--faces") return countFaces();
    for (const workloads::Named& workload : workloads::all())
        for (const int size : {10000, 100000, 1000000}) addRows(workload, size);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
