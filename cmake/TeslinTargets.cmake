# The house in CMake: one target a floor, and link lists that say which floor may use which.
#
#   teslin_ground_floor(NAME SOURCES ... [LINKS ...] [HEADERS ...])   plain C++20, the standard library alone
#   teslin_upper_floor(NAME SOURCES ... [LINKS ...])                  Qt 6 Widgets
#   teslin_tests(ROOM ground|widget|window|system TESTS ... LINKS ... [SOURCES ...] [ON_SCREEN ...])
#
# HEADERS are large headers of a floor's own, compiled once. ON_SCREEN names the tests of what only the screen of a real Windows, or of Wine, can show. All others need none.

add_library(teslin_options INTERFACE)
target_include_directories(teslin_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_features(teslin_options INTERFACE cxx_std_20)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(teslin_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast
                                                    -Woverloaded-virtual $<$<BOOL:${TESLIN_WERROR}>:-Werror>)
    # It takes the joining of short strings for a copy onto itself or past their end, the more so with its headers
    # precompiled.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(teslin_options INTERFACE -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread
                                                        -Wno-array-bounds)
    endif()
elseif(MSVC)
    target_compile_options(teslin_options INTERFACE /utf-8 /W4 $<$<BOOL:${TESLIN_WERROR}>:/WX>)
endif()
if(TESLIN_SANITIZE)
    target_compile_options(teslin_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                    -fno-omit-frame-pointer)
    target_link_options(teslin_options INTERFACE -fsanitize=address,undefined)
endif()

# A quicker linker, where there is one.
if(UNIX AND NOT CMAKE_CROSSCOMPILING)
    find_program(TESLIN_LINKER NAMES ld.lld)
    mark_as_advanced(TESLIN_LINKER)
    if(TESLIN_LINKER)
        target_link_options(teslin_options INTERFACE -fuse-ld=lld)
    endif()
endif()

if(TESLIN_WINDOW)
    get_target_property(qt_type Qt6::Core TYPE) # a static one brings its plugins into every program
