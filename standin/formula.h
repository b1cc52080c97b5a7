// Selection formulas: which notes of a database a search delivers.
//
// The library knows a part of the formula language, and refuses to compile whatever is not in it: a
// formula that is understood only half would be answered with a wrong set of notes. README.md says
// what the part is. A compiled formula can be asked for any note and fails for none.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

#include "standin/status.h"
#include "standin/text_index.h"
#include "store/note.h"

namespace standin {

/// Why and where a formula cannot be compiled. The place counts bytes from 0.
class FormulaFailure : public Failure {
 public:
  FormulaFailure(Status status, std::size_t offset, std::size_t length)
      : Failure(status), offset_(offset), length_(length) {}

  std::size_t offset() const { return offset_; }
  std::size_t length() const { return length_; }

 private:
  std::size_t offset_;
  std::size_t length_;
};

struct Formula {
  /// True for the notes that a search delivers.
  std::function<bool(const store::Note&)> selects;

  /// Conditions that are true for all of these, and perhaps for others: an index answers them.
  std::vector<TextCondition> conditions;
};

/// Throws FormulaFailure.
Formula compileFormula(std::string_view text);

}  // namespace standin
