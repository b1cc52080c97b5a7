#include "report/known_values.h"

#include <algorithm>

#include "platform/ascii.h"
#include "report/lines.h"
#include "report/text.h"

namespace reader {
namespace {

constexpr std::size_t shortestValue = 3;

unsigned char lowered(char byte) { return static_cast<unsigned char>(platform::lowered(byte)); }

bool isWordByte(char byte) {
  const unsigned char small = lowered(byte);
  return (small >= 'a' && small <= 'z') || isDigit(byte) || small >= 0x80;
}

std::uint32_t beginningOf(std::string_view text) {
  return static_cast<std::uint32_t>(lowered(text[0]) << 16 | lowered(text[1]) << 8 |
                                    lowered(text[2]));
}

}  // namespace

std::size_t KnownValues::Hash::operator()(std::string_view text) const {
  std::uint64_t hash = 0xCBF29CE484222325U;  // FNV-1a
  for (const char byte : text) hash = (hash ^ lowered(byte)) * 0x100000001B3U;
  return static_cast<std::size_t>(hash);
}

bool KnownValues::Equal::operator()(std::string_view left, std::string_view right) const {
  return std::ranges::equal(left, right, {}, lowered, lowered);
}

KnownValues::KnownValues(const std::deque<Pseudonym>& pseudonyms) : pseudonyms_(pseudonyms) {
  places_.reserve(pseudonyms.size());
  for (std::size_t place = 0; place < pseudonyms.size(); ++place) {
    const std::string_view value = pseudonyms[place].value;
    if (value.size() < shortestValue) continue;
    add(value, place);
    if (!std::ranges::all_of(value, isAscii))
      add(doubled_.emplace_back(latin1ToUtf8(value)), pseudonyms.size() + place);
  }
  for (auto& [beginning, sizes] : sizes_) std::ranges::sort(sizes);
}

void KnownValues::add(std::string_view form, std::size_t place) {
  places_.emplace(form, place);
  std::vector<std::size_t>& sizes = sizes_[beginningOf(form)];
  if (std::ranges::find(sizes, form.size()) == sizes.end()) sizes.push_back(form.size());
}

// The earliest of those in the same case, or else of those in another; null if there is none.
const Pseudonym* KnownValues::find(std::string_view text) const {
  std::pair best(true, 2 * pseudonyms_.size());
  const auto [begin, end] = places_.equal_range(text);
  for (auto at = begin; at != end; ++at)
    best = std::min(best, std::pair(at->first != text, at->second));
  return begin == end ? nullptr : &pseudonyms_[best.second % pseudonyms_.size()];
}

std::vector<KnownValues::Hit> KnownValues::hitsIn(std::string_view message) const {
  std::vector<Hit> hits;
  for (std::size_t at = 0; at + shortestValue <= message.size(); ++at) {
    if (at > 0 && isWordByte(message[at - 1])) continue;
    const auto sizes = sizes_.find(beginningOf(message.substr(at)));
    if (sizes == sizes_.end()) continue;
    for (const std::size_t size : sizes->second) {
      if (at + size > message.size()) break;
      if (at + size < message.size() && isWordByte(message[at + size])) continue;
      const Pseudonym* const pseudonym = find(message.substr(at, size));
      if (pseudonym != nullptr) hits.push_back({at, size, pseudonym});
    }
  }
  return hits;
}

void KnownValues::forEachIn(std::string_view message, const Take& take) const {
  std::vector<Hit> hits = hitsIn(message);
  if (hits.empty()) return;
  std::ranges::stable_sort(hits, std::ranges::greater{}, &Hit::size);
  // One that begins or ends within a longer one gives way.
  std::vector<bool> covered(message.size());
  std::erase_if(hits, [&covered](const Hit& hit) {
    if (covered[hit.at] || covered[hit.at + hit.size - 1]) return true;
    std::fill_n(covered.begin() + static_cast<std::ptrdiff_t>(hit.at), hit.size, true);
    return false;
  });
  std::ranges::sort(hits, {}, &Hit::at);
  for (const Hit& hit : hits) take(message.substr(hit.at, hit.size), *hit.pseudonym);
}

}  // namespace reader
