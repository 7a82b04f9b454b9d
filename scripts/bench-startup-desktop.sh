#!/usr/bin/env bash
# Times the desktop program from its start to a usable main form (loaded lists, site grid, shown)
# on the demo program folder: the program reports the moment itself and ends (QELPRN_QUIT_WHEN_READY);
# the wall time of the whole process is measured too. Prints the median and the slowest of N runs.
#
#   scripts/bench-startup-desktop.sh [build-dir] [runs]     (default build/release, 10 runs)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/release}
runs=${2:-10}

if [[ ! -x $build/bin/qelprn || ! -x $build/bin/qelprn-cli ]]; then
    scripts/setup.sh
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQELPRN_BUILD_TESTS=OFF -DQELPRN_BUILD_BENCH=OFF
    cmake --build "$build" -j "$(nproc)" --target qelprn qelprn-cli
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$build/bin/qelprn-cli" init-demo "$work/demo" >/dev/null

inside=()
wall=()
for ((i = 0; i < runs; i++)); do
    start=$(date +%s%N)
    ms=$(QELPRN_APP_DIR="$work/demo" QT_QPA_PLATFORM=offscreen QELPRN_QUIT_WHEN_READY=1 \
        "$build/bin/qelprn" menu 2>/dev/null | sed -n 's/^startup-ms //p')
    end=$(date +%s%N)
    inside+=("$ms")
    wall+=($(((end - start) / 1000000)))
done

report() { # name values...
    local name=$1
    shift
    local sorted
    sorted=($(printf '%s\n' "$@" | sort -n))
    echo "$name: median ${sorted[$((${#sorted[@]} / 2))]} ms, slowest ${sorted[-1]} ms (${#sorted[@]} runs)"
}
report "start to usable main form" "${inside[@]}"
report "whole process (start to exit)" "${wall[@]}"
