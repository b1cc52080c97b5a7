#include "fault_sweep/outcomes.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace test {
namespace {

// The kinds of things that operations open and close.
const std::map<std::string, std::string> opening = {
    {"NSFDbOpen", "database"}, {"NSFDbOpenExtended", "database"}, {"NSFNoteOpen", "note"},
    {"NSFNoteCreate", "note"}, {"NSFProfileOpen", "note"},        {"NSFFormulaCompile", "memory"},
    {"OSLockObject", "lock"},  {"NAMEGetAddressBooks", "memory"}};
const std::map<std::string, std::string> closing = {{"NSFDbClose", "database"},
                                                    {"NSFNoteClose", "note"},
                                                    {"OSMemFree", "memory"},
                                                    {"OSUnlockObject", "lock"}};

// Lines that stand in place of others.
struct Change {
  std::size_t at;  // the index of the first line that is lost, or in front of which others are new
  Lines lost;
  Lines gained;
};

// The fewest lines lost and gained that make the one of the other.
std::vector<Change> changesOf(const Lines& before, const Lines& after) {
  // common[i][j] is the most lines that the rests behind i and j have in common.
  std::vector<std::vector<std::size_t>> common(before.size() + 1,
                                               std::vector<std::size_t>(after.size() + 1));
  for (std::size_t i = before.size(); i-- > 0;) {
    for (std::size_t j = after.size(); j-- > 0;) {
      common[i][j] = before[i] == after[j] ? common[i + 1][j + 1] + 1
                                           : std::max(common[i + 1][j], common[i][j + 1]);
    }
  }
  std::vector<Change> changes;
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < before.size() || j < after.size()) {
    if (i < before.size() && j < after.size() && before[i] == after[j]) {
      ++i;
      ++j;
      continue;
    }
    Change& last = changes.empty() || changes.back().at + changes.back().lost.size() != i
                       ? changes.emplace_back(Change{i, {}, {}})
                       : changes.back();
    if (j == after.size() || (i < before.size() && common[i + 1][j] >= common[i][j + 1])) {
      last.lost.push_back(before[i++]);
    } else {
      last.gained.push_back(after[j++]);
    }
  }
  return changes;
}

// Calls about different items that fail alike have the same outcome.
std::string masked(std::string text, const std::string& subject) {
  const std::string quoted = '"' + subject + '"';
  const std::string mask = "\"<subject>\"";
  for (std::size_t at = 0; (at = text.find(quoted, at)) != std::string::npos; at += mask.size())
    text.replace(at, quoted.size(), mask);
  return text;
}

// The head of the entry that a line belongs to.
std::string entryOf(const Lines& report, std::size_t lines) {
  while (lines > 0 && !report[lines - 1].starts_with("<entry>")) --lines;
  return lines == 0 ? "the start" : report[lines - 1].substr(report[lines - 1].find('\t') + 1);
}

// Which of the calls of one name at one place.
std::string numbersOf(const std::vector<int>& numbers, int count) {
  if (count == static_cast<int>(numbers.size()))
    return count == 1 ? "" : " (all " + std::to_string(count) + ")";
  std::string text;
  for (const int number : numbers) text += " #" + std::to_string(number);
  return text;
}

// The calls of one place, by their outcomes in the order in which these come first.
void addPlace(const std::vector<Failure>& place, Lines& text) {
  constexpr std::size_t width = 100;
  std::map<std::string, int> counts;
  std::vector<std::pair<Lines, std::map<std::string, std::vector<int>>>> groups;
  for (const Failure& failure : place) {
    auto group = std::find_if(groups.begin(), groups.end(),
                              [&](const auto& each) { return each.first == failure.outcome; });
    if (group == groups.end()) group = groups.insert(group, {failure.outcome, {}});
    group->second[failure.name].push_back(++counts[failure.name]);
  }
  for (const auto& [outcome, names] : groups) {
    // By what the calls have in common: the operation and their numbers.
    std::map<std::string, Lines> subjects;
    for (const auto& [name, numbers] : names) {
      const std::size_t blank = std::min(name.find(' '), name.size());
      subjects[name.substr(0, blank) + numbersOf(numbers, counts[name])].push_back(
          name.substr(blank));
    }
    for (const auto& [common, list] : subjects) {
      text.push_back("  " + common);
      for (const std::string& subject : list) {
        if (text.back().size() + subject.size() > width) text.emplace_back("     ");
        text.back() += subject + (&subject == &list.back() ? "" : ",");
      }
    }
    for (const std::string& line : outcome) text.push_back("      " + line);
  }
}

std::string list(const Lines& things, const std::string& separator) {
  std::string text;
  for (const std::string& thing : things) text += (text.empty() ? "" : separator) + thing;
  return text;
}

