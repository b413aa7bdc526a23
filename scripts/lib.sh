# Shared by the scripts: source it, then call. Works from any folder, with and without a terminal.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=$(nproc)
cd "$root"

# say WORDS...: what the script does now, in one line.
say()
{
    echo "$(basename "$0" .sh): $*"
}

# quietly LOG COMMAND...: runs with its output in LOG, which is shown when it fails.
quietly()
{
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    if ! "$@" >"$log" 2>&1 </dev/null; then
        cat "$log" >&2
        say "failed: $*" >&2
        return 1
    fi
}

# build PRESET [TARGETS...]: configures and builds build/PRESET.
build()
{
    local preset=$1
    shift
    quietly "build/$preset/configure.log" cmake --preset "$preset"
    quietly "build/$preset/build.log" cmake --build --preset "$preset" -j "$jobs" \
        ${1+--target "$@"}
}
