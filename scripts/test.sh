#!/usr/bin/env bash
# Checks the formatting, then builds and runs all tests, in release and under the sanitizers.
set -euo pipefail
"$(dirname "$0")/setup.sh"
source "$(dirname "$0")/lib.sh"

say "formatting of all sources"
if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    mapfile -t sources < <(git ls-files -co --exclude-standard -- '*.h' '*.cpp')
else
    mapfile -t sources < <(find . -path ./build -prune -o \( -name '*.h' -o -name '*.cpp' \) -print)
fi
existing=()
for file in "${sources[@]}"; do
    [[ -f $file ]] && existing+=("$file")
done
clang-format --dry-run -Werror "${existing[@]}" || {
    say "run clang-format -i on the files named above"
    exit 1
}

for preset in release asan; do
    say "$preset build"
    build "$preset"
    say "$preset tests"
    ctest --preset "$preset" -j "$jobs" </dev/null
done
say "demo"
quietly build/demo.log scripts/demo.sh
say "all passed in $((SECONDS / 60)) min $((SECONDS % 60)) s"
