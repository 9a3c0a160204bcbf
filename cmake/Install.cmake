# What an installation consists of, in two layouts: "system" spreads over the folders of a Unix system,
# "portable" is one folder with everything, in which the settings stay too.

if(ZENTRO_FUZZ)
    return()
endif()
include(GNUInstallDirs)

set(programs zentro zentroc zentro-board zentro-link)
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(program_files ${PROJECT_SOURCE_DIR}/data/ZentroCompiler.cfg)
if(TARGET handbook)
    list(APPEND program_files ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/ZentroCodeHelp.htm)
endif()

function(install_program_files component folder)
    install(FILES ${program_files} DESTINATION ${folder} COMPONENT ${component} ${ARGN})
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION ${folder} COMPONENT ${component} ${ARGN}
            FILES_MATCHING PATTERN "*.txt" PATTERN "README.md")
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/data/worlds DESTINATION ${folder} COMPONENT ${component} ${ARGN}
            FILES_MATCHING PATTERN "*.world")
endfunction()

# The programs look for their files in ../share/zentrocompiler, whatever a system calls its data folder.
install(TARGETS ${programs} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT system)
# A part of zentro, for nobody to call by hand.
install(TARGETS zentro-sound RUNTIME DESTINATION libexec/zentrocompiler COMPONENT system)
install_program_files(system share/zentrocompiler)
install(FILES ${PROJECT_SOURCE_DIR}/data/icons/zentro.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT system)
install(FILES ${packaging}/zentro.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT system)
install(FILES ${packaging}/example.zentro.zentro.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT system)
install(FILES ${packaging}/zentrocompiler-mime.xml RENAME zentrocompiler.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages COMPONENT system)
install(FILES ${packaging}/debian/copyright ${packaging}/debian/changelog
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zentrocompiler COMPONENT system)
install(FILES ${packaging}/debian/lintian-overrides RENAME zentrocompiler
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT system)
foreach(program IN LISTS programs)
    configure_file(${packaging}/man/${program}.1.in ${PROJECT_BINARY_DIR}/man/${program}.1 @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/man/${program}.1
            DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT system)
endforeach()

install(TARGETS ${programs} zentro-sound RUNTIME DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)
install_program_files(portable . EXCLUDE_FROM_ALL)
install(FILES ${packaging}/portable.txt RENAME README.txt
        DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)
install(FILES ${packaging}/debian/copyright RENAME COPYRIGHT
        DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)
