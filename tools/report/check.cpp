#include "report/check.h"

#include <algorithm>

#include "report/findings.h"
#include "report/lines.h"
#include "report/text.h"

namespace reader {

std::optional<Severity> writeFindings(const Report& report, Origin origin, std::string_view first,
                                      std::ostream& out) {
  std::optional<Severity> gravest;
  forEachFinding(report, [&](const Finding& finding) {
    const Verdict verdict = verdictOn(finding, origin);
    out << first << nameOf(finding.code) << '\t' << nameOf(finding.section) << '\t' << finding.line
        << '\t';
    out << shown(withoutTabs(finding.text)) << '\t' << verdict.sentence << '\t'
        << nameOf(verdict.severity) << '\t' << verdict.advice << '\n';
    gravest = std::max(gravest, std::optional(verdict.severity));
  });
  return gravest;
}

}  // namespace reader
