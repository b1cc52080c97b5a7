// The names that stand in place of values in a masked report.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "report/masked_parts.h"

namespace reader {

struct Pseudonym {
  MaskKind kind;
  std::uint32_t number;  ///< From 1, for each kind.
  std::string_view value;
};

std::string textOf(const Pseudonym& pseudonym);

/// What at the beginning of `text` looks like one; empty if nothing does.
std::string_view pseudonymAt(std::string_view text);

/// Whose number is that of the value the first to be seen, and the same whenever it is seen again.
/// It leans on the texts of the values, which outlive it.
class Pseudonyms {
 public:
  /// Begins with those that were given `earlier`. New ones pass over what `report` holds already.
  Pseudonyms(std::string_view report, const std::deque<Pseudonym>& earlier);

  Pseudonyms(const Pseudonyms&) = delete;
  Pseudonyms& operator=(const Pseudonyms&) = delete;
  ~Pseudonyms() = default;

  const Pseudonym& of(MaskKind kind, std::string_view value);

  /// All of them, the earliest first.
  const std::deque<Pseudonym>& all() const { return all_; }

 private:
  using Numbers = std::vector<bool>;

  void findHeld(std::string_view report);
  void holdNumbered(std::string_view report, std::size_t hyphen);
  void holdReplicaIds(std::string_view digits);
  void hold(MaskKind kind, std::uint64_t number);
  bool isTaken(MaskKind kind, std::uint32_t number) const;

  std::size_t mostNumbers_;
  std::array<Numbers, pseudonymKinds> held_{};
  std::array<std::unordered_set<std::uint32_t>, pseudonymKinds> given_{};
  std::array<std::uint32_t, pseudonymKinds> last_{};
  std::array<std::unordered_map<std::string_view, const Pseudonym*>, pseudonymKinds> byValue_{};
  std::deque<Pseudonym> all_{};
};

}  // namespace reader
