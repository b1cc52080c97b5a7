# The warnings that the project's own targets are built with; every one is an error.
# -Wrestrict and -Wnull-dereference stay off: g++ 12 gives them for the standard library's own strings
# and streams.
add_library(project_warnings INTERFACE)
target_compile_options(project_warnings INTERFACE
  -Werror -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wundef -Wcast-align
  -Wdouble-promotion -Wformat=2
  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual>
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wno-restrict>)
