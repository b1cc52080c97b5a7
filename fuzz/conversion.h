// What holds of the conversion of any text, in both directions.
#pragma once

#include <cstring>
#include <string>

#include "check.h"
#include "platform/code_pages.h"

/// The input as units in the order of this machine; an odd byte at the end is left out.
inline std::u16string asUnits(std::string_view bytes) {
  std::u16string units(bytes.size() / sizeof(char16_t), u'\0');
  if (!units.empty()) std::memcpy(units.data(), bytes.data(), units.size() * sizeof(char16_t));
  return units;
}

/// Converts with the most room that a result may take, and checks that exactly the room of the
/// result is needed.
inline std::u16string decode(std::uint32_t page, std::string_view bytes) {
  std::u16string units(bytes.size(), u'\0');
  const auto result = platform::narrowToWide(page, false, bytes, units);
  check(bytes.empty() || result.error == 0);
  units.resize(result.length);
  std::u16string exact(units.size(), u'\0');
  if (exact.empty()) return units;
  check(platform::narrowToWide(page, false, bytes, exact).length == exact.size());
  check(exact == units);
  exact.pop_back();
  check(platform::narrowToWide(page, false, bytes, exact).error ==
        platform::errorInsufficientBuffer);
  return units;
}

inline std::string encode(std::uint32_t page, std::u16string_view units) {
  std::string bytes(units.size() * platform::maximumCharacterSize(page), '\0');
  const auto result = platform::wideToNarrow(page, units, bytes, nullptr);
  check(units.empty() || result.error == 0);
  bytes.resize(result.length);
  std::string exact(bytes.size(), '\0');
  if (exact.empty()) return bytes;
  check(platform::wideToNarrow(page, units, exact, nullptr).length == exact.size());
  check(exact == bytes);
  exact.pop_back();
  check(platform::wideToNarrow(page, units, exact, nullptr).error ==
        platform::errorInsufficientBuffer);
  return bytes;
}
