#include "platform/code_pages.h"

#include <windows.h>

#include <algorithm>
#include <climits>

namespace platform {
namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

// The error for arguments that mean something else to the system's calls: their lengths are of a
// type that ends earlier, and a buffer of no length is the question how much is needed.
std::uint32_t refusal(std::size_t textLength, std::size_t bufferLength) {
  if (textLength == 0 || textLength > INT_MAX) return errorInvalidParameter;
  return bufferLength == 0 ? errorInsufficientBuffer : 0;
}

// A buffer is often sized for the worst case and then larger than any result.
int bufferLength(std::size_t length) {
  return static_cast<int>(std::min<std::size_t>(length, INT_MAX));
}

// A text without units is a success that leaves the last error alone, hence the zero before the
// call.
template <typename Call>
Conversion converted(Call call) {
  SetLastError(0);
  const int length = call();
  if (length > 0) return {static_cast<std::size_t>(length), 0};
  return {0, GetLastError()};
}

}  // namespace

std::size_t maximumCharacterSize(std::uint32_t page) {
  CPINFO info{};
  return GetCPInfo(page, &info) ? info.MaxCharSize : 0;
}

Conversion wideToNarrow(std::uint32_t page, std::u16string_view text, std::span<char> buffer,
                        bool* usedDefault) {
  if (const auto error = refusal(text.size(), buffer.size()); error != 0) return {0, error};
  BOOL used = FALSE;
  const Conversion result = converted([&] {
    return WideCharToMultiByte(page, 0, reinterpret_cast<const wchar_t*>(text.data()),
                               static_cast<int>(text.size()), buffer.data(),
                               bufferLength(buffer.size()), nullptr,
                               usedDefault != nullptr ? &used : nullptr);
  });
  if (used) *usedDefault = true;
  return result;
}

Conversion narrowToWide(std::uint32_t page, bool strict, std::string_view text,
                        std::span<char16_t> buffer) {
  if (const auto error = refusal(text.size(), buffer.size()); error != 0) return {0, error};
  return converted([&] {
    return MultiByteToWideChar(
        page, strict ? MB_ERR_INVALID_CHARS : 0, text.data(), static_cast<int>(text.size()),
        reinterpret_cast<wchar_t*>(buffer.data()), bufferLength(buffer.size()));
  });
}

std::string wideToUtf8(std::u16string_view text) {
  std::string utf8(text.size() * 3, '\0');  // a unit is three bytes at most, a pair of them four
  utf8.resize(wideToNarrow(CP_UTF8, text, utf8, nullptr).length);
  return utf8;
}

}  // namespace platform
