#!/usr/bin/env bash
# Builds Qt 6.4.2 (qtbase) for 64-bit Windows from Debian's own source package, with the MinGW-w64
# posix toolchain, and SQLite for the Qt SQLite driver from Debian's sqlite3 source package.
#
# The result lives outside the tree, in QELPRN_QT_MINGW (default ~/.cache/qelprn/qt-6.4.2-mingw64):
#   qt/      the installed Qt (lib/cmake/Qt6 ..., bin/*.dll, plugins/)
#   sqlite/  SQLite built for Windows (include/sqlite3.h, bin/sqlite3.dll, lib/libsqlite3.dll.a)
#   src/ build/  sources and build trees (may be deleted once qt/ is complete)
# Idempotent: a finished step is not repeated, a finished Qt returns at once.
# Needs: g++-mingw-w64-x86-64-posix, qt6-base-dev and qt6-base-dev-tools (the host tools, same
# version), tclsh (to make SQLite's single-file source), a deb-src entry for apt-get source.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
cache=${QELPRN_QT_MINGW:-$HOME/.cache/qelprn/qt-6.4.2-mingw64}
jobs=${QELPRN_JOBS:-2}
qt_version=6.4.2
start=$(date +%s)

report_time() {
    local s=$(($(date +%s) - start))
    printf 'build-qt: %s (%dm%02ds)\n' "$1" $((s / 60)) $((s % 60))
}

# A finished Qt without the Network module (an older configuration) is built again.
if [[ -f $cache/qt/.complete && -d $cache/qt/lib/cmake/Qt6Network ]]; then
    report_time "Qt $qt_version for MinGW already built in $cache/qt"
    exit 0
fi

for tool in x86_64-w64-mingw32-g++-posix x86_64-w64-mingw32-gcc-posix x86_64-w64-mingw32-ar tclsh \
    dpkg-source cmake ninja; do
    if ! command -v "$tool" >/dev/null; then
        echo "build-qt: $tool is missing (apt-get install g++-mingw-w64-x86-64-posix tcl dpkg-dev cmake ninja-build)" >&2
        exit 1
    fi
done
host_qt=$(dpkg-query -W -f='${Version}' qt6-base-dev 2>/dev/null || true)
if [[ $host_qt != $qt_version* ]]; then
    echo "build-qt: the host tools must be Qt $qt_version (qt6-base-dev is '${host_qt:-not installed}')" >&2
    exit 1
fi

mkdir -p "$cache/src" "$cache/build"
# The toolchain file is copied so that the installed Qt does not point into a source tree.
cp "$root/cmake/mingw-w64-x86_64.cmake" "$cache/mingw-w64-x86_64.cmake"

# --- sources ------------------------------------------------------------------------------------
cd "$cache/src"
if ! ls qt6-base_*.dsc >/dev/null 2>&1 || ! ls sqlite3_*.dsc >/dev/null 2>&1; then
    if ! apt-get source --download-only qt6-base sqlite3; then
        echo "build-qt: apt-get source failed; add a deb-src entry with the same URIs and suites as the" >&2
        echo "          machine's deb entry (see README, Windows) and run apt-get update" >&2
        exit 1
    fi
fi
qt_src=$(find "$cache/src" -maxdepth 1 -type d -name 'qt6-base-*' | head -n 1)
if [[ -z $qt_src ]]; then
    dpkg-source --no-check -x qt6-base_*.dsc >/dev/null
    qt_src=$(find "$cache/src" -maxdepth 1 -type d -name 'qt6-base-*' | head -n 1)
fi
sqlite_src=$(find "$cache/src" -maxdepth 1 -type d -name 'sqlite3-*' | head -n 1)
if [[ -z $sqlite_src ]]; then
    dpkg-source --no-check -x sqlite3_*.dsc >/dev/null
    sqlite_src=$(find "$cache/src" -maxdepth 1 -type d -name 'sqlite3-*' | head -n 1)
fi

