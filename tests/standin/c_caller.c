/* The interface must stay one that C can declare. */
#include "notes/abi.h"

#define DECLARED(result, name, arguments) result NOTES_CALL name arguments;
NOTES_OPERATIONS(DECLARED)
