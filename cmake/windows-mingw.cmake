# The project cross-built for 64-bit Windows against Qt built by scripts/windows/build-qt.sh.
# The Qt folder is QELPRN_QT_MINGW (environment), by default ~/.cache/qelprn/qt-6.4.2-mingw64.
if(DEFINED ENV{QELPRN_QT_MINGW})
    set(QELPRN_QT_MINGW_ROOT "$ENV{QELPRN_QT_MINGW}")
else()
    set(QELPRN_QT_MINGW_ROOT "$ENV{HOME}/.cache/qelprn/qt-6.4.2-mingw64")
endif()
set(QELPRN_QT_TOOLCHAIN "${QELPRN_QT_MINGW_ROOT}/qt/lib/cmake/Qt6/qt.toolchain.cmake")
if(NOT EXISTS "${QELPRN_QT_TOOLCHAIN}")
    message(FATAL_ERROR "Qt for MinGW is not built: ${QELPRN_QT_TOOLCHAIN} is missing. "
                        "Run scripts/windows/build-qt.sh first (or set QELPRN_QT_MINGW).")
endif()
# Qt's own toolchain file loads the MinGW compilers (a copy of mingw-w64-x86_64.cmake) and points
# CMake at the Windows Qt and at the host tools (moc, rcc, uic) of Debian's Qt of the same version.
include("${QELPRN_QT_TOOLCHAIN}")
# SQLite for Windows (sqlite3.dll), which the demo writer uses beside Qt's driver.
list(APPEND CMAKE_FIND_ROOT_PATH "${QELPRN_QT_MINGW_ROOT}/sqlite")
