#include "platform/code_pages.h"

#include <algorithm>

#include "platform/posix/code_pages/bounded_output.h"
#include "platform/posix/code_pages/iconv_pages.h"
#include "platform/posix/code_pages/page_data.h"
#include "platform/posix/code_pages/utf7.h"
#include "platform/posix/code_pages/utf8.h"

namespace platform {
namespace {

constexpr std::uint32_t utf7Page = 65000;
constexpr std::uint32_t utf8Page = 65001;

const SingleBytePage* findSingleBytePage(std::uint32_t page) {
  if (page == 0 || page == 1252) return &windows1252;
  return page == 28591 ? &latin1 : nullptr;
}

bool isControl(char16_t unit) { return unit >= 0x80 && unit < 0xA0; }

// The byte of a unit, or -1 if the page has none that is or looks like it.
int singleByte(const SingleBytePage& page, char16_t unit) {
  if (unit < 0x100 && !isControl(unit)) return unit;
  const auto range = std::ranges::lower_bound(page.encoded, unit, {}, &UnitRange::last);
  if (range == page.encoded.end() || range->first > unit) return -1;
  return range->byte + (unit - range->first);
}

Conversion encodeSingleBytes(const SingleBytePage& page, std::u16string_view text,
                             std::span<char> buffer, bool& usedDefault) {
  BoundedOutput<char> out(buffer);
  while (!text.empty()) {
    if (text.front() < 0x80) {
      text.remove_prefix(out.putAscii(text));
      continue;
    }
    const int byte = singleByte(page, text.front());
    out.put(byte < 0 ? '?' : byte);
    usedDefault = usedDefault || byte < 0;
    text.remove_prefix(1);
  }
  return out.result();
}

Conversion decodeSingleBytes(const SingleBytePage& page, std::string_view text,
                             std::span<char16_t> buffer) {
  BoundedOutput<char16_t> out(buffer);
  while (!text.empty()) {
    const auto byte = static_cast<unsigned char>(text.front());
    if (byte < 0x80) {
      text.remove_prefix(out.putAscii(text));
      continue;
    }
    out.put(isControl(byte) ? page.controls[byte - 0x80U] : byte);
    text.remove_prefix(1);
  }
  return out.result();
}

Conversion encode(std::uint32_t page, std::u16string_view text, std::span<char> buffer,
                  bool& usedDefault) {
  if (page == utf8Page) return encodeUtf8(text, buffer, usedDefault);
  if (page == utf7Page) return encodeUtf7(text, buffer);
  if (const auto* singleBytePage = findSingleBytePage(page)) {
    return encodeSingleBytes(*singleBytePage, text, buffer, usedDefault);
  }
  return wideToIconv(page, text, buffer, usedDefault);
}

// What a call refuses for any page, so that each converter has something to write and room for it.
std::uint32_t refusal(std::size_t textLength, std::size_t bufferLength) {
  if (textLength == 0) return errorInvalidParameter;
  return bufferLength == 0 ? errorInsufficientBuffer : 0;
}

}  // namespace

std::size_t maximumCharacterSize(std::uint32_t page) {
  if (page == utf7Page) return 5;
  if (page == utf8Page) return 4;
  return findSingleBytePage(page) != nullptr ? 1 : iconvCharacterSize(page);
}

Conversion wideToNarrow(std::uint32_t page, std::u16string_view text, std::span<char> buffer,
                        bool* usedDefault) {
  if (const auto error = refusal(text.size(), buffer.size()); error != 0) return {0, error};
  if (page == utf7Page && usedDefault != nullptr) return {0, errorInvalidParameter};
  bool replaced = false;
  const Conversion result = encode(page, text, buffer, replaced);
  if (usedDefault != nullptr && replaced) *usedDefault = true;
  return result;
}

Conversion narrowToWide(std::uint32_t page, bool strict, std::string_view text,
                        std::span<char16_t> buffer) {
  if (const auto error = refusal(text.size(), buffer.size()); error != 0) return {0, error};
  if (page == utf8Page) return decodeUtf8(text, strict, buffer);
  if (page == utf7Page) {
    return strict ? Conversion{0, errorInvalidFlags} : decodeUtf7(text, buffer);
  }
  if (const auto* singleBytePage = findSingleBytePage(page)) {
    return decodeSingleBytes(*singleBytePage, text, buffer);
  }
  return iconvToWide(page, strict, text, buffer);
}

std::string wideToUtf8(std::u16string_view text) {
  std::string utf8(text.size() * 3, '\0');  // a unit is three bytes at most, a pair of them four
  bool replaced = false;
  utf8.resize(encodeUtf8(text, utf8, replaced).length);
  return utf8;
}

}  // namespace platform
