// The last steps of the run: it writes three test events, one for each category, and then lists all
// events. Both write for themselves, the console first, and report what fails as a line of their
// section.
#pragma once

#include "base/report_log.h"

namespace documents {

void createTestEvents(base::ReportLog& report, bool writeToConsole);

void showEvents(base::ReportLog& report, bool writeToConsole);

}  // namespace documents
