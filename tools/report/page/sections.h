// The sections of a report.
#pragma once

#include "report/page/html.h"
#include "report/page/shown_reports.h"

namespace reader {

/// Writes the sections of all runs, each to be folded; those with errors or warnings are open.
void writeSections(Html& html, const ShownReport& shown);

}  // namespace reader
