# Run by cpack before it packs the files: the texts of a Debian package are compressed, and of this
# version.

set(sources ${CMAKE_CURRENT_LIST_DIR}/../packaging)
file(STRINGS ${sources}/debian/changelog newest LIMIT_COUNT 1)
file(READ ${sources}/example.zentro.zentro.metainfo.xml metainfo)
if(NOT newest MATCHES "\\(${CPACK_PACKAGE_VERSION}\\)")
    message(FATAL_ERROR "packaging/debian/changelog does not begin with version ${CPACK_PACKAGE_VERSION}")
endif()
if(NOT metainfo MATCHES "<releases>[ \n]*<release version=\"${CPACK_PACKAGE_VERSION}\"")
    message(FATAL_ERROR "the metainfo does not begin with version ${CPACK_PACKAGE_VERSION}")
endif()

if(CPACK_GENERATOR STREQUAL "DEB")
    set(shared ${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX}/share)
    file(GLOB manual_pages ${shared}/man/man1/*.1)
    execute_process(COMMAND gzip -9n ${manual_pages} ${shared}/doc/zentrocompiler/changelog
                    COMMAND_ERROR_IS_FATAL ANY)
endif()
