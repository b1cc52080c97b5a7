// What an import says on standard error.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace dxl {

/// The numbers of the last line.
struct Totals {
  std::uint64_t notes = 0;
  std::uint64_t profiles = 0;
  std::uint64_t designElements = 0;
  std::uint64_t itemsKept = 0;
  std::uint64_t leftOut = 0;
};

class Report {
 public:
  Report();
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  ~Report();

  /// `id` is 0 for a note without one.
  void itemLeftOut(std::uint32_t id, std::string_view name, std::string_view type);
  void profileFormLeftOut(std::uint32_t id);

  /// How much of a file is read, for a person to see; `size` is more than 0.
  void progress(std::string_view file, std::uint64_t done, std::uint64_t size);

  void totals(const Totals& totals);

  /// Why the import failed.
  void failure(std::string_view words);

 private:
  void clearProgress();
  void line(std::string_view text);

  bool isTerminal_;
  std::string progress_;
  std::string pending_;
};

}  // namespace dxl
