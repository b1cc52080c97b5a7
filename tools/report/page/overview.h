// The servers of a page at one sight.
#pragma once

#include <vector>

#include "report/page/html.h"
#include "report/page/shown_reports.h"

namespace reader {

/// The reports that could be read, in the order of a page: those of one server together, the newest
/// first; the servers by their newest, that with the most errors first.
std::vector<const ShownReport*> inOrder(const std::vector<ShownReport>& reports);

/// Writes a row for each report, and then for each that could not be read.
void writeOverview(Html& html, const std::vector<ShownReport>& reports);

}  // namespace reader
