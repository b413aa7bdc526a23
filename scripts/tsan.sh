#!/usr/bin/env bash
# Runs the tests with several threads under ThreadSanitizer.
set -euo pipefail
"$(dirname "$0")/setup.sh"
source "$(dirname "$0")/lib.sh"

say "tsan build"
build tsan reliability_tests
say "tests with threads"
export TSAN_OPTIONS=halt_on_error=1
build/tsan/bin/reliability_tests --gtest_filter='Threads.*' </dev/null
