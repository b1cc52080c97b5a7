// Formulas and searches.
#include "standin/exports.h"
#include "standin/guard.h"
#include "standin/session.h"
#include "standin/time_date.h"

using namespace standin;

namespace {

SEARCH_MATCH matchOf(const store::Note& note, TIMEDATE replicaId) {
  SEARCH_MATCH match{};
  match.ID.File = replicaId;
  match.ID.NoteID = note.id;
  match.NoteClass = NOTE_CLASS_DATA;
  return match;
}

// A caller may leave out any result, and may pass one place for all.
void put(WORD* result, WORD value) {
  if (result != nullptr) *result = value;
}

// The callback may do anything, even end the session, so a search leans on copies alone.
STATUS search(const std::vector<SharedNote>& notes, TIMEDATE replicaId, NSFSEARCHPROC callback,
              void* context) {
  for (const SharedNote& note : notes) {
    SEARCH_MATCH match = matchOf(*note, replicaId);
    WORD emptySummary = 0;
    const STATUS status = callback(context, &match, &emptySummary);
    if (status != 0) return status;
  }
  return 0;
}

}  // namespace

STATUS NOTES_CALL NSFFormulaCompile(const char*, WORD, const char* formula, WORD formula_length,
                                    FORMULAHANDLE* handle, WORD* compiled_length, STATUS* error,
                                    WORD* line, WORD* column, WORD* offset, WORD* error_length) {
  const STATUS status = guard([&] {
    requireAll(formula, handle);
    *handle = session().formulas.add(compileFormula({formula, formula_length}));
    put(compiled_length, formula_length);
  });
  for (WORD* const place : {line, column, offset, error_length}) put(place, 0);
  put(error, status);
  return status;
}

STATUS NOTES_CALL NSFSearch(DBHANDLE db, FORMULAHANDLE formula, const char*, WORD flags,
                            WORD note_class, TIMEDATE* since, NSFSEARCHPROC callback, void* context,
                            TIMEDATE* until) {
  STATUS ofCallback = 0;
  const STATUS ofSearch = guard([&] {
    const Database& database = *session().databases.at(db);
    const Formula& compiled = session().formulas.at(formula);
    if (callback == nullptr) throw Failure(Status::missingArgument);
    if (flags != 0 || note_class != NOTE_CLASS_DATA || since != nullptr)
      throw Failure(Status::unknownSearch);
    const TIMEDATE begin = currentTime();
    ofCallback = search(database.notes().documents(compiled),
                        timeDateOfReplica(database.info().replicaId), callback, context);
    if (ofCallback == 0 && until != nullptr) *until = begin;
  });
  return ofSearch != 0 ? ofSearch : ofCallback;
}
