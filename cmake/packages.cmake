# The packages: a ZIP for each width of Windows, and one for Debian. scripts/package makes them.
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(maintainer "Quellbright <support@quellbright.example>")
set(schema ${PROJECT_SOURCE_DIR}/tools/report/report.schema.json)

# For Windows, what administrators open there has its line ends, also where it comes by a variable.
function(add_windows_pages)
  set(page ${PROJECT_SOURCE_DIR}/docs/administrators.md)
  file(READ ${page} page_for_administrators)
  string(REPLACE "\n" "\r\n" page_for_administrators "${page_for_administrators}")
  configure_file(${packaging}/README.txt.in README.txt @ONLY NEWLINE_STYLE DOS)
  configure_file(${PROJECT_SOURCE_DIR}/docs/findings.md FINDINGS.txt @ONLY NEWLINE_STYLE DOS)
  configure_file(${PROJECT_SOURCE_DIR}/THIRD-PARTY-NOTICES THIRD-PARTY-NOTICES.txt @ONLY NEWLINE_STYLE DOS)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${page})

  set(expected ${PROJECT_SOURCE_DIR}/tests/worlds/sample/expected/report.txt)
  set(report ${CMAKE_BINARY_DIR}/sample-report.log)
  add_custom_command(OUTPUT ${report} VERBATIM
    DEPENDS ${expected} ${packaging}/sample_report.sed
    COMMAND sed -f ${packaging}/sample_report.sed ${expected} | iconv -f UTF-8 -t LATIN1 > ${report})
  add_custom_target(sample_report DEPENDS ${report})
  add_dependencies(shipped sample_report)

  install(FILES ${report} ${schema} ${CMAKE_BINARY_DIR}/README.txt ${CMAKE_BINARY_DIR}/FINDINGS.txt
    ${CMAKE_BINARY_DIR}/THIRD-PARTY-NOTICES.txt DESTINATION . COMPONENT windows)
endfunction()

# The stand-in lies in a folder of its own: beside the program it would win over the library of the
# server that the program is pointed at; and directly below a folder of the system's libraries the
# package would come to run the system's loader.
function(add_debian_files)
  add_dependencies(shipped nnotes)
  install(TARGETS nnotes LIBRARY DESTINATION lib/qbdiagnostics/standin COMPONENT linux)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/sample-server DESTINATION share/qbdiagnostics
    COMPONENT linux PATTERN README.md EXCLUDE)
  install(FILES ${schema} DESTINATION share/qbdiagnostics COMPONENT linux)
  set(docs ${PROJECT_SOURCE_DIR}/docs)
  install(FILES ${packaging}/copyright ${PROJECT_SOURCE_DIR}/THIRD-PARTY-NOTICES
    ${docs}/administrators.md ${docs}/findings.md ${docs}/offline.md DESTINATION share/doc/qbdiagnostics COMPONENT linux)
endfunction()

# What is not released yet has the time of the commit, or else of the build.
function(add_debian_changelog)
  set(maker ${packaging}/changelog.awk)
  set(changes ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
  set(changelog ${CMAKE_BINARY_DIR}/changelog.gz)
  string(TIMESTAMP now "%s" UTC)
  add_custom_command(OUTPUT ${changelog} DEPENDS ${maker} ${changes} VERBATIM
    COMMAND awk -v version=${PROGRAM_VERSION} -v now=${now} -v "maintainer=${maintainer}"
      -f ${maker} ${changes} | gzip -9nc > ${changelog})
  add_custom_target(debian_changelog DEPENDS ${changelog})
  add_dependencies(shipped debian_changelog)
  install(FILES ${changelog} DESTINATION share/doc/qbdiagnostics COMPONENT linux)
endfunction()

if(WIN32)
  add_windows_pages()
else()
  ship_script(${packaging}/qbdiagnostics-sample.in)
  add_debian_files()
  add_debian_changelog()
endif()

set(CPACK_PACKAGE_NAME qbdiagnostics)
set(CPACK_PACKAGE_VERSION ${PROGRAM_VERSION})
set(CPACK_PACKAGE_VENDOR Quellbright)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/settle_times.cmake)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_COMPONENTS_ALL everywhere windows)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(width x64)
  else()
    set(width x86)
  endif()
  set(CPACK_PACKAGE_FILE_NAME qbdiagnostics-${PROGRAM_VERSION}-windows-${width})
  set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
  set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_COMPONENTS_ALL everywhere linux)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${maintainer})
  set(CPACK_DEBIAN_PACKAGE_SECTION admin)
  set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "diagnostics of Quellbright Domino Module
Writes one plain-text report that tells in what state the add-on for Domino
mail servers stands. A stand-in for the Notes library and a sample server are
included, so that it can be tried without a Domino server.")
endif()
include(CPack)
