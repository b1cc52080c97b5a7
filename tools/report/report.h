// A report, cut into its runs, entries and sections.
//
// It keeps the bytes of the file and a small record of each entry; lines are read from the bytes
// whenever they are asked for, so that a file of any size costs little more than itself.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "report/lines.h"
#include "report/section.h"

namespace reader {

/// A file that is none, in words for the user.
class NoReport : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Entry {
  std::size_t begin;      ///< Of its head, in the file's bytes.
  std::size_t textBegin;  ///< Of its first line, behind the head.
  std::uint64_t time;     ///< Its decimal digits: year, month, day, hour, minute, second.
  std::uint32_t line;     ///< The number of its head's line in the file, from 1.
  std::uint32_t run;
  Section section;
  bool isMisplaced;  ///< It reads as a failure, but not where the tool writes that.
};

using EntryNumber = std::uint32_t;

struct Run {
  std::string_view process;  ///< Digits without zeros before them.
  std::string_view thread;
  std::span<const EntryNumber> entries;  ///< In the order in which they were written.
};

class Report {
 public:
  /// Raises NoReport. Wide text becomes UTF-8.
  explicit Report(std::string bytes);
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  ~Report() = default;

  const std::string& bytes() const { return bytes_; }
  /// Where its first line begins, behind a byte order mark.
  std::size_t begin() const { return begin_; }
  /// In the order of the file.
  const std::vector<Entry>& entries() const { return entries_; }
  const std::vector<Run>& runs() const { return runs_; }

  /// Whether the report reached its size limit, so that its parts stand in another order.
  bool isOverwritten() const { return isOverwritten_; }

  std::string_view firstLine(const Entry& entry) const;

  /// The entries of the section that `rest` begins with, which it then lacks: neighbours of one
  /// name, but those of the import one by one. Empty if nothing is left.
  std::span<const EntryNumber> takeSection(std::span<const EntryNumber>& rest) const;

  /// The text of the newest entry of a run, and of the first of a run that was written whole.
  static constexpr std::string_view lastText = "Done Testing Get VRX events.";
  static constexpr std::string_view firstText = "STARTING LOG";

 private:
  void findEntries();
  void groupRuns(std::vector<EntryNumber> order);
  void tellSections(const Run& run);
  Section toldSection(const Entry& entry) const;
  std::vector<EntryNumber> readingOrder() const;

  std::string bytes_;
  std::size_t begin_ = 0;
  std::vector<Entry> entries_;
  std::vector<EntryNumber> order_;
  std::vector<Run> runs_;
  bool isOverwritten_ = false;
};

}  // namespace reader
