#!/usr/bin/env bash
# The benchmark report. Builds a release tree, writes the demo program folders of 1,000, 10,000 and
# 50,000 patients once (kept in build/bench-data between runs), and prints:
#   1. per print kind on the 50,000-patient month: the query's time and rows per second, the CSV
#      file's bytes per second against a plain write of the same bytes, the engine's pages per
#      second, and the peak memory of the command-line program and of the engine;
#   2. how the facility invoice and the co-payment list grow from 1,000 to 50,000 patients;
#   3. the figures of every benchmark program (bench/bench_*);
# and first, one PDF per addressee against the single PDF on the 20,000-patient month's
# invoice-receipts (QELPRN_BENCH_ONLY=per-addressee stops after that).
#   scripts/bench.sh
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
build=build/bench
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQELPRN_BUILD_TESTS=ON -DQELPRN_BUILD_BENCH=ON >/dev/null
targets=()
# The per-addressee comparison alone needs only the two programs.
[[ ${QELPRN_BENCH_ONLY:-} == per-addressee ]] && targets=(--target qelprn-cli qelprn-engine)
cmake --build "$build" -j "$(nproc)" "${targets[@]}" >/dev/null
cli=$PWD/$build/bin/qelprn-cli
engine=$PWD/$build/bin/qelprn-engine
data=$PWD/build/bench-data
month=2026/10
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen
export XDG_RUNTIME_DIR=$work/runtime
mkdir -m 700 "$XDG_RUNTIME_DIR"

folder_for() { # patients -> folder, written once
    local dir=$data/p$1
    if [[ ! -f $dir/.complete ]]; then
        "$cli" init-demo "$dir" --patients "$1" --month "$month" --replace >/dev/null
        # The same folder bench_queries writes for itself: let it reuse this one.
        touch "$dir/.complete" "$dir/bench-queries.ready"
    fi
    echo "$dir"
}
peak() { awk -F': ' '/Maximum resident set size/ {printf "%.1f", $2 / 1024}' "$1"; }
wall() { awk -F': ' '/Elapsed \(wall clock\)/ {n = split($2, t, ":"); s = 0; for (i = 1; i <= n; i++) s = s * 60 + t[i]; print s}' "$1"; }
timing() { sed -n "s/.*$2 \([0-9.]*\) s.*/\1/p" "$1" | tail -n 1; } # log, phase -> seconds
div() { awk "BEGIN { a = ${1:-0}; b = ${2:-0}; if (b > 0) printf \"${3:-%.0f}\", a / b; else printf \"-\" }"; } # a b [format]

# Seconds to write the bytes of FILE with one plain buffered write: the floor for the CSV writers.
floor_seconds() {
    python3 - "$1" "$work/floor.out" <<'EOF'
import sys, time
data = open(sys.argv[1], "rb").read()
best = None
for _ in range(7):
    start = time.perf_counter()
    with open(sys.argv[2], "wb") as out:
        out.write(data)
    best = min(best or 1e9, time.perf_counter() - start)
print(f"{best:.4f}")
EOF
}

echo "machine: $(nproc) cores, $(awk '/MemTotal/ {printf "%.0f GiB", $2/1048576}' /proc/meminfo)," \
    "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1), $(uname -sr)"
echo "build: Release, $(g++ --version | head -n 1), Qt $(pkg-config --modversion Qt6Core 2>/dev/null || echo 6)"
echo

