#!/usr/bin/env bash
# Sets up what is missing, then builds and runs every test twice: a normal build with warnings as
# errors, and an AddressSanitizer + UndefinedBehaviorSanitizer build. Both must pass. The normal
# build is linted (scripts/lint.sh) before its tests run. Last, every fuzz target runs briefly from
# its seeds (scripts/fuzz.sh). Then the Windows build under Wine, when Qt for MinGW is built and
# Wine is installed (else one line says why it was skipped).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh

jobs=$(nproc)
run_suite() {
    local dir=$1 lint=$2
    shift 2
    # The screenshot tour is built (and linted) here, so it keeps compiling though no package has it.
    cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQELPRN_WERROR=ON -DQELPRN_BUILD_BENCH=OFF \
        -DQELPRN_SCREENSHOT_TOUR=ON "$@"
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

# The Windows build under Wine (the zip, the installer, the tests and the month-end job), where it
# can run: the MinGW Qt must already be built, since building it (scripts/windows/build-qt.sh) takes
# about an hour, and the Windows tools must be installed (scripts/windows/setup.sh).
windows=0
qt_mingw=${QELPRN_QT_MINGW:-$HOME/.cache/qelprn/qt-6.4.2-mingw64}
wine=$(command -v wine || command -v wine64 || ls /usr/lib/wine/wine64 2>/dev/null || true)
if [[ ! -f $qt_mingw/qt/.complete ]]; then
    echo "== Windows build under Wine: skipped, Qt for MinGW is not built in $qt_mingw (scripts/windows/build-qt.sh) =="
elif [[ -z $wine ]] || ! command -v makensis >/dev/null || ! command -v x86_64-w64-mingw32-g++-posix >/dev/null; then
    echo "== Windows build under Wine: skipped, Wine, NSIS or MinGW-w64 is not installed (scripts/windows/setup.sh) =="
else
    echo "== Windows build under Wine =="
    scripts/windows/package.sh
    mkdir -p build/windows-mingw
    scripts/windows/test-wine.sh | tee build/windows-mingw/test-wine.log
    windows=$(sed -n 's/^\([0-9]*\) passed, 0 failed$/\1/p' build/windows-mingw/test-wine.log | tail -n 1)
fi
echo "tests, fuzz targets and Windows checks: $((passed + fuzzers + ${windows:-0})) passed, 0 failed"
