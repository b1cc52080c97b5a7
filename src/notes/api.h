// The Notes library as a table of functions.
//
// The driver fills `api` from the loaded library; from then on code of this namespace calls an
// operation by its bare name. Tests fill the table with fakes and replace single members to make
// one call fail.
#pragma once

#include "notes/abi.h"

namespace notes {

struct NotesApi {
#define NOTES_MEMBER(result, name, arguments) result(NOTES_CALL* name) arguments;
  NOTES_OPERATIONS(NOTES_MEMBER)
#undef NOTES_MEMBER
};

inline NotesApi api{};

#define NOTES_REFERENCE(result, name, arguments) inline decltype(api.name)& name = api.name;
NOTES_OPERATIONS(NOTES_REFERENCE)
#undef NOTES_REFERENCE

/// Loads the Notes library `name` from the current directory and fills `api`. False, with `api` as
/// it was, if the library cannot be loaded or lacks one of the operations. The library stays
/// loaded.
bool loadNotesLibrary(const char* name);

}  // namespace notes
