# What the toolchain files for Windows have in common. CMAKE_SYSTEM_PROCESSOR is set already.
set(CMAKE_SYSTEM_NAME Windows)

# The "posix" flavour of the compiler is the one whose standard library has threads and mutexes.
set(triplet ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Without -static the programs need three runtime DLLs that no server has. The linker's time stamp is
# left out, so that a build can be repeated to the byte.
set(linker_flags "-static -Wl,--dynamicbase,--nxcompat,--no-insert-timestamp")
if(CMAKE_SYSTEM_PROCESSOR STREQUAL x86_64)
  string(APPEND linker_flags " -Wl,--high-entropy-va")
endif()
set(CMAKE_EXE_LINKER_FLAGS_INIT ${linker_flags})
set(CMAKE_SHARED_LINKER_FLAGS_INIT ${linker_flags})
set(CMAKE_MODULE_LINKER_FLAGS_INIT ${linker_flags})
