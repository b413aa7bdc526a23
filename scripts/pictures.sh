#!/usr/bin/env bash
# Draws the pictures of docs/images: the loops of the site plan, stations along a road, and the five
# kinds of curve side by side over the same points. Takes the folder of a build; build/release without one.
set -euo pipefail
cd "$(dirname "$0")/.."
calcora=${1:-build/release}/bin/calcora
"$calcora" loops examples/site_plan.dxf --svg docs/images/site_plan_loops.svg >/dev/null
"$calcora" station examples/road_axis.dxf --layer AXIS --every 20 --svg docs/images/stations.svg \
    >/dev/null
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

polyline() { # LAYER FLAGS X,Y ...
    printf '0\nLWPOLYLINE\n8\n%s\n90\n%d\n70\n%d\n' "$1" $(($# - 2)) "$2"
    for point in "${@:3}"; do printf '10\n%s\n20\n%s\n' "${point%,*}" "${point#*,}"; done
}
{
    printf '0\nSECTION\n2\nENTITIES\n'
    polyline LINES 0 0,9 1,9 2,9.1 2.5,12 3.4,12.2 5,12.2 5.6,9.6 6,9.4
    polyline LINES 1 0.6,1 3,0.4 5.6,1.2 5.4,5.6 5.1,6 3.2,3.6 0.4,6.4
    # A diagonal that is taken out again: it puts all curves to one scale.
    polyline FRAME 0 -0.6,0.1 6.6,12.5
    printf '0\nENDSEC\n0\nEOF\n'
} >"$work/points.dxf"

width=210
height=420
{
    echo "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"$((5 * width))\" height=\"$height\"" \
        "viewBox=\"0 0 $((5 * width)) $height\">"
    echo "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>"
    left=0
    for curve in spline tension akima bezier bspline; do
        "$calcora" smooth "$work/points.dxf" --curve "$curve" --tolerance 0.002 \
            -o "$work/out.dxf" --svg "$work/$curve.svg" >/dev/null
        echo "<text x=\"$((left + width / 2))\" y=\"24\" text-anchor=\"middle\"" \
            "font-family=\"sans-serif\" font-size=\"17\" fill=\"#37474f\">$curve</text>"
        # Widths are made for a page four times as large.
        sed -e "1s/ width=\"[^\"]*\" height=\"[^\"]*\"/ x=\"$left\" y=\"36\" width=\"$width\" height=\"$((height - 40))\"/" \
            -e 's/ xmlns="[^"]*"//' -e '/^<title>/d' -e '/^<rect /d' \
            -e 's/ stroke-width="1.95"/ stroke-width="4"/' -e 's/ stroke-width="0.78"/ stroke-width="2"/' \
            -e 's/ r="[^"]*"/ r="8"/' -e '/class="[a-z]* FRAME"/,/<\/g>/d' \
            -e '/<path d="M[^L]*L[^L]*"/d' "$work/$curve.svg"
        left=$((left + width))
    done
    echo '</svg>'
} >"$work/curves.svg"
mv "$work/curves.svg" docs/images/curves.svg
