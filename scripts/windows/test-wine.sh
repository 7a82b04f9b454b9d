#!/usr/bin/env bash
# Proves the Windows build under Wine (headless: Qt's offscreen platform, Wine's messages off):
#  1. every test executable of the Windows build runs under Wine, except those named below with
#     the reason; prints "N passed, M failed";
#  2. the month-end job: init-demo and print --kind 1 ... 6 --pdf with the programs from the zip,
#     and the same with the Linux build on the same demo;
#  3. the CSV files of both must be byte-identical, the PDFs must have the same page counts and text;
#  4. the installer: silent install into a suite folder, the installed-programs entry and shortcut,
#     an install over it, the month-end job from the installed programs, silent uninstall, and the
#     suite folder as it was before.
# The month-end job and the installer round trip count as one test each in the closing line.
# Needs: scripts/windows/package.sh run before (dist/qelprn-<version>-win64.zip and -setup.exe),
# wine64, poppler-utils (scripts/windows/setup.sh). Configures build/test when missing.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
build=$root/build/windows-mingw
linux=$root/build/test
version=$(sed -n 's/^project(qelprn VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
zip=$root/dist/qelprn-$version-win64.zip
setup=$root/dist/qelprn-$version-setup.exe
work=$build/wine-test
month=${QELPRN_WINE_MONTH:-2026/10}
jobs=${QELPRN_JOBS:-2}
start=$(date +%s)

# Tests that need what only Linux has here; each with the reason.
declare -A skipped=(
    [cli_tst_cli_faults]="runs the program under setpriv and ulimit (Linux user and resource limits)"
    [engine_tst_engine_commands]="reads the PDFs back with poppler (pdftotext, pdfinfo), a Linux program"
    [engine_tst_engine_forms]="reads the PDFs back with poppler (pdftotext, pdfinfo), a Linux program"
    [engine_tst_engine_preview]="counts PDF pages with poppler (pdfinfo), a Linux program"
)

if [[ ! -f $zip || ! -f $setup ]]; then
    echo "test-wine: $zip or $setup is missing; run scripts/windows/package.sh" >&2
    exit 1
fi
export WINEPREFIX=${WINEPREFIX:-$HOME/.cache/qelprn/wine64}
# A Japanese Windows, as at the clinics: Wine takes its code page (932) and language from the locale,
# which glibc must know for Wine to name files in UTF-8.
if ! locale -a 2>/dev/null | grep -qix 'ja_JP.utf8'; then
    localedef -i ja_JP -f UTF-8 ja_JP.UTF-8 || {
        echo "test-wine: the ja_JP.UTF-8 locale is missing (as root: localedef -i ja_JP -f UTF-8 ja_JP.UTF-8)" >&2
        exit 1
    }
fi
export WINEARCH=win64 WINEDEBUG=-all QT_QPA_PLATFORM=offscreen LANG=ja_JP.UTF-8 LC_ALL=ja_JP.UTF-8
# Debian's "wine" package puts the loader on PATH; "wine64" alone keeps it in /usr/lib/wine.
wine=$(command -v wine || command -v wine64 || ls /usr/lib/wine/wine64 2>/dev/null || true)
if [[ -z $wine ]]; then
    echo "test-wine: Wine is missing (apt-get install wine64)" >&2
    exit 1
fi
export PATH=$PATH:$(dirname "$wine")
if [[ ! -d $WINEPREFIX/drive_c ]]; then
    echo "test-wine: preparing the Wine prefix $WINEPREFIX"
    "$wine" wineboot --init >/dev/null 2>&1 || true
    wineserver -w || true
fi
winpath() { "$wine" winepath -w "$1" 2>/dev/null | tr -d '\r'; }

# The program folder exactly as a clinic gets it.
rm -rf "$work"
mkdir -p "$work/program" "$work/logs" "$work/drives"
unzip -q "$zip" -d "$work/program"
program=$work/program
# Wine's odbc32 hands the calls to the host's unixODBC, whose SQLite driver is a Linux library: it
# opens a Windows path such as "C:/users/.../suite.sqlite" as a relative one. Windows programs run
# from a folder where "C:" and "Z:" lead to those drives, so such paths find their files.
ln -s "$WINEPREFIX/drive_c" "$work/drives/C:"
ln -s / "$work/drives/Z:"
cd "$work/drives"
# Wine does not hand Linux variables starting with QT_ to Windows programs; the user environment of
# the prefix does: headless, Qt's plugins from the zip, and the zip's fonts for Qt's offscreen
# platform, which on Windows knows no system fonts.
for var in "QT_QPA_PLATFORM=offscreen" "QT_PLUGIN_PATH=$(winpath "$program")" "QT_QPA_FONTDIR=$(winpath "$program/fonts")"; do
    "$wine" reg add 'HKCU\Environment' /v "${var%%=*}" /d "${var#*=}" /f >/dev/null 2>&1
done
wineserver -w
# The programs find their DLLs beside them (the month-end job proves the zip is complete); the test
# executables also need Qt's test library, which the zip does not carry.
cache=${QELPRN_QT_MINGW:-$HOME/.cache/qelprn/qt-6.4.2-mingw64}
test_dll_path="$(winpath "$program");$(winpath "$cache/qt/bin");$(winpath "$cache/sqlite/bin")"

# --- 1. test executables --------------------------------------------------------------------------
echo "test-wine: building the test executables for Windows"
cmake --build "$build" -j "$jobs" >"$work/logs/build.log" 2>&1 || {
    tail -n 30 "$work/logs/build.log" >&2
    exit 1
}
passed=0
failed=0
failed_names=()
linux_count=$(find "$root/tests" -name 'tst_*.cpp' | wc -l)
for exe in "$build"/tests/*_tst_*.exe; do
    name=$(basename "$exe" .exe)
    if [[ -n ${skipped[$name]:-} ]]; then
        echo "  skip $name: ${skipped[$name]}"
        continue
    fi
    # Qt Test writes its log into a file: Wine's console does not always pass it on.
    if WINEPATH=$test_dll_path QELPRN_SOURCE_DIR=$(winpath "$root") QELPRN_BIN_DIR=$(winpath "$program") \
        timeout 900 "$wine" "$exe" -o "$(winpath "$work/logs")\\$name.log,txt" >"$work/logs/$name.out" 2>&1; then
        passed=$((passed + 1))
        echo "  pass $name"
    else
        failed=$((failed + 1))
        failed_names+=("$name")
        echo "  FAIL $name (log: $work/logs/$name.log)"
    fi
done
echo "test-wine: test executables: $passed passed, $failed failed (of $linux_count on Linux, ${#skipped[@]} skipped)"

# --- 2. the month-end job on Windows and on Linux -----------------------------------------------
echo "test-wine: month-end job of $month under Wine and on Linux"
# The Linux build of the test run (scripts/test.sh), configured the same way when this runs first.
if [[ ! -f $linux/build.ninja ]]; then
    cmake -S "$root" -B "$linux" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQELPRN_WERROR=ON -DQELPRN_BUILD_BENCH=OFF \
        >"$work/logs/configure-linux.log" 2>&1 || {
        tail -n 30 "$work/logs/configure-linux.log" >&2
        exit 1
    }
fi
cmake --build "$linux" -j "$jobs" --target qelprn-cli qelprn-engine >"$work/logs/build-linux.log" 2>&1 || {
    tail -n 30 "$work/logs/build-linux.log" >&2
    exit 1
}
job_failed=0
run_month() { # os cli-command...
    local os=$1
    shift
    local demo=$work/demo-$os
    "$@" init-demo "$(native "$os" "$demo")" --month "$month" --replace >"$work/logs/init-demo-$os.log" 2>&1 || {
        echo "  FAIL init-demo on $os (log: $work/logs/init-demo-$os.log)"
        job_failed=1
        return
    }
    for kind in 1 2 3 4 5 6; do
        mkdir -p "$work/out-$os/$kind"
        if QELPRN_APP_DIR=$(native "$os" "$demo") "$@" print --kind "$kind" --month "$month" --issue-date 2026/11/05 \
            --pdf "$(native "$os" "$work/out-$os/$kind/form.pdf")" --yes >"$work/logs/print-$os-$kind.log" 2>&1; then
            cp "$demo"/TMP/*.csv "$work/out-$os/$kind/"
        else
            echo "  FAIL print --kind $kind on $os (log: $work/logs/print-$os-$kind.log)"
            job_failed=1
        fi
    done
}
native() { if [[ $1 == windows ]]; then winpath "$2"; else echo "$2"; fi; }
job_start=$(date +%s)
run_month windows "$wine" "$program/qelprn-cli.exe"
echo "test-wine: month-end job under Wine took $(($(date +%s) - job_start)) s"
run_month linux "$linux/bin/qelprn-cli"

# ODBC: Wine's odbc32 hands the calls to the host's unixODBC, so the SQLite ODBC driver of Debian
# can serve the Windows program. One kind is run that way; the outcome is reported, not required.
odbc_note="not tried (the Windows month-end job failed)"
if [[ -f $work/out-windows/1/form.pdf ]]; then
    if (QELPRN_ODBC_DRIVER=SQLite3 QELPRN_APP_DIR=$(winpath "$work/demo-windows") \
        "$wine" "$program/qelprn-cli.exe" print --kind 1 --month "$month" --issue-date 2026/11/05 --csv-only \
        >"$work/logs/print-odbc.log" 2>&1) && cmp -s "$work/demo-windows/TMP/施設請求データ.csv" \
        "$work/out-windows/1/施設請求データ.csv"; then
        odbc_note="kind 1 through Wine's odbc32, unixODBC and the SQLite ODBC driver: the same CSV bytes as the embedded database"
    else
        odbc_note="kind 1 through Wine's odbc32 did not give the embedded database's CSV (log: $work/logs/print-odbc.log)"
    fi
fi
echo "test-wine: ODBC under Wine: $odbc_note"

# --- 3. the same files ----------------------------------------------------------------------------
# The CSV files name files of the program folder (the seal bitmaps), whose path necessarily differs
# ("Z:/.../demo-windows" under Wine, "/.../demo-linux" on Linux): that path is set aside, every
# other byte must be the same.
win_demo=$(winpath "$work/demo-windows")
same_csv() { # linux-file windows-file
    python3 - "$1" "$2" "$work/demo-linux" "$win_demo" <<'PY'
import sys
lin, win, lin_dir, win_dir = sys.argv[1:]
def load(path, dirs):
    data = open(path, "rb").read()
    for d in dirs:
        data = data.replace(d.encode("cp932"), b"<APP>")
    return data
try:
    same = load(lin, [lin_dir]) == load(win, [win_dir, win_dir.replace("\\", "/")])
except OSError:
    same = False
sys.exit(0 if same else 1)
PY
}
for kind in 1 2 3 4 5 6; do
    win=$work/out-windows/$kind
    lin=$work/out-linux/$kind
    [[ -f $win/form.pdf && -f $lin/form.pdf ]] || continue
    for csv in "$lin"/*.csv; do
        if same_csv "$csv" "$win/$(basename "$csv")"; then
            echo "  kind $kind: $(basename "$csv") byte-identical (program folder path aside)"
        else
            echo "  FAIL kind $kind: $(basename "$csv") differs"
            job_failed=1
        fi
    done
    pages_win=$(pdfinfo "$win/form.pdf" | awk '/^Pages/ {print $2}')
    pages_lin=$(pdfinfo "$lin/form.pdf" | awk '/^Pages/ {print $2}')
    if [[ $pages_win == "$pages_lin" ]] && cmp -s <(pdftotext -layout "$win/form.pdf" -) <(pdftotext -layout "$lin/form.pdf" -); then
        echo "  kind $kind: PDF $pages_win pages, same text"
    else
        echo "  FAIL kind $kind: PDF pages $pages_win (Windows) / $pages_lin (Linux) or its text differs"
        job_failed=1
    fi
done

# --- 4. the installer: into a suite folder, used, updated, uninstalled -----------------------------
# The suite folder is a demo written by the zip's programs, with one layout of its own in SYS (the
# others removed, so that the installer writes those), and files a clerk made. Before and after,
# every file with its checksum.
echo "test-wine: installer round trip"
installer_failed=0
ifail() {
    echo "  FAIL installer: $*"
    installer_failed=1
}
suite=$work/suite
win_suite=$(winpath "$suite")
snapshot() { (cd "$suite" && find . -type f -print0 | sort -z | xargs -0 sha256sum); }
reg_value() { # key value
    "$wine" reg query "$1" /v "$2" 2>/dev/null | iconv -f CP932 -t UTF-8 | tr -d '\r' |
        sed -n "s/^ *$2 *REG_[A-Z_]* *//p"
}
regkey='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\qelprn'
shortcut="$WINEPREFIX/drive_c/ProgramData/Microsoft/Windows/Start Menu/Programs/施設請求書印刷.lnk"
"$wine" "$program/qelprn-cli.exe" init-demo "$win_suite" --month "$month" --replace \
    >"$work/logs/init-suite.log" 2>&1 || ifail "init-demo of the suite folder (log: $work/logs/init-suite.log)"
