#!/usr/bin/env bash
# The Windows programs on a desktop: runs the zip's programs under Wine (a Japanese Windows) on
# Xvfb with the openbox window manager, 1366×768, and keeps pictures of what a clerk sees in
# docs/windows-*.png: the main form for form kinds 1, 4 and 6, the patient search, the question
# before printing (a message box), the preview and the print dialog. Each picture is one window as
# Windows draws it (its own title bar comes from the window manager, so it is left out). Look at
# every picture after a run. Not part of the test run (the pictures need a person's eye).
#
#   scripts/windows/screenshots-wine.sh      (after scripts/windows/package.sh)
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
version=$(sed -n 's/^project(qelprn VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
zip=$root/dist/qelprn-$version-win64.zip
work=$root/build/windows-mingw/wine-desktop
docs=$root/docs

for tool in Xvfb openbox xdotool xwininfo import; do
    command -v "$tool" >/dev/null || {
        echo "screenshots-wine: $tool is missing (scripts/windows/setup.sh installs it)" >&2
        exit 1
    }
done
[[ -f $zip ]] || {
    echo "screenshots-wine: $zip is missing; run scripts/windows/package.sh" >&2
    exit 1
}
wine=$(command -v wine || command -v wine64 || ls /usr/lib/wine/wine64 2>/dev/null || true)
[[ -n $wine ]] || {
    echo "screenshots-wine: Wine is missing (scripts/windows/setup.sh)" >&2
    exit 1
}
export PATH=$PATH:$(dirname "$wine")
# A prefix of its own: the test prefix tells Qt to draw off screen.
export WINEPREFIX=${QELPRN_WINE_DESKTOP_PREFIX:-$HOME/.cache/qelprn/wine64-desktop}
export WINEARCH=win64 WINEDEBUG=-all LANG=ja_JP.UTF-8 LC_ALL=ja_JP.UTF-8

pids=()
cleanup() {
    wineserver -k 2>/dev/null || true
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
}
trap cleanup EXIT

display=:$((70 + RANDOM % 9))
Xvfb "$display" -screen 0 1366x768x24 -nolisten tcp &
pids+=($!)
export DISPLAY=$display
for _ in $(seq 1 40); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.25; done
openbox &
pids+=($!)
if [[ ! -d $WINEPREFIX/drive_c ]]; then
    echo "screenshots-wine: preparing the Wine prefix $WINEPREFIX"
    "$wine" wineboot --init >/dev/null 2>&1 || true
fi
wineserver -w

rm -rf "$work"
mkdir -p "$work/program" "$work/logs"

# Windows' print dialog does not open on a PC without a printer, and Wine lists the printers of
# CUPS: a CUPS server of our own, on a socket in the work folder, offers one that prints nowhere.
if command -v cupsd >/dev/null && command -v lpadmin >/dev/null; then
    cups=$work/cups
    mkdir -p "$cups"/{spool,cache,state,tmp,log}
    printf '%s\n' "Listen $cups/cups.sock" "LogLevel warn" "WebInterface No" "Browsing No" \
        "<Location />" "Order allow,deny" "Allow all" "</Location>" >"$cups/cupsd.conf"
    printf '%s\n' "ServerRoot $cups" "RequestRoot $cups/spool" "CacheDir $cups/cache" \
        "StateDir $cups/state" "TempDir $cups/tmp" "ErrorLog $cups/log/error_log" \
        "AccessLog $cups/log/access_log" "PageLog $cups/log/page_log" "FileDevice Yes" \
        >"$cups/cups-files.conf"
    cupsd -f -c "$cups/cupsd.conf" -s "$cups/cups-files.conf" &
    pids+=($!)
    export CUPS_SERVER=$cups/cups.sock
    for _ in $(seq 1 40); do [[ -S $CUPS_SERVER ]] && break; sleep 0.25; done
    lpadmin -p Office-Printer -E -v file:///dev/null -m drv:///sample.drv/generic.ppd 2>/dev/null ||
        echo "  no printer for the print dialog (log: $cups/log/error_log)" >&2
else
    echo "  cupsd is missing (scripts/windows/setup.sh): the print dialog will not open" >&2
fi
unzip -q "$zip" -d "$work/program"
program=$work/program
winpath() { "$wine" winepath -w "$1" 2>/dev/null | tr -d '\r'; }
"$wine" "$program/qelprn-cli.exe" init-demo "$(winpath "$work/demo")" --seed 1 >"$work/logs/init-demo.log" 2>&1

# The id of the newest visible window whose title is exactly $1, or of class $2 (waits up to 30 s).
window() {
    local id=""
    for _ in $(seq 1 120); do
        if [[ -n ${2:-} ]]; then
            id=$(xdotool search --onlyvisible --class "$2" 2>/dev/null | tail -1 || true)
        else
            id=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | tail -1 || true)
        fi
        [[ -n $id ]] && break
        sleep 0.25
    done
    echo "$id"
}
shot() { # window-id name
    sleep 1.5
    if import -window "$1" "$docs/windows-$2.png"; then
        echo "  docs/windows-$2.png"
    else
        echo "  docs/windows-$2.png: the window was gone" >&2
    fi
}
# Keys go to the window that has the focus; each key waits for the program.
keys() {
    for key in "$@"; do
        xdotool key --clearmodifiers "$key"
        sleep 0.6
    done
}

