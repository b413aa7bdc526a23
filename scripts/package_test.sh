#!/usr/bin/env bash
# Tries the Debian packages in a clean system of their own: installs them with apt-get, runs calcora,
# compiles the examples with pkg-config and with CMake, removes all and looks for what is left.
#   scripts/package_test.sh    as root; takes some minutes the first time
# The system is made by debootstrap from the archive that apt here is set up with, and is kept in
# build/package/clean for the next time; every run works on a copy.
set -euo pipefail
"$(dirname "$0")/package.sh"
source "$(dirname "$0")/lib.sh"

logs=$root/build/package
clean=$logs/clean
system=$logs/system

fail()
{
    say "$*" >&2
    exit 1
}
((EUID == 0)) || fail "must be run as root"

# within COMMAND...: runs in the copy, in /tmp.
within()
{
    chroot "$system" /usr/bin/env -i -C /tmp PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@"
}
apt()
{
    quietly "$logs/apt.log" within apt-get -q -y "$@"
}
# All files but those that apt and dpkg keep for themselves.
files()
{
    (cd "$system" && find . -xdev \( -path ./tmp -o -path ./proc -o -path ./var/cache \
        -o -path ./var/log -o -path ./var/lib/apt -o -path ./var/lib/dpkg \) -prune -o -print | sort)
}
# remove_all PACKAGES...: removes them; nothing may be there that is not in files.txt.
remove_all()
{
    apt purge "$@"
    apt autoremove --purge
    files | diff "$logs/files.txt" - >"$logs/left.txt" || fail "left or lost: $(<"$logs/left.txt")"
    ! within dpkg-query -W '*calcora*' >/dev/null 2>&1 || fail "packages are still known"
}

if [[ ! -e $clean/etc/debian_version ]]; then
    read -r release archive < <(apt-get indextargets --format '$(CODENAME) $(REPO_URI)' \
        'Created-By: Packages' | sort -u | head -n 1)
    say "making a clean system"
    rm -rf "$clean"
    quietly "$logs/debootstrap.log" debootstrap --variant=minbase "$release" "$clean.new" "$archive"
    cp -rL /etc/apt/. "$clean.new/etc/apt/"
    cp -L /etc/resolv.conf "$clean.new/etc/" 2>/dev/null || true
    mv "$clean.new" "$clean"
fi
rm -rf "$system"
cp -a --reflink=auto "$clean" "$system"
cp "$logs"/packages/*.deb examples/site_plan.dxf "$system/tmp/"
packages=("$system"/tmp/*.deb)
packages=("${packages[@]#"$system"}")
apt update

say "installing calcora and the library"
files >"$logs/files.txt"
apt --no-install-recommends install "${packages[@]/*-dev_*/libc6}"
say "running calcora"
within calcora loops site_plan.dxf --svg loops.svg -o loops.dxf | grep -v seconds >"$logs/table.txt"
(cd examples && "$logs/bin/calcora" loops site_plan.dxf) | grep -v seconds |
    diff - "$logs/table.txt" || fail "calcora tells something else than here"
within calcora measure loops.dxf >/dev/null
say "removing them"
remove_all calcora libquon-calcora

say "installing all three, a compiler and man"
apt --no-install-recommends install g++ cmake make pkg-config man-db
files >"$logs/files.txt"
apt --no-install-recommends install "${packages[@]}"
say "manual pages and completion"
for page in "$system"/usr/share/man/man1/calcora*; do
    name=$(basename "$page" .1.gz)
    [[ -z $(within man --warnings "$name" 2>&1 >"$logs/page.txt") ]] || fail "$name: not a clean page"
    grep -q SYNOPSIS "$logs/page.txt" || fail "$name: no page"
done
[[ $(within bash -c 'source /usr/share/bash-completion/completions/calcora
    COMP_WORDS=(calcora smooth a.dxf --curve te) COMP_CWORD=4; _calcora; echo "${COMPREPLY[*]}"'
    ) == tension ]] || fail "the completion does not complete"

say "compiling the examples with pkg-config"
cp -r "$system/usr/share/doc/libquon-calcora-dev/examples" "$system/tmp/"
check() # SOURCE COMMAND...: what the program prints stands at the end of its source.
{
    sed -n '/^\/\/ Prints:$/,$ { s|^//   ||p }' "$1" >"$logs/expected.txt"
    within "${@:2}" | diff "$logs/expected.txt" - || fail "$1 prints something else"
}
for source in "$system"/tmp/examples/*.cpp; do
    name=$(basename "$source" .cpp)
    within sh -c "c++ -std=c++20 examples/$name.cpp -o $name \$(pkg-config --cflags --libs quon_calcora)"
    check "$source" "./$name"
done
within sh -c 'c++ -std=c++20 -shared -fPIC examples/fence/fence_plugin.cpp -o fence.so \
    $(pkg-config --cflags --libs quon_calcora)'
say "compiling them with CMake"
quietly "$logs/cmake.log" within cmake -S examples -B build
quietly "$logs/cmake.log" within cmake --build build -j "$jobs"
check "$system/tmp/examples/fence/use_fence.cpp" build/use_fence /tmp/fence.so
say "removing them"
remove_all calcora libquon-calcora libquon-calcora-dev
rm -rf "$system"
say "passed in $((SECONDS / 60)) min $((SECONDS % 60)) s"