# --- SQLite -------------------------------------------------------------------------------------
# Debian's source has no ready single-file source: make it with the host compiler and tclsh, then
# compile that one file for Windows into sqlite3.dll. One DLL serves both Qt's driver and the demo
# writer, which works on the driver's own connection (as on Linux, where both use libsqlite3.so).
if [[ ! -f $cache/sqlite/bin/sqlite3.dll ]]; then
    echo "build-qt: SQLite for Windows"
    amal=$cache/build/sqlite-amalgamation
    mkdir -p "$amal" "$cache/sqlite/include" "$cache/sqlite/lib" "$cache/sqlite/bin"
    (cd "$amal" && "$sqlite_src/configure" --disable-tcl >/dev/null && make -s sqlite3.c >/dev/null)
    x86_64-w64-mingw32-gcc-posix -O2 -DSQLITE_THREADSAFE=1 -DSQLITE_ENABLE_COLUMN_METADATA \
        -DSQLITE_ENABLE_FTS5 -DSQLITE_ENABLE_RTREE -c "$amal/sqlite3.c" -o "$amal/sqlite3.o"
    x86_64-w64-mingw32-gcc-posix -shared "$amal/sqlite3.o" -o "$amal/sqlite3.dll" \
        -Wl,--out-implib,"$amal/libsqlite3.dll.a"
    cp "$amal/sqlite3.h" "$amal/sqlite3ext.h" "$cache/sqlite/include/"
    cp "$amal/libsqlite3.dll.a" "$cache/sqlite/lib/"
    cp "$amal/sqlite3.dll" "$cache/sqlite/bin/"
fi

# --- Qt -----------------------------------------------------------------------------------------
# Only what the project uses: Core, Gui, Widgets, Sql (sqlite, odbc), PrintSupport, Network (the
# local socket by which a new preview replaces the old one), Test, and the windows and offscreen
# platform plugins. Debian's source lacks the bundled wintab, so tablet
# events are off; the windows plugin needs OpenGL (it is loaded dynamically at run time).
echo "build-qt: configuring Qt $qt_version for MinGW"
cmake -S "$qt_src" -B "$cache/build/qtbase" -G Ninja \
    -DCMAKE_TOOLCHAIN_FILE="$cache/mingw-w64-x86_64.cmake" \
    -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_INSTALL_PREFIX="$cache/qt" \
    -DQT_HOST_PATH=/usr \
    -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
    -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_BENCHMARKS=OFF \
    -DBUILD_WITH_PCH=OFF \
    -DFEATURE_network=ON -DFEATURE_localserver=ON -DFEATURE_dbus=OFF -DFEATURE_xml=OFF -DFEATURE_concurrent=OFF \
    -DFEATURE_sql=ON -DFEATURE_sql_sqlite=ON -DFEATURE_system_sqlite=ON -DFEATURE_sql_odbc=ON \
    -DFEATURE_sql_psql=OFF -DFEATURE_sql_mysql=OFF -DFEATURE_sql_oci=OFF -DFEATURE_sql_ibase=OFF \
    -DFEATURE_sql_db2=OFF \
    -DFEATURE_tabletevent=OFF \
    -DSQLite3_INCLUDE_DIR="$cache/sqlite/include" \
    -DSQLite3_LIBRARY="$cache/sqlite/lib/libsqlite3.dll.a" \
    -DCMAKE_FIND_ROOT_PATH="$cache/sqlite" \
    >"$cache/build/qt-configure.log" 2>&1 || {
    tail -n 40 "$cache/build/qt-configure.log" >&2
    echo "build-qt: configure failed, see $cache/build/qt-configure.log" >&2
    exit 1
}
for feature in sql_sqlite system_sqlite sql_odbc localserver; do
    if ! grep -q "^QT_FEATURE_$feature:INTERNAL=ON" "$cache/build/qtbase/CMakeCache.txt"; then
        echo "build-qt: Qt feature $feature is off, see $cache/build/qt-configure.log" >&2
        exit 1
    fi
done
report_time "configured"

echo "build-qt: building with $jobs jobs"
cmake --build "$cache/build/qtbase" -j "$jobs"
cmake --install "$cache/build/qtbase" >/dev/null
touch "$cache/qt/.complete"
report_time "Qt $qt_version for MinGW installed in $cache/qt ($(du -sh "$cache/qt" | cut -f1))"
