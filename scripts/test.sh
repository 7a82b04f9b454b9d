#!/usr/bin/env bash
# Sets up what is missing, then builds and runs every test twice: a normal build with warnings as
# errors, and an AddressSanitizer + UndefinedBehaviorSanitizer build. Both must pass. The normal
# build is linted (scripts/lint.sh) before its tests run. Last, every fuzz target runs briefly from
# its seeds (scripts/fuzz.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh

jobs=$(nproc)
run_suite() {
    local dir=$1 lint=$2
    shift 2
    cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQELPRN_WERROR=ON -DQELPRN_BUILD_BENCH=OFF "$@"
    cmake --build "$dir" -j "$jobs"
    if [[ $lint == lint ]]; then
        echo "== lint =="
        QELPRN_LINT_BUILD=$dir scripts/lint.sh
    fi
    ctest --test-dir "$dir" --output-on-failure -j "$jobs" | tee "$dir/ctest.log"
    local total
    total=$(sed -n 's/.*tests failed out of \([0-9]*\).*/\1/p' "$dir/ctest.log" | tail -n 1)
    passed=$((passed + ${total:-0}))
}
passed=0

echo "== normal build (warnings as errors) =="
run_suite build/test lint
echo "== AddressSanitizer + UndefinedBehaviorSanitizer build =="
run_suite build/asan no-lint -DQELPRN_SANITIZE=ON
echo "== libFuzzer targets, a short run each =="
QELPRN_CLI=build/test/bin/qelprn-cli scripts/fuzz.sh 7
fuzzers=$(ls build/fuzz/fuzz-bin | wc -l)
echo "tests and fuzz targets: $((passed + fuzzers)) passed, 0 failed"
