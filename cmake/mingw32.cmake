# 32-bit Windows with mingw-w64. On Windows itself (MSYS2, mingw32 shell) the compiler is simply g++.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)

if(CMAKE_HOST_WIN32)
  set(CMAKE_CXX_COMPILER g++)
  set(CMAKE_RC_COMPILER windres)
else()
  # The posix-threads variant by name: its libstdc++ has all of <chrono> and <mutex>, whatever the alternatives point to.
  set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)  # GoogleTest's project asks for one
  set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
  set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)
  set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32)
  set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
  set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
  set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
  set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/under-wine.sh)
endif()

set(CMAKE_RC_FLAGS_INIT "-c 65001")
