#include "report/difference.h"

#include <algorithm>
#include <dtl/dtl.hpp>
#include <unordered_set>

namespace reader {
namespace {

using Sequence = std::vector<int>;
using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

// The elements from `begin` to `end` that the other sequence holds too, and their places. What it
// does not hold can never stay; without it the search has little left to do.
struct Candidates {
  Candidates(const Sequence& from, std::size_t begin, std::size_t end, const Sequence& other) {
    const std::unordered_set<int> held(other.begin(), other.end());
    for (std::size_t place = begin; place < end; ++place) {
      if (!held.contains(from[place])) continue;
      elements.push_back(from[place]);
      places.push_back(place);
    }
  }

  Sequence elements;
  std::vector<std::size_t> places;
};

void appendMiddle(const Candidates& before, const Candidates& after, Pairs& pairs) {
  if (before.elements.empty() || after.elements.empty()) return;
  dtl::Diff<int, Sequence> difference(before.elements, after.elements);
  difference.compose();
  std::size_t inBefore = 0;
  std::size_t inAfter = 0;
  const auto script = difference.getSes().getSequence();
  for (const auto& [element, info] : script) {
    if (info.type == dtl::SES_COMMON)
      pairs.emplace_back(before.places.at(inBefore), after.places.at(inAfter));
    if (info.type != dtl::SES_ADD) ++inBefore;
    if (info.type != dtl::SES_DELETE) ++inAfter;
  }
}

}  // namespace

Pairs commonElements(const Sequence& before, const Sequence& after) {
  const std::size_t shorter = std::min(before.size(), after.size());
  std::size_t start = 0;
  while (start < shorter && before[start] == after[start]) ++start;
  std::size_t end = 0;
  while (end < shorter - start && before[before.size() - 1 - end] == after[after.size() - 1 - end])
    ++end;

  Pairs pairs;
  pairs.reserve(shorter);
  for (std::size_t place = 0; place < start; ++place) pairs.emplace_back(place, place);
  appendMiddle(Candidates(before, start, before.size() - end, after),
               Candidates(after, start, after.size() - end, before), pairs);
  for (; end > 0; --end) pairs.emplace_back(before.size() - end, after.size() - end);
  return pairs;
}

}  // namespace reader
