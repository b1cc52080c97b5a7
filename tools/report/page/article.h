// One report on a page.
#pragma once

#include "report/page/html.h"
#include "report/page/shown_reports.h"

namespace reader {

/// Writes what a report tells: of which server it is, what is wrong, its sections, and its lines.
void writeArticle(Html& html, const ShownReport& shown);

}  // namespace reader
