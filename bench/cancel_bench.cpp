// How long an extraction goes on after its cancel flag was raised, at places all along the way.
//
// worst_cpu_ms is the extraction's own computing time, which other load of the machine leaves alone.
#include <benchmark/benchmark.h>
#include <pthread.h>
#include <time.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "bench/workloads.h"
#include "datageo/DataGeo.h"

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr int kSegments = 1000000;
constexpr int kPlaces = 20;

double cpuSecondsOf(pthread_t thread)
{
    clockid_t clock;
    timespec time = {};
    if (pthread_getcpuclockid(thread, &clock) == 0) clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

struct Extraction {
    const workloads::LineWork& work;
    IDataGeo::PointLists loops;
    IDataGeo::ValueLists bulges;

    void run(bool* cancel)
    {
        DataGeo(0).buildRegions(work.points, work.bulges, loops, bulges, false, cancel, 0);
    }
};

/// One iteration is one extraction; its time is that from raising the flag to the return.
void raiseFlag(benchmark::State& state, const workloads::Named& workload)
{
    const auto work = workload.make(kSegments);
    const auto start = Clock::now();
    Extraction{work, {}, {}}.run(nullptr);
    const double whole = Seconds(Clock::now() - start).count();
    double worst = 0, worstCpu = 0;
    int place = 0;
    for (auto _ : state) {
        bool cancel = false;
        Clock::time_point raised;
        double cpuBefore = 0;
        std::thread other([&, extracting = pthread_self()] {
            std::this_thread::sleep_for(Seconds(whole * (place++ % kPlaces) / kPlaces));
            std::atomic_ref(cancel).store(true);
            cpuBefore = cpuSecondsOf(extracting);
            raised = Clock::now();
        });
        Extraction extraction{work, {}, {}};
        extraction.run(&cancel);
        const auto returned = Clock::now();
        const double cpuAfter = cpuSecondsOf(pthread_self());
        other.join();
        const double late = std::max(0.0, Seconds(returned - raised).count());
        state.SetIterationTime(late);
        worst = std::max(worst, late);
        if (returned > raised) worstCpu = std::max(worstCpu, cpuAfter - cpuBefore);
    }
    state.counters["worst_ms"] = worst * 1e3;
    state.counters["worst_cpu_ms"] = worstCpu * 1e3;
    state.counters["whole_ms"] = whole * 1e3;
}

}  // namespace

int main(int argc, char** argv)
{
    for (const workloads::Named& workload : workloads::all())
        benchmark::RegisterBenchmark(
            (std::string("cancel_") + workload.name + "/calcora/" + std::to_string(kSegments))
                .c_str(),
            [workload](benchmark::State& state) { raiseFlag(state, workload); })
            ->UseManualTime()
            ->Iterations(kPlaces)
            ->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
