#!/usr/bin/env bash
# Builds a release tree, writes the 50,000-patient demo folder (kept between runs in build/bench-data),
# runs every benchmark program with its peak memory measured by /usr/bin/time, and the facility
# invoice over 1,000, 10,000 and 50,000 patients to show how time and memory grow.
#   scripts/bench.sh            all figures
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
build=build/bench
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQELPRN_BUILD_TESTS=OFF -DQELPRN_BUILD_BENCH=ON >/dev/null
cmake --build "$build" -j "$(nproc)"
cli=$build/bin/qelprn-cli
data=build/bench-data
month=2026/10

folder_for() { # patients -> folder, written once
    local dir=$data/p$1
    if [[ ! -f $dir/adodb.ini ]]; then
        "$cli" init-demo "$dir" --patients "$1" --month "$month" --replace >/dev/null
    fi
    echo "$dir"
}

peak() { # log of /usr/bin/time -v -> peak RSS in MiB
    awk -F: '/Maximum resident set size/ {printf "%.1f", $2 / 1024}' "$1"
}

echo "machine: $(nproc) cores, $(awk '/MemTotal/ {printf "%.0f GiB", $2/1048576}' /proc/meminfo), $(uname -m)"
echo
big=$(folder_for 50000)
export QELPRN_BENCH_FOLDER=$PWD/$big
for b in "$build"/bench/bench_*; do
    echo "== $(basename "$b")"
    /usr/bin/time -v -o /tmp/qelprn-bench-time.log "$b" || echo "(failed: $?)"
    echo "   peak memory: $(peak /tmp/qelprn-bench-time.log) MiB"
done

echo
echo "== facility invoice (kind 1) and co-payment list (kind 2) to CSV by data size"
printf '%-10s %-6s %10s %12s\n' patients kind seconds "peak MiB"
for n in 1000 10000 50000; do
    dir=$(folder_for "$n")
    for kind in 1 2; do
        QELPRN_APP_DIR=$PWD/$dir /usr/bin/time -v -o /tmp/qelprn-bench-time.log \
            "$cli" print --kind "$kind" --month "$month" --csv-only --yes >/dev/null 2>&1 || true
        secs=$(awk -F': ' '/Elapsed \(wall clock\)/ {split($2, t, ":"); s = 0; for (i = 1; i <= length(t); i++) s = s * 60 + t[i]; print s}' /tmp/qelprn-bench-time.log)
        printf '%-10s %-6s %10s %12s\n' "$n" "$kind" "$secs" "$(peak /tmp/qelprn-bench-time.log)"
    done
done
