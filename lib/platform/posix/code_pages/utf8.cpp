#include "platform/posix/code_pages/utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/posix/code_pages/bounded_output.h"

namespace platform {
namespace {

// From these on a character takes two, three and four bytes, whose first has this above its bits.
constexpr char32_t firstOfTwo = 0x80;
constexpr char32_t firstOfThree = 0x800;
constexpr char32_t firstOfFour = 0x10000;
constexpr char32_t lastOfAll = 0x10FFFF;
constexpr char32_t leadOfTwo = 0xC0;
constexpr char32_t leadOfFour = 0xF0;

// A pair of surrogates has ten bits in each half.
constexpr char32_t highSurrogate = 0xD800;
constexpr char32_t lowSurrogate = 0xDC00;
constexpr char32_t surrogateBits = 0x3FF;

constexpr char16_t replacement = 0xFFFD;
constexpr std::uint64_t replacementBytes = 0xBDBFEF;  // EF BF BD, the first in the lowest place

bool isAscii(char byte) { return static_cast<unsigned char>(byte) < firstOfTwo; }
bool isSurrogate(char32_t unit) { return (unit & 0xF800) == highSurrogate; }
bool isHighSurrogate(char32_t unit) { return (unit & 0xFC00) == highSurrogate; }
bool isLowSurrogate(char32_t unit) { return (unit & 0xFC00) == lowSurrogate; }

bool isThreeBytes(char32_t unit) { return unit >= firstOfThree && !isSurrogate(unit); }

// A byte behind the lead byte, of the lowest bits.
char32_t trail(char32_t bits) { return 0x80 | (bits & 0x3F); }

// Three bytes of each of two units, the first byte in the lowest place; both at once, each unit in
// 24 bits of its own.
std::uint64_t threeBytesEach(char32_t first, char32_t second) {
  const std::uint64_t units = std::uint64_t{first} | std::uint64_t{second} << 24;
  return 0x8080E08080E0 | (units >> 12 & 0x00000F00000F) | (units << 2 & 0x003F00003F00) |
         (units << 16 & 0x3F00003F0000);
}

// The bytes that are next, the first in the highest place. The end of the text breaks a sequence as
// any other byte does: a zero stands for each that is missing.
std::uint32_t nextBytes(const char* next, const char* end) {
  unsigned char bytes[4] = {};
  if (end - next >= 4) {
    std::memcpy(bytes, next, 4);
  } else {
    std::copy(next, end, bytes);
  }
  return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
         std::uint32_t{bytes[2]} << 8 | bytes[3];
}

// The character of well-formed two, three or four bytes that are next, or 0. The mask takes the
// bits that tell how many bytes there are, of the first, and that a byte stands behind it, of the
// others.

char32_t twoByteCharacter(std::uint32_t bytes) {
  if ((bytes & 0xE0C00000) != 0xC0800000) return 0;
  const char32_t character = (bytes >> 18 & 0x7C0) | (bytes >> 16 & 0x3F);
  return character >= firstOfTwo ? character : 0;
}

char32_t threeByteCharacter(std::uint32_t bytes) {
  if ((bytes & 0xF0C0C000) != 0xE0808000) return 0;
  const char32_t character = (bytes >> 12 & 0xF000) | (bytes >> 10 & 0xFC0) | (bytes >> 8 & 0x3F);
  return character >= firstOfThree && !isSurrogate(character) ? character : 0;
}

char32_t fourByteCharacter(std::uint32_t bytes) {
  if ((bytes & 0xF8C0C0C0) != 0xF0808080) return 0;
  const char32_t character =
      (bytes >> 6 & 0x1C0000) | (bytes >> 4 & 0x3F000) | (bytes >> 2 & 0xFC0) | (bytes & 0x3F);
  return character >= firstOfFour && character <= lastOfAll ? character : 0;
}

// The length of the part of a malformed sequence that a single replacement stands for.
int malformedLength(std::uint32_t bytes) {
  const std::uint32_t lead = bytes >> 24;
  const auto continues = [bytes](int shift) { return (bytes >> shift & 0xC0) == 0x80; };
  if (lead < 0xC2 || lead > 0xF4 || !continues(16)) return 1;
  if (lead < 0xF0) return 2;
  const std::uint32_t start = bytes >> 16 & 0x73F;
  const bool inRange = start >= 0x010 && start <= 0x40F;
  return inRange && continues(8) ? 3 : 2;
}

}  // namespace

Conversion encodeUtf8(std::u16string_view text, std::span<char> buffer, bool& replaced) {
  BoundedOutput<char> out(buffer);
  const char16_t* const end = text.data() + text.size();
  for (const char16_t* next = text.data(); next != end;) {
    char32_t unit = *next;
    if (unit < firstOfTwo) {
      next += out.putAscii(std::u16string_view(next, end));
      continue;
    }
    ++next;
    if (isThreeBytes(unit)) {
      // In most scripts another one follows.
      if (next != end && isThreeBytes(*next)) {
        out.putUnits(threeBytesEach(unit, *next++), 6);
      } else {
        out.putUnits(threeBytesEach(unit, 0), 3);
      }
    } else if (unit < firstOfThree) {
      out.putUnits(leadOfTwo | unit >> 6 | trail(unit) << 8, 2);
    } else if (isHighSurrogate(unit) && next != end && isLowSurrogate(*next)) {
      unit = firstOfFour + ((unit & surrogateBits) << 10 | (*next++ & surrogateBits));
      out.putUnits(leadOfFour | unit >> 18 | trail(unit >> 12) << 8 | trail(unit >> 6) << 16 |
                       trail(unit) << 24,
                   4);
    } else {
      out.putUnits(replacementBytes, 3);
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
    if (isAscii(*next)) {
      next += out.putAscii(std::string_view(next, end));
      continue;
    }
    const std::uint32_t bytes = nextBytes(next, end);
    if (const char32_t three = threeByteCharacter(bytes); three != 0) {
      out.put(three);
      next += 3;
    } else if (const char32_t two = twoByteCharacter(bytes); two != 0) {
      out.put(two);
      next += 2;
    } else if (const char32_t four = fourByteCharacter(bytes); four != 0) {
      const char32_t high = highSurrogate + ((four - firstOfFour) >> 10);
      out.putUnits(high | (lowSurrogate | (four & surrogateBits)) << 16, 2);
      next += 4;
    } else {
      out.put(replacement);
      next += malformedLength(bytes);
      wellFormed = false;
    }
  }
  // Want of room comes before malformed text, whichever was met first.
  const Conversion result = out.result();
  if (strict && !wellFormed && result.error == 0) return {0, errorNoUnicodeTranslation};
  return result;
}

}  // namespace platform