echo "screenshots-wine: the desktop program under Wine"
rm -f "$docs"/windows-*.png
(cd "$work" && QELPRN_APP_DIR=$(winpath "$work/demo") "$wine" "$program/qelprn.exe" 1 >"$work/logs/qelprn.log" 2>&1) &
form=$(window 施設請求書印刷)
# The background window has the same title and covers the screen: the form is the smaller one.
sleep 3
form=$(for id in $(xdotool search --onlyvisible --name '^施設請求書印刷$' 2>/dev/null); do
    eval "$(xdotool getwindowgeometry --shell "$id")"
    echo "$((WIDTH * HEIGHT)) $id"
done | sort -n | head -n 1 | cut -d' ' -f2)
[[ -n $form ]] || {
    echo "screenshots-wine: the main form did not open (log: $work/logs/qelprn.log)" >&2
    exit 1
}
xdotool windowactivate --sync "$form" 2>/dev/null || true
sleep 3
# The controls are clicked where the main form (1120×580 at 96 dpi) draws them: keys sent to a
# window under Wine do not always reach the control that has the focus.
click() { # window x y
    xdotool mousemove --window "$1" "$2" "$3" click 1
    sleep 1
}
click "$form" 25 69 # 請求書(施設請求先別)
shot "$form" main-kind1
click "$form" 347 69 # 請求書兼領収書
shot "$form" main-kind4
click "$form" 347 132 # 請求書(施設請求先別・拠点選択)
shot "$form" main-kind6
click "$form" 347 69

click "$form" 467 411 # 検索 beside 利用者選択
search=$(window 患者検索)
if [[ -n $search ]]; then
    xdotool windowactivate --sync "$search" 2>/dev/null || true
    sleep 2 # it lists the patients as it opens (Return would choose one and close it)
    shot "$search" search-patient
    keys Escape
else
    echo "  the patient search did not open" >&2
fi

xdotool windowactivate --sync "$form" 2>/dev/null || true
click "$form" 767 541 # F9 印刷
box=$(xdotool getactivewindow)
if [[ $box != "$form" ]]; then
    shot "$box" message
    keys n
else
    echo "  no question before printing" >&2
fi

xdotool windowactivate --sync "$form" 2>/dev/null || true
click "$form" 667 541 # F5 プレビュー
preview=$(window "" qelprn-engine.exe)
if [[ -n $preview ]]; then
    xdotool windowactivate --sync "$preview" 2>/dev/null || true
    sleep 3
    shot "$preview" preview
    click "$preview" 18 12 # 印刷, the first button of the preview's tool bar
    sleep 3
    dialog=$(xdotool getactivewindow)
    if [[ $dialog != "$preview" ]]; then
        shot "$dialog" print-dialog
        keys Escape
    else
        echo "  the print dialog did not open" >&2
    fi
    xdotool windowactivate --sync "$preview" 2>/dev/null || true
    keys Escape
else
    echo "  the preview did not open (log: $work/logs/qelprn.log)" >&2
fi
xdotool windowactivate --sync "$form" 2>/dev/null || true
click "$form" 967 541 # F12 戻る
ls -1 "$docs"/windows-*.png
