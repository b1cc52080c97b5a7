// The forty operations as this library exports them.
//
// The declarations come from the one list that the program loads its table from, so neither side
// can drift. The definitions stand in exports_*.cpp and are thin: they check what the caller
// passed, call the file of the subject and turn failures into the result that the operation
// documents.
#pragma once

#include "nnotes_export.h"
#include "notes/abi.h"

#define STANDIN_DECLARE(result, name, arguments) \
  extern "C" NNOTES_EXPORT result NOTES_CALL name arguments;
NOTES_OPERATIONS(STANDIN_DECLARE)
#undef STANDIN_DECLARE
