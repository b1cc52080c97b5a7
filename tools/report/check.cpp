#include "report/check.h"

#include "report/findings.h"
#include "report/text.h"

namespace reader {

bool writeFindings(const Report& report, std::ostream& out) {
  bool hasFindings = false;
  forEachFinding(report, [&](const Finding& finding) {
    out << nameOf(finding.code) << '\t' << nameOf(finding.section) << '\t' << finding.line << '\t';
    writeShown(out, finding.text);
    out << '\t' << sentenceOf(finding.code) << '\n';
    hasFindings = true;
  });
  return hasFindings;
}

}  // namespace reader
