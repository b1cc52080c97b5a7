// The sections of a run: the calls that are made between two entries of the report, and the lines
// that depend on them.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "fault_sweep/world.h"

namespace test {

struct Section {
  const char* name;
  const char* after;   ///< How the entry begins that is written last before its calls.
  const char* before;  ///< How the first entry begins that does not depend on it; empty for none.
};

/// A call of the clean run with its place there.
struct Call {
  std::string operation;
  std::string subject;
  const Section* section = nullptr;
  /// From 0: of calls for the same item in a row, and otherwise of those of the operation in the
  /// section.
  int number = 0;
  bool isLast = false;  ///< The last of the operation in the section.
  bool failsAnyway = false;
};

std::vector<Call> placedCalls(const FinishedRun& clean);

/// Where the lines of a section are among those of the clean run: the first and the one behind the
/// last.
std::pair<std::size_t, std::size_t> linesOf(const Section& section,
                                            const std::vector<std::string>& lines);

}  // namespace test
