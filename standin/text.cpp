#include "text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace standin {
namespace {

char loweredLetter(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// A first byte of a character of several bytes, what may stand behind it, and how long the whole
// is.
struct Utf8Row {
  unsigned char first, last;              // of the first byte
  unsigned char secondFirst, secondLast;  // of the second; further ones are 80 to BF
  std::size_t length;
};

constexpr Utf8Row utf8Rows[] = {
    {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

// The length of the character that a text begins with, or 0 if that is no character.
std::size_t characterLength(std::string_view text) {
  const auto byte = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char first = byte(0);
  if (first < 0x80) return 1;
  const auto* const row =
      std::find_if(std::begin(utf8Rows), std::end(utf8Rows),
                   [first](const Utf8Row& r) { return first >= r.first && first <= r.last; });
  if (row == std::end(utf8Rows) || text.size() < row->length) return 0;
  if (byte(1) < row->secondFirst || byte(1) > row->secondLast) return 0;
  for (std::size_t at = 2; at < row->length; ++at)
    if (byte(at) < 0x80 || byte(at) > 0xBF) return 0;
  return row->length;
}

}  // namespace

WORD copyText(std::string_view text, char* buffer, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t length = text.copy(buffer, size - 1);
  buffer[length] = '\0';
  return static_cast<WORD>(length);
}

char folded(char letter, LetterCase letters) {
  if (letters == LetterCase::lower) return loweredLetter(letter);
  const bool isRaised = letters == LetterCase::upper && letter >= 'a' && letter <= 'z';
  return isRaised ? static_cast<char>(letter - 'a' + 'A') : letter;
}

std::string folded(std::string_view text, LetterCase letters) {
  std::string result(text);
  for (char& letter : result) letter = folded(letter, letters);
  return result;
}

std::string lowered(std::string_view text) { return folded(text, LetterCase::lower); }

bool equalNames(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return loweredLetter(a) == loweredLetter(b); });
}

std::size_t hashOfName(std::string_view name) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char letter : name)
    hash = (hash ^ static_cast<unsigned char>(loweredLetter(letter))) * 0x100000001B3;
  return static_cast<std::size_t>(hash);
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace standin
