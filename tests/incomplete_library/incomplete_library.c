#include "notes/abi.h"

/* The last operation goes by another name; nobody calls the others, so that they need no body. */
#define NAMEGetAddressBooks SomethingElse
#define EXPORTED(result, name, arguments) char name = 0;
NOTES_OPERATIONS(EXPORTED)
