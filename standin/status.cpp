#include "standin/status.h"

#include <array>
#include <cstdio>

namespace standin {
namespace {

struct KeptWords {
  Status status = Status::success;
  std::string words;
};

KeptWords kept;

}  // namespace

void keepWords(Failure& failure) noexcept {
  std::string words = failure.takeWords();
  if (words.empty()) return;
  kept.status = failure.status();
  kept.words.swap(words);
}

std::string wordsForCaller(STATUS status) {
  const unsigned code = status & static_cast<unsigned>(NOTES_ERROR_MASK);
  if (code == static_cast<STATUS>(kept.status) && !kept.words.empty()) return kept.words;
  const std::string_view words = store::wordsOf(static_cast<STATUS>(code));
  if (!words.empty()) return std::string(words);
  std::array<char, 8> digits{};
  const int length = std::snprintf(digits.data(), digits.size(), "%04X", code);
  return "Unknown status 0x" + std::string(digits.data(), static_cast<std::size_t>(length));
}

}  // namespace standin
