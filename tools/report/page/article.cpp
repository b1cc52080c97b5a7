#include "report/page/article.h"

#include <algorithm>

#include "report/lines.h"
#include "report/page/sections.h"
#include "report/page/tables.h"

namespace reader {
namespace {

Markup nameOfSeverity(Severity severity) {
  switch (severity) {
    case Severity::error:
      return "Error";
    case Severity::warning:
      return "Warning";
    default:
      return "Note";
  }
}

class ArticleWriter {
 public:
  ArticleWriter(Html& html, const ShownReport& shown) : html_(html), shown_(shown) {}

  void write() {
    html_ << "<article id=r";
    html_.number(shown_.number) << ">\n<h2>";
    html_.text(shown_.title()) << "</h2>\n";
    writeFacts();
    writeFindings();
    writeSections(html_, shown_);
    writeLines();
    html_ << "</article>\n";
  }

 private:
  void writeFact(Markup name, std::string_view value) {
    if (value.empty()) return;
    html_ << "<dt>" << name << "<dd>";
    html_.text(value) << "\n";
  }

  void writeFacts() {
    const Summary& summary = shown_.summary;
    html_ << "<dl>\n";
    writeFact("Server", summary.server);
    writeFact("Report", shown_.name);
    writeFact("Started", summary.started.empty() ? "not known: the beginning of the run is lost"
                                                 : summary.started);
    html_ << "<dt>Run<dd>";
    writeMark(html_, summary.isComplete, "reached its end", "did not reach its end");
    html_ << "\n";
    writeFact("Domino version", summary.versions[0]);
    writeFact("Core version", summary.versions[1]);
    writeFact("VRX version", summary.versions[2]);
    writeFact("Configuration", summary.configuration);
    html_ << "</dl>\n";
  }

  void writeFindings() {
    const Findings& findings = shown_.findings;
    html_ << "<h3>Findings</h3>\n<p>";
    if (findings.groups.empty()) {
      html_ << "<span class=well>\u2713 No findings</span>\n";
      return;
    }
    if (findings.wrongLines.empty()) {
      html_ << "<span class=well>\u2713 No errors or warnings</span>, ";
    } else {
      html_.count(findings.count(Severity::error), "error", "errors") << ", ";
      html_.count(findings.count(Severity::warning), "warning", "warnings") << ", ";
    }
    html_.count(findings.count(Severity::note), "note", "notes") << "\n<ul class=findings>\n";
    for (const Group& group : findings.groups) writeGroup(group);
    html_ << "</ul>\n";
  }

  void writeGroup(const Group& group) {
    html_ << "<li class=";
    html_.text(nameOf(group.verdict.severity))
        << "><p><strong>" << nameOfSeverity(group.verdict.severity) << ":</strong> ";
    html_.text(group.verdict.sentence) << "\n<p>What to do: ";
    html_.text(group.verdict.advice) << "\n<ul>\n";
    for (const Finding& finding : group.findings) writeFinding(finding, group.verdict.severity);
    html_ << "</ul>\n";
    writeRest(html_, group.count);
  }

  void writeFinding(const Finding& finding, Severity severity) {
    html_ << "<li data-code=";
    html_.text(nameOf(finding.code)) << " data-severity=";
    html_.text(nameOf(severity)) << ">";
    const bool isShown = shown_.lines[finding.line];
    if (isShown) {
      html_ << "<a href=\"#r";
      html_.number(shown_.number) << "-";
      html_.number(finding.line) << "\">";
    }
    html_ << "Line ";
    html_.number(finding.line);
    if (isShown) html_ << "</a>";
    html_ << ", ";
    html_.text(nameOf(finding.section)) << ": <code>";
    html_.text(withoutTabs(finding.text)) << "</code>\n";
  }

  void writeLines() {
    const auto shownCount = static_cast<std::size_t>(std::ranges::count(shown_.lines, true));
    html_ << "<h3>Report</h3>\n";
    if (shownCount + 1 < shown_.lines.size()) {
      html_ << "<p>";
      html_.number(shown_.lines.size() - 1 - shownCount) << " of ";
      html_.count(shown_.lines.size() - 1, "line", "lines") << " are not shown.\n";
    }
    html_ << "<ol class=report>\n";
    const std::string& bytes = shown_.report->bytes();
    std::size_t at = shown_.report->begin();
    std::size_t before = 0;
    Line line;
    for (std::size_t number = 1; takeLine(bytes, at, line); ++number) {
      if (!shown_.lines[number]) continue;
      writeLine(number, before, line.text);
      before = number;
    }
    html_ << "</ol>\n";
  }

  // The list counts by itself, but for lines that are left out.
  void writeLine(std::size_t number, std::size_t before, std::string_view text) {
    html_ << "<li id=r";
    html_.number(shown_.number) << "-";
    html_.number(number);
    if (number != before + 1) {
      html_ << " value=";
      html_.number(number);
    }
    html_ << ">";
    html_.line(text) << "\n";
  }

  Html& html_;
  const ShownReport& shown_;
};

}  // namespace

void writeArticle(Html& html, const ShownReport& shown) { ArticleWriter(html, shown).write(); }

}  // namespace reader
