#!/usr/bin/env bash
# Sets up what is missing, builds the programs, writes the demo program folder (settings files,
# embedded databases with a month of data, layouts) and runs the month's facility invoice on it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh

build=build/release
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQELPRN_BUILD_TESTS=OFF -DQELPRN_BUILD_BENCH=OFF
cmake --build "$build" -j "$(nproc)"

folder=${1:-demo-folder}
"$build/bin/qelprn-cli" init-demo "$folder"
export QELPRN_APP_DIR=$PWD/$folder
"$build/bin/qelprn-cli" sites --all-databases
