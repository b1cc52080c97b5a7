// What a finding means, and what to do about it.
#pragma once

#include <cstdint>
#include <string_view>

#include "report/findings.h"

namespace reader {

/// Where a report was made.
enum class Origin : std::uint8_t { server, exports };

struct Verdict {
  Severity severity;
  std::string_view sentence;
  std::string_view advice;
};

Verdict verdictOn(const Finding& finding, Origin origin);

}  // namespace reader
