#include "report/pseudonyms.h"

#include <algorithm>
#include <charconv>

#include "report/lines.h"

namespace reader {
namespace {

// What stands before and behind the number.
struct Words {
  std::string_view before;
  std::string_view behind;
};

constexpr std::array<Words, pseudonymKinds> words = {Words{"organization-", ""},
                                                     Words{"person-", ""},
                                                     Words{"mail-", "@example.invalid"},
                                                     Words{"domain-", ".example.invalid"},
                                                     Words{"server-", ""},
                                                     Words{"", ""},
                                                     Words{"path-", ""},
                                                     Words{"text-", ""}};
constexpr std::size_t replicaIdSize = 16;

std::size_t indexOf(MaskKind kind) { return static_cast<std::size_t>(kind); }

std::string_view digitsAt(std::string_view text, std::size_t at) {
  const auto begin = text.begin() + static_cast<std::ptrdiff_t>(at);
  const auto end = std::find_if_not(begin, text.end(), isDigit);
  return text.substr(at, static_cast<std::size_t>(end - begin));
}

}  // namespace

std::string textOf(const Pseudonym& pseudonym) {
  const std::string number = std::to_string(pseudonym.number);
  if (pseudonym.kind == MaskKind::replicaId)
    return std::string(replicaIdSize - number.size(), '0') + number;
  const Words& around = words.at(indexOf(pseudonym.kind));
  return std::string(around.before) + number + std::string(around.behind);
}

std::string_view pseudonymAt(std::string_view text) {
  for (const auto& [before, behind] : words) {
    if (!text.starts_with(before)) continue;
    const std::string_view digits = digitsAt(text, before.size());
    const std::size_t size = before.size() + digits.size();
    if (!digits.empty() && text.substr(size).starts_with(behind))
      return text.substr(0, size + behind.size());
  }
  return {};
}

Pseudonyms::Pseudonyms(std::string_view report, const std::deque<Pseudonym>& earlier)
    : mostNumbers_(report.size() + earlier.size()) {
  // Of millions of values each that is looked at in vain costs more than an empty place.
  for (auto& values : byValue_) values.max_load_factor(0.5F);
  findHeld(report);
  for (const Pseudonym& pseudonym : earlier) {
    given_.at(indexOf(pseudonym.kind)).insert(pseudonym.number);
    const Pseudonym& given = all_.emplace_back(pseudonym);
    byValue_.at(indexOf(given.kind)).emplace(given.value, &given);
  }
}

void Pseudonyms::findHeld(std::string_view report) {
  for (std::size_t at = 0; (at = report.find('-', at)) != std::string_view::npos; ++at)
    holdNumbered(report, at);
  const std::string_view zeros = "000000";
  for (std::size_t at = 0; (at = report.find(zeros, at)) != std::string_view::npos;) {
    const std::string_view digits = digitsAt(report, at);
    holdReplicaIds(digits);
    at += digits.size();
  }
}

// Of "server-12" the beginning is "server-1", which is held as well.
void Pseudonyms::holdNumbered(std::string_view report, std::size_t hyphen) {
  const std::string_view digits = digitsAt(report, hyphen + 1);
  const bool isBehindWord = hyphen > 0 && report[hyphen - 1] >= 'a' && report[hyphen - 1] <= 'z';
  if (!isBehindWord || digits.empty() || digits.front() == '0') return;
  for (std::size_t kind = 0; kind < words.size(); ++kind) {
    const auto [before, behind] = words.at(kind);
    if (before.empty() || !report.substr(0, hyphen + 1).ends_with(before)) continue;
    const bool isWhole = report.substr(hyphen + 1 + digits.size()).starts_with(behind);
    std::uint64_t number = 0;
    for (std::size_t size = 1; size <= digits.size() && number < mostNumbers_; ++size) {
      number = number * 10 + static_cast<std::uint64_t>(digits[size - 1] - '0');
      if (behind.empty() || (isWhole && size == digits.size()))
        hold(static_cast<MaskKind>(kind), number);
    }
  }
}

// Every sixteen digits in a row; those that do not begin with many zeros are never given.
void Pseudonyms::holdReplicaIds(std::string_view digits) {
  for (std::size_t at = 0; at + replicaIdSize <= digits.size(); ++at) {
    std::uint64_t number = 0;
    std::from_chars(digits.data() + at, digits.data() + at + replicaIdSize, number);
    hold(MaskKind::replicaId, number);
  }
}

// No report has as many values as it has bytes, and no higher number is ever given.
void Pseudonyms::hold(MaskKind kind, std::uint64_t number) {
  Numbers& held = held_.at(indexOf(kind));
  if (number > mostNumbers_) return;
  const auto place = static_cast<std::size_t>(number);
  if (held.size() <= place) held.resize(std::max(place + 1, 2 * held.size()));
  held[place] = true;
}

bool Pseudonyms::isTaken(MaskKind kind, std::uint32_t number) const {
  const Numbers& held = held_.at(indexOf(kind));
  return (number < held.size() && held[number]) || given_.at(indexOf(kind)).contains(number);
}

const Pseudonym& Pseudonyms::of(MaskKind kind, std::string_view value) {
  const auto [place, isNew] = byValue_.at(indexOf(kind)).try_emplace(value);
  if (isNew) {
    std::uint32_t& number = last_.at(indexOf(kind));
    do ++number;
    while (isTaken(kind, number));
    place->second = &all_.emplace_back(Pseudonym{kind, number, value});
  }
  return *place->second;
}

}  // namespace reader
