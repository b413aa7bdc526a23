#!/usr/bin/env bash
# Builds calcora and lets it find the loops of the sample site plan: a table here, a drawing and a
# picture in build/demo/.
set -euo pipefail
"$(dirname "$0")/setup.sh"
source "$(dirname "$0")/lib.sh"

say "release build of calcora (a minute or two the first time)"
build release calcora
say "drawing examples/site_plan.dxf"
build release site_plan
mkdir -p build/demo
say "loops of the site plan"
build/release/bin/calcora loops examples/site_plan.dxf \
    -o build/demo/site_plan_loops.dxf --svg build/demo/site_plan_loops.svg
say "wrote build/demo/site_plan_loops.dxf and build/demo/site_plan_loops.svg"
