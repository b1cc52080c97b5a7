// UTF-8 to and from UTF-16 against ICU. Long texts go into memory that is used again, short ones
// into a new string on both sides. No text repeats itself, because a processor learns one that
// does.

#include <unicode/ustring.h>

#include <cstdio>
#include <random>
#include <vector>

#include "platform/code_pages.h"
#include "ratio.h"
#include "replay/unicode.h"

namespace {

constexpr std::uint32_t page = 65001;

struct Language {
  const char* name;
  std::vector<std::string_view> words;
};

const Language languages[] = {
    {"ASCII",
     {"the ", "mail ", "server ", "found ", "a ", "virus, ", "and ", "it ", "was ", "removed. ",
      "Sender: ", "filters ", "of ", "domains ", "update ", "4711 ", "at ", "night "}},
    {"German",
     {"die ", "Prüfung ", "größerer ", "Anhänge ", "läuft ", "über ", "Nacht; ", "der ",
      "Empfänger ", "erhält ", "eine ", "Nachricht, ", "daß ", "gelöscht ", "wurde. ", "Für ",
      "Änderungen ", "im "}},
    {"Japanese",
     {"迷惑メール", "と", "ウイルス", "を", "検査する", "サーバー", "の", "設定", "。", "、",
      "添付", "ファイル", "が", "見つかり", "ました", "夜間", "に", "更新"}},
    {"emoji", {"😀", "😎", "👍", "🎉", "🚀", "🔥", "🌍", "📧", "🛡", "🐛", "✅", "😡", "📎", "🔒"}},
};

// Words in no order, as many whole characters as fit.
std::string textOf(const std::vector<std::string_view>& words, std::size_t size) {
  std::minstd_rand random;
  std::string text;
  while (text.size() <= size) text += words[random() % words.size()];
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

  Subject wideStringOfIcu() {
    return {[this] { return std::u16string(units.data(), wideningOfIcu().run()).size(); }};
  }
  Subject narrowStringOfIcu() {
    return {[this] { return std::string(bytes.data(), narrowingOfIcu().run()).size(); }};
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
    Sample whole(textOf(language.words, 1'000'000));
    Sample part(textOf(language.words, 45));
    if (!whole.isSameInIcu() || !part.isSameInIcu()) {
      std::puts("the results differ");
      return 1;
    }
    const auto compare = [&](const char* what, const Subject& own, const Subject& icu) {
      comparisons.fastEnough(name + what, own, icu, 0.95);
    };
    compare(", 1 MB, to UTF-16", whole.widening(), whole.wideningOfIcu());
    compare(", 1 MB, to UTF-8", whole.narrowing(), whole.narrowingOfIcu());
    compare(", 45 bytes, to a UTF-16 string", part.wideString(), part.wideStringOfIcu());
    compare(", 45 bytes, to a UTF-8 string", part.narrowString(), part.narrowStringOfIcu());
  }
  return comparisons.exitStatus();
}
