// UTF-8: well-formed text comes back as it was, malformed text is replaced once and for all.

#include "conversion.h"
#include "replay/unicode.h"

namespace {

constexpr std::uint32_t page = 65001;

void checkBytes(std::string_view bytes) {
  const std::u16string units = decode(page, bytes);
  check(replay::unicode::to_wide(bytes, page) == units);
  // The end of a text breaks a sequence as a letter does.
  check(decode(page, std::string(bytes) + "zzz") == units + u"zzz");
  std::u16string strict(bytes.size(), u'\0');
  const auto result = platform::narrowToWide(page, true, bytes, strict);
  check((encode(page, units) == bytes) == (bytes.empty() || result.error == 0));
}

void checkUnits(const std::u16string& units) {
  const std::string bytes = encode(page, units);
  check(bytes.size() <= 3 * units.size());
  check(bytes == replay::unicode::to_narrow(units, page, true));
  check(bytes == platform::wideToUtf8(units));
  bool replaced = false;
  std::string again(bytes.size(), '\0');
  platform::wideToNarrow(page, units, again, &replaced);
  check((decode(page, bytes) == units) != replaced);
  checkBytes(bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = asText(data, size);
  checkBytes(bytes);
  checkUnits(asUnits(bytes));
  checkUnits(decode(page, bytes));
  return 0;
}
