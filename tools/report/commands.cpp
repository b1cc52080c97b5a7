#include "report/commands.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <sstream>

#include "platform/console.h"
#include "platform/terminal.h"
#include "report/check.h"
#include "report/explanation.h"
#include "report/files.h"
#include "report/findings_text.h"
#include "report/json.h"
#include "report/map_file.h"
#include "report/mask.h"
#include "report/page/page.h"
#include "report/text.h"
#include "report/unified_diff.h"
#include "report/unmask.h"

namespace reader {
namespace {

bool isSet(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

// A Windows console takes characters, not bytes.
std::optional<Severity> showFindings(const Report& report, Origin origin, std::size_t width) {
  const bool isColoured = !isSet("NO_COLOR") && platform::enableTerminalColours();
  std::stringstream text;
  const auto gravest = writeFindingsText(report, origin, {width, isColoured}, text);
  for (std::string line; std::getline(text, line);) platform::printWideLine(toWide(line));
  return gravest;
}

}  // namespace

int check(const ReportFiles& files, const CheckOptions& options, std::ostream& out) {
  const auto width = options.isForPeople ? platform::terminalWidth() : std::nullopt;
  std::optional<Severity> gravest;
  const bool areRead =
      files.forEach([&](const std::string& name, const std::unique_ptr<Report>& report) {
        const std::string first = files.areNamed() ? shown(name) : "";
        if (width && files.areNamed()) platform::printWideLine(toWide('\n' + first + '\n'));
        const auto most = width ? showFindings(*report, options.origin, *width)
                                : writeFindings(*report, options.origin,
                                                first + (files.areNamed() ? "\t" : ""), out);
        gravest = std::max(gravest, most);
      });
  if (!areRead) return failed;
  return gravest >= options.failOn ? found : succeeded;
}

int json(const ReportFiles& files, Origin origin, std::ostream& out) {
  const bool areRead =
      files.forEach([&](const std::string& name, const std::unique_ptr<Report>& report) {
        writeJson(*report, out, origin, files.areNamed() ? toUtf8(name) : "");
      });
  return areRead ? succeeded : failed;
}

int html(const ReportFiles& files, const std::string& title, Origin origin, std::ostream& out) {
  std::vector<ShownReport> reports;
  const auto add = [&reports](const std::string& name) -> ShownReport& {
    reports.push_back({reports.size() + 1, name == "-" ? "standard input" : lastPartOf(name)});
    return reports.back();
  };
  const bool areRead = files.forEach(
      [&](const std::string& name, std::unique_ptr<Report> report) {
        add(name).report = std::move(report);
      },
      [&](const std::string& name, const std::string& reason) { add(name).failure = reason; });
  writePage(reports, title, origin, out);
  return areRead ? succeeded : failed;
}

int explain(const std::string& code, std::ostream& out) {
  constexpr std::size_t usualWidth = 100;
  const std::size_t width = platform::terminalWidth().value_or(usualWidth);
  if (code.empty()) {
    writeExplanations(width, out);
    return succeeded;
  }
  const std::optional<Code> known = codeNamed(code);
  if (!known) {
    std::string names;
    for (const Code other : allCodes())
      names.append(names.empty() ? "" : ", ").append(nameOf(other));
    throw Failure("there is no code " + code + "; the codes are " + names);
  }
  writeExplanation(*known, width, out);
  return succeeded;
}

int diff(const std::string& nameBefore, const std::string& nameAfter, std::ostream& out) {
  const auto before = readReport(nameBefore);
  const auto after = readReport(nameAfter);
  const bool differ = writeDifference({nameBefore, *before}, {nameAfter, *after}, out);
  return differ ? found : succeeded;
}

// The map is written first: a report whose pseudonyms are lost cannot be told from the next.
int mask(const std::string& name, const std::optional<std::string>& mapName, std::ostream& out) {
  const auto report = readReport(name);
  std::optional<MapFile> map;
  if (mapName) map.emplace(*mapName);
  Pseudonyms pseudonyms(report->bytes(), map ? map->pseudonyms() : std::deque<Pseudonym>());
  const MaskedParts parts(*report);
  collectValues(parts, pseudonyms);
  if (map) map->replace(pseudonyms.all());
  writeMasked(parts, pseudonyms, out);
  return succeeded;
}

int unmask(const std::string& name, const std::string& mapName, std::ostream& out) {
  const auto map = readMap(mapName);
  writeUnmasked(bytesOf(name), map->all(), out);
  return succeeded;
}

}  // namespace reader
