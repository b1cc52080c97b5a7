#include "report/unified_diff.h"

#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "report/difference.h"
#include "report/normal_form.h"

namespace reader {
namespace {

constexpr std::size_t contextLines = 3;

// A line goes (-), comes (+) or stays (a blank).
using Script = std::string;

struct Range {
  std::size_t begin;
  std::size_t end;
  std::size_t size() const { return end - begin; }
};

using Sections = std::vector<NormalSection>;

// The n-th section of a name, as a number that is the same for both reports.
std::vector<int> identify(const Sections& sections) {
  constexpr int names = 32;
  std::array<int, names> counts{};
  std::vector<int> identities;
  identities.reserve(sections.size());
  for (const NormalSection& section : sections) {
    const auto name = static_cast<std::size_t>(section.name);
    identities.push_back(counts.at(name)++ * names + static_cast<int>(name));
  }
  return identities;
}

// Builds the script from the start of both reports to their ends.
class ScriptBuilder {
 public:
  ScriptBuilder(const NormalForm& before, const NormalForm& after)
      : before_(identifyLines(before)), after_(identifyLines(after)) {
    const Sections none;
    const std::size_t runs = std::max(before.runs().size(), after.runs().size());
    for (std::size_t run = 0; run < runs; ++run) {
      compareRuns(run < before.runs().size() ? before.runs()[run] : none,
                  run < after.runs().size() ? after.runs()[run] : none);
    }
  }

  const Script& script() const { return script_; }

 private:
  std::vector<int> identifyLines(const NormalForm& form) {
    std::vector<int> identities;
    identities.reserve(form.lines().size());
    for (std::string_view line : form.lines()) {
      // Mail programs trim what ends a line.
      line = line.substr(0, line.find_last_not_of(" \t") + 1);
      identities.push_back(known_.try_emplace(line, static_cast<int>(known_.size())).first->second);
    }
    return identities;
  }

  void compareRuns(const Sections& before, const Sections& after) {
    std::size_t fromBefore = 0;
    std::size_t fromAfter = 0;
    const auto replace = [&](std::size_t toBefore, std::size_t toAfter) {
      for (; fromBefore < toBefore; ++fromBefore) remove(linesOf(before[fromBefore]));
      for (; fromAfter < toAfter; ++fromAfter) add(linesOf(after[fromAfter]));
    };
    for (const auto& [inBefore, inAfter] : commonElements(identify(before), identify(after))) {
      replace(inBefore, inAfter);
      compareLines(linesOf(before[fromBefore++]), linesOf(after[fromAfter++]));
    }
    replace(before.size(), after.size());
  }

  void compareLines(Range before, Range after) {
    const auto slice = [](const std::vector<int>& all, Range range) {
      const auto begin = all.begin() + static_cast<std::ptrdiff_t>(range.begin);
      return std::vector<int>(begin, begin + static_cast<std::ptrdiff_t>(range.size()));
    };
    std::size_t fromBefore = 0;
    std::size_t fromAfter = 0;
    const auto replace = [&](std::size_t toBefore, std::size_t toAfter) {
      script_.append(toBefore - fromBefore, '-').append(toAfter - fromAfter, '+');
      fromBefore = toBefore + 1;
      fromAfter = toAfter + 1;
    };
    for (const auto& [inBefore, inAfter] :
         commonElements(slice(before_, before), slice(after_, after))) {
      replace(inBefore, inAfter);
      script_ += ' ';
    }
    replace(before.size(), after.size());
  }

  static Range linesOf(const NormalSection& section) { return {section.begin, section.end}; }
  void remove(Range lines) { script_.append(lines.size(), '-'); }
  void add(Range lines) { script_.append(lines.size(), '+'); }

  std::unordered_map<std::string_view, int> known_{};
  std::vector<int> before_;
  std::vector<int> after_;
  Script script_;
};

// Writes the hunks of a script, with the lines that it is about.
class HunkWriter {
 public:
  HunkWriter(const NormalForm& before, const NormalForm& after, std::ostream& out)
      : before_(before.lines()), after_(after.lines()), out_(out) {}

  void write(const Script& script) {
    for (std::size_t at = 0; at < script.size();) {
      const std::size_t change = script.find_first_not_of(' ', at);
      if (change == Script::npos) return;
      const std::size_t begin = std::max(at, change - std::min(change, contextLines));
      skip(begin - at);
      at = endOfHunk(script, change);
      writeHunk(std::string_view(script).substr(begin, at - begin));
    }
  }

 private:
  // Changes with up to twice the context between them share a hunk.
  static std::size_t endOfHunk(const Script& script, std::size_t change) {
    for (;;) {
      const std::size_t end = std::min(script.find(' ', change), script.size());
      change = script.find_first_not_of(' ', end);
      if (change == Script::npos || change - end > 2 * contextLines)
        return std::min(end + contextLines, script.size());
    }
  }

  void skip(std::size_t lines) {
    nextBefore_ += lines;
    nextAfter_ += lines;
  }

  void writeHunk(std::string_view script) {
    const auto countWithout = [&](char mark) {
      return script.size() - static_cast<std::size_t>(std::ranges::count(script, mark));
    };
    out_ << "@@ -";
    writeRange(nextBefore_, countWithout('+'));
    out_ << " +";
    writeRange(nextAfter_, countWithout('-'));
    out_ << " @@\n";
    for (const char mark : script) {
      const std::string_view line = mark == '+' ? after_[nextAfter_] : before_[nextBefore_];
      out_ << mark << line << '\n';
      if (mark != '+') ++nextBefore_;
      if (mark != '-') ++nextAfter_;
    }
  }

  // An empty range has the number of the line in front of it.
  void writeRange(std::size_t next, std::size_t count) {
    out_ << (count == 0 ? next : next + 1) << ',' << count;
  }

  const std::vector<std::string_view>& before_;
  const std::vector<std::string_view>& after_;
  std::ostream& out_;
  std::size_t nextBefore_ = 0;
  std::size_t nextAfter_ = 0;
};

}  // namespace

bool writeDifference(const NamedReport& before, const NamedReport& after, std::ostream& out) {
  const NormalForm normalBefore(before.report);
  const NormalForm normalAfter(after.report);
  const ScriptBuilder builder(normalBefore, normalAfter);
  if (builder.script().find_first_not_of(' ') == Script::npos) return false;
  out << "--- " << before.name << "\n+++ " << after.name << '\n';
  HunkWriter(normalBefore, normalAfter, out).write(builder.script());
  return true;
}

}  // namespace reader