endif()
add_library(teslin_qt_options INTERFACE)
target_link_libraries(teslin_qt_options INTERFACE teslin_options)
target_compile_definitions(
    teslin_qt_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
                                QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# Tests may write texts as plain literals; the program may not. Qt tells each test its folders, in two macros that none of
# ours uses: they would keep the tests from sharing precompiled headers, and a compiler's cache from serving two clones.
if(TARGET Qt6::Test)
    set_target_properties(Qt6::Test PROPERTIES INTERFACE_COMPILE_DEFINITIONS QT_TESTLIB_LIB)
    add_library(teslin_test_options INTERFACE)
    target_link_libraries(teslin_test_options INTERFACE teslin_options Qt6::Test)
endif()

function(teslin_ground_floor name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;HEADERS" ${ARGN})
    if("${ARG_LINKS}" MATCHES "Qt6|_ui")
        message(FATAL_ERROR "${name} is a ground floor: it links neither Qt nor an upper floor")
    endif()
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC teslin_options ${ARG_LINKS})
    if(NOT ARG_HEADERS)
        teslin_precompile(${name} ground)
    elseif(TESLIN_PRECOMPILE)
        target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
    endif()
endfunction()

function(teslin_upper_floor name)
    if(NOT TESLIN_WINDOW)
        return()
    endif()
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
    target_link_libraries(${name} PUBLIC teslin_options Qt6::Widgets ${ARG_LINKS} PRIVATE teslin_qt_options)
    teslin_precompile(${name} upper)
endfunction()

# The headers that nearly every source of a kind includes, compiled once for all targets of that kind.
function(teslin_precompile target kind)
    if(NOT TESLIN_PRECOMPILE)
        return()
    endif()
    if(NOT TARGET teslin_headers_${kind})
        set(empty ${CMAKE_BINARY_DIR}/headers/${kind}.cpp)
        file(CONFIGURE OUTPUT ${empty} CONTENT "")
        add_library(teslin_headers_${kind} OBJECT ${empty})
        set(standard <algorithm> <array> <chrono> <cstdint> <filesystem> <functional> <map> <memory> <optional> <string>
                     <string_view> <utility> <vector>)
        if(kind STREQUAL "ground")
            target_link_libraries(teslin_headers_ground PRIVATE teslin_options)
            target_precompile_headers(teslin_headers_ground PRIVATE ${standard})
        elseif(kind STREQUAL "upper")
            target_link_libraries(teslin_headers_upper PRIVATE teslin_qt_options Qt6::Widgets)
            target_precompile_headers(teslin_headers_upper PRIVATE ${standard} <QtWidgets>)
        elseif(kind STREQUAL "ground_tests")
            target_link_libraries(teslin_headers_ground_tests PRIVATE teslin_test_options)
            target_precompile_headers(teslin_headers_ground_tests PRIVATE ${standard} <QtTest>)
        else()
            target_link_libraries(teslin_headers_upper_tests PRIVATE teslin_test_options Qt6::Widgets)
            target_precompile_headers(teslin_headers_upper_tests PRIVATE ${standard} <QtWidgets> <QtTest>)
        endif()
    endif()
    target_precompile_headers(${target} REUSE_FROM teslin_headers_${kind})
endfunction()

# The surroundings of every test, so that none depends on the machine's: see tests/surroundings. FONTS and SCREENS name a
# file there: other fonts than those of fonts.conf, other screens than a single small one.
function(teslin_test_surroundings name)
    cmake_parse_arguments(ARG "ON_SCREEN" "FONTS;SCREENS" "MORE" ${ARGN})
    if(NOT ARG_FONTS)
        set(ARG_FONTS fonts.conf)
    endif()
    set(home ${CMAKE_BINARY_DIR}/tests/home)
    file(MAKE_DIRECTORY ${home})
    set(environment LANG=C.UTF-8 LC_ALL=C.UTF-8 TZ=UTC HOME=${home} ${ARG_MORE})
    if(TESLIN_SANITIZE)
        list(APPEND environment ASAN_OPTIONS=detect_leaks=1
             LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/surroundings/leaks.txt:print_suppressions=0)
    endif()
    if(WIN32 AND ARG_ON_SCREEN)
        list(APPEND environment QT_QPA_PLATFORM=windows)
    elseif(ARG_SCREENS)
        list(APPEND environment
             QT_QPA_PLATFORM=offscreen:configfile=${PROJECT_SOURCE_DIR}/tests/surroundings/${ARG_SCREENS})
    else()
        list(APPEND environment QT_QPA_PLATFORM=offscreen)
    endif()
    if(WIN32 AND CMAKE_CROSSCOMPILING)
        # Without a screen Qt knows no fonts there but those of a folder.
        list(APPEND environment QT_QPA_FONTDIR=/usr/share/fonts/truetype/dejavu)
    else()
        list(APPEND environment FONTCONFIG_FILE=${PROJECT_SOURCE_DIR}/tests/surroundings/${ARG_FONTS})
    endif()
    set(unset)
    foreach(variable IN ITEMS DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS XDG_CONFIG_HOME XDG_DATA_HOME
                              XDG_CACHE_HOME XDG_CURRENT_DESKTOP QT_QPA_PLATFORMTHEME QT_STYLE_OVERRIDE QT_SCALE_FACTOR
                              QT_LOGGING_RULES TESLIN_DOSDEVICES LANGUAGE)
        list(APPEND unset ${variable}=unset:)
    endforeach()
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${environment}" ENVIRONMENT_MODIFICATION "${unset}")
endfunction()

# One test program for a room and a layer: ROOM_LAYER_tests. TESTS are the test classes' files without ".cpp"; each class
# has a ctest entry of its own name and is run alone by "PROGRAM CLASS". SOURCES are what several of them share.
function(teslin_tests room layer)
    if(NOT TESLIN_WINDOW AND layer MATCHES "widget|window")
        return()
    endif()
    cmake_parse_arguments(ARG "OWN_MAIN" "NAME" "TESTS;SOURCES;LINKS;ON_SCREEN" ${ARGN})
    set(program ${room}_${layer}_tests)
    if(ARG_NAME)
        set(program ${ARG_NAME})
    endif()
    set(sources ${ARG_TESTS})
    list(TRANSFORM sources APPEND .cpp)
    if(NOT ARG_OWN_MAIN)
        list(APPEND sources ${PROJECT_SOURCE_DIR}/tests/support/TestMain.cpp)
    endif()
    add_executable(${program} ${sources} ${ARG_SOURCES})
    set_target_properties(${program} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    target_link_libraries(${program} PRIVATE test_support ${ARG_LINKS})
    if(layer MATCHES "widget|window")
        target_link_libraries(${program} PRIVATE Qt6::Widgets)
        teslin_precompile(${program} upper_tests)
    else()
        teslin_precompile(${program} ground_tests)
    endif()
    if(MINGW)
        target_link_options(${program} PRIVATE -s) # Qt is in each of them
    endif()
    if(qt_type STREQUAL "STATIC_LIBRARY")
        qt_import_plugins(${program} INCLUDE Qt6::QOffscreenIntegrationPlugin)
    endif()
    foreach(test IN LISTS ARG_TESTS)
        cmake_path(GET test FILENAME name)
        # Qt's tests print their reports on Windows where somebody watches, and write them where they are told to.
        set(report)
        if(WIN32)
            set(report -o ${CMAKE_BINARY_DIR}/tests/${name}.log,txt)
        endif()
        add_test(NAME ${name} COMMAND ${program} ${name} ${report})
        set_tests_properties(${name} PROPERTIES LABELS "${layer};${room}" TIMEOUT 300)
        if(name IN_LIST ARG_ON_SCREEN)
            teslin_test_surroundings(${name} ON_SCREEN)
        else()
            teslin_test_surroundings(${name})
        endif()
        # The reader has 150 ms to answer; the real programs are tried with the machine to themselves.
        if(layer STREQUAL "system")
            set_tests_properties(${name} PROPERTIES RUN_SERIAL ON TIMEOUT 600)
        endif()
    endforeach()
endfunction()