# One PDF per addressee against the single PDF: the invoice-receipts (kind 4) of the 20,000-patient
# month, the whole command-line run and the engine alone, each way in the same run.
per_addressee() {
    local dir log pages files
    local -A seconds
    dir=$(folder_for 20000)
    echo "== one PDF per addressee, invoice-receipts (kind 4), 20,000 patients (demo data: $dir)"
    printf '%-34s %9s %7s %7s %9s\n' run seconds pages files "MiB peak"
    # Each run writes into a folder of its own, removed only at the end: ext4 slows the creation of
    # thousands of files just after thousands were deleted, which would count against the second run.
    for how in single per-addressee; do
        log=$work/addr.$how
        if [[ $how == single ]]; then out=(--pdf "$work/addr.pdf"); else out=(--pdf-dir "$work/addr-dir"); fi
        QELPRN_APP_DIR=$dir /usr/bin/time -v -o "$log.time" "$cli" print --kind 4 --month "$month" \
            --issue-date 2026/11/05 "${out[@]}" >/dev/null 2>"$log.err" || { tail -n 3 "$log.err"; }
        if [[ $how == single ]]; then
            pages=$(pdfinfo "$work/addr.pdf" 2>/dev/null | awk '/^Pages:/ {print $2}')
            files=1
        else
            pages=$(awk -F, 'NR > 1 {s += $7} END {print s + 0}' "$work/addr-dir/送付一覧.csv")
            files=$(find "$work/addr-dir" -name '*.pdf' | wc -l)
        fi
        seconds[cli-$how]=$(wall "$log.time")
        printf '%-34s %9s %7s %7s %9s\n' "qelprn-cli print ($how)" "${seconds[cli-$how]}" "$pages" "$files" "$(peak "$log.time")"
    done
    command=$dir/TMP/WfdCom.dat
    for how in single per-addressee per-addressee-pdfa; do
        log=$work/eng.$how
        case $how in
        single) out=(--pdf "$work/eng.pdf") ;;
        per-addressee) out=(--pdf-dir "$work/eng-dir" --file-date 20261105 --subject "2026年10月分") ;;
        *) out=(--pdf-dir "$work/eng-dir-pdfa" --file-date 20261105 --subject "2026年10月分" --pdfa) ;;
        esac
        /usr/bin/time -v -o "$log.time" "$engine" "${out[@]}" /c "$command" >"$log.out" 2>"$log.err" || tail -n 3 "$log.err"
        files=$(grep -c '^file' "$log.out" || true)
        [[ $how == single ]] && files=1
        seconds[engine-$how]=$(wall "$log.time")
        printf '%-34s %9s %7s %7s %9s\n' "qelprn-engine ($how)" "${seconds[engine-$how]}" "${pages:-}" "$files" "$(peak "$log.time")"
    done
    echo "per-addressee / single: command line $(div "${seconds[cli-per-addressee]}" "${seconds[cli-single]}" %.2f)," \
        "engine $(div "${seconds[engine-per-addressee]}" "${seconds[engine-single]}" %.2f)," \
        "engine PDF/A $(div "${seconds[engine-per-addressee-pdfa]}" "${seconds[engine-single]}" %.2f)"
    echo "(the command-line runs include the query and the CSV file; per-addressee writes PDF/A-1b with metadata)"
    echo
}
per_addressee
[[ ${QELPRN_BENCH_ONLY:-} == per-addressee ]] && exit 0

big=$(folder_for 50000)
echo "== per print kind, 50,000 patients, billing month $month (demo data: $big)"
printf '%-4s %7s %8s %8s %6s %9s %8s %8s %6s %7s %8s %8s %9s %9s\n' kind rows "query s" "rows/s" stmts "CSV MB" \
    "CSV MB/s" "floor" "ratio" pages "engine s" pages/s "cli MiB" "eng. MiB"
