// The table of line_form.h, and the names of the sections.
#pragma once

#include <span>

#include "report/line_form.h"

namespace reader {

/// Of forms that fit one line at one place the first counts.
std::span<const LineForm> lineForms();

}  // namespace reader
