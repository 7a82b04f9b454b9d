#!/usr/bin/env bash
# Starts the real desktop program under Xvfb on a fresh demo program folder and saves pictures of
# the main form for each form kind and of each dialog into docs/ (desktop-*.png), at 100 % and, for
# the main form and the patient search, at 200 % scaling.
#
#   scripts/screenshots-desktop.sh [build-dir]     (default build/screenshots; configured with the
#                                                  screenshot tour and built as needed)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=${1:-build/screenshots}

# Only a build with the tour takes pictures: shipped programs do not carry it.
if ! grep -qs '^QELPRN_SCREENSHOT_TOUR:BOOL=ON$' "$build/CMakeCache.txt"; then
    scripts/setup.sh
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQELPRN_BUILD_TESTS=OFF -DQELPRN_BUILD_BENCH=OFF \
        -DQELPRN_SCREENSHOT_TOUR=ON
fi
cmake --build "$build" -j "$(nproc)" --target qelprn qelprn-cli

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# A fixed seed keeps the pictures' data the same from run to run.
"$build/bin/qelprn-cli" init-demo "$work/demo" --seed 1 >/dev/null

shoot() { # scale suffix
    env QELPRN_APP_DIR="$work/demo" QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR="$1" \
        QELPRN_SCREENSHOT_DIR="$work/shots" QELPRN_SCREENSHOT_SUFFIX="$2" \
        xvfb-run -a -s "-screen 0 2400x1800x24" "$root/$build/bin/qelprn" menu
}
shoot 1 ""
shoot 2 "-200"

mkdir -p docs
# Replace only what the tour takes: the question and month-end pictures the README shows come from
# elsewhere and stay.
cp "$work"/shots/desktop-*.png docs/
# At 200 % two pictures show enough: the main form and the widest dialog.
find docs -name 'desktop-*-200.png' ! -name 'desktop-main-kind6-200.png' \
    ! -name 'desktop-search-patient-200.png' -delete
ls -1 docs/desktop-*.png
