cmake_minimum_required(VERSION 3.25)

# Beside the program the stand-in would win over the library of the server that it is run on.
get_filename_component(program_folder ${PROGRAM} DIRECTORY)
get_filename_component(library_name ${LIBRARY} NAME)
if(NOT library_name STREQUAL "nnotes.dll" OR NOT EXISTS ${LIBRARY})
  message(FATAL_ERROR "the stand-in is not built as nnotes.dll: ${LIBRARY}")
endif()
if(EXISTS ${program_folder}/nnotes.dll)
  message(FATAL_ERROR "nnotes.dll lies beside the program in ${program_folder}")
endif()
