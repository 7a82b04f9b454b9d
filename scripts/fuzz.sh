#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for SECONDS (default 7) from its seed corpus:
# the inputs kept in fuzz/corpus/<target> (regressions included) plus the files of a fresh demo
# program folder. A crash leaves its input in build/fuzz/crashes and fails the script.
#   scripts/fuzz.sh [SECONDS]        short run (the test command uses it)
#   scripts/fuzz.sh 3600             a night's run
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
seconds=${1:-7}
build=build/fuzz
CC=clang CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQELPRN_FUZZ=ON \
    -DQELPRN_BUILD_TESTS=OFF -DQELPRN_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" -j "$(nproc)" --target fuzzers

work=$build/work
rm -rf "$work" && mkdir -p "$work/crashes"
# Seeds from a demo program folder, written by the normal build's command-line program when there is one.
demo=$work/demo
cli=${QELPRN_CLI:-build/test/bin/qelprn-cli}
if [[ -x $cli ]]; then
    "$cli" init-demo "$demo" --patients 20 >/dev/null
fi

seed() { # target files...
    local dir=$work/corpus/$1
    shift
    mkdir -p "$dir"
    [[ -d fuzz/corpus/$(basename "$dir") ]] && cp fuzz/corpus/"$(basename "$dir")"/* "$dir"/ 2>/dev/null || true
    for f in "$@"; do [[ -f $f ]] && cp "$f" "$dir/" || true; done
}
seed fuzz_sysini "$demo/Tovara.ini" "$demo/adodb.ini" "$demo/Halvex.Ver"
seed fuzz_dblist "$demo/DB.ini" "$demo/ServerName.zkt"
seed fuzz_version "$demo/DATA/Version.ini"
seed fuzz_tsql
seed fuzz_command_file
seed fuzz_engine_csv
seed fuzz_layout layouts/*.wfd
seed fuzz_pdf_split

status=0
for target in "$build"/fuzz-bin/fuzz_*; do
    name=$(basename "$target")
    echo "== $name ($seconds s)"
    if ! ASAN_OPTIONS=detect_leaks=0 QT_QPA_PLATFORM=offscreen "$target" "$work/corpus/$name" \
        -max_total_time="$seconds" -max_len=16384 -timeout=10 -rss_limit_mb=2048 \
        -artifact_prefix="$work/crashes/$name-" -print_final_stats=0 >"$work/$name.log" 2>&1; then
        echo "$name: crash or failure, input kept in $work/crashes; the end of its log:" >&2
        tail -n 30 "$work/$name.log" >&2
        status=1
    else
        grep -E '^#[0-9]+.*DONE' "$work/$name.log" | tail -n 1 || true
    fi
done
exit $status
