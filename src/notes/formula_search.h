// Selection of notes by formula.
//
// FormulaSearch is the reusable form: it keeps the ids of the matches. Searches that do their work
// while the library goes through the database use the two functions below it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/error.h"
#include "notes/abi.h"

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

/// Compiles a selection formula; gives the library's status. The caller frees the formula, or
/// leaves it to the end of the library's use.
STATUS compileFormula(const std::string& formula, FORMULAHANDLE& handle);

/// A place for a compiled formula that is freed at the end of its scope, also where compiling
/// failed: only the library knows what it keeps of one.
class OwnedFormula {
 public:
  OwnedFormula() = default;
  OwnedFormula(const OwnedFormula&) = delete;
  OwnedFormula& operator=(const OwnedFormula&) = delete;
  ~OwnedFormula() { free(); }

  /// Frees it before the end of its scope.
  void free();

  FORMULAHANDLE& handle() { return handle_; }

 private:
  FORMULAHANDLE handle_ = 0;
  bool isFreed_ = false;
};

/// Calls `visit` with the id of each data note that matches; `viewTitle` may be null. A result of
/// `visit` other than 0 ends the search, and so does an exception, which goes on to the caller once
/// the library has returned; otherwise the result is the library's status.
STATUS searchNotes(DBHANDLE db, FORMULAHANDLE formula, const char* viewTitle,
                   const std::function<STATUS(NOTEID)>& visit);

}  // namespace notes
