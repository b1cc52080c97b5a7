// Numbers as bars, in pictures that have them as words too.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "report/page/html.h"

namespace reader {

struct Bar {
  std::string label;
  std::uint64_t number;
};

/// One bar below the other, each behind its label and in front of its number.
void writeBars(Html& html, const std::vector<Bar>& bars);

}  // namespace reader
