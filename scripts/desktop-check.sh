#!/usr/bin/env bash
# The desktop program as a clerk meets it: under Xvfb with the openbox window manager, on a
# 1366×768 screen at 100 % and a 1920×1080 screen at 150 %, each with a 48 px task bar (the window
# manager's bottom margin; 72 device pixels at 150 %). On each it checks that the main form, the
# patient search and the preview open inside the free area, that Esc leaves the main form open,
# that a second F5 replaces the preview, that window and message-box titles carry no suffix, and
# saves full-screen pictures into docs/ (fit-<screen>-*.png). Not part of CI.
#
#   scripts/desktop-check.sh [build-dir]     (default build/test; qelprn, qelprn-engine and
#                                             qelprn-cli must be built there)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=${1:-build/test}
bin=$root/$build/bin

# The window manager and the X tools this check needs (only here, not in setup.sh).
tools=(openbox xdotool x11-utils imagemagick xvfb)
missing=()
for p in "${tools[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if ((${#missing[@]})); then
    sudo_cmd=()
    [[ $(id -u) -ne 0 ]] && sudo_cmd=(sudo)
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y --no-install-recommends "${missing[@]}"
fi
for program in qelprn qelprn-engine qelprn-cli; do
    [[ -x $bin/$program ]] || { echo "desktop-check: $bin/$program is not built" >&2; exit 2; }
done

work=$(mktemp -d)
pids=()
cleanup() {
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    rm -rf "$work"
}
trap cleanup EXIT
month=$(date -d "$(date +%Y-%m-01) -1 month" +%Y/%m)
"$bin/qelprn-cli" init-demo "$work/demo" --month "$month" --seed 1 >/dev/null
mkdir -p docs

failures=0
fail() { echo "  FAIL: $*"; failures=$((failures + 1)); }
pass() { echo "  ok: $*"; }

# The id of the newest visible window whose title is exactly $1 (waits up to 15 s).
window_named() {
    local id=""
    for _ in $(seq 1 60); do
        id=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | tail -1 || true)
        [[ -n $id ]] && break
        sleep 0.25
    done
    echo "$id"
}
# The title the window manager shows for a window.
wm_title() { xprop -id "$1" _NET_WM_NAME | sed -n 's/^_NET_WM_NAME(UTF8_STRING) = "\(.*\)"$/\1/p'; }
# "x y w h" of a window with its frame: the inner area plus the window manager's frame extents.
frame_of() {
    local l r t b
    read -r l r t b < <(xprop -id "$1" _NET_FRAME_EXTENTS | sed 's/.*= //; s/,//g')
    xwininfo -id "$1" | awk -v l="${l:-0}" -v r="${r:-0}" -v t="${t:-0}" -v b="${b:-0}" '
        /Absolute upper-left X/ {x=$NF} /Absolute upper-left Y/ {y=$NF} /Width:/ {w=$NF} /Height:/ {h=$NF}
        END {print x - l, y - t, w + l + r, h + t + b}'
}
# Checks that a window lies inside the free area "W H-margin".
inside() { # id what
    read -r x y w h < <(frame_of "$1")
    if ((x >= 0 && y >= 0 && x + w <= width && y + h <= height - margin)); then
        pass "$2 inside the free area (${w}x${h}+${x}+${y})"
    else
        fail "$2 ${w}x${h}+${x}+${y} leaves the free area ${width}x$((height - margin))"
    fi
}
title_is() { # id expected what
    local t
    t=$(wm_title "$1")
    [[ $t == "$2" ]] && pass "$3 title 「$t」" || fail "$3 title 「$t」, expected 「$2」"
}
shot() { import -window root "docs/fit-$name-$1.png"; }