find "$suite/SYS" -name '*.wfd' ! -name '施設別請求書.wfd' -delete
printf '事務員のメモ\r\n' >"$suite/自分のメモ.txt"
cp "$suite/SYS/施設別請求書.wfd" "$suite/SYS/施設別請求書_控え.wfd"
snapshot >"$work/suite-before.txt"
# A record of the layout, as an install into a folder deleted since would have left it: the suite's
# own layout must still be kept.
"$wine" reg add 'HKLM\Software\qelprn\InstalledLayouts' /v 施設別請求書.wfd /t REG_DWORD /d 1 /f >/dev/null 2>&1
# The installed programs take Qt's plugins and the offscreen platform's fonts from the suite folder.
for var in "QT_PLUGIN_PATH=$win_suite" "QT_QPA_FONTDIR=$win_suite\\fonts"; do
    "$wine" reg add 'HKCU\Environment' /v "${var%%=*}" /d "${var#*=}" /f >/dev/null 2>&1
done

install_silently() {
    "$wine" "$setup" /S "/D=$win_suite" >>"$work/logs/installer.log" 2>&1
    local rc=$?
    wineserver -w
    return $rc
}
if install_silently; then
    echo "  silent install into the suite folder: exit code 0"
else
    ifail "silent install gave a non-zero exit code"
