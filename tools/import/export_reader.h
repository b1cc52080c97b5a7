// An export: which of its elements are notes, and what it says of its database.
#pragma once

#include <chrono>
#include <functional>

#include "import/export_file.h"
#include "import/report.h"
#include "store/line.h"
#include "store/note.h"

namespace dxl {

/// One reading of all exports of a store: what it is for, and what it has found.
struct Reading {
  std::chrono::hours zone;
  Report* leftOut;  ///< Where to tell of items and notes that are left out, or null.
  /// Takes each note that is not left out, its id 0 if it has none; whether the store has it.
  std::function<bool(store::Note&)> take;
  std::function<std::size_t(store::Note&)> strip;  ///< That of the options.
  Totals totals{};
  store::DatabaseInfo database{};  ///< From the first export that says something.
};

/// Reads an export. Throws ImportFailure.
void readExport(ExportFile& file, Reading& reading, Report& progress);

}  // namespace dxl
