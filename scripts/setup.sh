#!/usr/bin/env bash
# Installs the Debian packages that the project needs and that are missing.
#   scripts/setup.sh          what building, tests and demo need
#   scripts/setup.sh bench    also the benchmarks' library and peers
#   scripts/setup.sh docs     also what makes the manual
#   scripts/setup.sh fuzz     also the compiler with the fuzzer
#   scripts/setup.sh coverage also what reads coverage counters
#   scripts/setup.sh package  also what makes and tries the Debian packages
set -euo pipefail

packages=(g++ cmake ninja-build git binutils libgtest-dev libgmock-dev libdxflib-dev libcli11-dev
          nlohmann-json3-dev clang-format librsvg2-bin pkg-config)
if [[ ${1:-} == bench ]]; then
    packages+=(libbenchmark-dev libgeos++-dev libboost-dev libcgal-dev)
elif [[ ${1:-} == docs ]]; then
    packages+=(doxygen)
elif [[ ${1:-} == fuzz ]]; then
    packages+=(clang libclang-rt-14-dev)
elif [[ ${1:-} == coverage ]]; then
    packages+=(python3)
elif [[ ${1:-} == package ]]; then
    packages+=(dpkg-dev debootstrap)
fi

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ $status == installed ]] || missing+=("$package")
done
if ((${#missing[@]} == 0)); then
    exit 0
fi

if ! command -v apt-get >/dev/null; then
    echo "setup: no apt-get here; going on, these must be there: ${missing[*]}"
    exit 0
fi
echo "setup: installing ${missing[*]}"
as_root=()
if ((EUID != 0)); then
    as_root=(sudo)
    [[ -t 0 ]] || as_root+=(-n)
fi
apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300)
"${apt[@]}" update </dev/null || echo "setup: the package lists could not be renewed, going on" >&2
"${apt[@]}" install -y --no-install-recommends "${missing[@]}" </dev/null >/dev/null