fi
missing=0
while IFS= read -r f; do
    [[ $f == */ || -f $suite/$f ]] || { ifail "$f was not installed"; missing=1; }
done < <(unzip -Z1 "$zip")
((missing)) || echo "  every file of the zip is in the suite folder"
cmp -s "$suite/SYS/施設別請求書.wfd" "$work/demo-windows/SYS/施設別請求書.wfd" || ifail "the suite's own layout changed"
# The entry in the list of installed programs, and the Start-menu shortcut to "qelprn.exe 1".
[[ $(reg_value "$regkey" DisplayName) == 施設請求書印刷 ]] || ifail "DisplayName is '$(reg_value "$regkey" DisplayName)'"
[[ $(reg_value "$regkey" DisplayVersion) == "$version" ]] || ifail "DisplayVersion is not $version"
[[ -n $(reg_value "$regkey" Publisher) ]] || ifail "no Publisher"
[[ $(reg_value "$regkey" DisplayIcon) == "$win_suite\qelprn.exe,0" ]] || ifail "DisplayIcon is '$(reg_value "$regkey" DisplayIcon)'"
[[ $(reg_value "$regkey" InstallLocation) == "$win_suite" ]] || ifail "InstallLocation is '$(reg_value "$regkey" InstallLocation)'"
[[ $(reg_value "$regkey" QuietUninstallString) == "\"$win_suite\qelprn-uninstall.exe\" /S" ]] ||
    ifail "QuietUninstallString is '$(reg_value "$regkey" QuietUninstallString)'"
