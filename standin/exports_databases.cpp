// Databases, formulas and searches: refused, since this build holds no documents.
#include "exports.h"
#include "no_documents.h"

using namespace standin;

STATUS NOTES_CALL NSFDbOpen(const char*, DBHANDLE*) { return refuse(); }

STATUS NOTES_CALL NSFDbOpenExtended(const char*, WORD, HANDLE, TIMEDATE*, DBHANDLE*, TIMEDATE*,
                                    TIMEDATE*) {
  return refuse();
}

STATUS NOTES_CALL NSFDbClose(DBHANDLE) { return refuse(); }

STATUS NOTES_CALL NSFDbInfoGet(DBHANDLE, char*) { return refuse(); }

void NOTES_CALL NSFDbInfoParse(char*, WORD, char*, WORD) {}

STATUS NOTES_CALL NSFDbReplicaInfoGet(DBHANDLE, DBREPLICAINFO*) { return refuse(); }

STATUS NOTES_CALL NSFFormulaCompile(const char*, WORD, const char*, WORD, FORMULAHANDLE*, WORD*,
                                    STATUS*, WORD*, WORD*, WORD*, WORD*) {
  return refuse();
}

STATUS NOTES_CALL NSFSearch(DBHANDLE, FORMULAHANDLE, const char*, WORD, WORD, TIMEDATE*,
                            NSFSEARCHPROC, void*, TIMEDATE*) {
  return refuse();
}
