// An export: which of its elements are notes, and what it says of its database.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "import/descriptor.h"
#include "import/note_reader.h"
#include "import/report.h"
#include "import/spool.h"
#include "import/xml_reader.h"

namespace dxl {

/// Empty texts where nothing is said.
struct DatabaseDescription {
  std::string title;
  std::string replicaId;  ///< Sixteen capital hexadecimal digits.

  /// Takes what is missing from another.
  void complete(const DatabaseDescription& other);
};

/// What the exports of one store fill together.
struct Import {
  std::chrono::hours zone;
  Report& report;
  Spool& spool;
  Totals totals{};                 ///< Of what does not come into the spool.
  DatabaseDescription database{};  ///< From the first export that says something.
};

/// Reads an export into `import`. Throws ImportFailure.
void readExport(Descriptor& file, Import& import);

}  // namespace dxl