run_screen() { # name width height scale margin
    name=$1 width=$2 height=$3 scale=$4 margin=$5
    echo "== $name: ${width}x${height} at ${scale}x, bottom margin ${margin} px"
    local display=:$((90 + RANDOM % 9))
    Xvfb "$display" -screen 0 "${width}x${height}x24" -nolisten tcp &
    pids+=($!)
    export DISPLAY=$display
    for _ in $(seq 1 40); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.25; done
    sed "s|<bottom>0</bottom>|<bottom>$margin</bottom>|" /etc/xdg/openbox/rc.xml >"$work/rc-$name.xml"
    openbox --config-file "$work/rc-$name.xml" &
    pids+=($!)
    sleep 1

    # An English locale: the program is Japanese all the same. Remembered preview places start empty.
    env LANG=C.UTF-8 LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR="$scale" XDG_CONFIG_HOME="$work/config-$name" \
        QELPRN_APP_DIR="$work/demo" "$bin/qelprn" menu >"$work/qelprn-$name.log" 2>&1 &
    local app=$!
    pids+=($app)
    sleep 3
    local form
    form=$(window_named 施設請求書印刷)
    [[ -n $form ]] || { fail "the main form did not open"; return; }
    title_is "$form" 施設請求書印刷 "main form"
    inside "$form" "main form"
    shot main

    # Esc leaves the form open.
    xdotool key Escape
    sleep 1
    kill -0 "$app" 2>/dev/null && [[ -n $(window_named 施設請求書印刷) ]] && pass "Esc keeps the form" ||
        fail "Esc closed the form"

    # Kind 5 (請求書兼領収書(自費分)) with an arrow key: the form starts at the form kind.
    xdotool windowactivate --sync "$form" 2>/dev/null || true
    xdotool key --clearmodifiers Right
    sleep 0.5

    # The patient search: a reading in hiragana, Enter; the first row is current.
    xdotool key F4
    local search
    search=$(window_named 患者検索)
    if [[ -z $search ]]; then
        fail "F4 did not open the patient search"
    else
        inside "$search" "patient search"
        xdotool key alt+k
        xdotool type --delay 60 "ろう"
        xdotool key Return
        sleep 1
        shot search
        # A reading nobody has: the information box and its exact title.
        xdotool key alt+k ctrl+a
        xdotool type --delay 60 "ぬぬぬ"
        xdotool key Return
        # The box takes the focus from the dialog once the search has found nothing.
        local box=$search
        for _ in $(seq 1 40); do
            box=$(xdotool getactivewindow)
            [[ $box != "$search" ]] && break
            sleep 0.25
        done
        sleep 0.5
        title_is "$box" 施設請求書印刷 "message box"
        shot message
        xdotool key Return
        sleep 0.5
        xdotool key Escape
        sleep 0.5
    fi

    # F5 opens the preview; a second F5 replaces it.
    xdotool windowactivate --sync "$form" 2>/dev/null || true
    xdotool key F5
    sleep 4
    local previews
    previews=$(xdotool search --onlyvisible --class qelprn-engine 2>/dev/null | wc -l)
    local preview
    preview=$(xdotool search --onlyvisible --class qelprn-engine 2>/dev/null | tail -1 || true)
    if [[ -z $preview ]]; then
        fail "F5 opened no preview (see $work/qelprn-$name.log)"
        cat "$work/qelprn-$name.log"
    else
        inside "$preview" "preview"
        shot preview
        xdotool windowactivate --sync "$form" 2>/dev/null || true
        xdotool key F5
        sleep 4
        previews=$(pgrep -c -f "$bin/qelprn-engine" || true)
        ((previews == 1)) && pass "a second F5 replaced the preview" || fail "$previews previews after two F5"
        preview=$(xdotool search --onlyvisible --class qelprn-engine 2>/dev/null | tail -1 || true)
        [[ -n $preview ]] && xdotool windowactivate --sync "$preview" 2>/dev/null && xdotool key Escape
        sleep 1
    fi

    # F12 closes the form for the menu.
    xdotool windowactivate --sync "$form" 2>/dev/null || true
    xdotool key F12
    sleep 1
    kill -0 "$app" 2>/dev/null && fail "F12 did not close the program" || pass "F12 closes the program"
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    pids=()
    sleep 1
}

run_screen 1366x768 1366 768 1 48
run_screen 1920x1080-150 1920 1080 1.5 72
ls -1 docs/fit-*.png
((failures == 0)) && echo "desktop-check: all passed" || { echo "desktop-check: $failures failed"; exit 1; }
