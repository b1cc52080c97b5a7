// Values that may stand in the texts of failures and messages.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "report/place_table.h"
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
  /// none of them over another, the longest first.
  void forEachIn(std::string_view message, const Take& take) const;

 private:
  struct Hit {
    std::size_t at;
    std::size_t size;
    const Pseudonym* pseudonym;
  };

  void add(std::uint32_t place);
  std::vector<Hit> hitsIn(std::string_view message) const;
  std::uint32_t findInAnyCase(std::string_view text) const;
  const Pseudonym* find(std::string_view text) const;

  const std::deque<Pseudonym>& pseudonyms_;
  PlaceTable places_{};
  std::vector<std::uint32_t> others_{};  // by place: the next that differs in case alone
  std::unordered_map<std::uint32_t, std::vector<std::size_t>> sizes_{};  // by the beginning
};

}  // namespace reader
