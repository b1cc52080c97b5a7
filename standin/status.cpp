#include "status.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace standin {
namespace {

struct Entry {
  STATUS code;
  std::string_view words;
};

#define STANDIN_ENTRY(name, code, words) Entry{code, words},
constexpr std::array entries{STANDIN_STATUSES(STANDIN_ENTRY)};
#undef STANDIN_ENTRY

struct KeptWords {
  Status status = Status::success;
  std::string words;
};

KeptWords kept;

std::string hexadecimal(unsigned code) {
  std::string digits;
  for (int shift = 12; shift >= 0; shift -= 4) digits += "0123456789ABCDEF"[(code >> shift) & 0xF];
  return digits;
}

}  // namespace

void keepWords(Failure& failure) noexcept {
  std::string words = failure.takeWords();
  if (words.empty()) return;
  kept.status = failure.status();
  kept.words.swap(words);
}

std::string wordsOf(STATUS status) {
  const unsigned code = status & static_cast<unsigned>(NOTES_ERROR_MASK);
  if (code == static_cast<STATUS>(kept.status) && !kept.words.empty()) return kept.words;
  const auto* entry =
      std::find_if(entries.begin(), entries.end(), [code](Entry e) { return e.code == code; });
  if (entry == entries.end()) return "Unknown status 0x" + hexadecimal(code);
  return std::string(entry->words);
}

}  // namespace standin
