#!/usr/bin/env bash
# Sets up what is missing, then builds and runs every test twice: a normal build with warnings as
# errors, and an AddressSanitizer + UndefinedBehaviorSanitizer build. Both must pass.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh

jobs=$(nproc)
run_suite() {
    local dir=$1
    shift
    cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQELPRN_WERROR=ON -DQELPRN_BUILD_BENCH=OFF "$@"
    cmake --build "$dir" -j "$jobs"
    ctest --test-dir "$dir" --output-on-failure -j "$jobs"
}

echo "== normal build (warnings as errors) =="
run_suite build/test
echo "== AddressSanitizer + UndefinedBehaviorSanitizer build =="
run_suite build/asan -DQELPRN_SANITIZE=ON
