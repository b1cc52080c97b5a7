// What an import says on standard error.
#pragma once

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace dxl {

/// The numbers of the last line.
struct Totals {
  std::uint64_t notes = 0;
  std::uint64_t profiles = 0;
  std::uint64_t designElements = 0;
  std::uint64_t itemsKept = 0;
  std::uint64_t leftOut = 0;
  std::uint64_t profilesInNoteForm = 0;  ///< Which are left out.
  bool hasOtherReplica = false;          ///< Two exports name different replica ids.
  std::uint64_t stripped = 0;            ///< Items that were not to be kept.
};

class Report {
 public:
  /// What is left out is counted for the last lines; with a `list` each is a line of that, too.
  explicit Report(std::ostream* list);
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  ~Report();

  /// `id` is 0 for a note without one.
  void itemLeftOut(std::uint32_t id, std::string_view name, std::string_view type);
  void profileFormLeftOut(std::uint32_t id);

  /// How much of a file is read, for a person to see; `size` is more than 0.
  void progress(std::string_view file, std::uint64_t done, std::uint64_t size);

  /// The last lines: what was left out the most, and the numbers.
  void totals(const Totals& totals);

  /// Why the import failed.
  void failure(std::string_view words);

 private:
  using Kind = std::pair<std::string, std::string>;  // what it is, and the name of its item

  void leftOut(Kind kind, std::uint32_t id, std::string_view what);
  void table();
  void clearProgress();
  void line(std::string_view text);

  std::ostream* list_;
  std::map<Kind, std::uint64_t> counts_;
  std::uint64_t ofOtherKinds_ = 0;
  bool isTerminal_;
  std::string progress_;
  std::string pending_;
};

}  // namespace dxl
