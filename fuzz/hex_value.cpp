// Sizes of chunks: the digits alone count, and of them the last sixteen.

#include <cctype>
#include <string>

#include "check.h"
#include "replay/text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string digits = "0";
  for (const char character : asText(data, size)) {
    if (std::isxdigit(static_cast<unsigned char>(character)) != 0) digits += character;
  }
  if (digits.size() > 16) digits.erase(0, digits.size() - 16);
  std::uint64_t value = 0;
  replay::hex_value(asText(data, size), value);
  check(value == std::stoull(digits, nullptr, 16));
  return 0;
}
