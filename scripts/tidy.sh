#!/usr/bin/env bash
# Runs clang-tidy with the project's profile over the sources, or over those that are named.
set -euo pipefail
source "$(dirname "$0")/lib.sh"

quietly build/tidy/configure.log env CC=clang CXX=clang++ cmake --preset release -B build/tidy
files=("$@")
if ((${#files[@]} == 0)); then
    mapfile -t files < <(git ls-files -- '*.cpp' ':!tests' ':!bench' ':!fuzz' ':!examples/sdk')
fi
say "clang-tidy on ${#files[@]} files"
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$jobs" clang-tidy -quiet -p build/tidy
