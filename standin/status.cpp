#include "status.h"

#include <algorithm>
#include <array>

namespace standin {
namespace {

struct Entry {
  std::uint16_t code;
  std::string_view words;
};

#define STANDIN_ENTRY(name, code, words) Entry{code, words},
constexpr std::array entries{STANDIN_STATUSES(STANDIN_ENTRY)};
#undef STANDIN_ENTRY

}  // namespace

std::string_view wordsOf(std::uint16_t code) {
  const auto* entry =
      std::find_if(entries.begin(), entries.end(), [code](Entry e) { return e.code == code; });
  return entry == entries.end() ? std::string_view() : entry->words;
}

}  // namespace standin
