#!/usr/bin/env bash
# The Debian package as a user gets it: built with cpack from this build tree, unpacked with
# dpkg-deb -x into a temporary root and run from there in a fresh HOME, with no display.
#   usage: installed_programs.sh <build tree>
set -euo pipefail
build=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

(cd "$build" && cpack -G DEB -B "$work/pkg" >"$work/cpack.log" 2>&1) || { cat "$work/cpack.log"; fail "cpack"; }
deb=$(ls "$work"/pkg/qelprn_*_amd64.deb)
dpkg-deb -x "$deb" "$work/root"
bin=$work/root/usr/bin
for f in usr/share/doc/qelprn/changelog.gz usr/share/applications/qelprn.desktop usr/share/icons/hicolor/48x48/apps/qelprn.png \
    usr/share/icons/hicolor/256x256/apps/qelprn.png usr/share/icons/hicolor/scalable/apps/qelprn.svg \
    usr/share/qelprn/layouts/施設別請求書.wfd usr/share/doc/qelprn/copyright; do
    [[ -f "$work/root/$f" ]] || fail "the package lacks $f"
done
depends=$(dpkg-deb -f "$deb" Depends)
for p in libqt6widgets6 libqt6sql6-sqlite libqt6sql6-odbc unixodbc tdsodbc fonts-ipaexfont-gothic \
    fonts-ipaexfont-mincho qt6-translations-l10n; do
    [[ ",$depends," == *"$p"* ]] || fail "Depends lacks $p: $depends"
done
if command -v desktop-file-validate >/dev/null; then
    out=$(desktop-file-validate "$work/root/usr/share/applications/qelprn.desktop" 2>&1) || true
    [[ -z "$out" ]] || fail "desktop-file-validate: $out"
fi

export HOME=$work/home QT_QPA_PLATFORM=offscreen LANG=C.UTF-8
unset QELPRN_APP_DIR XDG_DATA_HOME
mkdir -p "$HOME"
version=$("$bin/qelprn-cli" --version)
[[ $version == "qelprn-cli $(dpkg-deb -f "$deb" Version)" ]] || fail "version: $version"
"$bin/qelprn" --version | grep -q '^qelprn ' || fail "qelprn --version"
"$bin/qelprn-engine" --version | grep -q '^qelprn-engine ' || fail "qelprn-engine --version"

# No program folder anywhere: the folders tried are named and the exit status is 2.
userdata=$HOME/.local/share/qelprn
status=0
"$bin/qelprn-cli" print --kind 1 --month 2026/10 --csv-only >/dev/null 2>"$work/err" || status=$?
[[ $status -eq 2 ]] || fail "no program folder: exit $status"
grep -q "プログラムのフォルダ：$bin" "$work/err" || fail "program folder not named: $(cat "$work/err")"
grep -q "利用者のデータフォルダ：$userdata" "$work/err" || fail "user data folder not named: $(cat "$work/err")"

# The demo in the user's data folder, then printed without FORM_ENGINE and without our layouts in
# SYSTEM_SYS: our engine beside the program and the installed layouts are used.
"$bin/qelprn-cli" init-demo "$userdata" --patients 30 --month 2026/10 >/dev/null
sed -i '/^FORM_ENGINE=/d' "$userdata/Tovara.ini"
rm "$userdata"/SYS/*.wfd
out=$("$bin/qelprn-cli" print --kind 1 --month=2026/10 --pdf "$work/invoice.pdf" --yes 2>&1) || fail "print: $out"
[[ $(head -c 4 "$work/invoice.pdf") == "%PDF" ]] || fail "no PDF"
if command -v pdftotext >/dev/null; then
    pdftotext "$work/invoice.pdf" - | grep -q "御中" || fail "the PDF holds no invoice text"
fi
tmp=$("$bin/qelprn-cli" print --kind 1 --month 2026/10 --csv-only)
[[ $tmp == "$userdata/TMP/施設請求データ.csv" ]] || fail "user data folder not used: $tmp"

# A suite folder holding the programs and "Tovara.ini" is used before the user's data folder, and
# QELPRN_APP_DIR before both.
suite=$work/suite
"$bin/qelprn-cli" init-demo "$suite" --patients 10 --month 2026/10 >/dev/null
sed -i '/^FORM_ENGINE=/d' "$suite/Tovara.ini"
cp "$bin"/qelprn-cli "$bin"/qelprn-engine "$suite/"
tmp=$("$suite/qelprn-cli" print --kind 1 --month 2026/10 --csv-only)
[[ $tmp == "$suite/TMP/施設請求データ.csv" ]] || fail "the program's own folder not used: $tmp"
out=$("$suite/qelprn-cli" print --kind 1 --month 2026/10 --pdf "$work/suite.pdf" --yes 2>&1) || fail "suite print: $out"
rm "$suite/qelprn-engine"
status=0
out=$("$suite/qelprn-cli" print --kind 1 --month 2026/10 --pdf "$work/x.pdf" --yes 2>&1) || status=$?
[[ $status -eq 2 && $out == *"帳票印刷エンジン $suite/qelprn-engine が見つかりません。"* ]] ||
    fail "missing engine: $status $out"
tmp=$(QELPRN_APP_DIR=$userdata "$suite/qelprn-cli" print --kind 1 --month 2026/10 --csv-only)
[[ $tmp == "$userdata/TMP/施設請求データ.csv" ]] || fail "QELPRN_APP_DIR not used: $tmp"

# Progress: a one-line counter on a terminal once a run takes over a second, nothing in a log. The
# demo is large enough to take several seconds however fast the machine is.
if command -v script >/dev/null; then
    script -qec "'$bin/qelprn-cli' init-demo '$work/big' --patients 20000 --seed 2" /dev/null >"$work/tty" </dev/null
    grep -q $'\rデモデータ作成 [0-9]*/20000' "$work/tty" || fail "no counter on a terminal: $(head -c 300 "$work/tty")"
    "$bin/qelprn-cli" init-demo "$work/big2" --patients 8000 --seed 2 2>"$work/log" >/dev/null
    [[ ! -s "$work/log" ]] || fail "progress in a log: $(head -c 300 "$work/log")"
fi

# The desktop program starts on the demo folder and reaches its main form.
ready=$(QELPRN_QUIT_WHEN_READY=1 timeout 120 "$bin/qelprn" 1 2>"$work/desktop.err") || true
[[ $ready == startup-ms* ]] || fail "desktop start: $ready $(cat "$work/desktop.err")"

if command -v lintian >/dev/null; then
    lintian --fail-on error "$deb" >"$work/lintian" 2>&1 ||
        fail "lintian: $(cat "$work/lintian")"
fi
echo "package $(basename "$deb"): ok"
