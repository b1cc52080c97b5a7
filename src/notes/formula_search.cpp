#include "notes/formula_search.h"

#include <exception>
#include <stdexcept>
#include <utility>

#include "notes/api.h"
#include "notes/domino_api_tools.h"
#include "notes/library_text.h"
#include "notes/nsf_db_connection.h"

namespace notes {
namespace {

using DominoApiTools::DominoApiError;
using DominoApiTools::errorText;

// Any status that is not 0 ends a search.
constexpr STATUS endOfSearch = 1;

struct Visitor {
  const std::function<STATUS(NOTEID)>& visit;
  std::exception_ptr failure;
};

// No exception crosses a frame of the library. One that calls on after a failure gets the same
// answer again.
STATUS NOTES_CALL visitMatch(void* context, SEARCH_MATCH* match, void* /*summary*/) {
  auto& visitor = *static_cast<Visitor*>(context);
  if (visitor.failure) return endOfSearch;
  try {
    return visitor.visit(match->ID.NoteID);
  } catch (...) {
    visitor.failure = std::current_exception();
    return endOfSearch;
  }
}

void collectNoteIds(const std::string& databaseName, const std::string& formula,
                    std::vector<NOTEID>& noteIds) {
  NsfDbConnection connection(databaseName);
  // The compiled formula is not freed: it stays with the library until the end of its use.
  FORMULAHANDLE compiled = 0;
  STATUS status = compileFormula(formula, compiled);
  if (status != 0) {
    throw DominoApiError(u"Could not compile searchFormula: " + errorText(status));
  }
  status = searchNotes(connection.handle(), compiled, nullptr, [&noteIds](NOTEID id) {
    noteIds.push_back(id);
    return 0;
  });
  if (status != 0) throw DominoApiError(u"Search failed" + errorText(status));
  connection.close();
}

}  // namespace

FormulaSearch::FormulaSearch(std::string databaseName, std::string formula)
    : databaseName_(std::move(databaseName)), formula_(std::move(formula)) {}

void FormulaSearch::search() {
  try {
    collectNoteIds(databaseName_, formula_, noteIds_);
  } catch (const DominoApiError& error) {
    throw FormulaSearchError(error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw FormulaSearchError(error.message());
  }
}

NOTEID FormulaSearch::noteId(std::size_t index) const {
  if (index >= noteIds_.size()) throw std::out_of_range("invalid vector<T> subscript");
  return noteIds_[index];
}

STATUS compileFormula(const std::string& formula, FORMULAHANDLE& handle) {
  WORD unused = 0;
  return NSFFormulaCompile(nullptr, 0, formula.c_str(), lengthOf(formula), &handle, &unused,
                           &unused, &unused, &unused, &unused, &unused);
}

void OwnedFormula::free() {
  if (!std::exchange(isFreed_, true)) OSMemFree(handle_);
}

STATUS searchNotes(DBHANDLE db, FORMULAHANDLE formula, const char* viewTitle,
                   const std::function<STATUS(NOTEID)>& visit) {
  Visitor visitor{visit, nullptr};
  const STATUS status =
      NSFSearch(db, formula, viewTitle, 0, NOTE_CLASS_DATA, nullptr, visitMatch, &visitor, nullptr);
  if (visitor.failure) std::rethrow_exception(visitor.failure);
  return status;
}

}  // namespace notes
