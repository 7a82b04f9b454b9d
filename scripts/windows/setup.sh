#!/usr/bin/env bash
# Installs the Debian packages the Windows build needs, and only those that are missing: the
# MinGW-w64 cross compiler, Wine, NSIS (the installer), openbox (a window manager for the desktop
# pictures under Xvfb, with cups-daemon for a printer Wine's print dialog can list) and tcl (build-qt.sh makes SQLite's single-file source with it). Adds a
# deb-src entry beside the machine's deb entries when there is none, for build-qt.sh's
# "apt-get source". Idempotent: with everything present it changes nothing and asks no server.
set -euo pipefail
cd "$(dirname "$0")/../.."
scripts/setup.sh

packages=(
    g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix mingw-w64-tools binutils-mingw-w64-x86-64
    wine64 nsis tcl dpkg-dev python3 unzip openbox x11-utils xdotool imagemagick xvfb
    cups-daemon cups-client
)

sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then sudo_cmd=(sudo); fi
export DEBIAN_FRONTEND=noninteractive
updated=no

# deb822 sources (Debian 12) or one-line sources: a deb-src twin of every deb entry.
if ! grep -rqsE '^(Types:.*deb-src|deb-src )' /etc/apt/sources.list /etc/apt/sources.list.d/; then
    if [[ -f /etc/apt/sources.list.d/debian.sources ]]; then
        sed -n '/^Types:/,/^$/p' /etc/apt/sources.list.d/debian.sources |
            sed 's/^Types: deb$/Types: deb-src/' |
            "${sudo_cmd[@]}" tee /etc/apt/sources.list.d/qelprn-src.sources >/dev/null
    else
        grep -hE '^deb ' /etc/apt/sources.list | sed 's/^deb /deb-src /' |
            "${sudo_cmd[@]}" tee /etc/apt/sources.list.d/qelprn-src.list >/dev/null
    fi
    "${sudo_cmd[@]}" apt-get update -qq
    updated=yes
fi

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$p")
    fi
done
if ((${#missing[@]} > 0)); then
    echo "Installing: ${missing[*]}" >&2
    if [[ $updated == no ]]; then "${sudo_cmd[@]}" apt-get update -qq; fi
    "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
