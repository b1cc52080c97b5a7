// The values that formulas compare.
//
// A value stands for any number of scalars: a constant for one, a text list for each of its
// entries. Nothing is copied to compare them.
#pragma once

#include <optional>
#include <string>
#include <variant>

#include "standin/text_index.h"
#include "store/note.h"

namespace standin {

struct Field {
  std::string name;
};

/// A side of a comparison. Of the functions around it only the outermost counts: each sets the case
/// of all letters.
struct FormulaValue {
  std::variant<std::string, double, Field> source;
  store::LetterCase letters = store::LetterCase::asItIs;
};

/// True if a scalar of one side equals one of the other. Scalars of different types never do.
bool haveOneInCommon(const FormulaValue& left, const FormulaValue& right, const store::Note& note);

/// The same as a condition that an index answers, if one side is a field and the other a text.
std::optional<TextCondition> textCondition(const FormulaValue& left, const FormulaValue& right);

}  // namespace standin
