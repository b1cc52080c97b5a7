// UTF-7: any bytes are read, and any units come back from their bytes.

#include "conversion.h"
#include "replay/unicode.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::uint32_t page = 65000;
  const std::string_view bytes = asText(data, size);
  const std::u16string read = decode(page, bytes);
  try {
    check(replay::unicode::to_wide(bytes, page) == read);
  } catch (const replay::unicode::generic&) {
    check(read.empty());
  }
  for (const std::u16string& units : {read, asUnits(bytes)}) {
    check(decode(page, encode(page, units)) == units);
    check(replay::unicode::to_narrow(units, page, true) == encode(page, units));
  }
  return 0;
}
