# The product version: the project version, and in a git checkout the commit it was built from
# ("1.0.0+git.3f2a9c1", "1.0.0+git.v1.0.0.4.g3f2a9c1.dirty"), in a form Debian accepts as a version.
set(QELPRN_VERSION ${PROJECT_VERSION})
find_package(Git QUIET)
if(GIT_FOUND AND EXISTS ${PROJECT_SOURCE_DIR}/.git)
    execute_process(
        COMMAND ${GIT_EXECUTABLE} describe --always --dirty
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        OUTPUT_VARIABLE qelprn_git_describe
        OUTPUT_STRIP_TRAILING_WHITESPACE
        ERROR_QUIET
        RESULT_VARIABLE qelprn_git_result)
    if(qelprn_git_result EQUAL 0 AND qelprn_git_describe)
        string(REGEX REPLACE "[^A-Za-z0-9.]" "." qelprn_git_describe "${qelprn_git_describe}")
        set(QELPRN_VERSION "${PROJECT_VERSION}+git.${qelprn_git_describe}")
    endif()
endif()
message(STATUS "qelprn version ${QELPRN_VERSION}")
