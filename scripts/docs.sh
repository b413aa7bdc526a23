#!/usr/bin/env bash
# Makes the manual: draws docs/manual/images/*.svg anew, then build/docs/html/index.html from the
# headers and docs/manual/. Fails for an operation without description and for every warning.
set -euo pipefail
"$(dirname "$0")/setup.sh" docs
source "$(dirname "$0")/lib.sh"

interfaces=(IcommonFunc IGeometric IGeoSetUp IDataGeo ICRTree IUnit)
pages=build/docs/pages

# table INTERFACE [NAMES]
table()
{
    awk -v class="$1" -v only="${2:-}" -f docs/manual/slot_table.awk "frame/calcora/$1.h"
}
# The operations of IcommonFunc that the sources of a family define.
names_in() # FAMILY...
{
    sed -nE 's/^[^ /].*[ *&]commonFunc::([a-zA-Z0-9]+)\(.*/\1/p' "${@/%/.cpp}" | tr '\n' ' '
}
# Puts the tables in the places that a page marks.
with_tables() # PAGE
{
    local line
    while IFS= read -r line; do
        if [[ $line =~ ^'<!-- operations: '(.*)' -->'$ ]]; then
            local families
            read -ra families <<<"${BASH_REMATCH[1]}"
            echo "## Operations"
            echo
            table IcommonFunc "$(names_in "${families[@]/#/common/}")"
        elif [[ $line =~ ^'<!-- operations-of: '(.*)' -->'$ ]]; then
            local interface
            for interface in ${BASH_REMATCH[1]}; do
                echo "## $interface"
                echo
                table "$interface"
                echo
            done
        else
            echo "$line"
        fi
    done <"$1"
}

say "drawings"
build release manual_drawings
build/release/bin/manual_drawings docs/manual/images

say "pages"
rm -rf build/docs
mkdir -p "$pages"
for page in docs/manual/*.md; do
    with_tables "$page" | sed 's|(\.\./calcora\.md|(calcora.md|' >"$pages/$(basename "$page")"
done
sed 's/^## All commands$/& {#all-commands}/' docs/calcora.md >"$pages/calcora.md"
told=$(cat "$pages"/*.md | grep -oE '@ref IcommonFunc::[a-zA-Z0-9]+ "' | sort -u | wc -l)
all=$(table IcommonFunc | grep -c '@ref')
((told == all)) || { say "the pages tell $told of the $all operations of IcommonFunc" >&2; exit 1; }
for interface in "${interfaces[@]}"; do
    {
        echo "# $interface: slots {#slots_$interface}"
        echo
        echo "Slots 0 to 5 are those of tav::IObject. Details: $interface."
        echo
        table "$interface"
    } >"$pages/slots_$interface.md"
done

# Pages stand in the order in which the first one names them.
ordered=("$pages/manual.md")
for name in $(grep -oE '\(([a-z]+)\.md\)|slots_[A-Za-z]+' "$pages/manual.md" | tr -d '()'); do
    ordered+=("$pages/${name%.md}.md")
done

say "manual"
CALCORA_PAGES="${ordered[*]}" CALCORA_VERSION=$(sed -nE 's/^project\(.* VERSION ([0-9.]+).*/\1/p' CMakeLists.txt) \
    quietly build/docs/doxygen.log doxygen docs/manual/Doxyfile
# Names that explain themselves need no description; operations and types do. Reserved slots have none.
failed=
while IFS= read -r warning; do
    if [[ $warning =~ ^([^:]+):([0-9]+):.*Member.*'is not documented' ]]; then
        source=$(sed -n "${BASH_REMATCH[2]}p" "${BASH_REMATCH[1]}")
        [[ $source == *virtual* || $source == *TAV_CORE_API* ]] || continue
        [[ $source == *'void reserved'* ]] && continue
    fi
    echo "$warning" >&2
    failed=yes
done <build/docs/warnings.txt
[[ ! $failed ]] || { say "the manual has the faults named above" >&2; exit 1; }
say "build/docs/html/index.html"
