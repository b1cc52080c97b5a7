#include "fault_sweep/sections.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "fault_sweep/report.h"

namespace test {
namespace {

// In the order of the run. The places between that are missing have no calls.
constexpr Section sections[] = {
    {"start", "", "* STARTING LOG"},
    {"variables", "* STARTING LOG", "* DOMINO ENVIRONMENT"},
    {"tokens", "* SYSTEM ENVIRONMENT", "* FILE CHECK"},
    {"files", "* DOMINO ENVIRONMENT", "* CUSTOMERPROFILE"},
    {"customer", "* FILE CHECK", "* SERVERPROFILE"},
    {"server", "* CUSTOMERPROFILE", "* Number of filtered users"},
    {"users", "* SERVERPROFILE", "* QUELLBRIGHT CONFIGURATION"},
    {"configuration", "* Number of filtered users", "* ACCESS"},
    {"senders", "* ACCESS", "* Testing NabImport"},
    // Without a name of the server, address books or entries there is nothing to import.
    {"server name", "* SENDERFILTER", "* SEARCHING"},
    {"directory", "* Testing NabImport", "* SEARCHING"},
    {"mail-in databases", "* Testing NabImport", "* SEARCHING"},
    {"import", "* LOADING", "* SEARCHING"},
    {"updates", "* SEARCHING", "* Creating"},
    {"simulated path", "* INSTALLED UPDATES", ""},
    // The list shows the events that were made before.
    {"test events", "* Creating", "* Done Testing"},
    {"event list", "* Testing Get", "* Done Testing"},
    {"end", "* Done Testing", ""}};

const Section* sectionNamed(const std::string& name) {
  return std::find_if(std::begin(sections), std::end(sections),
                      [&](const Section& section) { return section.name == name; });
}

// The section after the entry that is the last of `lines`.
const Section* sectionAfter(const std::vector<std::string>& lines) {
  const auto entry = std::find_if(lines.rbegin(), lines.rend(),
                                  [](const auto& line) { return line.starts_with("* "); });
  const Section* found = std::begin(sections);
  for (const Section& section : sections) {
    const bool follows = entry != lines.rend() && entry->starts_with(section.after);
    if (follows && *section.after != '\0' && *found->after == '\0') found = &section;
  }
  return found;
}

std::size_t lineOf(const char* beginning, const std::vector<std::string>& lines) {
  const auto line = std::find_if(lines.begin(), lines.end(), [&](const std::string& text) {
    return text.starts_with(beginning);
  });
  EXPECT_NE(line, lines.end()) << "no entry " << beginning;
  return static_cast<std::size_t>(line - lines.begin());
}

// The section of each call of a clean run: it changes where the report has grown, and the search
// for mail-in databases is one of its own.
std::vector<const Section*> sectionsOf(const FinishedRun& clean) {
  std::vector<const Section*> result;
  const Section* section = sectionAfter({});
  std::size_t size = 0;
  bool ofDatabases = false;
  for (const RecordedCall& call : clean.calls) {
    if (call.reportSize != size) {
      size = call.reportSize;
      section = sectionAfter(reportLines(clean.report.substr(0, size)));
    }
    if (call.operation == "NSFFormulaCompile")
      ofDatabases = call.subject == "SELECT Type=\"Database\"";
    const bool isPart = ofDatabases && std::string(section->name) == "directory";
    result.push_back(isPart ? sectionNamed("mail-in databases") : section);
  }
  return result;
}

}  // namespace

std::vector<Call> placedCalls(const FinishedRun& clean) {
  const std::vector<const Section*> sectionOf = sectionsOf(clean);
  std::map<std::pair<const Section*, std::string>, std::vector<std::size_t>> places;
  std::vector<Call> calls;
  for (const RecordedCall& recorded : clean.calls) {
    Call call{recorded.operation, recorded.subject, sectionOf[calls.size()]};
    call.failsAnyway = !recorded.succeeded;
    std::vector<std::size_t>& earlier = places[{call.section, call.operation}];
    call.number = static_cast<int>(earlier.size());
    if (call.operation == "NSFItemInfo") {
      const Call before = calls.empty() ? Call{} : calls.back();
      const bool continues = before.operation == call.operation && before.subject == call.subject;
      call.number = continues ? before.number + 1 : 0;
    }
    earlier.push_back(calls.size());
    calls.push_back(call);
  }
  for (const auto& [place, numbers] : places) calls[numbers.back()].isLast = true;
  return calls;
}

std::pair<std::size_t, std::size_t> linesOf(const Section& section,
                                            const std::vector<std::string>& lines) {
  std::size_t begin = 0;
  if (*section.after != '\0') {
    begin = lineOf(section.after, lines) + 1;
    while (begin < lines.size() && !lines[begin].starts_with("* ")) ++begin;
  }
  return {begin, *section.before == '\0' ? lines.size() : lineOf(section.before, lines)};
}

}  // namespace test
