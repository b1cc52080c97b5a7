#include "base/text.h"

#include <algorithm>
#include <utility>

#include "replay/detail/leading_integer.h"
#include "replay/unicode.h"

namespace base {
namespace {

constexpr replay::unicode::codepage utf7 = 65000;

// Wide characters in the fixed buffer of toWideFromLocal, its closing zero included. The buffers of
// the Notes library are no longer than that.
constexpr std::size_t localBufferSize = 1024;

std::u16string widened(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

template <typename Unit>
std::basic_string<Unit> joinedParts(std::initializer_list<std::basic_string_view<Unit>> parts) {
  std::size_t size = 0;
  for (const auto part : parts) size += part.size();
  std::basic_string<Unit> text;
  text.reserve(size);
  for (const auto part : parts) text.append(part);
  return text;
}

}  // namespace

std::u16string toWideFromUtf7(std::string_view text) {
  return replay::unicode::to_wide(text, utf7);
}

std::u16string toWideFromUtf8(std::string_view text) {
  return replay::unicode::to_wide(text, replay::unicode::utf8);
}

std::u16string toWideFromLocal(const char* text) {
  return replay::unicode::to_wide(std::string_view(text).substr(0, localBufferSize - 1),
                                  replay::unicode::ascii);
}

std::string toUtf8(std::u16string_view text) {
  return replay::unicode::to_narrow(text, replay::unicode::utf8, true);
}

std::string joined(std::initializer_list<std::string_view> parts) { return joinedParts(parts); }

std::u16string joined(std::initializer_list<std::u16string_view> parts) {
  return joinedParts(parts);
}

std::u16string newLine(unsigned tabs) { return u"\n" + std::u16string(tabs, u'\t'); }

std::u16string numberToText(std::uint32_t number) { return widened(std::to_string(number)); }

std::u16string numberToText(std::int32_t number) { return widened(std::to_string(number)); }

std::optional<std::int32_t> leadingInteger(std::u16string_view text) {
  const std::optional<std::int64_t> integer = replay::leading_integer(text);
  if (!integer.has_value() || !std::in_range<std::int32_t>(*integer)) return std::nullopt;
  return static_cast<std::int32_t>(*integer);
}

}  // namespace base
