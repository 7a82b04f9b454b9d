#!/usr/bin/env bash
# Sets up what is missing, builds the programs, writes the demo program folder (settings files,
# embedded databases with a month of data, layouts) and runs the month-end job on it: the facility
# invoice of the demo month as print data (CSV) and as a PDF.
#   scripts/demo.sh [FOLDER]      (default: demo-folder)
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh

build=build/release
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQELPRN_BUILD_TESTS=OFF -DQELPRN_BUILD_BENCH=OFF
cmake --build "$build" -j "$(nproc)"

folder=${1:-demo-folder}
month=$(date -d "$(date +%Y-%m-01) -1 month" +%Y/%m)
"$build/bin/qelprn-cli" init-demo "$folder" --month "$month" --replace
export QELPRN_APP_DIR=$PWD/$folder
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}

echo
echo "Sites of the demo databases (name, database, code, branch):"
"$build/bin/qelprn-cli" sites --all-databases
echo
echo "Facility invoice of $month:"
"$build/bin/qelprn-cli" print --kind 1 --month "$month" --csv-only
"$build/bin/qelprn-cli" print --kind 1 --month "$month" --pdf "$folder/施設請求書.pdf" --yes
echo "PDF: $folder/施設請求書.pdf ($(pdfinfo "$folder/施設請求書.pdf" | awk '/^Pages/ {print $2}') pages)"
echo
echo "Preview it with: QELPRN_APP_DIR=$PWD/$folder $build/bin/qelprn-cli print --kind 1 --month $month --preview"
echo "or start the desktop program: QELPRN_APP_DIR=$PWD/$folder $build/bin/qelprn 1"
