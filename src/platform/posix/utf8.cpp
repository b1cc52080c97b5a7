#include "platform/posix/utf8.h"

#include <cstddef>
#include <cstdint>

#include "platform/posix/bounded_output.h"

namespace platform {
namespace {

constexpr char16_t replacement = 0xFFFD;

bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }
bool isHighSurrogate(char32_t unit) { return (unit & 0xFC00) == 0xD800; }
bool isLowSurrogate(char32_t unit) { return (unit & 0xFC00) == 0xDC00; }

// A byte behind the lead byte, of the lowest bits.
char32_t trail(char32_t bits) { return 0x80 | (bits & 0x3F); }

// One character, or the part of a malformed one that a single replacement stands for.
struct Sequence {
  char32_t character;
  std::uint8_t length;  // narrow, so that the whole is returned in a register
  bool wellFormed;
};

Sequence malformed(std::size_t length) {
  return {replacement, static_cast<std::uint8_t>(length), false};
}

// The bytes of a sequence, by their place in it.
class Bytes {
 public:
  explicit Bytes(std::string_view text) : text_(text) {}
  char32_t lead() const { return static_cast<unsigned char>(text_[0]); }
  bool continues(std::size_t i) const { return (static_cast<unsigned char>(text_[i]) >> 6) == 2; }
  char32_t payload(std::size_t i) const { return static_cast<unsigned char>(text_[i]) & 0x3FU; }

 private:
  std::string_view text_;
};

Sequence decodeThreeBytes(std::string_view text) {
  if (text.size() < 3) return malformed(text.size());
  const Bytes bytes(text);
  if (!bytes.continues(1)) return malformed(1);
  const char32_t start = (bytes.lead() & 0x0F) << 6 | bytes.payload(1);
  const bool overlong = start < 0x800 >> 6;
  const bool surrogate = start >= 0xD800 >> 6 && start <= 0xDFFF >> 6;
  if (overlong || surrogate || !bytes.continues(2)) return malformed(2);
  return {start << 6 | bytes.payload(2), 3, true};
}

Sequence decodeFourBytes(std::string_view text) {
  if (text.size() < 4) return malformed(text.size());
  const Bytes bytes(text);
  if (!bytes.continues(1)) return malformed(1);
  const char32_t start = (bytes.lead() & 0x07) << 6 | bytes.payload(1);
  const bool inRange = start >= 0x10000 >> 12 && start <= 0x10FFFF >> 12;
  if (!inRange || !bytes.continues(2)) return malformed(2);
  if (!bytes.continues(3)) return malformed(3);
  return {start << 12 | bytes.payload(2) << 6 | bytes.payload(3), 4, true};
}

// Of a text that begins with no ASCII byte.
Sequence decodeSequence(std::string_view text) {
  const Bytes bytes(text);
  const char32_t lead = bytes.lead();
  if (lead < 0xC2 || lead > 0xF4) return malformed(1);
  if (lead >= 0xF0) return decodeFourBytes(text);
  if (lead >= 0xE0) return decodeThreeBytes(text);
  if (text.size() < 2 || !bytes.continues(1)) return malformed(1);
  return {(lead & 0x1F) << 6 | bytes.payload(1), 2, true};
}

}  // namespace

Conversion encodeUtf8(std::u16string_view text, std::span<char> buffer, bool& replaced) {
  BoundedOutput<char> out(buffer);
  for (std::size_t at = 0; at < text.size();) {
    char32_t unit = text[at];
    if (unit < 0x80) {
      at += out.putAscii(text.substr(at));
      continue;
    }
    ++at;
    if (unit < 0x800) {
      out.put(0xC0 | unit >> 6, trail(unit));
      continue;
    }
    if (isHighSurrogate(unit) && at < text.size() && isLowSurrogate(text[at])) {
      unit = 0x10000 + ((unit & 0x3FF) << 10 | (text[at++] & 0x3FFU));
      out.put(0xF0 | unit >> 18, trail(unit >> 12), trail(unit >> 6), trail(unit));
      continue;
    }
    if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
      unit = replacement;
      replaced = true;
    }
    out.put(0xE0 | unit >> 12, trail(unit >> 6), trail(unit));
  }
  return out.result();
}

Conversion decodeUtf8(std::string_view text, bool strict, std::span<char16_t> buffer) {
  BoundedOutput<char16_t> out(buffer);
  bool wellFormed = true;
  while (!text.empty()) {
    if (isAscii(text.front())) {
      text.remove_prefix(out.putAscii(text));
      continue;
    }
    const Sequence next = decodeSequence(text);
    if (next.character < 0x10000) {
      out.put(next.character);
    } else {
      out.put(0xD7C0 + (next.character >> 10), 0xDC00 | (next.character & 0x3FF));
    }
    wellFormed = wellFormed && next.wellFormed;
    text.remove_prefix(next.length);
  }
  // Want of room comes before malformed text, whichever was met first.
  const Conversion result = out.result();
  if (strict && !wellFormed && result.error == 0) return {0, errorNoUnicodeTranslation};
  return result;
}

}  // namespace platform
