// Selection of notes by formula.
//
// FormulaSearch keeps the ids of the matches. Searches that do their work while the library goes
// through the database use the functions below it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/error.h"
#include "notes/abi.h"
#include "notes/domino_api_tools.h"
#include "notes/nsf_db_connection.h"

namespace notes {

class FormulaSearch {
 public:
  class FormulaSearchError : public base::Error {
   public:
    using Error::Error;
  };

  FormulaSearch(std::string databaseName, std::string formula);

  /// Adds the ids of the data notes that match, in the order in which the library delivers them.
  /// Opens a connection of its own. Raises FormulaSearchError.
  void search();

  std::size_t count() const { return noteIds_.size(); }

  /// Raises std::out_of_range.
  NOTEID noteId(std::size_t index) const;

 private:
  std::string databaseName_;
  std::string formula_;
  std::vector<NOTEID> noteIds_;
};

/// Whether a compiled formula is given back at the end of its scope, also where compiling failed
/// because only the library knows what it keeps of one, or stays with the library until the end of
/// its use.
enum class AfterSearch { free, keep };

/// A compiled formula.
class CompiledFormula {
 public:
  explicit CompiledFormula(AfterSearch after) : isOwned_(after == AfterSearch::free) {}
  CompiledFormula(const CompiledFormula&) = delete;
  CompiledFormula& operator=(const CompiledFormula&) = delete;
  ~CompiledFormula() { free(); }

  /// Gives the library's status.
  STATUS compile(const std::string& formula);

  /// Gives it back before the end of its scope, if it is to be.
  void free();

  FORMULAHANDLE handle() const { return handle_; }

 private:
  FORMULAHANDLE handle_ = 0;
  bool isOwned_;
};

/// Calls `visit` with the id of each data note that matches; `viewTitle` may be null. A result of
/// `visit` other than 0 ends the search, and so does an exception, which goes on to the caller once
/// the library has returned; otherwise the result is the library's status.
STATUS searchNotes(const NsfDbConnection& connection, const CompiledFormula& formula,
                   const char* viewTitle, const std::function<STATUS(NOTEID)>& visit);

/// Compiles a formula and calls `visit` with the id of each data note that matches. Raises a
/// `Failure` with the library's words behind a prefix; that of a failed search is `searchFailed`.
template <typename Failure>
void searchNotes(const NsfDbConnection& connection, const std::string& formula, AfterSearch after,
                 const char16_t* searchFailed, const std::function<void(NOTEID)>& visit) {
  CompiledFormula compiled(after);
  if (const STATUS status = compiled.compile(formula); status != 0)
    throw Failure(u"Could not compile searchFormula: " + DominoApiTools::errorText(status));
  const STATUS status = searchNotes(connection, compiled, nullptr, [&visit](NOTEID id) {
    visit(id);
    return 0;
  });
  if (status != 0) throw Failure(searchFailed + DominoApiTools::errorText(status));
}

}  // namespace notes
