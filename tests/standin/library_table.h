/* The operations of the stand-in library as the tests call them, in C as well as in C++. */
#ifndef STANDIN_LIBRARY_TABLE_H
#define STANDIN_LIBRARY_TABLE_H

#include "notes/abi.h"

struct LibraryTable {
#define LIBRARY_MEMBER(result, name, arguments) result(NOTES_CALL* name) arguments;
  NOTES_OPERATIONS(LIBRARY_MEMBER)
#undef LIBRARY_MEMBER
};

/* A small run in C. Returns the line of the first expectation that failed, or 0. */
typedef int RunFromC(const struct LibraryTable* library, int argc, char** argv);

#endif