if [[ -f $shortcut ]] && python3 - "$shortcut" "$win_suite\qelprn.exe" <<'PY'; then
import sys
data, target = open(sys.argv[1], "rb").read(), sys.argv[2]
sys.exit(0 if any(target.encode(e) in data for e in ("utf-16-le", "cp932")) else 1)
PY
    echo "  installed-programs entry (施設請求書印刷 $version) and Start-menu shortcut present"
else
    ifail "the Start-menu shortcut 施設請求書印刷 is missing or does not start $win_suite\qelprn.exe"
fi

# An update replaces the files: an installed program spoiled first, then installed again.
printf 'old\n' >"$suite/qelprn-cli.exe"
install_silently || ifail "the second install gave a non-zero exit code"
cmp -s "$suite/qelprn-cli.exe" "$program/qelprn-cli.exe" && echo "  installing again replaced the installed programs" ||
    ifail "installing again left an old qelprn-cli.exe"

# The month-end job from the installed programs, which find the suite folder as their own folder.
for kind in 1 2 3 4 5 6; do
    mkdir -p "$work/out-installed/$kind"
    if "$wine" "$suite/qelprn-cli.exe" print --kind "$kind" --month "$month" --issue-date 2026/11/05 \
        --pdf "$(winpath "$work/out-installed/$kind/form.pdf")" --yes >"$work/logs/print-installed-$kind.log" 2>&1; then
        for csv in "$work/out-windows/$kind"/*.csv; do
            python3 - "$csv" "$suite/TMP/$(basename "$csv")" "$win_demo" "$win_suite" <<'PY' ||
import sys
a, b, dir_a, dir_b = sys.argv[1:]
def load(path, d):
    return open(path, "rb").read().replace(d.encode("cp932"), b"<APP>").replace(d.replace("\\", "/").encode("cp932"), b"<APP>")
try:
    sys.exit(0 if load(a, dir_a) == load(b, dir_b) else 1)
except OSError:
    sys.exit(1)
PY
                ifail "kind $kind: $(basename "$csv") from the installed programs differs from the zip's"
        done
    else
        ifail "print --kind $kind with the installed programs (log: $work/logs/print-installed-$kind.log)"
    fi
done
echo "  month-end job (kinds 1-6) from the installed programs done"

# The uninstaller leaves the suite folder as it was, but for the print data the job wrote in TMP.
"$wine" "$suite/qelprn-uninstall.exe" /S >>"$work/logs/installer.log" 2>&1 || ifail "silent uninstall gave a non-zero exit code"
wineserver -w
snapshot >"$work/suite-after.txt"
if python3 - "$work/suite-before.txt" "$work/suite-after.txt" <<'PY'; then
import sys
def load(p):
    return {line[66:].rstrip("\n"): line[:64] for line in open(p, encoding="utf-8")}
before, after = load(sys.argv[1]), load(sys.argv[2])
in_tmp = lambda f: f.startswith("./TMP/")
bad = [f"gone or changed: {f}" for f in before if not in_tmp(f) and after.get(f) != before[f]]
bad += [f"left behind: {f}" for f in after if f not in before and not in_tmp(f)]
for b in bad:
    print("    " + b)
sys.exit(1 if bad else 0)
PY
    echo "  silent uninstall: the suite folder holds what it held before (and the job's print data in TMP)"
else
    ifail "after the uninstall the suite folder differs from before (above)"
fi
"$wine" reg query "$regkey" >/dev/null 2>&1 && ifail "the installed-programs entry is still there"
[[ -e $shortcut ]] && ifail "the Start-menu shortcut is still there"
# A folder without "Tovara.ini": refused when silent, unless /DEMO asks for the demo data there.
fresh=$work/fresh
mkdir -p "$fresh"
if "$wine" "$setup" /S "/D=$(winpath "$fresh")" >>"$work/logs/installer.log" 2>&1; then
    ifail "a silent install into a folder without Tovara.ini was not refused"
fi
wineserver -w
[[ -e $fresh/qelprn.exe ]] && ifail "the refused install wrote its files"
if "$wine" "$setup" /S /DEMO "/D=$(winpath "$fresh")" >>"$work/logs/installer.log" 2>&1 && wineserver -w &&
    [[ -f $fresh/Tovara.ini && -f $fresh/qelprn.exe ]]; then
    "$wine" "$fresh/qelprn-uninstall.exe" /S >>"$work/logs/installer.log" 2>&1 || true
    wineserver -w
    if [[ -f $fresh/Tovara.ini && ! -e $fresh/qelprn.exe ]]; then
        echo "  a folder without Tovara.ini: refused, and with /DEMO given the demo data (kept on uninstall)"
    else
        ifail "the uninstall after /DEMO did not keep the demo data or left the programs"
    fi
else
    ifail "/DEMO did not install with the demo data"
fi
if ((installer_failed == 0)); then
    passed=$((passed + 1))
    echo "  installer round trip passed ($(du -h "$setup" | cut -f1) installer)"
fi
((job_failed == 0)) && passed=$((passed + 1))

elapsed=$(($(date +%s) - start))
echo "test-wine: took $((elapsed / 60))m$((elapsed % 60))s"
echo "$passed passed, $((failed + job_failed + installer_failed)) failed"
((failed == 0 && job_failed == 0 && installer_failed == 0))
