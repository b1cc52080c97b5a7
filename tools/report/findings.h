// What a report shows of failures.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "report/code.h"
#include "report/line_form.h"
#include "report/report.h"

namespace reader {

struct Finding {
  Code code;
  Section section;
  std::uint32_t line;     ///< Its number in the file, from 1.
  std::string_view text;  ///< Of an entry's first line what stands behind the head.
  /// In a report that was made from an export it tells nothing of the server.
  bool needsServer = false;
};

/// Whether a line of this form counts there. Failures of the directory and of the import stand in
/// the sections of both, and count in their own.
bool countsIn(Section section, const LineForm& form);

/// Hands out the findings of a report: that of the file, then run by run in the order of the lines.
void forEachFinding(const Report& report, const std::function<void(const Finding&)>& show);

/// Whether the last thing that a run wrote is the end of a run.
bool isComplete(const Report& report, const Run& run);

}  // namespace reader
