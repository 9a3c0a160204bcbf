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
    file(GLOB_RECURSE texts ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/man1/*.1
                            ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/doc/*/changelog)
    execute_process(COMMAND gzip -9n ${texts} COMMAND_ERROR_IS_FATAL ANY)
endif()
