#include "report/findings.h"

#include <algorithm>
#include <array>
#include <optional>

#include "report/entry_reader.h"

namespace reader {
namespace {

using Show = std::function<void(const Finding&)>;

Finding findingOf(Code code, const Report& report, EntryNumber number) {
  const Entry& entry = report.entries()[number];
  return {code, entry.section, entry.line, report.firstLine(entry)};
}

// What a run tells of the variables that name what the server loads.
class LoadVariables {
 public:
  void note(const Match& match) {
    constexpr std::array<std::string_view, count> names = {"ServerTasks", "EXTMGR_ADDINS",
                                                           "NSF_HOOKS"};
    if (std::ranges::find(names, match.values[0].text) == names.end()) return;
    if (isBlank(match.values[1].text)) {
      ++empty_;
    } else {
      isAnySet_ = true;
    }
  }

  /// An export holds no notes.ini: where none was given, all of them are there and empty.
  bool areUnset() const { return empty_ >= count && !isAnySet_; }

 private:
  static constexpr std::size_t count = 3;
  std::size_t empty_ = 0;
  bool isAnySet_ = false;
};

// The findings of one entry's lines.
class EntryFindings {
 public:
  EntryFindings(const Report& report, EntryNumber number, bool isNewest, LoadVariables& variables,
                const Show& show)
      : report_(report), number_(number), isNewest_(isNewest), variables_(variables), show_(show) {}

  void run() {
    const Section section = report_.entries()[number_].section;
    EntryReader reader(report_, number_);
    for (Reading reading{}; reader.next(reading);) {
      if (reading.match.form == nullptr) continue;
      const LineForm& form = *reading.match.form;
      if (form.target == Target::variables) variables_.note(reading.match);
      const Finding finding{form.code, section, reading.number, reading.text,
                            needsServer(form.code)};
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
  bool needsServer(Code code) const {
    return code == Code::fileMissing || (code == Code::notWired && variables_.areUnset());
  }

  void noteRow(const Finding& finding) {
    title_.reset();
    if (finding.code != Code::severalActive) return;
    if (hasConfiguration_) show_(finding);
    hasConfiguration_ = true;
  }

  const Report& report_;
  EntryNumber number_;
  bool isNewest_;
  LoadVariables& variables_;
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

// The import repeats the messages of the directory, and the directory imports nothing.
bool countsIn(Section section, const LineForm& form) {
  if (form.code == Code::none) return false;
  if (form.target == Target::messages) return section == Section::loadingDirectory;
  return form.target != Target::importMessages || section == Section::importing;
}

bool isComplete(const Report& report, const Run& run) {
  return report.firstLine(report.entries()[run.entries.back()]) == Report::lastText;
}

void forEachFinding(const Report& report, const Show& show) {
  if (report.isOverwritten()) show(findingOf(Code::overwritten, report, 0));
  bool isFirstRun = true;
  for (const Run& run : report.runs()) {
    if (!isFirstRun) show(findingOf(Code::severalRuns, report, run.entries.front()));
    isFirstRun = false;
    LoadVariables variables;
    for (std::size_t at = 0; at < run.entries.size(); ++at) {
      const EntryNumber number = run.entries[at];
      if (isLateStart(report, run, at)) show(findingOf(Code::lateStart, report, number));
      EntryFindings(report, number, at + 1 == run.entries.size(), variables, show).run();
    }
    if (!isComplete(report, run)) show(findingOf(Code::noEnd, report, run.entries.back()));
  }
}

}  // namespace reader
