// The findings of a report, one a line.
#pragma once

#include <optional>
#include <ostream>

#include "report/report.h"
#include "report/verdict.h"

namespace reader {

/// Writes the columns of each finding, with tabs between them. Gives the gravest severity, nothing
/// if there are no findings.
std::optional<Severity> writeFindings(const Report& report, Origin origin, std::ostream& out);

}  // namespace reader
