#!/usr/bin/env bash
# Fuzzes the module under the sanitizers, each target for so many seconds, then tells how many
# executions there were.
#   scripts/fuzz.sh SECONDS [TARGETS...]      targets: operations rtree extraction dxf
# What was learnt stays in build/fuzz/corpus/; an input that breaks something is named at the end.
# Run it again with build/fuzz/bin/TARGET_fuzz FILE.
set -euo pipefail
if [[ ! ${1:-} =~ ^[0-9]+$ ]]; then
    sed -n '2,6s/^# //p' "$0"
    exit 2
fi
seconds=$1
shift
targets=("${@:-}")
[[ -n ${targets[0]} ]] || targets=(operations rtree extraction dxf)
"$(dirname "$0")/setup.sh" fuzz
source "$(dirname "$0")/lib.sh"

say "fuzz build"
build fuzz "${targets[@]/%/_fuzz}"
folder=build/fuzz
mkdir -p "$folder/found"

fuzz() # TARGET
{
    mkdir -p "$folder/corpus/$1"
    # Weighing the corpus by rare features (-entropic) would take more time than the calls.
    local options=(-max_total_time="$seconds" -max_len=256 -timeout=100 -rss_limit_mb=4096
                   -entropic=0 -reload=0 -print_funcs=0 -artifact_prefix="$folder/found/$1-")
    "$folder/bin/$1_fuzz" "$folder/corpus/$1" "${options[@]}" >"$folder/$1.log" 2>&1 </dev/null
}
say "fuzzing ${targets[*]} for $seconds s each, $jobs at a time"
export folder seconds
export -f fuzz
failed=0
printf '%s\n' "${targets[@]}" | xargs -P "$jobs" -I{} bash -c 'fuzz {}' || failed=1

for target in "${targets[@]}"; do
    sed -n 's/^executions \([0-9]*\) \(.*\)/\1  \2/p' "$folder/$target.log"
    sed -n "s/^Done \([0-9]*\) runs.*/\1  runs of $target/p" "$folder/$target.log"
    grep -h -E '^fuzz: |^SUMMARY|Test unit written' "$folder/$target.log" || true
done
exit "$failed"
