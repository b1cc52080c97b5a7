# The support library as other programs use it: two archives, the public headers, and what CMake and
# pkg-config are asked for. It is installed by the name of its component alone, "replay", or
# "library_package" as its packages hold it. An archive brings what it needs of lib/platform/ along.
include(CMakePackageConfigHelpers)

set(built $<TARGET_OBJECTS:replay> $<TARGET_OBJECTS:platform>)
# A precompiled header is among what is built.
set(objects "$<FILTER:${built},INCLUDE,[.]o(bj)?$>")
set(of_internet "/(replay[.]dir/.*/internet/|platform[.]dir/.*/(certificate|handshake|name_lookups|openssl|security|socket|system_libraries))")
set(of_text "/(replay[.]dir/|platform[.]dir/.*/(code_pages|files|iconv_pages|page_data|paths|utf7|utf8|write_all)[.])")

# add_archive(<name> <objects>): of what is built for the programs too, without the names of its lines.
function(add_archive name objects)
  set(archive ${CMAKE_BINARY_DIR}/archives/lib${name}.a)
  add_custom_command(OUTPUT ${archive} DEPENDS ${built} VERBATIM COMMAND_EXPAND_LISTS
    COMMAND ${CMAKE_COMMAND} -E rm -f ${archive}
    COMMAND ${CMAKE_AR} qcsD ${archive} "${objects}"
    COMMAND ${CMAKE_STRIP} --strip-debug --remove-section=.comment -D ${archive})
endfunction()

file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/archives)
add_archive(replay "$<FILTER:$<FILTER:${objects},INCLUDE,${of_text}>,EXCLUDE,${of_internet}>")
add_archive(replay-internet "$<FILTER:${objects},INCLUDE,${of_internet}>")
set(archives ${CMAKE_BINARY_DIR}/archives/libreplay.a ${CMAKE_BINARY_DIR}/archives/libreplay-internet.a)
add_custom_target(library_package ALL DEPENDS ${archives})
# For make, to which a file that another target makes says nothing.
add_dependencies(library_package replay platform)
add_dependencies(shipped library_package)

# Code with guarded frames needs a library on Windows, of which the compiler knows by the option.
set(library_needs_openssl FALSE)
set(library_links replay::replay)
if(WIN32)
  set(library_link_options -fstack-protector-strong)
  list(APPEND library_links ws2_32 secur32 crypt32)
  set(library_pc_links " -lws2_32 -lsecur32 -lcrypt32")
elseif(OpenSSL_FOUND)
  set(library_needs_openssl TRUE)
  string(REGEX MATCH "^[0-9]+" library_openssl_version ${OPENSSL_VERSION})
  list(APPEND library_links OpenSSL::SSL OpenSSL::Crypto)
  set(library_pc_requires ", libssl >= ${library_openssl_version}, libcrypto")
endif()

# install_library(<component> <folder of the archives> <folder of the page>): below any prefix, which the
# files find from where they lie.
function(install_library component libdir docdir)
  set(rule COMPONENT ${component} EXCLUDE_FROM_ALL)
  set(made ${CMAKE_BINARY_DIR}/${component})
  string(REGEX REPLACE "[^/]+" ".." to_prefix ${libdir})
  foreach(file replayConfig.cmake replay.pc replay-internet.pc)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/library/${file}.in ${made}/${file} @ONLY)
  endforeach()
  write_basic_package_version_file(${made}/replayConfigVersion.cmake
    VERSION ${PROJECT_VERSION} COMPATIBILITY SameMinorVersion)
  install(FILES ${archives} DESTINATION ${libdir} ${rule})
  install(FILES ${made}/replayConfig.cmake ${made}/replayConfigVersion.cmake
    DESTINATION ${libdir}/cmake/replay ${rule})
  install(FILES ${made}/replay.pc ${made}/replay-internet.pc DESTINATION ${libdir}/pkgconfig ${rule})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/lib/replay DESTINATION include ${rule}
    FILES_MATCHING PATTERN "*.h" PATTERN detail EXCLUDE)
  install(FILES ${library_page} DESTINATION ${docdir} ${rule})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION ${docdir} ${rule} FILES_MATCHING PATTERN "*.cpp")
endfunction()

set(library_page ${PROJECT_SOURCE_DIR}/docs/replay.md)
if(WIN32)
  configure_file(${library_page} replay.md @ONLY NEWLINE_STYLE DOS)
  set(library_page ${CMAKE_BINARY_DIR}/replay.md)
endif()
install_library(replay lib share/doc/replay)

# What the packages hold: Debian's has its archives in the folder of its architecture.
if(WIN32)
  install_library(library_package lib .)
  install(FILES ${CMAKE_BINARY_DIR}/THIRD-PARTY-NOTICES.txt DESTINATION . COMPONENT library_package
    EXCLUDE_FROM_ALL)
else()
  install_library(library_package lib/${CMAKE_LIBRARY_ARCHITECTURE} share/doc/libreplay-dev)
  add_dependencies(library_package debian_changelog)
  install(FILES ${packaging}/library/copyright ${PROJECT_SOURCE_DIR}/THIRD-PARTY-NOTICES ${CMAKE_BINARY_DIR}/changelog.gz
    DESTINATION share/doc/libreplay-dev COMPONENT library_package EXCLUDE_FROM_ALL)
endif()
configure_file(${packaging}/library/CPackLibrary.cmake.in CPackLibrary.cmake @ONLY)
