// Which lines of reports a page shows.
#pragma once

#include <vector>

#include "report/page/shown_reports.h"

namespace reader {

/// Chooses 100,000 lines: those around findings first, of which the worst go first, and then from
/// the beginning of each report, of all the same number.
void chooseLines(std::vector<ShownReport>& reports);

}  // namespace reader
