#include "notes/formula_search.h"

#include <exception>
#include <stdexcept>
#include <utility>

#include "notes/api.h"
#include "notes/library_text.h"

namespace notes {
namespace {

using DominoApiTools::DominoApiError;

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

}  // namespace

FormulaSearch::FormulaSearch(std::string databaseName, std::string formula)
    : databaseName_(std::move(databaseName)), formula_(std::move(formula)) {}

void FormulaSearch::search() {
  try {
    NsfDbConnection connection(databaseName_);
    searchNotes<DominoApiError>(connection, formula_, AfterSearch::keep, u"Search failed",
                                [this](NOTEID id) { noteIds_.push_back(id); });
    connection.close();
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

STATUS CompiledFormula::compile(const std::string& formula) {
  WORD unused = 0;
  return NSFFormulaCompile(nullptr, 0, formula.c_str(), lengthOf(formula), &handle_, &unused,
                           &unused, &unused, &unused, &unused, &unused);
}

void CompiledFormula::free() {
  if (std::exchange(isOwned_, false)) OSMemFree(handle_);
}

STATUS searchNotes(const NsfDbConnection& connection, const CompiledFormula& formula,
                   const char* viewTitle, const std::function<STATUS(NOTEID)>& visit) {
  Visitor visitor{visit, nullptr};
  const STATUS status = NSFSearch(connection.handle(), formula.handle(), viewTitle, 0,
                                  NOTE_CLASS_DATA, nullptr, visitMatch, &visitor, nullptr);
  if (visitor.failure) std::rethrow_exception(visitor.failure);
  return status;
}

}  // namespace notes
