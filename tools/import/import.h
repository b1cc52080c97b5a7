// Makes a store of the stand-in Notes library of XML exports of databases.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "import/failure.h"
#include "import/report.h"
#include "store/note.h"

namespace dxl {

struct ImportOptions {
  std::chrono::hours zone{0};  ///< Of times without an offset, in hours west of GMT.
  bool replaces = false;       ///< Whether a store that exists is replaced.
  std::vector<std::string> exports;
  std::string store;
  /// Takes from a note the items that are not to be kept, and gives their number.
  std::function<std::size_t(store::Note&)> strip = {};
};

/// Makes a store of exports, tells `report` what is left out, and gives the numbers of the store.
/// Throws ImportFailure, and then has left everything as it was.
Totals importExports(const ImportOptions& options, Report& report);

/// The attribute "path" of the root element of an export, of whatever name; nothing if it has none.
/// Reads no further than that element. Throws ImportFailure with file and line.
std::optional<std::string> pathOfExport(const std::string& file);

}  // namespace dxl
