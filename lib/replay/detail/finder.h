// Search for a text in time linear in text and pattern, whatever the two hold.
//
// The standard library's own search starts anew behind each beginning of the pattern and so takes
// the product of both lengths where much of the pattern repeats. This one never steps back in the
// text: a table tells how much of a broken match is still the beginning of another.
#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace replay {

/// Finds one pattern; raises std::invalid_argument for an empty one. `Fold` gives the form in which
/// a character of the text is compared; the pattern is given in that form, and its first character
/// has no other.
template <typename Fold = std::identity>
class finder {
 public:
  explicit finder(std::string pattern, Fold fold = {})
      : pattern_(std::move(pattern)), borders_(pattern_.size(), 0), fold_(fold) {
    if (pattern_.empty()) throw std::invalid_argument("finder: the pattern is empty");
    for (std::size_t at = 1, matched = 0; at < pattern_.size(); ++at) {
      matched = extended(matched, pattern_[at]);
      borders_[at] = matched;
    }
  }

  /// The first occurrence at or behind `from`, or npos.
  std::size_t find(std::string_view text, std::size_t from) const {
    std::size_t matched = 0;
    for (std::size_t at = from; at < text.size(); ++at) {
      if (matched > 0) {
        matched = extended(matched, fold_(text[at]));
      } else {
        at = text.find(pattern_.front(), at);
        if (at == std::string_view::npos) break;
        matched = 1;
      }
      if (matched == pattern_.size()) return at + 1 - matched;
    }
    return std::string_view::npos;
  }

 private:
  // How much of the pattern ends with `next` where `matched` of it stand before.
  std::size_t extended(std::size_t matched, char next) const {
    while (matched > 0 && pattern_[matched] != next) matched = borders_[matched - 1];
    return pattern_[matched] == next ? matched + 1 : 0;
  }

  std::string pattern_;
  std::vector<std::size_t> borders_;  // of each beginning, the longest end that begins it as well
  Fold fold_;
};

}  // namespace replay
