# Windows programs from another system: the mingw-w64 cross compiler and a static Qt in the folder QT_WINDOWS_KIT.
#
#   cmake --preset windows -DQT_WINDOWS_KIT=FOLDER      or with FOLDER in the environment
#
# Qt's own tools (moc, rcc) must be of the same version as the kit and come from the building system: QT_HOST_PATH and
# QT_HOST_PATH_CMAKE_DIR, by default where Debian has them.
set(QT_WINDOWS_KIT "$ENV{QT_WINDOWS_KIT}" CACHE PATH "The folder of a static Qt for Windows")
if(NOT EXISTS "${QT_WINDOWS_KIT}/lib/cmake/Qt6")
    message(FATAL_ERROR "QT_WINDOWS_KIT must name the folder of a Qt for Windows; it is '${QT_WINDOWS_KIT}'")
endif()
if(NOT QT_HOST_PATH)
    set(QT_HOST_PATH /usr)
endif()
if(NOT QT_HOST_PATH_CMAKE_DIR)
    set(QT_HOST_PATH_CMAKE_DIR ${QT_HOST_PATH}/lib/x86_64-linux-gnu/cmake)
endif()

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
# The compilers with threads as the standard library knows them.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_PREFIX_PATH ${QT_WINDOWS_KIT})
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${QT_WINDOWS_KIT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QT_WINDOWS_KIT QT_HOST_PATH QT_HOST_PATH_CMAKE_DIR)

# One file that runs anywhere: the compiler's own libraries are in it.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# What is built runs under Wine, on a Windows of its own below the build folder.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../../scripts/under-wine;${CMAKE_BINARY_DIR}/wine)
