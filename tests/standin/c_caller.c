/* A caller in C: the interface must stay one that C can call. */
#include "notes/abi.h"

struct Library {
#define LIBRARY_MEMBER(result, name, arguments) result(NOTES_CALL* name) arguments;
  NOTES_OPERATIONS(LIBRARY_MEMBER)
#undef LIBRARY_MEMBER
};

/* The length of the library's words for a status. */
int wordsLengthFromC(const struct Library* library, STATUS status);

int wordsLengthFromC(const struct Library* library, STATUS status) {
  char words[NOTES_ERROR_TEXT_SIZE];
  return library->OSLoadString(0, status, words, sizeof words);
}
