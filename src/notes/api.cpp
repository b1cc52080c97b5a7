#include "notes/api.h"

#include "platform/library.h"

namespace notes {
namespace {

template <typename Operation>
bool findOperation(void* library, const char* name, Operation& operation) {
  operation = reinterpret_cast<Operation>(platform::findFunction(library, name));
  return operation != nullptr;
}

}  // namespace

bool loadNotesLibrary(const char* name) {
  void* const library = platform::loadLibrary(name);
  if (library == nullptr) return false;
  NotesApi loaded{};
  bool complete = true;
#define NOTES_FIND(result, operation, arguments) \
  complete &= findOperation(library, #operation, loaded.operation);
  NOTES_OPERATIONS(NOTES_FIND)
#undef NOTES_FIND
  if (complete) api = loaded;
  return complete;
}

}  // namespace notes
