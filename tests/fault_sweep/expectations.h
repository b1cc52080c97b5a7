// What a run shows for each call that fails: the table of the report's lines.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "fault_sweep/sections.h"

namespace test {

/// What becomes of the run.
enum class Outcome {
  shown,   ///< A line tells the failure.
  silent,  ///< Nothing tells it; what was to be read may be missing.
  /// Nothing tells a failed close of a document that could not be read: that failure goes on alone,
  /// and what did not close stays open.
  hidden,
  notStarted,  ///< Exit status 0 and no report.
  crash        ///< The process ends abnormally.
};

struct Expectation {
  Outcome outcome;
  std::string line;     ///< The line that tells the failure.
  std::size_t lost;     ///< How many lines of the clean run may be missing or read differently.
  std::size_t changed;  ///< How many lines may be new besides the one that tells the failure.
};

/// What one failed call leads to. Fails the test where the table says nothing.
Expectation expectationOf(const Call& call);

/// The profile whose note stays open after a failed call: those of customer and server are held
/// bare while they are read. Empty for none.
std::string profileLeftOpen(const Call& call);

/// Lines that appear only where several calls of the operation fail.
std::vector<std::string> linesOfRepeatedFailures(const std::string& operation);

}  // namespace test
