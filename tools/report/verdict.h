// What a finding means, and what to do about it.
#pragma once

#include <string_view>

#include "report/findings.h"

namespace reader {

struct Verdict {
  Severity severity;
  std::string_view sentence;
  std::string_view advice;
};

Verdict verdictOn(const Finding& finding);

}  // namespace reader
