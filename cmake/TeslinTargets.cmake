# The house in CMake: one target a floor, and link lists that say which floor may use which.
#
#   teslin_ground_floor(NAME SOURCES ... [LINKS ...])   plain C++20, the standard library alone
#   teslin_upper_floor(NAME SOURCES ... [LINKS ...])    Qt 6 Widgets
#   teslin_test(NAME SOURCES ... LINKS ... [LAYER ground|widget|window|system] [TIMEOUT seconds] [ON_SCREEN])
#
# ON_SCREEN is for what only the screen of a real Windows, or of Wine, can show. All other tests need none.

add_library(teslin_options INTERFACE)
target_include_directories(teslin_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_features(teslin_options INTERFACE cxx_std_20)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(teslin_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast
                                                    -Woverloaded-virtual $<$<BOOL:${TESLIN_WERROR}>:-Werror>)
    # It takes the joining of short strings for a copy onto itself.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(teslin_options INTERFACE -Wno-restrict)
    endif()
elseif(MSVC)
    target_compile_options(teslin_options INTERFACE /utf-8 /W4 $<$<BOOL:${TESLIN_WERROR}>:/WX>)
endif()
if(TESLIN_SANITIZE)
    target_compile_options(teslin_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                    -fno-omit-frame-pointer)
    target_link_options(teslin_options INTERFACE -fsanitize=address,undefined)
endif()

get_target_property(qt_type Qt6::Core TYPE) # a static one brings its plugins into every program
add_library(teslin_qt_options INTERFACE)
target_link_libraries(teslin_qt_options INTERFACE teslin_options)
target_compile_definitions(
    teslin_qt_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
                                QT_DISABLE_DEPRECATED_BEFORE=0x060400)

function(teslin_ground_floor name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    if("${ARG_LINKS}" MATCHES "Qt6|_ui")
        message(FATAL_ERROR "${name} is a ground floor: it links neither Qt nor an upper floor")
    endif()
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC teslin_options ${ARG_LINKS})
endfunction()

function(teslin_upper_floor name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
    target_link_libraries(${name} PUBLIC teslin_options Qt6::Widgets ${ARG_LINKS} PRIVATE teslin_qt_options)
endfunction()

function(teslin_test name)
    cmake_parse_arguments(ARG "ON_SCREEN" "LAYER;TIMEOUT" "SOURCES;LINKS" ${ARGN})
    if(NOT ARG_LAYER)
        set(ARG_LAYER ground)
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    # Tests may write texts as plain literals; the program may not.
    target_link_libraries(${name} PRIVATE teslin_options Qt6::Test ${ARG_LINKS})
    if(MINGW)
        target_link_options(${name} PRIVATE -s) # Qt is in each of them
    endif()
    if(qt_type STREQUAL "STATIC_LIBRARY")
        qt_import_plugins(${name} INCLUDE Qt6::QOffscreenIntegrationPlugin)
    endif()
    # Qt's tests print their reports on Windows where somebody watches, and write them where they are told to.
    if(WIN32)
        add_test(NAME ${name} COMMAND ${name} -o ${CMAKE_BINARY_DIR}/tests/${name}.log,txt)
    else()
        add_test(NAME ${name} COMMAND ${name})
    endif()
    # The reader has 150 ms to answer; the real programs are tried with the machine to themselves.
    if(ARG_LAYER STREQUAL "system")
        set_tests_properties(${name} PROPERTIES RUN_SERIAL ON)
    endif()
    set(environment LANG=C.UTF-8 ASAN_OPTIONS=detect_leaks=0)
    if(WIN32 AND ARG_ON_SCREEN)
        list(APPEND environment QT_QPA_PLATFORM=windows)
    else()
        list(APPEND environment QT_QPA_PLATFORM=offscreen)
    endif()
    if(WIN32 AND CMAKE_CROSSCOMPILING)
        # Without a screen Qt knows no fonts there but those of a folder.
        list(APPEND environment QT_QPA_FONTDIR=/usr/share/fonts/truetype/dejavu)
    endif()
    set_tests_properties(${name} PROPERTIES LABELS ${ARG_LAYER} TIMEOUT ${ARG_TIMEOUT} ENVIRONMENT "${environment}")
endfunction()
