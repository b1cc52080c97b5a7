// The difference of two reports.
#pragma once

#include <ostream>
#include <string>

#include "report/report.h"

namespace reader {

struct NamedReport {
  std::string name;
  const Report& report;
};

/// Writes the difference of two normal forms as UTF-8 in the unified form, nothing if there is
/// none. Gives whether there is one.
bool writeDifference(const NamedReport& before, const NamedReport& after, std::ostream& out);

}  // namespace reader
