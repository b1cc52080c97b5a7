#include "formula_values.h"

#include <algorithm>
#include <utility>

namespace standin {
namespace {

Scalars scalarsOf(const ItemValue* value) {
  if (value == nullptr) return {std::string()};
  if (const auto* entries = std::get_if<TextList>(value)) return {entries->begin(), entries->end()};
  if (const auto* text = std::get_if<std::string>(value)) return {*text};
  if (const auto* number = std::get_if<double>(value)) return {*number};
  return {std::get<Moment>(*value)};
}

}  // namespace

FormulaValue constantValue(Scalar scalar) {
  return [scalars = Scalars{std::move(scalar)}](const Note&) { return scalars; };
}

FormulaValue fieldValue(std::string_view name) {
  return [name = std::string(name)](const Note& note) { return scalarsOf(note.find(name)); };
}

FormulaValue foldedValue(FormulaValue argument, std::string (*fold)(std::string_view)) {
  return [argument = std::move(argument), fold](const Note& note) {
    Scalars scalars = argument(note);
    for (Scalar& scalar : scalars)
      if (auto* text = std::get_if<std::string>(&scalar)) *text = fold(*text);
    return scalars;
  };
}

bool haveOneInCommon(const Scalars& left, const Scalars& right) {
  return std::any_of(left.begin(), left.end(), [&right](const Scalar& scalar) {
    return std::find(right.begin(), right.end(), scalar) != right.end();
  });
}

}  // namespace standin
