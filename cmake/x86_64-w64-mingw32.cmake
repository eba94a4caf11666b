# Debian's cross compiler for Windows (g++-mingw-w64-x86-64-posix); what is built runs in Wine (wine64), on a Windows of
# the build tree's own.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# Beside what Debian has, what scripts/windows-libraries.sh builds.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${CMAKE_CURRENT_LIST_DIR}/../build/windows-libraries)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
if(NOT DEFINED ENV{WINEPREFIX})
  set(ENV{WINEPREFIX} ${CMAKE_BINARY_DIR}/windows)
endif()
set(CMAKE_CROSSCOMPILING_EMULATOR env;LC_ALL=C.UTF-8;WINEDEBUG=-all;WINEPREFIX=$ENV{WINEPREFIX};wine)
