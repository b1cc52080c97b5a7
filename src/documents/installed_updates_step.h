// The step of the run that lists what was installed of the add-on.
#pragma once

#include "base/report_log.h"

namespace documents {

/// Writes the section, the console first.
void showInstalledUpdates(base::ReportLog& report, bool writeToConsole);

}  // namespace documents
