#!/usr/bin/env bash
# Installs the Debian packages the project needs, and only those that are missing. Idempotent:
# with everything present it changes nothing and asks no package server.
set -euo pipefail

packages=(
    build-essential cmake ninja-build pkg-config ccache
    qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite libqt6sql6-odbc libgl-dev
    libicu-dev
    unixodbc unixodbc-dev libsqliteodbc tdsodbc
    fonts-ipaexfont-gothic fonts-ipaexfont-mincho
    poppler-utils sqlite3 time xvfb xauth qt6-translations-l10n
    lintian desktop-file-utils
    clang-format clang-tidy
    clang libclang-rt-14-dev
    locales
    # The PDF/A-1b validator of Apache PDFBox ("preflight"), with the Java runtime and the two
    # libraries it loads, for the test of the archival PDFs.
    default-jre-headless libpdfbox2-java libactivation-java libjaxb-api-java
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$p")
    fi
done

sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then sudo_cmd=(sudo); fi
if ((${#missing[@]} > 0)); then
    echo "Installing: ${missing[*]}" >&2
    export DEBIAN_FRONTEND=noninteractive
    "${sudo_cmd[@]}" apt-get update -qq
    "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
# The Japanese locale, under which the tests also run the engine (fonts go by Japanese names there).
if ! locale -a 2>/dev/null | grep -qix 'ja_JP.utf8'; then
    "${sudo_cmd[@]}" localedef -i ja_JP -f UTF-8 ja_JP.UTF-8
fi
