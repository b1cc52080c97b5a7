#include "replay/unicode.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <span>

#include "platform/ascii.h"
#include "platform/code_pages.h"
#include "replay/detail/codepage_tables.h"
#include "replay/text.h"

namespace replay::unicode {
namespace {

struct failure {
  std::uint32_t error;
  void (*raise)();
};

template <typename Exception>
void raise() {
  throw Exception("");
}

constexpr failure narrowing_failures[] = {
    {platform::errorInsufficientBuffer, raise<out_of_memory>},
    {platform::errorInvalidParameter, raise<unmappable_character>},
};

constexpr failure widening_failures[] = {
    {platform::errorInsufficientBuffer, raise<out_of_memory>},
    {platform::errorInvalidParameter, raise<invalid_codepage>},
    {platform::errorNoUnicodeTranslation, raise<unmappable_character>},
};

[[noreturn]] void raise_failure(std::span<const failure> failures, std::uint32_t error) {
  for (const failure& row : failures) {
    if (row.error == error) row.raise();
  }
  throw generic("");
}

// Whether the system takes its strict flags for a page; for the others it refuses the whole call.
bool allows_checks(codepage page) {
  switch (page) {
    case 42:
    case 50221:
    case 50222:
    case 50225:
    case 50227:
    case 50229:
    case 52936:
    case 54936:
    case 65000:
    case 65001:
      return false;
    default:
      return page < 57002 || page > 57011;
  }
}

// Room for a result of which only the most is known: not filled with zeros first, and that of a
// short text on the stack.
template <typename Unit>
class working_buffer {
 public:
  explicit working_buffer(std::size_t size) : size_(size) {
    if (size > std::size(few_)) many_ = std::make_unique_for_overwrite<Unit[]>(size);
  }

  std::span<Unit> units() { return {many_ ? many_.get() : few_, size_}; }
  std::basic_string<Unit> first(std::size_t count) { return {units().data(), count}; }

 private:
  std::size_t size_;
  Unit few_[256];
  std::unique_ptr<Unit[]> many_;
};

// These two make the string from a range, which takes one allocation and a loop that the compiler
// makes take many units at a time.
std::string low_bytes(std::u16string_view text) {
  char16_t bits = 0;
  for (const char16_t unit : text) bits |= unit;
  if (bits > 0xFF) throw unmappable_character("");
  return {text.begin(), text.end()};
}

std::u16string widened_bytes(std::string_view text) {
  const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
  return {bytes, bytes + text.size()};
}

// Lower-cased, and without all but ASCII letters and digits.
std::string normalised(std::string_view name) {
  std::string result;
  for (const char c : name) {
    const char small = platform::lowered(c);
    const bool is_kept = (small >= 'a' && small <= 'z') || (c >= '0' && c <= '9');
    if (is_kept) result += small;
  }
  return result;
}

using page_of_number = std::optional<codepage> (*)(codepage number);

std::optional<codepage> iso8859_page(codepage number) {
  constexpr codepage base = 28590;
  if (number > std::numeric_limits<codepage>::max() - base) return std::nullopt;
  return base + number;
}

std::optional<codepage> latin_page(codepage number) {
  if (number >= 1 && number <= 4) return 28590 + number;
  if (number == 5) return 28599;
  return number == 9 ? std::optional(28605) : std::nullopt;
}

std::optional<codepage> windows_page(codepage number) { return number; }

struct numbered_family {
  std::string_view beginning;
  page_of_number page;
};

constexpr numbered_family numbered_families[] = {
    {"iso8859", iso8859_page},
    {"latin", latin_page},
    {"csisolatin", latin_page},
    {"windows", windows_page},
};

bool is_number(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// The page that a name tells by its number. A number beyond 32 bits tells none.
std::optional<codepage> numbered_page(std::string_view name) {
  for (const auto& [beginning, page] : numbered_families) {
    if (!name.starts_with(beginning)) continue;
    const std::string_view digits = name.substr(beginning.size());
    codepage number = 0;
    const char* end = digits.data() + digits.size();
    if (is_number(digits) && std::from_chars(digits.data(), end, number).ec == std::errc()) {
      return page(number);
    }
  }
  return std::nullopt;
}

}  // namespace

std::string to_narrow(std::u16string_view text, codepage page, bool strict) {
  if (text.empty()) return {};
  if (page == ascii) return low_bytes(text);
  const auto number = static_cast<std::uint32_t>(page);
  const std::size_t character_size = platform::maximumCharacterSize(number);
  if (character_size == 0) throw invalid_codepage("");
  working_buffer<char> result(text.size() * character_size);
  bool used_default = false;
  const platform::Conversion conversion = platform::wideToNarrow(
      number, text, result.units(), allows_checks(page) ? &used_default : nullptr);
  // A replaced character is the better reason where the conversion has also failed.
  if (used_default && strict) throw unmappable_character("");
  if (conversion.length == 0) raise_failure(narrowing_failures, conversion.error);
  return result.first(conversion.length);
}

std::u16string to_wide(std::string_view text, codepage page) {
  if (text.empty()) return {};
  if (page == ascii) return widened_bytes(text);
  working_buffer<char16_t> result(text.size());
  const platform::Conversion conversion = platform::narrowToWide(
      static_cast<std::uint32_t>(page), allows_checks(page), text, result.units());
  if (conversion.length == 0) raise_failure(widening_failures, conversion.error);
  return result.first(conversion.length);
}

std::string to_utf8(std::string_view text) { return to_narrow(to_wide(text, 0), utf8, true); }

codepage codepage_of_name(std::string_view name) {
  const std::string key = normalised(name);
  if (const auto page = numbered_page(key)) return *page;
  const auto found = codepage_aliases.find(key);
  if (found == codepage_aliases.end()) throw invalid_codepage("");
  return found->second;
}

const std::string& name_of_codepage(codepage page) {
  const auto found = codepage_names.find(page);
  if (found == codepage_names.end()) {
    throw invalid_codepage(format("codepage %d is not supported", page));
  }
  return found->second;
}

}  // namespace replay::unicode
