// The findings of a report, one a line.
#pragma once

#include <optional>
#include <ostream>
#include <string_view>

#include "report/report.h"
#include "report/verdict.h"

namespace reader {

/// Writes the columns of each finding, with tabs between them, and `first` before them. Gives the
/// gravest severity, nothing if there are no findings.
std::optional<Severity> writeFindings(const Report& report, Origin origin, std::string_view first,
                                      std::ostream& out);

}  // namespace reader
