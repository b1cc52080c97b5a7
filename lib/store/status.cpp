#include "store/status.h"

#include <algorithm>
#include <array>

namespace store {
namespace {

struct Entry {
  std::uint16_t code;
  std::string_view words;
};

#define STORE_ENTRY(name, code, words) Entry{code, words},
constexpr std::array entries{STORE_STATUSES(STORE_ENTRY)};
#undef STORE_ENTRY

}  // namespace

std::string_view wordsOf(std::uint16_t code) {
  const auto* entry =
      std::find_if(entries.begin(), entries.end(), [code](Entry e) { return e.code == code; });
  return entry == entries.end() ? std::string_view() : entry->words;
}

}  // namespace store
