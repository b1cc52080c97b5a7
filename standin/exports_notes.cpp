// Notes and their items: refused, since this build holds no documents.
#include "exports.h"
#include "no_documents.h"

using namespace standin;

STATUS NOTES_CALL NSFNoteCreate(DBHANDLE, NOTEHANDLE*) { return refuse(); }

STATUS NOTES_CALL NSFNoteOpen(DBHANDLE, NOTEID, WORD, NOTEHANDLE*) { return refuse(); }

STATUS NOTES_CALL NSFNoteUpdate(NOTEHANDLE, WORD) { return refuse(); }

STATUS NOTES_CALL NSFNoteClose(NOTEHANDLE) { return refuse(); }

STATUS NOTES_CALL NSFProfileOpen(DBHANDLE, const char*, WORD, const char*, WORD, BOOL,
                                 NOTEHANDLE*) {
  return refuse();
}

STATUS NOTES_CALL NSFProfileUpdate(NOTEHANDLE, const char*, WORD, const char*, WORD) {
  return refuse();
}

STATUS NOTES_CALL NSFItemInfo(NOTEHANDLE, const char*, WORD, void*, WORD*, void*, DWORD*) {
  return refuse();
}

WORD NOTES_CALL NSFItemGetText(NOTEHANDLE, const char*, char*, WORD) { return 0; }

WORD NOTES_CALL NSFItemGetTextListEntries(NOTEHANDLE, const char*) { return 0; }

WORD NOTES_CALL NSFItemGetTextListEntry(NOTEHANDLE, const char*, WORD, char*, WORD) { return 0; }

BOOL NOTES_CALL NSFItemGetTime(NOTEHANDLE, const char*, TIMEDATE*) { return 0; }

BOOL NOTES_CALL NSFItemGetNumber(NOTEHANDLE, const char*, NUMBER*) { return 0; }

WORD NOTES_CALL NSFItemConvertToText(NOTEHANDLE, const char*, char*, WORD, char) { return 0; }

STATUS NOTES_CALL NSFItemSetText(NOTEHANDLE, const char*, const char*, WORD) { return refuse(); }

STATUS NOTES_CALL NSFItemSetTime(NOTEHANDLE, const char*, const TIMEDATE*) { return refuse(); }

STATUS NOTES_CALL NSFItemSetNumber(NOTEHANDLE, const char*, const NUMBER*) { return refuse(); }
