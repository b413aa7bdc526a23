#!/usr/bin/env bash
# Draws docs/images/offsets.svg, a sheet of 24 figures with their parallels, and a copy in pixels,
# build/release/offsets.png, to look at.
set -euo pipefail
"$(dirname "$0")/setup.sh"
source "$(dirname "$0")/lib.sh"

say "building and drawing"
build release offset_sheet
rsvg-convert -z 2 docs/images/offsets.svg -o build/release/offsets.png
say "wrote docs/images/offsets.svg and build/release/offsets.png"
