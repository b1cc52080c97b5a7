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

// Narrows the text so that it ends where it is to end at last, and then moves each of its lines
// forward to make room for a carriage return: two passes, each of which takes many bytes at a time.
void putText(std::u16string_view text, std::size_t lineFeeds, char* out) {
  char* const narrowed = out + lineFeeds;
  std::ranges::transform(text, narrowed, [](char16_t unit) { return static_cast<char>(unit); });
  std::string_view rest(narrowed, text.size());
  for (auto size = rest.find('\n'); size != std::string_view::npos; size = rest.find('\n')) {
    out = std::copy_n(rest.data(), size, out);
    *out++ = '\r';
    *out++ = '\n';
    rest.remove_prefix(size + 1);
  }
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
  putText(text, contents.lineFeeds, buffer_.data() + size_);
  size_ = newSize;
}

}  // namespace base
