// Selection formulas: which notes of a database a search delivers.
//
// The library knows a part of the formula language, and refuses to compile whatever is not in it: a
// formula that is understood only half would be answered with a wrong set of notes. README.md says
// what the part is. A compiled formula is a function that can be called for any note and fails for
// none.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "note.h"
#include "status.h"

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

/// True for the notes that a search delivers.
using Formula = std::function<bool(const Note&)>;

/// Throws FormulaFailure.
Formula compileFormula(std::string_view text);

}  // namespace standin
