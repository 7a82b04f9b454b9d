# Where the programs, layouts, launcher and icons go when installed, the same layout in the build
# tree (bin/ and share/qelprn/layouts/), and the Debian package.
include(GNUInstallDirs)

# The programs look for the layouts in ../share/qelprn/layouts beside their own folder; the build
# tree gets the same copy, so a program run from it finds them as an installed one does.
file(GLOB qelprn_layouts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/layouts/*.wfd)
foreach(layout IN LISTS qelprn_layouts)
    get_filename_component(name ${layout} NAME)
    configure_file(${layout} ${PROJECT_BINARY_DIR}/share/qelprn/layouts/${name} COPYONLY)
endforeach()

install(TARGETS qelprn qelprn-cli qelprn-engine RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${qelprn_layouts} DESTINATION ${CMAKE_INSTALL_DATADIR}/qelprn/layouts)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/qelprn.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/icons/qelprn.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
foreach(size 48 256)
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/icons/qelprn-${size}.png
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps RENAME qelprn.png)
endforeach()
# Debian wants the changelog compressed at the highest level and without a time stamp; it is
# written when the project is configured, so a package needs no extra build target.
find_program(QELPRN_GZIP gzip)
if(QELPRN_GZIP)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/packaging/changelog)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/packaging)
    execute_process(COMMAND ${QELPRN_GZIP} -9nc ${PROJECT_SOURCE_DIR}/packaging/changelog
                    OUTPUT_FILE ${PROJECT_BINARY_DIR}/packaging/changelog.gz)
    install(FILES ${PROJECT_BINARY_DIR}/packaging/changelog.gz DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/qelprn)
endif()
install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/qelprn)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qelprn)
set(CPACK_PACKAGE_VERSION ${QELPRN_VERSION})
set(CPACK_PACKAGE_CONTACT "qelprn maintainers <qelprn@example.jp>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "facility invoice printing for home-visit therapy clinics")
set(CPACK_PACKAGE_DESCRIPTION
    "Bills the care facilities where a clinic's patients live, once a month: reads\n"
    "the month's treatment results from the practice suite's database, groups them\n"
    "per billing facility or per patient, and previews, prints or writes as PDF\n"
    "facility invoices, co-payment lists and invoice-receipts through its own\n"
    "form-print engine. A desktop program, a command-line twin and the engine.")
set(CPACK_PACKAGE_INSTALL_DIRECTORY qelprn)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The libraries the programs link come from dpkg-shlibdeps; the parts loaded at run time (Qt's
# database drivers and translations, the ODBC driver manager and FreeTDS's driver, the fonts the
# forms are laid out in) are named here.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libqt6sql6-sqlite, libqt6sql6-odbc, unixodbc, tdsodbc, fonts-ipaexfont-gothic, fonts-ipaexfont-mincho, qt6-translations-l10n")
include(CPack)
