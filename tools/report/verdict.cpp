#include "report/verdict.h"

#include <algorithm>

#include "report/lines.h"

namespace reader {

Verdict verdictOn(const Finding& finding, Origin origin) {
  const CodeWords& words = wordsOf(finding.code);
  if (origin == Origin::exports && finding.needsServer)
    return {Severity::note, words.exportSentence, words.exportAdvice};
  const std::string_view text = withoutTabs(finding.text);
  const auto own = std::ranges::find_if(lineWords(), [&](const LineWords& line) {
    return line.code == finding.code && text.starts_with(line.begin) && text.ends_with(line.end);
  });
  if (own == lineWords().end()) return {words.severity, words.sentence, words.advice};
  return {words.severity, own->sentence.empty() ? words.sentence : own->sentence, own->advice};
}

}  // namespace reader
