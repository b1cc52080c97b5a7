#include "standin/formula_values.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace standin {
namespace {

using Texts = std::span<const std::string>;
using Scalars = std::variant<Texts, double, store::Moment>;

Scalars scalarsOf(const FormulaValue& value, const store::Note& note) {
  if (const auto* text = std::get_if<std::string>(&value.source)) return Texts(text, 1);
  if (const auto* number = std::get_if<double>(&value.source)) return *number;
  const store::ItemValue* item = note.find(std::get<Field>(value.source).name);
  if (const auto* number = std::get_if<double>(item)) return *number;
  if (const auto* moment = std::get_if<store::Moment>(item)) return *moment;
  return store::textsOf(item);
}

bool areEqual(std::string_view left, store::LetterCase ofLeft, std::string_view right,
              store::LetterCase ofRight) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [=](char one, char other) {
                      return store::folded(one, ofLeft) == store::folded(other, ofRight);
                    });
}

}  // namespace

bool haveOneInCommon(const FormulaValue& left, const FormulaValue& right, const store::Note& note) {
  const Scalars ofLeft = scalarsOf(left, note);
  const Scalars ofRight = scalarsOf(right, note);
  if (ofLeft.index() != ofRight.index()) return false;
  if (const auto* number = std::get_if<double>(&ofLeft))
    return *number == std::get<double>(ofRight);
  if (const auto* moment = std::get_if<store::Moment>(&ofLeft))
    return *moment == std::get<store::Moment>(ofRight);
  const Texts others = std::get<Texts>(ofRight);
  return std::ranges::any_of(std::get<Texts>(ofLeft), [&](const std::string& one) {
    return std::ranges::any_of(others, [&](const std::string& other) {
      return areEqual(one, left.letters, other, right.letters);
    });
  });
}

std::optional<TextCondition> textCondition(const FormulaValue& left, const FormulaValue& right) {
  const auto* field = std::get_if<Field>(&left.source);
  const auto* text = std::get_if<std::string>(&right.source);
  if (field != nullptr && text != nullptr)
    return TextCondition{store::lowered(field->name), left.letters,
                         store::folded(*text, right.letters)};
  if (std::holds_alternative<Field>(right.source) &&
      std::holds_alternative<std::string>(left.source))
    return textCondition(right, left);
  return std::nullopt;
}

}  // namespace standin
