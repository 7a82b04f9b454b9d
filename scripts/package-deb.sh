#!/usr/bin/env bash
# Builds the Debian package dist/qelprn_<version>_amd64.deb from a release build tree
# (build/package). The version is the project version and, in a git checkout, `git describe`.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
build=build/package
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQELPRN_BUILD_TESTS=OFF \
    -DQELPRN_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" -j"$(nproc)" --target qelprn qelprn-cli qelprn-engine
mkdir -p dist
(cd "$build" && cpack -G DEB -B "$PWD/../../dist" >/dev/null)
rm -rf dist/_CPack_Packages
deb=$(ls -t dist/qelprn_*_amd64.deb | head -1)
echo "$deb"
