#include "report/unmask.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>

#include "report/foreign_text.h"
#include "report/lines.h"
#include "report/masked_parts.h"
#include "report/report.h"
#include "report/text.h"

namespace reader {
namespace {

using Values = std::unordered_map<std::string, std::string>;  // by their pseudonyms

Values valuesOf(const std::deque<Pseudonym>& pseudonyms,
                const std::function<std::string(std::string_view)>& form) {
  Values values;
  for (const Pseudonym& pseudonym : pseudonyms)
    values.emplace(textOf(pseudonym), form(pseudonym.value));
  return values;
}

bool isAsciiWord(char byte) {
  return isDigit(byte) || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

// Beyond ASCII the letters of scripts that have blanks between words; behind those come
// punctuation, signs, and scripts without blanks, in which a name stands right beside the others.
bool isOfWord(char16_t character) {
  constexpr char16_t firstLetter = 0xC0;
  constexpr char16_t behindLetters = 0x2000;
  constexpr std::u16string_view signs = u"\u00D7\u00F7";
  if (character < 0x80) return isAsciiWord(static_cast<char>(character));
  return character >= firstLetter && character < behindLetters &&
         signs.find(character) == std::u16string_view::npos;
}

// Copies a text, and puts values in place of pseudonyms.
class Unmasker {
 public:
  Unmasker(std::string_view text, const Values& values, std::ostream& out)
      : text_(text), values_(values), out_(out) {}

  /// The part is a pseudonym, whatever stands beside it.
  void replace(std::string_view part) {
    const auto value = values_.find(std::string(part));
    if (value == values_.end()) return;
    copyUntil(static_cast<std::size_t>(part.data() - text_.data()));
    out_ << value->second;
    at_ += part.size();
  }

  void copyUntil(std::size_t end) {
    std::size_t copied = at_;
    while (at_ < end) {
      const auto value = valueBefore(end);
      if (value == values_.end()) {
        ++at_;
        continue;
      }
      out_ << text_.substr(copied, at_ - copied) << value->second;
      at_ += value->first.size();
      copied = at_;
    }
    out_ << text_.substr(copied, end - copied);
  }

 private:
  // Of a pseudonym that stands here.
  Values::const_iterator valueBefore(std::size_t end) const {
    if (at_ > 0 && isAsciiWord(text_[at_ - 1])) return values_.end();
    const std::string_view pseudonym = pseudonymAt(text_.substr(at_, end - at_));
    if (pseudonym.empty() || !standsAlone(pseudonym.size())) return values_.end();
    return values_.find(std::string(pseudonym));
  }

  bool standsAlone(std::size_t size) const {
    constexpr std::size_t longestCharacter = 4;
    const std::size_t sizeBefore = std::min(at_, longestCharacter);
    const std::u16string before = toWide(text_.substr(at_ - sizeBefore, sizeBefore));
    const std::u16string behind = toWide(text_.substr(at_ + size, longestCharacter));
    return (before.empty() || !isOfWord(before.back())) &&
           (behind.empty() || !isOfWord(behind.front()));
  }

  std::string_view text_;
  const Values& values_;
  std::ostream& out_;
  std::size_t at_ = 0;
};

}  // namespace

void writeUnmasked(const std::string& text, const std::deque<Pseudonym>& pseudonyms,
                   std::ostream& out) {
  try {
    const Report report(text);
    const Values values =
        valuesOf(pseudonyms, [](std::string_view value) { return std::string(value); });
    Unmasker unmasker(report.bytes(), values, out);
    MaskedParts(report).forEach([&unmasker](MaskKind kind, std::string_view part) {
      if (kind != MaskKind::message) unmasker.replace(part);
    });
    unmasker.copyUntil(report.bytes().size());
  } catch (const NoReport&) {
    if (isWide(text)) return writeUnmasked(wideAsUtf8(text), pseudonyms, out);
    Unmasker(text, valuesOf(pseudonyms, toUtf8), out).copyUntil(text.size());
  }
}

}  // namespace reader
