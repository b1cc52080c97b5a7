// Values that may stand in the texts of failures and messages.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "report/pseudonyms.h"

namespace reader {

/// It leans on the pseudonyms, which outlive it and stay as they are.
class KnownValues {
 public:
  explicit KnownValues(const std::deque<Pseudonym>& pseudonyms);

  KnownValues(const KnownValues&) = delete;
  KnownValues& operator=(const KnownValues&) = delete;
  ~KnownValues() = default;

  using Take = std::function<void(std::string_view, const Pseudonym&)>;

  /// Hands out, in order, the values that stand in `message`: words of their own, in whatever case,
  /// none of them over another, the longest first. The tool writes paths as UTF-8 of their bytes,
  /// as if those were Latin-1: a value in this doubled form counts too.
  void forEachIn(std::string_view message, const Take& take) const;

 private:
  struct Hit {
    std::size_t at;
    std::size_t size;
    const Pseudonym* pseudonym;
  };

  struct Hash {
    std::size_t operator()(std::string_view text) const;
  };
  struct Equal {
    bool operator()(std::string_view left, std::string_view right) const;
  };

  std::vector<Hit> hitsIn(std::string_view message) const;
  void add(std::string_view form, std::size_t place);
  const Pseudonym* find(std::string_view text) const;

  const std::deque<Pseudonym>& pseudonyms_;
  std::deque<std::string> doubled_{};
  // Places of pseudonyms by the value in any case; several may differ in that alone. A doubled form
  // has a place behind them all, in their order.
  std::unordered_multimap<std::string_view, std::size_t, Hash, Equal> places_{};
  std::unordered_map<std::uint32_t, std::vector<std::size_t>> sizes_{};  // by the beginning
};

}  // namespace reader
