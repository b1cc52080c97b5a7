#include "base/text.h"

#include "replay/unicode.h"

namespace base {
namespace {

constexpr replay::unicode::codepage utf7 = 65000;
constexpr replay::unicode::codepage utf8 = 65001;

// Wide characters in the fixed buffer of toWideFromLocal, its closing zero included. The buffers of
// the Notes library are no longer than that.
constexpr std::size_t localBufferSize = 1024;

}  // namespace

std::u16string toWideFromUtf7(std::string_view text) {
  return replay::unicode::to_wide(text, utf7);
}

std::u16string toWideFromUtf8(std::string_view text) {
  return replay::unicode::to_wide(text, utf8);
}

std::u16string toWideFromLocal(const char* text) {
  return replay::unicode::to_wide(std::string_view(text).substr(0, localBufferSize - 1),
                                  replay::unicode::ascii);
}

std::string toStrictUtf8(std::u16string_view text) {
  return replay::unicode::to_narrow(text, utf8, true);
}

std::u16string numberToText(std::uint32_t number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

}  // namespace base
