// The tables by which the active configuration turns its stored keys into numbers and names.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace configuration {

template <typename Key, typename Value>
using DecodingTable = std::map<Key, Value>;

struct DecodingTables {
  DecodingTable<std::u16string, std::int32_t> thresholdNumbers;
  DecodingTable<std::u16string, std::int32_t> languageCodes;
  DecodingTable<std::int32_t, std::u16string> languageNames;
  DecodingTable<std::u16string, std::int32_t> logLevelNumbers;
  DecodingTable<std::int32_t, std::u16string> logLevelNames;
  DecodingTable<std::u16string, std::u16string> thresholdNames;
  DecodingTable<std::u16string, std::u16string> dayNamesByKey;
  DecodingTable<std::u16string, std::u16string> dayKeysByName;
  DecodingTable<std::u16string, std::int32_t> dayNumbers;
  DecodingTable<std::int32_t, std::u16string> dayNames;
  DecodingTable<std::int32_t, std::u16string> componentNames;
  DecodingTable<std::u16string, std::int32_t> componentNumbers;  // by name
  DecodingTable<std::u16string, std::int32_t> componentKeys;

  /// Enters all that decoding_data.h knows.
  void fill();
};

/// What `key` stands for: zero or an empty text where the table does not have it, which is
/// remembered in the table.
template <typename Key, typename Value>
const Value& lookUp(DecodingTable<Key, Value>& table, const Key& key) {
  return table[key];
}

}  // namespace configuration
