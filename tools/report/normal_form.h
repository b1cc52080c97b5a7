// A report without what differs from run to run.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "report/report.h"

namespace reader {

struct NormalSection {
  Section name;
  std::size_t begin;  ///< Of its lines.
  std::size_t end;
};

/// The lines of a report as UTF-8, without time stamps, process and thread numbers, zero bytes, a
/// cut last line and the three events that the tool writes itself, and with zeros for the time in
/// the name of its test file. The batches of an import are one: what they repeat, once, then their
/// entries, results and messages. They lean on the report, which outlives them.
class NormalForm {
 public:
  explicit NormalForm(const Report& report);

  const std::vector<std::string_view>& lines() const { return lines_; }
  const std::vector<std::vector<NormalSection>>& runs() const { return runs_; }

 private:
  class ImportParts;

  void addEntry(const Report& report, EntryNumber number);
  void addImport(const Report& report, const Run& run);
  std::string_view normalLine(Section section, std::string_view line);

  std::vector<std::string_view> lines_;
  std::deque<std::string> changed_;
  std::vector<std::vector<NormalSection>> runs_;
};

}  // namespace reader
