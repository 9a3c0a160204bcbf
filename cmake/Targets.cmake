# What every target of the project has in common.

add_library(zentro_options INTERFACE)
target_compile_options(zentro_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # This compiler takes "text" + std::string for overlapping memory (its bug 105651), and behind a
    # precompiled header for copies without bounds.
    target_compile_options(zentro_options INTERFACE -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
endif()
target_include_directories(zentro_options INTERFACE ${PROJECT_SOURCE_DIR})

if(ZENTRO_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
    # The sanitizers let an index beyond a std::array pass; the library's own checks do not.
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # With sanitizers this warning sees what is not there; the release build heeds it.
        add_compile_options(-Wno-maybe-uninitialized)
    endif()
endif()
if(ZENTRO_STATIC)
    # What a program does not use stays out of it, so that it starts sooner.
    add_compile_options(-ffunction-sections -fdata-sections)
    add_link_options(-Wl,--gc-sections)
endif()
if(ZENTRO_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

find_program(ZENTRO_CCACHE ccache)
if(ZENTRO_CCACHE)
    # ccache takes what a precompiled header holds, not when it was made.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${ZENTRO_CCACHE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        add_compile_options(-fpch-preprocess)
    endif()
endif()

# What many files include and what takes longer to read than they do is read once, by a target of its
# own for each set of compiler flags. A list holds what many files use, since each header more makes
# every file wait for it. The lint reads every file without: each includes what it needs.
set(zentro_standard_headers <algorithm> <array> <cstdint> <functional> <map> <memory> <memory_resource>
    <optional> <span> <string> <string_view> <unordered_map> <utility> <vector>)
set(zentro_qt_headers ${zentro_standard_headers} <chrono> <filesystem> <QObject> <QString> <QTimer>)
set(zentro_window_headers ${zentro_qt_headers} <QApplication> <QCheckBox> <QDialog> <QDir> <QFile>
    <QFileInfo> <QFontDatabase> <QKeyEvent> <QLabel> <QLineEdit> <QMdiSubWindow> <QPainter>
    <QPlainTextEdit> <QPushButton> <QVBoxLayout> <QWidget>)

# zentro_precompiled(name HEADERS header... USES library...): headers for targets that say
# target_precompile_headers(target REUSE_FROM name) and have the same compiler flags.
function(zentro_precompiled name)
    cmake_parse_arguments(ARG "" "" "HEADERS;USES" ${ARGN})
    add_library(${name} OBJECT ${PROJECT_SOURCE_DIR}/cmake/precompiled.cpp)
    target_link_libraries(${name} PRIVATE ${ARG_USES} zentro_options)
    target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()
zentro_precompiled(zentro_precompiled_standard HEADERS ${zentro_standard_headers})
zentro_precompiled(zentro_precompiled_qt HEADERS ${zentro_qt_headers} USES Qt6::Core)

# zentro_library(name SOURCES file... USES library...): one layer of the program. What it does not
# list under USES it cannot link, so a layer that reaches upwards fails to build.
function(zentro_library name)
    zentro_layer(${name} ${ARGN})
    target_precompile_headers(${name} REUSE_FROM zentro_precompiled_standard)
endfunction()

# zentro_qt_library(...): the same for a layer that has Qt classes of its own.
function(zentro_qt_library name)
    zentro_layer(${name} ${ARGN})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
endfunction()

function(zentro_layer name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC ${ARG_USES} PRIVATE zentro_options)
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
endfunction()

# zentro_program(name SOURCES file... USES library...): a command-line program in build/PRESET/bin.
function(zentro_program name)
    zentro_qt_program(${name} ${ARGN})
    target_precompile_headers(${name} REUSE_FROM zentro_precompiled_standard)
    if(ZENTRO_STATIC)
        target_link_options(${name} PRIVATE -static-pie)
    endif()
endfunction()

# zentro_qt_program(...): a program that uses Qt, whose libraries are the system's.
function(zentro_qt_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_USES} zentro_options)
endfunction()