for kind in 1 2 3 4 5 6; do
    log=$work/cli.$kind
    QELPRN_APP_DIR=$big /usr/bin/time -v -o "$log.time" "$cli" print --kind "$kind" --month "$month" \
        --issue-date 2026/11/05 --csv-only --timings >"$log.out" 2>"$log.err" || true
    csv=$(head -n 1 "$log.out")
    if [[ ! -f $csv ]]; then
        echo "kind $kind: no CSV file ($(tail -n 2 "$log.err" | tr '\n' ' '))"
        continue
    fi
    rows=$(($(wc -l <"$csv") - 1))
    bytes=$(stat -c %s "$csv")
    query=$(timing "$log.err" query)
    write=$(timing "$log.err" csv)
    # Statements the query sent (and connections it opened), from the same timings line.
    stmts=$(sed -n 's/.*query [0-9.]* s (\([0-9]*\) statements, \([0-9]*\) connections).*/\1\/\2/p' "$log.err" | tail -n 1)
    floor=$(floor_seconds "$csv")
    # The engine alone on the command file the run hands it, under its own memory measurement.
    QELPRN_APP_DIR=$big "$cli" print --kind "$kind" --month "$month" --issue-date 2026/11/05 \
        --pdf "$work/k$kind.pdf" --yes >/dev/null 2>&1 || true
    command=$(ls "$big"/TMP/*.dat 2>/dev/null | head -n 1)
    /usr/bin/time -v -o "$log.engine" "$engine" --pdf "$work/e$kind.pdf" /c "$command" >/dev/null 2>&1 || true
    pages=$(pdfinfo "$work/e$kind.pdf" 2>/dev/null | awk '/^Pages:/ {print $2}')
    esecs=$(wall "$log.engine")
    printf '%-4s %7s %8s %8s %6s %9s %8s %8s %6s %7s %8s %8s %9s %9s\n' "$kind" "$rows" "$query" "$(div "$rows" "$query")" \
        "${stmts:--}" "$(div "$bytes" 1048576 %.1f)" "$(div "$bytes" "$write*1048576" %.1f)" "$(div "$bytes" "$floor*1048576" %.0f)" \
        "$(div "$floor" "$write" %.2f)" "${pages:-0}" "$esecs" "$(div "${pages:-0}" "$esecs")" "$(peak "$log.time")" \
        "$(peak "$log.engine")"
done
echo "(rows: data lines of the CSV file; query s and CSV MB/s from the run's own phase timings; stmts: statements"
echo " sent / connections opened by the query; floor: a plain"
echo " write of the same bytes, ratio = floor time / writer time; the engine renders the run's command file to PDF)"

echo
echo "== growth with the number of patients (query and CSV file, wall clock)"
printf '%-9s %-5s %8s %9s %10s %9s\n' patients kind rows seconds "µs / row" "peak MiB"
declare -A per_row
for n in 1000 10000 50000; do
    dir=$(folder_for "$n")
    for kind in 1 2; do
        log=$work/grow.$n.$kind
        QELPRN_APP_DIR=$dir /usr/bin/time -v -o "$log.time" "$cli" print --kind "$kind" --month "$month" \
            --csv-only >"$log.out" 2>/dev/null || true
        csv=$(head -n 1 "$log.out")
        rows=0
        [[ -f $csv ]] && rows=$(($(wc -l <"$csv") - 1))
        secs=$(wall "$log.time")
        per_row[$n.$kind]=$(div "$secs*1000000" "$rows")
        printf '%-9s %-5s %8s %9s %10s %9s\n' "$n" "$kind" "$rows" "$secs" "${per_row[$n.$kind]}" \
            "$(peak "$log.time")"
    done
done
for kind in 1 2; do
    # Linear or better: the time per row at 50,000 patients is not above the time per row at 10,000
    # (a quarter's slack for a shared machine).
    verdict=$(awk "BEGIN { print (${per_row[50000.$kind]} <= 1.25 * ${per_row[10000.$kind]}) ? \"linear or better\" : \"FASTER THAN LINEAR\" }")
    echo "kind $kind: time per row at 50,000 vs 10,000 patients: ${per_row[50000.$kind]} vs ${per_row[10000.$kind]} µs, $verdict"
done

echo
for b in "$build"/bench/bench_*; do
    [[ -f $b && -x $b ]] || continue
    echo "== $(basename "$b")"
    args=()
    [[ $(basename "$b") == bench_queries ]] && args=("$big")
    /usr/bin/time -v -o "$work/bench.time" "$b" "${args[@]}" || echo "(failed: $?)"
    echo "   peak memory of the process: $(peak "$work/bench.time") MiB"
    echo
done
