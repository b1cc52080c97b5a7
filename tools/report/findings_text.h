// The findings of a report, as a person reads them.
#pragma once

#include <cstddef>
#include <optional>
#include <ostream>

#include "report/report.h"
#include "report/verdict.h"

namespace reader {

struct TextStyle {
  std::size_t width;
  bool isColoured;
};

/// Writes what the findings mean, what to do, and their lines; then how many there are. Neighbours
/// of which the same is said stand together. Gives the gravest severity, nothing if there are no
/// findings.
std::optional<Severity> writeFindingsText(const Report& report, Origin origin, TextStyle style,
                                          std::ostream& out);

}  // namespace reader
