cmake_minimum_required(VERSION 3.25)

# Fails if FILE, a program or library for Linux, lacks a part of its hardening: any place in memory,
# tables that are read-only from its start on, guarded frames, and checked buffers. Such a file is taken
# away, because the next build could take it for finished.
execute_process(COMMAND ${READELF} --wide --file-header --program-headers --dynamic --dyn-syms ${FILE}
  OUTPUT_VARIABLE tables COMMAND_ERROR_IS_FATAL ANY)
foreach(trait "Type: +DYN " " GNU_RELRO " "\\(FLAGS\\) +BIND_NOW" " __stack_chk_fail@"
    " __[a-z]+_chk@")
  if(NOT tables MATCHES "${trait}")
    file(REMOVE ${FILE})
    message(FATAL_ERROR "${FILE} lacks ${trait}")
  endif()
endforeach()
