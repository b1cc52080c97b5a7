// What a section of a report tells, for those who show it.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "report/entry_reader.h"
#include "report/report.h"

namespace reader {

/// As yyyy-mm-ddThh:mm:ss
std::string timeOf(const Entry& entry);

/// The values of one thing, each under a key of its own, in the order of their lines.
using Object = std::vector<Value>;

/// The text under a key; empty if there is none.
std::string_view textOf(const Object& object, std::string_view key);

/// Each question takes a walk along the lines of the section, so that none of them is kept.
class SectionContent {
 public:
  SectionContent(const Report& report, std::span<const EntryNumber> entries);

  Section section() const { return first().section; }
  /// The time of its first entry.
  std::string time() const { return timeOf(first()); }

  /// What it has besides its lines of no form; of a section that failed, what is there
  /// nevertheless.
  std::vector<Target> targets() const;
  /// The line that says why it failed.
  std::optional<std::string_view> error() const { return error_; }
  /// Of the objects or lines of a target.
  std::size_t count(Target target) const { return counts_.at(static_cast<std::size_t>(target)); }
  /// Of the lines that no rule takes, and the failures but the first.
  std::size_t otherCount() const { return otherCount_; }

  /// The one object of Target::itself or Target::result.
  Object object(Target target) const;
  void forEachObject(Target target, const std::function<void(const Object&)>& take) const;
  /// The lines of Target::messages or Target::importMessages, without the tabs before them.
  void forEachMessage(Target target, const std::function<void(std::string_view)>& take) const;
  void forEachOther(const std::function<void(std::string_view)>& take) const;

 private:
  const Entry& first() const { return report_.entries()[entries_.front()]; }
  void forEach(const std::function<void(const Reading&)>& take) const;
  void forEach(Target target, const std::function<void(const Reading&)>& take) const;

  const Report& report_;
  std::span<const EntryNumber> entries_;
  std::array<std::size_t, 16> counts_{};  // of each target
  std::optional<std::string_view> error_{};
  std::size_t otherCount_ = 0;
};

/// When a run began, as yyyy-mm-ddThh:mm:ss; nothing if its beginning is lost.
std::optional<std::string> startOf(const Report& report, const Run& run);

}  // namespace reader
