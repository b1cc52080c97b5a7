#include "report/findings_text.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string>

#include "report/findings.h"
#include "report/lines.h"
#include "report/paragraph.h"
#include "report/text.h"

namespace reader {
namespace {

class FindingsText {
 public:
  FindingsText(TextStyle style, std::ostream& out) : style_(style), out_(out) {}

  void add(const Finding& finding, const Verdict& verdict) {
    const bool isSame = total() > 0 && verdict.severity == before_.severity &&
                        verdict.sentence == before_.sentence && verdict.advice == before_.advice;
    if (!isSame) writeVerdict(verdict, finding.code);
    writeLine(finding);
    ++counts_.at(static_cast<std::size_t>(verdict.severity));
    before_ = verdict;
  }

  void writeCounts() {
    if (total() == 0) {
      out_ << "no findings\n";
      return;
    }
    out_ << '\n';
    std::ostringstream counts;
    const char* separator = "";
    for (const Severity severity : {Severity::error, Severity::warning, Severity::note}) {
      const std::size_t count = counts_.at(static_cast<std::size_t>(severity));
      if (count == 0) continue;
      counts << separator << count << ' ' << nameOf(severity) << (count == 1 ? "" : "s");
      separator = ", ";
    }
    out_ << paragraph(counts.str(), 0, style_.width);
  }

 private:
  std::size_t total() const { return counts_[0] + counts_[1] + counts_[2]; }

  void writeVerdict(const Verdict& verdict, Code code) {
    constexpr std::array colours = {"\x1B[1;36m", "\x1B[1;33m", "\x1B[1;31m"};
    const std::string_view name = nameOf(verdict.severity);
    const std::string sentence = std::string(name) + ": " + std::string(verdict.sentence) + " [" +
                                 std::string(nameOf(code)) + ']';
    const std::string text = paragraph(sentence, 0, style_.width);
    if (total() > 0) out_ << '\n';
    if (style_.isColoured) out_ << colours.at(static_cast<std::size_t>(verdict.severity));
    out_ << name << (style_.isColoured ? "\x1B[0m" : "") << text.substr(name.size());
    out_ << paragraph("What to do: " + std::string(verdict.advice), indent, style_.width);
  }

  void writeLine(const Finding& finding) {
    std::ostringstream line;
    line << nameOf(finding.section) << ", line " << finding.line << ": "
         << shown(withoutTabs(finding.text));
    out_ << paragraph(line.str(), indent, style_.width);
  }

  static constexpr std::size_t indent = 4;
  TextStyle style_;
  std::ostream& out_;
  Verdict before_{};
  std::array<std::size_t, 3> counts_{};
};

}  // namespace

std::optional<Severity> writeFindingsText(const Report& report, Origin origin, TextStyle style,
                                          std::ostream& out) {
  FindingsText text(style, out);
  std::optional<Severity> gravest;
  forEachFinding(report, [&](const Finding& finding) {
    const Verdict verdict = verdictOn(finding, origin);
    text.add(finding, verdict);
    gravest = std::max(gravest, std::optional(verdict.severity));
  });
  text.writeCounts();
  return gravest;
}

}  // namespace reader
