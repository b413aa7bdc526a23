#!/usr/bin/env bash
# Makes the Debian packages libquon-calcora, libquon-calcora-dev and calcora in
# build/package/packages/. scripts/package_test.sh tries them in a clean system.
set -euo pipefail
"$(dirname "$0")/setup.sh" package
source "$(dirname "$0")/lib.sh"

say "package build"
build package
packages=build/package/packages
rm -rf "$packages"
say "packing"
quietly build/package/cpack.log cpack --config build/package/CPackConfig.cmake
rm -rf "$packages/_CPack_Packages"
for package in "$packages"/*.deb; do
    say "$package"
done
