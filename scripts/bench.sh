#!/usr/bin/env bash
# Builds and runs the benchmarks, then prints how many times longer each peer took than we did, the
# goals that were set and what falls short of them.
#   scripts/bench.sh [OPTIONS OF GOOGLE BENCHMARK...]
# Benchmarks are named TASK/CONTENDER/SIZE; we are the contenders calcora and CRTree. Times are
# processor time of one thread, medians of repetitions whose order is random.
set -euo pipefail
"$(dirname "$0")/setup.sh" bench
source "$(dirname "$0")/lib.sh"

say "bench build"
build bench
bin=build/bench/bin
results=build/bench/results
rm -rf "$results"
mkdir -p "$results"
for program in "$bin"/*_bench; do
    name=$(basename "$program")
    say "$name"
    if [[ $name == cancel_bench ]]; then  # an iteration is one place of twenty; the worst counts
        "$program" --benchmark_out="$results/cancel.txt" --benchmark_out_format=console </dev/null >/dev/null
        continue
    fi
    "$program" --benchmark_repetitions=3 --benchmark_report_aggregates_only=true \
        --benchmark_enable_random_interleaving=true --benchmark_min_time=0.1 "$@" \
        --benchmark_out="$results/$name.json" --benchmark_out_format=json </dev/null >/dev/null
done
say "memory"
"$bin/loops_memory" >"$results/memory.txt"

say "$(g++ --version | head -1); $(awk -F': ' '/model name/ { print $2; exit }' /proc/cpuinfo)"
awk -f scripts/bench_report.awk scripts/bench_goals.txt "$results/memory.txt" "$results"/*.json

say "time from raising the cancel flag to the return, a million segments"
cat "$results/cancel.txt"

say "faces, beside those of exact arrangements"
"$bin/loops_bench" --faces
