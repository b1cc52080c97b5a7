#include "store/note.h"

#include <algorithm>

#include "store/letters.h"

namespace store {
namespace {

template <typename Items>
auto findItem(Items& items, std::string_view name) {
  return std::find_if(items.begin(), items.end(),
                      [name](const Item& item) { return equalNames(item.name, name); });
}

}  // namespace

std::span<const std::string> textsOf(const ItemValue* value) {
  static const std::string empty;
  if (value == nullptr) return {&empty, 1};
  if (const auto* entries = std::get_if<TextList>(value)) return *entries;
  const auto* text = std::get_if<std::string>(value);
  return {text, text == nullptr ? std::size_t{0} : 1};
}

std::pair<std::string, std::string> ProfileName::key() const {
  return {lowered(profile), lowered(user)};
}

const ItemValue* Note::find(std::string_view name) const {
  const auto found = findItem(items, name);
  return found == items.end() ? nullptr : &found->value;
}

void Note::set(std::string_view name, ItemValue value) {
  const auto found = findItem(items, name);
  if (found == items.end())
    items.push_back({std::string(name), std::move(value)});
  else
    found->value = std::move(value);
}

}  // namespace store
