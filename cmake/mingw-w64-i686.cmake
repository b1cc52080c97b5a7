set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)

# Exports of a 32-bit __stdcall function carry a decoration unless the linker is told to drop it;
# the Notes library's are plain.
string(APPEND CMAKE_MODULE_LINKER_FLAGS_INIT " -Wl,--kill-at")

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine32)
