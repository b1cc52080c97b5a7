// The values that formulas compare.
//
// A value stands for any number of scalars: a constant for one, a text list for each of its
// entries.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "note.h"

namespace standin {

using Scalar = std::variant<std::string, double, Moment>;
using Scalars = std::vector<Scalar>;

/// A side of a comparison, to be asked for each note.
using FormulaValue = std::function<Scalars(const Note&)>;

FormulaValue constantValue(Scalar scalar);

/// An absent field stands for an empty text.
FormulaValue fieldValue(std::string_view name);

/// The argument with each of its texts put through `fold`.
FormulaValue foldedValue(FormulaValue argument, std::string (*fold)(std::string_view));

/// True if a scalar of one side equals one of the other. Scalars of different types never do.
bool haveOneInCommon(const Scalars& left, const Scalars& right);

}  // namespace standin
