// Takes a text apart from its front.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "store/status.h"

namespace store {

class TextFront {
 public:
  explicit TextFront(std::string_view text) : rest_(text) {}

  bool isAtEnd() const { return rest_.empty(); }
  bool isAt(char mark) const { return rest_.starts_with(mark); }

  bool take(char mark) {
    const bool isThere = isAt(mark);
    if (isThere) rest_.remove_prefix(1);
    return isThere;
  }

  /// All of these throw notATime where the text goes on with something else.
  void expect(std::string_view mark) {
    if (!rest_.starts_with(mark)) throw Failure(Status::notATime);
    rest_.remove_prefix(mark.size());
  }

  int number(std::size_t fewestDigits, std::size_t mostDigits) {
    int value = 0;
    std::size_t digits = 0;
    for (; digits < std::min(mostDigits, rest_.size()); ++digits) {
      const char digit = rest_[digits];
      if (digit < '0' || digit > '9') break;
      value = value * 10 + (digit - '0');
    }
    if (digits < fewestDigits) throw Failure(Status::notATime);
    rest_.remove_prefix(digits);
    return value;
  }

  void expectEnd() const {
    if (!isAtEnd()) throw Failure(Status::notATime);
  }

  void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size())); }

 private:
  std::string_view rest_;
};

}  // namespace store
