// A store of what was read: which notes are in it, under which ids, and its lines.
#pragma once

#include <string>

#include "import/export_reader.h"
#include "import/report.h"

namespace dxl {

/// Settles the ids of the notes in the spool, makes the store `target` of them, and gives its
/// numbers. Throws ImportFailure.
Totals writeStore(Import& import, const std::string& target, bool replaces);

}  // namespace dxl
