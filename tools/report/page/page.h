// Reports as one page for people.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "report/page/shown_reports.h"

namespace reader {

/// Writes a page of HTML with all that it needs, from reports as they were read or failed to be.
/// The same reports give the same bytes.
void writePage(std::vector<ShownReport>& reports, const std::string& title, Origin origin,
               std::ostream& out);

}  // namespace reader
