// Selection formulas: which notes of a database a search delivers.
//
// The library knows a part of the formula language, and refuses to compile whatever is not in it: a
// formula that is understood only half would be answered with a wrong set of notes. README.md says
// what the part is.
#pragma once

#include <string_view>
#include <vector>

#include "standin/text_index.h"

namespace standin {

/// Conditions that all have to be true of a note; none at all are true of every note.
using Formula = std::vector<TextCondition>;

/// Throws noSelect, unexpectedText, textNotClosed and formulaEnds.
Formula compileFormula(std::string_view text);

}  // namespace standin
