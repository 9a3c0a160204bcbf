# The packages that `cpack` makes: a Debian package and a portable archive.

if(ZENTRO_FUZZ)
    return()
endif()

set(CPACK_PACKAGE_NAME zentrocompiler)
set(CPACK_PACKAGE_VENDOR "The ZentroCompiler authors")
set(CPACK_PACKAGE_CONTACT "The ZentroCompiler authors <authors@zentro.example>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_SYSTEM_NAME ${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_STRIP_FILES ON)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/PackageLayout.cmake)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/PackageDocuments.cmake)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Qt draws the icons with a plugin, which no program names.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Programs for the Kinetron, a small board with motors, servos, inputs, LEDs,
a number display and sound, are written in plain English, one statement a
line. This is their editor and compiler, the terminal that sends them to a
board, and a virtual board that runs them without any hardware.
.
It is made for pupils, hobbyists and their teachers. Compiler, virtual board
and serial line can be used from the command line as well.")

include(CPack)
