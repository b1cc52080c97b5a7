#include "platform/posix/utf8.h"

#include <cstddef>
#include <cstdint>

#include "platform/posix/bounded_output.h"

namespace platform {
namespace {

constexpr char16_t replacement = 0xFFFD;

bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }
bool isSurrogate(char32_t unit) { return (unit & 0xF800) == 0xD800; }
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
  // The end of the text breaks a sequence as any other byte does.
  bool continues(std::size_t i) const {
    return i < text_.size() && (static_cast<unsigned char>(text_[i]) >> 6) == 2;
  }
  char32_t payload(std::size_t i) const { return static_cast<unsigned char>(text_[i]) & 0x3FU; }

 private:
  std::string_view text_;
};

// The character of well-formed three bytes that `text` begins with, or 0.
char32_t threeByteCharacter(std::string_view text) {
  const Bytes bytes(text);
  if (bytes.lead() >> 4 != 0xE || text.size() < 3) return 0;
  const char32_t character = (bytes.lead() & 0x0F) << 12 | bytes.payload(1) << 6 | bytes.payload(2);
  const bool inRange = character >= 0x800 && !isSurrogate(character);
  return inRange && bytes.continues(1) && bytes.continues(2) ? character : 0;
}

Sequence malformedThreeBytes(std::string_view text) {
  return malformed(Bytes(text).continues(1) ? 2 : 1);
}

Sequence decodeFourBytes(std::string_view text) {
  const Bytes bytes(text);
  if (!bytes.continues(1)) return malformed(1);
  const char32_t start = (bytes.lead() & 0x07) << 6 | bytes.payload(1);
  const bool inRange = start >= 0x10000 >> 12 && start <= 0x10FFFF >> 12;
  if (!inRange || !bytes.continues(2)) return malformed(2);
  if (!bytes.continues(3)) return malformed(3);
  return {start << 12 | bytes.payload(2) << 6 | bytes.payload(3), 4, true};
}

// Of a text that begins with neither an ASCII byte nor well-formed three bytes.
Sequence decodeSequence(std::string_view text) {
  const Bytes bytes(text);
  const char32_t lead = bytes.lead();
  if (lead < 0xC2 || lead > 0xF4) return malformed(1);
  if (lead >= 0xF0) return decodeFourBytes(text);
  if (lead >= 0xE0) return malformedThreeBytes(text);
  if (!bytes.continues(1)) return malformed(1);
  return {(lead & 0x1F) << 6 | bytes.payload(1), 2, true};
}

}  // namespace

Conversion encodeUtf8(std::u16string_view text, std::span<char> buffer, bool& replaced) {
  BoundedOutput<char> out(buffer);
  const char16_t* const end = text.data() + text.size();
  for (const char16_t* next = text.data(); next != end;) {
    char32_t unit = *next;
    if (unit < 0x80) {
      next += out.putAscii(std::u16string_view(next, end));
      continue;
    }
    ++next;
    if (unit >= 0x800 && !isSurrogate(unit)) {
      out.put(0xE0 | unit >> 12, trail(unit >> 6), trail(unit));
    } else if (unit < 0x800) {
      out.put(0xC0 | unit >> 6, trail(unit));
    } else if (isHighSurrogate(unit) && next != end && isLowSurrogate(*next)) {
      unit = 0x10000 + ((unit & 0x3FF) << 10 | (*next++ & 0x3FFU));
      out.put(0xF0 | unit >> 18, trail(unit >> 12), trail(unit >> 6), trail(unit));
    } else {
      out.put(0xEF, 0xBF, 0xBD);
      replaced = true;
    }
  }
  return out.result();
}

Conversion decodeUtf8(std::string_view text, bool strict, std::span<char16_t> buffer) {
  BoundedOutput<char16_t> out(buffer);
  bool wellFormed = true;
  const char* const end = text.data() + text.size();
  for (const char* next = text.data(); next != end;) {
    const std::string_view rest(next, end);
    if (isAscii(*next)) {
      next += out.putAscii(rest);
      continue;
    }
    // Most of what is not ASCII, and faster apart from the rest.
    if (const char32_t character = threeByteCharacter(rest); character != 0) {
      out.put(character);
      next += 3;
      continue;
    }
    const Sequence sequence = decodeSequence(rest);
    if (sequence.character < 0x10000) {
      out.put(sequence.character);
    } else {
      out.put(0xD7C0 + (sequence.character >> 10), 0xDC00 | (sequence.character & 0x3FF));
    }
    wellFormed = wellFormed && sequence.wellFormed;
    next += sequence.length;
  }
  // Want of room comes before malformed text, whichever was met first.
  const Conversion result = out.result();
  if (strict && !wellFormed && result.error == 0) return {0, errorNoUnicodeTranslation};
  return result;
}

}  // namespace platform
