// UTF-8 to and from UTF-16 against ICU, whose results go into memory that is used again. Long texts
// do so here as well; for a short one the project's time includes the string that is returned.

#include <unicode/ustring.h>

#include <cstdio>
#include <vector>

#include "platform/code_pages.h"
#include "ratio.h"
#include "replay/unicode.h"

namespace {

constexpr std::uint32_t page = 65001;

struct Language {
  const char* name;
  std::string_view sentence;
};

constexpr Language languages[] = {
    {"ASCII", "The quick brown fox jumps over the lazy dog. "},
    {"German", "Die Prüfung größerer Anhänge läuft über Nacht; "},
    {"Japanese", "迷惑メールとウイルスを検査するサーバーの設定。"},
    {"emoji", "😀😎👍🎉🚀🔥🌍"},
};

// As many whole characters as fit.
std::string textOf(std::string_view sentence, std::size_t size) {
  std::string text;
  while (text.size() <= size) text += sentence;
  while ((text[size] & 0xC0) == 0x80) --size;
  return text.substr(0, size);
}

// One text in both forms, with memory for both results.
struct Sample {
  explicit Sample(std::string text)
      : utf8(std::move(text)),
        utf16(replay::unicode::to_wide(utf8, page)),
        bytes(utf8.size()),
        units(utf8.size()) {}

  Subject widening() {
    return {[this] { return platform::narrowToWide(page, false, utf8, units).length; }};
  }
  Subject narrowing() {
    return {[this] { return platform::wideToNarrow(page, utf16, bytes, nullptr).length; }};
  }
  Subject wideString() const {
    return {[this] { return replay::unicode::to_wide(utf8, page).size(); }};
  }
  Subject narrowString() const {
    return {[this] { return replay::unicode::to_narrow(utf16, page, true).size(); }};
  }
  Subject wideningOfIcu() {
    return {[this] {
      UErrorCode status = U_ZERO_ERROR;
      std::int32_t length = 0;
      u_strFromUTF8(units.data(), static_cast<std::int32_t>(units.size()), &length, utf8.data(),
                    static_cast<std::int32_t>(utf8.size()), &status);
      return static_cast<std::size_t>(length);
    }};
  }
  Subject narrowingOfIcu() {
    return {[this] {
      UErrorCode status = U_ZERO_ERROR;
      std::int32_t length = 0;
      u_strToUTF8(bytes.data(), static_cast<std::int32_t>(bytes.size()), &length, utf16.data(),
                  static_cast<std::int32_t>(utf16.size()), &status);
      return static_cast<std::size_t>(length);
    }};
  }

  bool isSameInIcu() {
    const std::size_t wide = wideningOfIcu().run();
    const std::size_t narrow = narrowingOfIcu().run();
    return std::u16string_view(units.data(), wide) == utf16 &&
           std::string_view(bytes.data(), narrow) == utf8;
  }

  std::string utf8;
  std::u16string utf16;
  std::vector<char> bytes;
  std::vector<char16_t> units;
};

}  // namespace

int main() {
  Comparisons comparisons;
  for (const Language& language : languages) {
    const std::string name = language.name;
    Sample whole(textOf(language.sentence, 1'000'000));
    Sample part(textOf(language.sentence, 45));
    if (!whole.isSameInIcu() || !part.isSameInIcu()) {
      std::puts("the results differ");
      return 1;
    }
    comparisons.fastEnough(name + ", 1 MB, to UTF-16", whole.widening(), whole.wideningOfIcu(),
                           0.8);
    comparisons.fastEnough(name + ", 1 MB, to UTF-8", whole.narrowing(), whole.narrowingOfIcu(),
                           0.8);
    comparisons.shortEnough(name + ", 45 bytes, to a UTF-16 string", part.wideString(),
                            part.wideningOfIcu(), 1.5);
    comparisons.shortEnough(name + ", 45 bytes, to a UTF-8 string", part.narrowString(),
                            part.narrowingOfIcu(), 1.5);
  }
  return comparisons.exitStatus();
}
