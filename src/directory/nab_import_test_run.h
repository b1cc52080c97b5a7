// The step of the run that shows what an import of the directories would do.
#pragma once

#include "base/report_log.h"

namespace directory {

/// Simulates the import to its end and reports each of its steps. Raises what NabImport::step
/// raises.
void testNabImport(base::ReportLog& report, bool writeToConsole);

}  // namespace directory
