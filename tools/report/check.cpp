#include "report/check.h"

#include "report/findings.h"
#include "report/text.h"
#include "report/verdict.h"

namespace reader {

bool writeFindings(const Report& report, std::ostream& out) {
  bool hasFindings = false;
  forEachFinding(report, [&](const Finding& finding) {
    out << nameOf(finding.code) << '\t' << nameOf(finding.section) << '\t' << finding.line << '\t';
    writeShown(out, finding.text);
    out << '\t' << verdictOn(finding).sentence << '\n';
    hasFindings = true;
  });
  return hasFindings;
}

}  // namespace reader
