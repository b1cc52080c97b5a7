#include "report/findings.h"

#include <optional>

#include "report/entry_reader.h"

namespace reader {
namespace {

using Show = std::function<void(const Finding&)>;

Finding findingOf(Code code, const Report& report, EntryNumber number) {
  const Entry& entry = report.entries()[number];
  return {code, entry.section, entry.line, report.firstLine(entry)};
}

// The import repeats the messages of the directory, and the directory imports nothing.
bool countsIn(Section section, const LineForm& form) {
  if (form.code == Code::none) return false;
  if (form.target == Target::messages) return section == Section::loadingDirectory;
  return form.target != Target::importMessages || section == Section::importing;
}

// The findings of one entry's lines.
class EntryFindings {
 public:
  EntryFindings(const Report& report, EntryNumber number, bool isNewest, const Show& show)
      : report_(report), number_(number), isNewest_(isNewest), show_(show) {}

  void run() {
    const Section section = report_.entries()[number_].section;
    EntryReader reader(report_, number_);
    for (Reading reading{}; reader.next(reading);) {
      if (reading.match.form == nullptr) continue;
      const LineForm& form = *reading.match.form;
      const Finding finding{form.code, section, reading.number, reading.text};
      if (form.target == Target::rows) noteRow(finding);
      // What follows the title tells whether it is a finding.
      if (form.code == Code::noActive) title_ = finding;
      if (form.code != Code::noActive && form.code != Code::severalActive &&
          countsIn(section, form))
        show_(finding);
    }
    if (title_ && !isNewest_) show_(*title_);
  }

 private:
  void noteRow(const Finding& finding) {
    title_.reset();
    if (finding.code != Code::severalActive) return;
    if (hasConfiguration_) show_(finding);
    hasConfiguration_ = true;
  }

  const Report& report_;
  EntryNumber number_;
  bool isNewest_;
  const Show& show_;
  std::optional<Finding> title_{};
  bool hasConfiguration_ = false;
};

bool isLateStart(const Report& report, const Run& run, std::size_t at) {
  const auto textAt = [&](std::size_t index) {
    return report.firstLine(report.entries()[run.entries[index]]);
  };
  return textAt(at) == Report::firstText && at + 1 < run.entries.size() &&
         textAt(at + 1) != "SYSTEM ENVIRONMENT:";
}

}  // namespace

bool isComplete(const Report& report, const Run& run) {
  return report.firstLine(report.entries()[run.entries.back()]) == Report::lastText;
}

void forEachFinding(const Report& report, const Show& show) {
  if (report.isOverwritten()) show(findingOf(Code::overwritten, report, 0));
  bool isFirstRun = true;
  for (const Run& run : report.runs()) {
    if (!isFirstRun) show(findingOf(Code::severalRuns, report, run.entries.front()));
    isFirstRun = false;
    for (std::size_t at = 0; at < run.entries.size(); ++at) {
      const EntryNumber number = run.entries[at];
      if (isLateStart(report, run, at)) show(findingOf(Code::lateStart, report, number));
      EntryFindings(report, number, at + 1 == run.entries.size(), show).run();
    }
    if (!isComplete(report, run)) show(findingOf(Code::noEnd, report, run.entries.back()));
  }
}

}  // namespace reader
