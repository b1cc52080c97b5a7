#include "base/line_bytes.h"

#include <algorithm>
#include <cstdint>

namespace base {
namespace {

bool isLineFeed(char16_t unit) { return unit == u'\n'; }

struct Contents {
  char16_t bits = 0;  // that are set in any unit
  std::size_t lineFeeds = 0;
};

// Without a way out, and in pieces for which a counter of 16 bits suffices, so that the compiler
// makes it take many units at a time.
Contents contentsOf(std::u16string_view text) {
  constexpr std::size_t pieceSize = 0x8000;
  Contents contents;
  for (; !text.empty(); text.remove_prefix(std::min(text.size(), pieceSize))) {
    std::uint16_t lineFeeds = 0;
    for (const char16_t unit : text.substr(0, pieceSize)) {
      contents.bits |= unit;
      lineFeeds = static_cast<std::uint16_t>(lineFeeds + (isLineFeed(unit) ? 1 : 0));
    }
    contents.lineFeeds += lineFeeds;
  }
  return contents;
}

bool isBeyondLatin1(char16_t unit) { return unit > 0xFF; }

// Both give the end of what they wrote. This one takes a unit at a time and has no branch.
char* putUnits(std::u16string_view text, char* out) {
  for (const char16_t unit : text) {
    *out = '\r';
    out += isLineFeed(unit) ? 1 : 0;
    *out++ = static_cast<char>(unit);
  }
  return out;
}

// Most blocks hold no line feed and are narrowed at once.
char* putText(std::u16string_view text, char* out) {
  constexpr std::size_t blockSize = 16;
  for (; text.size() >= blockSize; text.remove_prefix(blockSize)) {
    const char16_t* const units = text.data();
    int lineFeeds = 0;
    for (std::size_t i = 0; i < blockSize; ++i) {
      out[i] = static_cast<char>(units[i]);
      lineFeeds |= isLineFeed(units[i]) ? 1 : 0;
    }
    out = lineFeeds == 0 ? out + blockSize : putUnits({units, blockSize}, out);
  }
  return putUnits(text, out);
}

}  // namespace

void LineBytes::clear() {
  size_ = 0;
  isCut_ = false;
}

void LineBytes::append(std::u16string_view text) {
  if (isCut_) return;
  Contents contents = contentsOf(text);
  isCut_ = isBeyondLatin1(contents.bits);
  if (isCut_) {
    text = {text.begin(), std::ranges::find_if(text, isBeyondLatin1)};
    contents = contentsOf(text);
  }
  const std::size_t newSize = size_ + text.size() + contents.lineFeeds;
  if (buffer_.size() < newSize) buffer_.resize(newSize);
  putText(text, buffer_.data() + size_);
  size_ = newSize;
}

}  // namespace base
