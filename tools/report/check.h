// The findings of a report, one a line.
#pragma once

#include <ostream>

#include "report/report.h"

namespace reader {

/// Gives whether there are any.
bool writeFindings(const Report& report, std::ostream& out);

}  // namespace reader
