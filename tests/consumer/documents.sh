#!/usr/bin/env bash
# Compiles or runs every code block of Markdown documents against the installed package.
#   documents.sh PREFIX COMPILER WORK_FOLDER TREE DOCUMENT...    (documents as seen from TREE)
#
# cpp      put into one program. "int n = f();  // 3" and "f(p);  // p is (1, 2)" are checked.
# cmake    has to configure and build TREE/examples/sdk/list_classes.cpp as main.cpp.
# sh       is run; scripts of the tree are only looked at, since they run these tests.
# console  "$ command" lines are run; what follows is their output, "..." standing for any lines.
#          Blocks without a name that begin with "$ " are of this kind. Times are passed over.
# usage    all options of calcora's commands, as its help has them.
set -euo pipefail
prefix=$1 compiler=$2 work=$3 tree=$4
shift 4
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work"
mkdir -p "$work"
libraries=$(dirname "$(find "$prefix" -name libtavrel_core.so)")
export PATH=$prefix/bin:$PATH PKG_CONFIG_PATH=$libraries/pkgconfig LD_LIBRARY_PATH=$libraries
cd "$work"
ln -s "$tree/examples" examples

fail()
{
    echo "$*" >&2
    exit 1
}

# Blocks as files: block<number>.<kind>, with a first line that tells where they stand.
for document in "$@"; do
    awk -v name="$document" -v first="$(find . -name 'block*' | wc -l)" '
        /^```/ && !inside {
            inside = 1; kind = substr($0, 4); text = ""; line = NR + 1; next
        }
        /^```/ {
            inside = 0
            if (kind == "" && text ~ /^\$ /) kind = "console"
            file = sprintf("block%03d.%s", first + n++, kind == "" ? "unknown" : kind)
            printf "%s:%d\n%s", name, line, text > file
            close(file)
            next
        }
        inside { text = text $0 "\n" }' "$tree/$document"
done
shopt -s nullglob
blocks=(block*)
((${#blocks[@]} > 0)) || fail "no code blocks in $*"

cpp_program()
{
    echo '#include "blocks.h"'
    sed -n 's/^#include <.*/&/p' block*.cpp | sort -u
    local block
    for block in block*.cpp; do
        local place
        place=$(head -n 1 "$block")
        echo "static void ${block%.cpp}(Objects& objects) {"
        echo '    [[maybe_unused]] auto& [calcora, geometry, common, geo, geometric, setup, tree, unit] = objects;'
        echo '    {'
        echo "#line ${place##*:} \"${place%:*}\""
        # What a comment tells about a value becomes a check behind the statement.
        tail -n +2 "$block" | sed -E \
            -e 's/^#include.*//' \
            -e 's/^(.*;)  \/\/ (.*) is (-?[0-9.]+|true|false|\(.*\))$/\1 expect(\2, "\3", __FILE__, __LINE__);/' \
            -e 's/^((const )?[a-z][A-Za-z0-9:]* ([A-Za-z0-9]+) = .*;)  \/\/ (-?[0-9.]+|true|false|\(.*\))$/\1 expect(\3, "\4", __FILE__, __LINE__);/'
        echo '    }'
        echo '}'
    done
    echo 'int main() { Objects objects;'
    for block in block*.cpp; do echo "    ${block%.cpp}(objects);"; done
    echo '    return failures; }'
}
cpp_blocks=(block*.cpp)
if ((${#cpp_blocks[@]} > 0)); then
    cpp_program >program.cc
    checks=$(grep -c 'expect(' program.cc) || fail "no value is checked"
    "$compiler" -std=c++20 -I"$here" program.cc -o program $(pkg-config --cflags --libs quon_calcora)
    ./program || fail "values differ from what the documents tell"
    echo "${#cpp_blocks[@]} cpp blocks, $checks values"
fi

for block in block*.cmake; do
    mkdir "${block%.cmake}"
    tail -n +2 "$block" >"${block%.cmake}/CMakeLists.txt"
    cp examples/sdk/list_classes.cpp "${block%.cmake}/main.cpp"
    cmake -S "${block%.cmake}" -B "${block%.cmake}/build" -DCMAKE_PREFIX_PATH="$prefix" \
        -DCMAKE_CXX_COMPILER="$compiler" >cmake.log 2>&1 &&
        cmake --build "${block%.cmake}/build" >>cmake.log 2>&1 ||
        fail "$(head -n 1 "$block"): $(<cmake.log)"
done

for block in block*.sh; do
    { tail -n +2 "$block" | grep '^scripts/' || true; } | while read -r script _; do
        [[ -x $tree/$script ]] || fail "$(head -n 1 "$block"): no $script"
    done
    tail -n +2 "$block" | grep -v '^scripts/' >commands || true
    bash -e commands >output 2>&1 || fail "$(head -n 1 "$block"): $(<output)"
done

# One command and the output expected so far; compared when the next command comes.
check_output()
{
    [[ $command ]] || return 0
    local output
    output=$(bash -e -c "$command" 2>&1) || fail "$place: $command: $output"
    output=$(grep -v '^  seconds ' <<<"$output")
    # shellcheck disable=SC2053
    [[ $output$'\n' == $pattern ]] || fail "$place: $command prints"$'\n'"$output"
}
for block in block*.console; do
    place=$(head -n 1 "$block") command='' pattern=''
    while IFS= read -r line; do
        if [[ $line == '$ '* ]]; then
            check_output
            command=${line#'$ '} pattern=''
        elif [[ $line =~ ^\ *\.\.\.$ ]]; then
            pattern+='*'
        else
            pattern+=$(sed 's/[][\\*?]/\\&/g' <<<"$line")$'\n'
        fi
    done < <(tail -n +2 "$block")
    check_output
done

for block in block*.usage; do
    # One line for each command; -o stands for --output.
    tail -n +2 "$block" | sed -e ':a;N;$!ba;s/\n  */ /g' | grep -v '^calcora -' |
        while read -r _ command options; do
            diff <(grep -oE -- '-[-a-z]+' <<<"$options" | sort -u) \
                <(calcora "$command" --help | grep -oE '^  -[-a-z,]+' | sed 's/.*,//; s/ //g' |
                    sed 's/^--output$/-o/' | grep -v -e --help | sort -u) >&2 ||
                fail "$(head -n 1 "$block"): options of $command"
        done
done

unknown=(block*.unknown)
((${#unknown[@]} == 0)) || fail "no kind is told for the block in $(head -n 1 "${unknown[0]}")"
echo "${#blocks[@]} blocks"
