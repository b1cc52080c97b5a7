/* A caller in C: the interface must stay one that C can call. */
#include <string.h>

#include "library_table.h"

#define EXPECT(condition) \
  if (!(condition)) return __LINE__

static STATUS NOTES_CALL countMatch(void* context, SEARCH_MATCH* match, void* summary) {
  *(DWORD*)context += match->ID.NoteID;
  return summary == NULL;
}

RunFromC runFromC;

int runFromC(const struct LibraryTable* library, int argc, char** argv) {
  const TFMT format = {4, 0, 0, 2};
  char text[] = "02.01.2012 03:04:05";
  char* rest = text;
  INTLFORMAT settings;
  TIME time;
  DWORD matches = 0;
  EXPECT(library->NotesInitExtended(argc, argv) == 0);
  library->OSGetIntlSettings(&settings, sizeof settings);
  EXPECT(library->ConvertTextToTIMEDATE(&settings, &format, &rest, 80, &time.GM) == 0);
  EXPECT(!library->TimeGMToLocal(&time) && time.day == 2 && time.month == 1);
  EXPECT(library->NSFSearch(0, 0, NULL, 0, NOTE_CLASS_DATA, NULL, countMatch, &matches, NULL) != 0);
  EXPECT(library->OSPathNetConstruct(NULL, NULL, "names.nsf", text) == 0);
  EXPECT(strcmp(text, "names.nsf") == 0);
  library->NotesTerm();
  return 0;
}
