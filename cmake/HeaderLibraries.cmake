# Libraries that consist of headers alone, where Debian has them.
#
#   teslin_header_library(NAME HEADER FILE PACKAGE DEBIAN_PACKAGE)   makes the target header_NAME
#
# A cross compiler must not see the other headers of this system. It gets a folder of its own, with links to these.
function(teslin_header_library name)
    cmake_parse_arguments(ARG "" "HEADER;PACKAGE" "" ${ARGN})
    if(TARGET header_${name})
        return()
    endif()
    find_path(TESLIN_HEADERS_${name} ${ARG_HEADER} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
    mark_as_advanced(TESLIN_HEADERS_${name})
    if(NOT TESLIN_HEADERS_${name})
        message(FATAL_ERROR "${ARG_HEADER} is missing, which teslin is built with. Please run: "
                            "sudo apt-get install ${ARG_PACKAGE}")
    endif()
    set(folder ${TESLIN_HEADERS_${name}})
    if(CMAKE_CROSSCOMPILING)
        set(folder ${CMAKE_BINARY_DIR}/headers/${name})
        file(MAKE_DIRECTORY ${folder})
        cmake_path(GET ARG_HEADER PARENT_PATH top)
        foreach(entry IN ITEMS ${name} ${name}.hpp ${top})
            if(EXISTS ${TESLIN_HEADERS_${name}}/${entry})
                file(CREATE_LINK ${TESLIN_HEADERS_${name}}/${entry} ${folder}/${entry} SYMBOLIC)
            endif()
        endforeach()
    endif()
    add_library(header_${name} INTERFACE)
    target_include_directories(header_${name} SYSTEM INTERFACE ${folder})
endfunction()
