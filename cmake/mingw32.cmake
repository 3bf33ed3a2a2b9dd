# 32-bit Windows with mingw-w64.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)

# The program has no threads: the win32-threads library is 29 kB smaller. It lacks <mutex>, which GoogleTest needs.
if(TIDEWELL_TESTS)
  set(threads posix)
else()
  set(threads win32)
endif()
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TIDEWELL_TESTS)
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-${threads})  # for GoogleTest
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-${threads})
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)
set(CMAKE_RC_FLAGS_INIT "-c 65001")
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/under-wine.sh)
