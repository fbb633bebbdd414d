# Cross build of TOVELSETUP.EXE for 64-bit Windows with MinGW-w64 (posix thread model, so
# the standard thread library is there).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(TOVEL_MINGW_PREFIX x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
