// Formulas and searches.
#include <algorithm>

#include "standin/exports.h"
#include "standin/guard.h"
#include "standin/session.h"
#include "standin/time_date.h"

using namespace standin;

namespace {

// What the results of a compilation say of its failure; all is 0 where there is none.
struct Report {
  STATUS error = 0;
  std::size_t line = 0, column = 0, offset = 0, length = 0;
};

Report reportOf(const FormulaFailure& failure, std::string_view formula) {
  const std::string_view before = formula.substr(0, failure.offset());
  const std::size_t lineBegin = before.rfind('\n') + 1;  // 0 on the first line
  Report report;
  report.error = static_cast<STATUS>(failure.status());
  report.line = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
  report.column = 1 + before.size() - lineBegin;
  report.offset = failure.offset();
  report.length = failure.length();
  return report;
}

// A caller may leave out any result, and may pass one place for all.
void put(WORD* result, std::size_t value) {
  if (result != nullptr) *result = static_cast<WORD>(value);
}

SEARCH_MATCH matchOf(const store::Note& note, TIMEDATE replicaId) {
  SEARCH_MATCH match{};
  match.ID.File = replicaId;
  match.ID.NoteID = note.id;
  match.NoteClass = NOTE_CLASS_DATA;
  return match;
}

// The callback may do anything, even end the session, so a search leans on copies alone.
STATUS search(const std::vector<SharedNote>& notes, const Formula& formula, TIMEDATE replicaId,
              NSFSEARCHPROC callback, void* context) {
  for (const SharedNote& note : notes) {
    if (!formula.selects(*note)) continue;
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
  return guard([&] {
    requireAll(formula, handle);
    const auto tell = [&](const Report& report) {
      put(error, report.error);
      put(line, report.line);
      put(column, report.column);
      put(offset, report.offset);
      put(error_length, report.length);
    };
    const std::string_view text(formula, formula_length);
    try {
      *handle = session().formulas.add(std::make_shared<const Formula>(compileFormula(text)));
    } catch (const FormulaFailure& failure) {
      tell(reportOf(failure, text));
      throw;
    }
    tell({});
    put(compiled_length, formula_length);
  });
}

STATUS NOTES_CALL NSFSearch(DBHANDLE db, FORMULAHANDLE formula, const char*, WORD flags,
                            WORD note_class, TIMEDATE* since, NSFSEARCHPROC callback, void* context,
                            TIMEDATE* until) {
  STATUS ofCallback = 0;
  const STATUS ofSearch = guard([&] {
    const Database& database = *session().databases.at(db);
    const std::shared_ptr<const Formula> compiled = session().formulas.at(formula);
    if (callback == nullptr) throw Failure(Status::missingArgument);
    if (flags != 0 || note_class != NOTE_CLASS_DATA || since != nullptr)
      throw Failure(Status::unknownSearch);
    const TIMEDATE begin = currentTime();
    ofCallback = search(database.notes().documents(compiled->conditions), *compiled,
                        timeDateOfReplica(database.info().replicaId), callback, context);
    if (ofCallback == 0 && until != nullptr) *until = begin;
  });
  return ofSearch != 0 ? ofSearch : ofCallback;
}