// Lines that one line or as many others stand in place of are told with them; of many that are lost
// the first alone is shown.
void addChange(const Change& change, const std::string& subject, Lines& outcome) {
  constexpr std::size_t few = 3;
  const auto& [at, lost, gained] = change;
  const bool isShort = lost.size() <= few;
  const bool isReplaced =
      !lost.empty() && (gained.size() == 1 || (isShort && gained.size() == lost.size()));
  const std::string last = lost.size() < 2 ? "" : '-' + std::to_string(at + lost.size());
  std::string line = "- " + std::to_string(at + 1) + last + ": ";
  if (!lost.empty()) line += isShort ? list(lost, " | ") : lost[0] + " ...";
  if (isReplaced) line += "  =>  " + masked(list(gained, " | "), subject);
  if (!lost.empty()) outcome.push_back(line);
  if (isReplaced) return;
  for (const std::string& each : gained) outcome.push_back("+ " + masked(each, subject));
}

// Whether a thing that stays open in the clean run is closed in this one, and not just never
// opened: compiled formulas are all that stays.
bool isClosed(const std::string& thing, const RecordedRun& run) {
  const auto opened = std::count_if(run.calls.begin(), run.calls.end(), [&](const NotesCall& call) {
    return call.operation == "NSFFormulaCompile" && !call.isMadeToFail &&
           thing == "open memory " + call.subject;
  });
  return opened > std::count(run.open.begin(), run.open.end(), thing);
}

}  // namespace

void takeRecord(const std::string& record, RecordedRun& run) {
  std::map<std::pair<std::string, std::string>, std::pair<std::string, std::string>> things;
  for (const std::string& line : linesOf(record)) {
    Lines parts;
    std::istringstream text(line);
    for (std::string part; std::getline(text, part, '\t');) parts.push_back(part);
    const auto& operation = parts.at(0);
    const bool succeeds = parts.at(4) == "1";
    const auto closed = closing.find(operation);
    if (closed != closing.end() && parts[2] != "0") {
      const auto thing = things.find({closed->second, parts[2]});
      parts[1] = thing == things.end() ? "" : thing->second.second;
      if (thing == things.end()) {
        run.open.push_back("foreign " + closed->second);
      } else if (succeeds) {
        things.erase(thing);
      } else {
        thing->second.first = "refused ";
      }
    }
    const auto opened = opening.find(operation);
    // A lock is on the block that is passed.
    const std::string& handle = operation == "OSLockObject" ? parts[2] : parts[3];
    if (opened != opening.end() && succeeds && handle != "0")
      things[{opened->second, handle}] = {"open ", parts[1]};
    run.calls.push_back({operation, parts[1], std::stoul(parts.at(5)), parts[4] == "failed"});
  }
  for (const auto& [key, thing] : things) {
    const auto& [state, label] = thing;
    run.open.push_back(state + key.first + (label.empty() ? "" : ' ' + label));
  }
  std::sort(run.open.begin(), run.open.end());
}

Lines outcomeOf(const RecordedRun& clean, const RecordedRun& run, const std::string& subject) {
  Lines outcome;
  for (const Change& change : changesOf(clean.shown.report, run.shown.report))
    addChange(change, subject, outcome);
  for (const auto& [at, lost, gained] : changesOf(clean.shown.console, run.shown.console)) {
    for (const std::string& line : lost) outcome.push_back("console - " + line);
    for (const std::string& line : gained) outcome.push_back("console + " + line);
  }
  Lines closed;
  Lines left;
  for (const auto& [at, lost, gained] : changesOf(clean.open, run.open)) {
    std::copy_if(lost.begin(), lost.end(), std::back_inserter(closed),
                 [&](const std::string& thing) { return isClosed(thing, run); });
    left.insert(left.end(), gained.begin(), gained.end());
  }
  if (!closed.empty()) outcome.push_back("closed: " + list(closed, ", "));
  if (!left.empty()) outcome.push_back("left: " + list(left, ", "));
  if (!run.databasesUnchanged) outcome.emplace_back("a database is changed");
  if (run.shown.status != clean.shown.status) outcome.push_back("status " + run.shown.status);
  if (outcome.empty()) outcome.emplace_back("nothing");
  return outcome;
}

Lines outcomesText(const Lines& report, const std::vector<Failure>& failures) {
  Lines text;
  for (auto first = failures.begin(); first != failures.end();) {
    const auto end = std::find_if(first, failures.end(), [&](const Failure& failure) {
      return failure.linesBefore != first->linesBefore;
    });
    text.push_back("");
    text.push_back("behind line " + std::to_string(first->linesBefore) + ", " +
                   entryOf(report, first->linesBefore));
    addPlace({first, end}, text);
    first = end;
  }
  return text;
}

}  // namespace test
