# Shared compile settings and the two helpers every folder uses.

add_library(qelprn_options INTERFACE)
target_compile_definitions(qelprn_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_FOREACH)
if(MSVC)
    # Sources are UTF-8 (Japanese identifiers and texts); C4100 is the unused-parameter warning.
    target_compile_options(qelprn_options INTERFACE /W4 /permissive- /utf-8 /Zc:__cplusplus /wd4100)
    if(QELPRN_WERROR)
        target_compile_options(qelprn_options INTERFACE /WX)
    endif()
else()
    # GCC, Clang and MinGW's GCC.
    target_compile_options(qelprn_options INTERFACE -Wall -Wextra -Wpedantic -Wno-unused-parameter)
    if(QELPRN_WERROR)
        target_compile_options(qelprn_options INTERFACE -Werror)
    endif()
endif()
if(WIN32)
    # Windows API calls take UTF-16 (the W functions); no min/max macros from <windows.h>.
    target_compile_definitions(qelprn_options INTERFACE UNICODE _UNICODE NOMINMAX)
endif()
if(QELPRN_FUZZ)
    # Every library is instrumented for coverage-guided fuzzing, with the address and undefined
    # behaviour checks; the fuzz targets link libFuzzer's driver.
    target_compile_options(qelprn_options INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(qelprn_options INTERFACE -fsanitize=address,undefined)
endif()
if(QELPRN_SANITIZE)
    target_compile_options(qelprn_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(qelprn_options INTERFACE -fsanitize=address,undefined)
endif()

# qelprn_add_library(<name> <folder> LIBS <deps...>)
# A static library of every .cpp in <folder> (not main.cpp); headers are included as "<folder>/<File>.h"
# relative to src/.
function(qelprn_add_library name folder)
    cmake_parse_arguments(ARG "" "" "LIBS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h ${folder}/*.qrc)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    list(FILTER sources EXCLUDE REGEX "/fuzz_[^/]*\\.cpp$")
    if(NOT sources)
        message(FATAL_ERROR "qelprn_add_library(${name}): no sources in ${CMAKE_CURRENT_SOURCE_DIR}/${folder}")
    endif()
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC qelprn_options ${ARG_LIBS})
endfunction()

# qelprn_add_tests(<folder> LIBS <deps...>)
# One CTest test per tst_*.cpp in <folder>, each a QtTest executable. The tests run on Qt's offscreen
# platform, with a fixed locale, and learn where the source tree and the built programs are.
function(qelprn_add_tests folder)
    cmake_parse_arguments(ARG "" "" "LIBS" ${ARGN})
    file(GLOB tests CONFIGURE_DEPENDS ${folder}/tst_*.cpp)
    foreach(src IN LISTS tests)
        get_filename_component(tname ${src} NAME_WE)
        get_filename_component(fname ${folder} NAME)
        set(target ${fname}_${tname})
        add_executable(${target} ${src})
        target_link_libraries(${target} PRIVATE qelprn_test_support ${ARG_LIBS} Qt6::Test)
        add_test(NAME ${fname}/${tname} COMMAND ${target})
        set_tests_properties(${fname}/${tname} PROPERTIES
            ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LANG=C.UTF-8;LC_ALL=C.UTF-8;QELPRN_SOURCE_DIR=${PROJECT_SOURCE_DIR};QELPRN_BIN_DIR=${PROJECT_BINARY_DIR}/bin;ASAN_OPTIONS=detect_leaks=0"
            TIMEOUT 600)
    endforeach()
endfunction()

# qelprn_add_program(<target> <main source> LIBS <deps...>): an executable.
function(qelprn_add_program target main)
    cmake_parse_arguments(ARG "" "" "LIBS" ${ARGN})
    if(NOT EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${main})
        message(FATAL_ERROR "qelprn_add_program(${target}): ${CMAKE_CURRENT_SOURCE_DIR}/${main} does not exist")
    endif()
    add_executable(${target} ${main})
    target_link_libraries(${target} PRIVATE ${ARG_LIBS})
endfunction()
