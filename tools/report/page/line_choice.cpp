#include "report/page/line_choice.h"

#include <algorithm>

#include "report/lines.h"

namespace reader {
namespace {

constexpr std::size_t mostLines = 100'000;
constexpr std::size_t linesAround = 2;

std::size_t countLines(const Report& report) {
  const std::string& bytes = report.bytes();
  const auto feeds = static_cast<std::size_t>(std::ranges::count(bytes, '\n'));
  return feeds + (bytes.empty() || bytes.back() == '\n' ? 0 : 1);
}

// Shows the lines from `first` to `last`, as far as there is room.
void show(std::vector<bool>& lines, std::size_t first, std::size_t last, std::size_t& room) {
  for (std::size_t line = first; line <= last && line < lines.size() && room > 0; ++line) {
    if (lines[line]) continue;
    lines[line] = true;
    --room;
  }
}

void showAround(ShownReport& shown, std::uint32_t line, std::size_t& room) {
  const std::size_t first = line - std::min<std::size_t>(line - 1, linesAround);
  show(shown.lines, first, line + linesAround, room);
}

// Those that the page lists go before others, and the worst before the usual.
void showFindings(std::vector<ShownReport>& reports, std::size_t& room) {
  for (const Severity severity : {Severity::error, Severity::warning, Severity::note}) {
    for (ShownReport& shown : reports) {
      for (const Group& group : shown.findings.groups) {
        if (group.verdict.severity != severity) continue;
        for (const Finding& finding : group.findings) showAround(shown, finding.line, room);
      }
    }
  }
  for (ShownReport& shown : reports) {
    if (!shown.report) continue;
    forEachFinding(*shown.report,
                   [&](const Finding& finding) { showAround(shown, finding.line, room); });
  }
}

// As many of the lines that are not shown yet, from the beginning.
void showMore(std::vector<bool>& lines, std::size_t count, std::size_t& room) {
  std::size_t more = std::min(count, room);
  room -= more;
  for (std::size_t line = 1; line < lines.size() && more > 0; ++line) {
    if (lines[line]) continue;
    lines[line] = true;
    --more;
  }
  room += more;
}

}  // namespace

void chooseLines(std::vector<ShownReport>& reports) {
  std::size_t room = mostLines;
  std::size_t readable = 0;
  for (ShownReport& shown : reports) {
    if (!shown.report) continue;
    ++readable;
    shown.lines.assign(countLines(*shown.report) + 1, false);
  }
  if (readable == 0) return;
  showFindings(reports, room);
  const std::size_t each = room / readable;
  for (ShownReport& shown : reports) showMore(shown.lines, each, room);
  for (ShownReport& shown : reports) showMore(shown.lines, room, room);
}

}  // namespace reader
