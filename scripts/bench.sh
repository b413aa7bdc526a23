#!/usr/bin/env bash
# Builds and runs the benchmarks and prints how many times longer each peer took than we did.
#   scripts/bench.sh [OPTIONS OF GOOGLE BENCHMARK...]
# Benchmarks are named TASK/CONTENDER/SIZE; the contender that runs first is ours.
set -euo pipefail
"$(dirname "$0")/setup.sh" bench
source "$(dirname "$0")/lib.sh"

say "bench build"
build bench
results=build/bench/results
rm -rf "$results"
mkdir -p "$results"
for program in build/bench/bin/*_bench; do
    name=$(basename "$program")
    say "$name"
    "$program" "$@" --benchmark_out="$results/$name.csv" --benchmark_out_format=csv </dev/null
done

say "times of the peers as multiples of ours"
awk -F, '
    $1 !~ /^"[^"\/]+\/[^"\/]+\// || $4 == "" { next }  # name, iterations, real time, cpu time, unit
    {
        gsub(/"/, "", $1)
        n = split($1, part, "/")
        row = part[1] " " part[3]
        for (i = 4; i <= n; ++i) row = row "/" part[i]
        if (!(row in ours)) {
            ours[row] = $4
            unit[row] = $5
            order[++rows] = row
            first[row] = part[2]
        } else if (ours[row] > 0) {
            peers[row] = peers[row] sprintf("  %s %.2f", part[2], $4 / ours[row])
        }
    }
    END {
        for (i = 1; i <= rows; ++i) {
            row = order[i]
            printf "%-32s %s %.4g %s %s\n", row, first[row], ours[row], unit[row], peers[row]
        }
    }' "$results"/*.csv
