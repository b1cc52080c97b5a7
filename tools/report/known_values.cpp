#include "report/known_values.h"

#include <algorithm>
#include <map>
#include <span>

#include "platform/ascii.h"
#include "report/lines.h"
#include "report/text.h"

namespace reader {
namespace {

constexpr std::size_t shortestValue = 3;

bool isLong(std::string_view value) { return value.size() >= shortestValue; }

std::string lowered(std::string_view text) {
  std::string small(text);
  for (char& byte : small) byte = platform::lowered(byte);
  return small;
}

bool isWordByte(char small) {
  return (small >= 'a' && small <= 'z') || isDigit(small) || !isAscii(small);
}

std::uint32_t beginningOf(std::string_view text) {
  const auto byteAt = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  return static_cast<std::uint32_t>(byteAt(0) << 16 | byteAt(1) << 8 | byteAt(2));
}

}  // namespace

KnownValues::KnownValues(const std::deque<Pseudonym>& pseudonyms) {
  addForms(pseudonyms);
  lowerForms();
  sortForms();
  linkForms();
}

// A value itself counts before one that looks like it when it is doubled.
void KnownValues::addForms(const std::deque<Pseudonym>& pseudonyms) {
  forms_.reserve(pseudonyms.size());
  for (const Pseudonym& pseudonym : pseudonyms) {
    if (isLong(pseudonym.value)) forms_.push_back({pseudonym.value, {}, &pseudonym, nullptr});
  }
  const std::size_t plain = forms_.size();
  for (std::size_t place = 0; place < plain; ++place) {
    const auto [value, text, pseudonym, shorter] = forms_[place];
    if (std::ranges::all_of(value, isAscii)) continue;
    forms_.push_back({doubled_.emplace_back(latin1ToUtf8(value)), {}, pseudonym, nullptr});
  }
}

void KnownValues::lowerForms() {
  std::size_t size = 0;
  for (const Form& form : forms_) size += form.value.size();
  small_.resize(size);
  char* end = small_.data();
  for (Form& form : forms_) {
    char* const begin = end;
    end = std::ranges::transform(form.value, begin, platform::lowered<char>).out;
    form.text = {begin, end};
  }
}

void KnownValues::sortForms() {
  std::ranges::stable_sort(forms_, {}, &Form::text);
  std::size_t kept = 0;
  for (Form& form : forms_) {
    if (kept > 0 && form.text == forms_[kept - 1].text) {
      others_.try_emplace(form.value, form.pseudonym);
    } else if (&form != &forms_[kept++]) {
      forms_[kept - 1] = form;
    }
  }
  forms_.resize(kept);
}

void KnownValues::linkForms() {
  const Form* before = nullptr;
  for (std::size_t place = 0; place < forms_.size(); ++place) {
    Form& form = forms_[place];
    while (before != nullptr && !form.text.starts_with(before->text)) before = before->shorter;
    form.shorter = before;
    before = &form;
    ++ranges_.try_emplace(beginningOf(form.text), Range{place, 0}).first->second.count;
  }
}

// The longest form at `at` that ends where a word may end, and within `most` bytes.
const KnownValues::Form* KnownValues::longestIn(std::string_view text, std::size_t at,
                                                std::size_t most) const {
  text.remove_prefix(at);
  const auto range = isLong(text) ? ranges_.find(beginningOf(text)) : ranges_.end();
  if (range == ranges_.end()) return nullptr;
  const auto candidates = std::span(forms_).subspan(range->second.begin, range->second.count);
  const auto behind = std::ranges::upper_bound(candidates, text, {}, &Form::text);
  if (behind == candidates.begin()) return nullptr;
  const Form* form = &*(behind - 1);
  if (!text.starts_with(form->text)) {
    const auto common = std::ranges::mismatch(form->text, text).in1 - form->text.begin();
    most = std::min(most, static_cast<std::size_t>(common));
  }
  const auto endsWord = [text](std::size_t size) {
    return size == text.size() || !isWordByte(text[size]);
  };
  while (form != nullptr && (form->text.size() > most || !endsWord(form->text.size())))
    form = form->shorter;
  return form;
}

std::vector<KnownValues::Hit> KnownValues::hitsIn(std::string_view text) const {
  std::vector<Hit> hits;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (at > 0 && isWordByte(text[at - 1])) continue;
    const Form* const form = longestIn(text, at, text.size());
    if (form != nullptr) hits.push_back({at, form});
  }
  return hits;
}

// One that begins within a longer one gives way to it; one that ends there gives way to a shorter
// one at its own place.
std::vector<KnownValues::Hit> KnownValues::longestOf(std::vector<Hit> hits,
                                                     std::string_view text) const {
  const auto isLater = [](const Hit& left, const Hit& right) {
    return left.size() != right.size() ? left.size() < right.size() : left.at > right.at;
  };
  std::ranges::make_heap(hits, isLater);
  std::map<std::size_t, Hit> taken;
  while (!hits.empty()) {
    std::ranges::pop_heap(hits, isLater);
    const Hit hit = hits.back();
    hits.pop_back();
    const auto next = taken.upper_bound(hit.at);
    if (next != taken.begin() && std::prev(next)->second.end() > hit.at) continue;
    if (next == taken.end() || hit.end() <= next->first) {
      taken.emplace_hint(next, hit.at, hit);
    } else if (const Form* const shorter = longestIn(text, hit.at, next->first - hit.at)) {
      hits.push_back({hit.at, shorter});
      std::ranges::push_heap(hits, isLater);
    }
  }
  for (const auto& [at, hit] : taken) hits.push_back(hit);
  return hits;
}

void KnownValues::forEachIn(std::string_view message, const Take& take) const {
  const std::string text = lowered(message);
  std::vector<Hit> hits = hitsIn(text);
  const auto overlap = [](const Hit& hit, const Hit& next) { return hit.end() > next.at; };
  if (std::ranges::adjacent_find(hits, overlap) != hits.end())
    hits = longestOf(std::move(hits), text);
  for (const Hit& hit : hits) {
    const std::string_view value = message.substr(hit.at, hit.size());
    take(value, pseudonymOf(*hit.form, value));
  }
}

// That of a value in the same case, or else of one in another.
const Pseudonym& KnownValues::pseudonymOf(const Form& form, std::string_view value) const {
  if (value == form.value) return *form.pseudonym;
  const auto other = others_.find(value);
  return other == others_.end() ? *form.pseudonym : *other->second;
}

}  // namespace reader
