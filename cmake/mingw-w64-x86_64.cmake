# Cross-compiling for 64-bit Windows with Debian's MinGW-w64 (posix threads, so that std::thread and
# std::mutex work). Used to build Qt itself (scripts/windows/build-qt.sh) and, through the
# windows-mingw preset, the project against that Qt.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(QELPRN_MINGW_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${QELPRN_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QELPRN_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${QELPRN_MINGW_TRIPLE}-windres)

list(APPEND CMAKE_FIND_ROOT_PATH /usr/${QELPRN_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
