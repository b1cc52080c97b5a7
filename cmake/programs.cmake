# What is done to a program that is shipped, besides compiling it.
add_custom_target(shipped COMMENT "What the packages hold is built")
if(WIN32)
  enable_language(RC)
  set(install_bin .)
else()
  set(install_bin bin)
endif()

set(compiled $<COMPILE_LANGUAGE:C,CXX>)

# The names of symbols and lines are of use to those who keep the build, and to them alone. What is
# built to be shipped is the same wherever its folder lies.
if(CMAKE_BUILD_TYPE STREQUAL Release AND NOT BUILD_TESTING)
  add_compile_options("$<${compiled}:-g;-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>")
endif()

# The programs read what strangers wrote. For Linux they get what Debian's packages have under
# "hardening=+all"; its warnings about formats are among the project's. For Windows the tests' builds
# have the stack protector as well, so that a test sees it.
if(WIN32)
  add_compile_options($<${compiled}:-fstack-protector-strong>)
  add_link_options(-fstack-protector-strong)
elseif(HARDENING)
  set(is_module $<STREQUAL:$<TARGET_PROPERTY:TYPE>,MODULE_LIBRARY>)
  add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  add_link_options(-Wl,-z,relro -Wl,-z,now $<$<NOT:${is_module}>:-pie>)
endif()

# check_hardening(<target>): a program that has lost its hardening works as before; so the build looks.
function(check_hardening target)
  if(HARDENING AND NOT WIN32)
    add_custom_command(TARGET ${target} POST_BUILD VERBATIM
      COMMAND ${CMAKE_COMMAND} -DREADELF=${CMAKE_READELF} -DFILE=$<TARGET_FILE:${target}>
        -P ${PROJECT_SOURCE_DIR}/cmake/check_hardening.cmake)
  endif()
endfunction()

# separate_symbols(<target>): a release is stripped; its symbols lie beside it, in a file with ".debug"
# behind the name, which the debugger finds by the link that is left in the file. Without
# --preserve-dates the time of day would come into a Windows program.
function(separate_symbols target)
  if(CMAKE_BUILD_TYPE STREQUAL Release)
    set(file $<TARGET_FILE:${target}>)
    add_custom_command(TARGET ${target} POST_BUILD VERBATIM
      COMMAND ${CMAKE_OBJCOPY} --only-keep-debug --preserve-dates ${file} ${file}.debug
      COMMAND ${CMAKE_STRIP} --strip-all --remove-section=.comment --preserve-dates ${file}
      COMMAND ${CMAKE_OBJCOPY} --preserve-dates --add-gnu-debuglink=${file}.debug ${file})
  endif()
endfunction()

# What Windows shows of a program, and how it treats it.
function(add_windows_resources program description)
  set(manifest ${PROJECT_SOURCE_DIR}/cmake/windows/program.manifest)
  string(REPLACE "." "," numbers ${PROJECT_VERSION})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/windows/program.rc.in ${program}.rc @ONLY)
  set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${program}.rc PROPERTIES
    OBJECT_DEPENDS ${manifest})
  # A library of its own, because warnings are no options of that compiler.
  add_library(${program}_resources OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${program}.rc)
  target_sources(${program} PRIVATE $<TARGET_OBJECTS:${program}_resources>)
endfunction()

# The manual page of what is shipped for Linux: packaging/man/<name>.1.in. The name and the date of the
# packed file would differ from build to build.
function(ship_manual_page name)
  set(page ${CMAKE_CURRENT_BINARY_DIR}/${name}.1)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/man/${name}.1.in ${page} @ONLY)
  add_custom_command(OUTPUT ${page}.gz DEPENDS ${page} VERBATIM
    COMMAND gzip -9nc ${page} > ${page}.gz)
  add_custom_target(${name}_manual DEPENDS ${page}.gz)
  add_dependencies(shipped ${name}_manual)
  install(FILES ${page}.gz DESTINATION share/man/man1 COMPONENT linux)
endfunction()

# ship_program(<target> <description> <component>): the program belongs to the packages: "everywhere"
# for all of them, "linux" for that of Debian alone.
function(ship_program target description component)
  target_compile_definitions(${target} PRIVATE PROGRAM_VERSION="${PROGRAM_VERSION}")
  separate_symbols(${target})
  check_hardening(${target})
  if(WIN32)
    add_windows_resources(${target} ${description})
  else()
    ship_manual_page(${target})
  endif()
  if(NOT WIN32 OR component STREQUAL "everywhere")
    add_dependencies(shipped ${target})
    install(TARGETS ${target} RUNTIME DESTINATION ${install_bin} COMPONENT ${component})
  endif()
endfunction()

# ship_script(<file>.in): the same for a script, which is for Linux alone.
function(ship_script file)
  cmake_path(GET file STEM LAST_ONLY name)
  if(NOT WIN32)
    configure_file(${file} ${CMAKE_BINARY_DIR}/${name} @ONLY)
    install(PROGRAMS ${CMAKE_BINARY_DIR}/${name} DESTINATION bin COMPONENT linux)
    ship_manual_page(${name})
  endif()
endfunction()
