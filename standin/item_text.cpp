#include "standin/item_text.h"

#include <array>
#include <charconv>
#include <numeric>

#include "notes/abi.h"

namespace standin {
namespace {

// Calls the member of `cases` that takes the type of the value.
template <typename... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

std::string numberText(double number) {
  std::array<char, 32> digits{};
  return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

std::string joined(const store::TextList& entries, char separator) {
  std::string text;
  for (const std::string& entry : entries) {
    if (&entry != &entries.front()) text += separator;
    text += entry;
  }
  return text;
}

}  // namespace

WORD typeOf(const store::ItemValue& value) {
  return std::visit(Overloaded{[](const std::string&) { return WORD{TYPE_TEXT}; },
                               [](const store::TextList&) { return WORD{TYPE_TEXT_LIST}; },
                               [](double) { return WORD{TYPE_NUMBER}; },
                               [](store::Moment) { return WORD{TYPE_TIME}; }},
                    value);
}

DWORD lengthOf(const store::ItemValue& value) {
  constexpr std::size_t word = sizeof(WORD);
  const auto ofList = [](const store::TextList& entries) {
    return std::accumulate(entries.begin(), entries.end(), 2 * word,
                           [](std::size_t sum, const auto& e) { return sum + word + e.size(); });
  };
  const std::size_t length =
      std::visit(Overloaded{[](const std::string& text) { return word + text.size(); }, ofList,
                            [](double) { return word + sizeof(NUMBER); },
                            [](store::Moment) { return word + sizeof(TIMEDATE); }},
                 value);
  return static_cast<DWORD>(length);
}

std::string textOf(const store::ItemValue& value, char separator, std::chrono::hours zone) {
  return std::visit(
      Overloaded{[](const std::string& text) { return text; },
                 [separator](const store::TextList& entries) { return joined(entries, separator); },
                 [](double number) { return numberText(number); },
                 [zone](store::Moment moment) { return store::dateAndTime(moment - zone, ' '); }},
      value);
}

}  // namespace standin
