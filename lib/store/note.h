// A note: its id, the profile it is if it is one, and its items in their order.
//
// A note is a value and knows nothing of a file. The names of items compare without regard to the
// case of ASCII letters; of one name there is one item.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "store/moment.h"

namespace store {

using TextList = std::vector<std::string>;
using ItemValue = std::variant<std::string, TextList, double, Moment>;

/// The entries of a text list, or the text; an empty one for null, which stands for an absent item.
std::span<const std::string> textsOf(const ItemValue* value);

struct Item {
  std::string name;
  ItemValue value;
};

/// What a profile note is known by; compares like the names of items.
struct ProfileName {
  std::string profile;  // never empty
  std::string user;     // empty for a profile that all users share

  /// The same for names that are equal.
  std::pair<std::string, std::string> key() const;
};

struct Note {
  std::uint32_t id = 0;  // 0 until the note is in a database
  std::optional<ProfileName> profile;
  std::vector<Item> items;

  /// The value of an item, or null if there is none.
  const ItemValue* find(std::string_view name) const;

  /// Replaces the value of an item, which keeps its place, or appends a new one.
  void set(std::string_view name, ItemValue value);
};

}  // namespace store
