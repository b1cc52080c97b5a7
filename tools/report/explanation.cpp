#include "report/explanation.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "report/findings.h"
#include "report/line_tables.h"
#include "report/paragraph.h"

namespace reader {
namespace {

constexpr std::string_view introduction[] = {
    "The command \"qbreport check\" finds failures in a report of the diagnostics. Each finding "
    "has a "
    "code; this page has a chapter for each code, and \"qbreport explain CODE\" shows the chapter.",
    "A finding is an error where mail is not filtered or the add-on does not work, a warning where "
    "a "
    "part of the add-on does not work, and a note where it is usual or concerns the report alone.",
    "In the lines, words in angle brackets stand for what differs from report to report. \"The "
    "tool\" "
    "is the program qbdiagnostics, \"the add-on\" Quellbright Domino Module. QBConf.nsf, with the "
    "settings, users and events of the add-on, lies in the data directory of the server."};

// What stands for a value in a line that is shown.
std::string shownValue(std::string_view inner) {
  if (inner == "dots") return "...";
  const std::size_t sign = std::min(inner.find_first_of("=:"), inner.size());
  const std::string_view key = inner.substr(0, sign);
  const std::string_view rest = inner.substr(std::min(sign + 1, inner.size()));
  if (inner.substr(sign).starts_with('=')) return std::string(rest);
  if (rest == "yes" || rest == "no") return "";
  return '<' + std::string(key.empty() ? rest : key) + '>';
}

std::string shownLine(std::string_view pattern) {
  std::string line;
  while (!pattern.empty()) {
    const std::size_t open = std::min(pattern.find('{'), pattern.size());
    line += pattern.substr(0, open);
    pattern.remove_prefix(open);
    if (pattern.empty()) break;
    const std::size_t close = pattern.find('}');
    line += shownValue(pattern.substr(1, close - 1));
    pattern.remove_prefix(close + 1);
  }
  return line;
}

class Page {
 public:
  Page(std::size_t width, std::ostream& out) : width_(width), out_(out) {}

  void heading(std::string_view text, char underline) {
    out_ << text << '\n' << std::string(text.size(), underline) << '\n';
  }

  void part(std::string_view begin, std::string_view text) {
    if (!text.empty()) out_ << '\n' << paragraph(std::string(begin).append(text), 0, width_);
  }

  void chapter(Code code) {
    const CodeWords& words = wordsOf(code);
    heading(words.name, '-');
    part("Severity: ", nameOf(words.severity));
    lines(code);
    part("", words.lines);
    part("What it means: ", words.sentence);
    part("What to look at: ", words.look);
    part("What to do: ", words.advice);
    ownWords(code);
    part(
        "In a report from an export, with the option --offline, it is a note where only the server "
        "itself can tell: ",
        words.exportSentence);
    part("What to do then: ", words.exportAdvice);
  }

 private:
  void lines(Code code) {
    bool isFirst = true;
    for (const LineForm& form : lineForms()) {
      if (form.code != code) continue;
      const Section section = sectionOf(form);
      if (isFirst) {
        out_ << "\nLines, in the section "
             << nameOf(countsIn(section, form) ? section : Section::importing) << ":\n\n";
      }
      isFirst = false;
      out_ << "    " << shownLine(form.pattern) << '\n';
    }
  }

  // Neighbours of which the same is said stand together.
  void ownWords(Code code) {
    const LineWords* before = nullptr;
    for (const LineWords& line : lineWords()) {
      if (line.code != code) continue;
      const bool isSame =
          before != nullptr && line.sentence == before->sentence && line.advice == before->advice;
      if (before != nullptr && !isSame) said(*before);
      if (!isSame)
        out_ << "\nWhere the line " << (line.end.empty() ? "begins" : "ends") << " so:\n\n";
      out_ << "    " << line.begin.substr(0, line.begin.find_last_not_of(' ') + 1) << line.end
           << '\n';
      before = &line;
    }
    if (before != nullptr) said(*before);
  }

  void said(const LineWords& line) {
    part("What it means then: ", line.sentence);
    part("What to do then: ", line.advice);
  }

  std::size_t width_;
  std::ostream& out_;
};

}  // namespace

void writeExplanation(Code code, std::size_t width, std::ostream& out) {
  Page(width, out).chapter(code);
}

void writeExplanations(std::size_t width, std::ostream& out) {
  Page page(width, out);
  page.heading("The findings of qbreport", '=');
  for (const std::string_view text : introduction) page.part("", text);
  for (const Code code : allCodes()) {
    out << '\n';
    page.chapter(code);
  }
}

}  // namespace reader
