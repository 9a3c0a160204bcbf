# Read by cpack for each kind of package: which layout it has, see Install.cmake.

if(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
else()
    list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build_folder)
    set(CPACK_INSTALL_CMAKE_PROJECTS "${build_folder};ZentroCompiler;portable;/")
    set(CPACK_PACKAGE_FILE_NAME
        ${CPACK_PACKAGE_NAME}-${CPACK_PACKAGE_VERSION}-portable-${CPACK_SYSTEM_NAME})
endif()
