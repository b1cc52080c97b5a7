# Libraries that are headers alone, so that the packages of this machine serve every target. A compiler
# for another system must not see the folder that they lie in, with this system's headers beside them:
# it gets a copy.

# add_header_library(<target> <header>): the library whose headers lie in the folder of that header.
function(add_header_library target header)
  cmake_path(GET header PARENT_PATH folder)
  find_path(${target}_HEADERS ${header} PATHS /usr/include /usr/local/include
    NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  set(copy ${CMAKE_BINARY_DIR}/libraries/${target})
  file(COPY ${${target}_HEADERS}/${folder} DESTINATION ${copy})
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE ${copy})
endfunction()

add_header_library(nlohmann_json nlohmann/json.hpp)
add_header_library(cli11 CLI/CLI.hpp)
add_header_library(dtl dtl/dtl.hpp)
