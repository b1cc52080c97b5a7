// Every Notes call of a full run fails once, and every operation once for good.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <set>

#include "fault_sweep/expectations.h"
#include "fault_sweep/report.h"
#include "fault_sweep/world.h"
#include "platform/process.h"

namespace {

using test::Call;
using test::Change;
using test::Difference;
using test::Expectation;
using test::FinishedRun;
using test::Outcome;

constexpr std::size_t mostCalls = 1500;
constexpr int notStarted = 0;
constexpr int completed = 1;
constexpr int aborted = 128 + 6;
constexpr const char* words = "Unknown status 0x2BAD";

// Whether the library has no other way to answer than to do what it is asked.
bool cannotFail(const std::string& operation) {
  static const std::set<std::string> withoutResult = {"NotesTerm", "OSGetExecutableDirectory",
                                                      "OSCurrentTIMEDATE", "OSGetIntlSettings",
                                                      "NSFDbInfoParse"};
  return withoutResult.contains(operation);
}

// Compiled formulas stay with the library, except those of these two searches.
bool staysOnPurpose(const test::OpenThing& thing) {
  return thing.kind == "memory" && thing.label.starts_with("SELECT ") &&
         thing.label != "SELECT ActiveConfiguration =\"Yes\"" &&
         thing.label != "SELECT @LowerCase(Form) = \"qbprofile\" & FilterSetting=\"1\"";
}

std::size_t count(const std::vector<Change>& changes, const std::string& line) {
  return static_cast<std::size_t>(std::count_if(
      changes.begin(), changes.end(), [&](const Change& change) { return change.line == line; }));
}

bool tellsFailure(const Change& change) { return change.line.find(words) != std::string::npos; }

std::string shown(const Difference& difference) {
  std::string text;
  for (const auto& [at, line] : difference.lost) text += "\n- " + line;
  for (const auto& [at, line] : difference.gained) text += "\n+ " + line;
  return text;
}

void setEnvironment() {
  // A finished run exits with 1, as a program of the sanitizers does that found something.
  ::setenv("ASAN_OPTIONS", "exitcode=99", 1);
  ::setenv("UBSAN_OPTIONS", "exitcode=99", 1);
  // Without a data directory the logs land at the root of the file system, named after the local
  // second. Each process has its own, so that none meets those of another.
  const std::uint32_t offset = platform::processNumber() * 7919U % 86400U;
  const std::string zone = "ZZZ" + std::to_string(offset / 3600) + ':' +
                           std::to_string(offset / 60 % 60) + ':' + std::to_string(offset % 60);
  ::setenv("TZ", zone.c_str(), 1);
}

// Lines of the clean run, from the first to the one behind the last.
using Region = std::pair<std::size_t, std::size_t>;

class FaultSweep : public testing::Test {
 protected:
  void SetUp() override {
    setEnvironment();
    clean_ = world_.run();
    ASSERT_EQ(clean_.status, completed) << clean_.console;
    lines_ = test::reportLines(clean_.report);
    calls_ = test::placedCalls(clean_);
    figures_.calls = calls_.size();
    ASSERT_LE(calls_.size(), mostCalls);
    ASSERT_EQ(calls_.front().operation, "NotesInitExtended");
    ASSERT_EQ(calls_.back().operation, "NotesTerm");
    expectNothingOpen(clean_, false, "");
  }

  static void TearDownTestSuite() {
    std::cout << figures_.calls << " calls, " << figures_.runs << " runs: " << figures_.survived
              << " survived, " << figures_.crashed << " ended abnormally and " << figures_.unstarted
              << " did not start, as they should.\n";
    figures_ = {};
  }

  // The run in which `plan` fails. Compares its exit status.
  FinishedRun runWith(const std::string& plan, Outcome outcome) {
    FinishedRun run = world_.run(plan);
    ++figures_.runs;
    EXPECT_TRUE(world_.isUnchanged());
    if (outcome == Outcome::notStarted) {
      EXPECT_EQ(run.status, notStarted);
      EXPECT_NE(run.console.find("\nCould not initialize notes: " + std::string(words) + ".\n"),
                std::string::npos);
      ++figures_.unstarted;
    } else if (outcome == Outcome::crash) {
      EXPECT_EQ(run.status, aborted);
      ++figures_.crashed;
    } else {
      EXPECT_EQ(run.status, completed) << run.console;
      EXPECT_NE(run.console.find("\nParsed simulated path for"), std::string::npos);
      if (run.status == completed) ++figures_.survived;
    }
    return run;
  }

  // `databasesStay` tells whether a database stays open that did not close; mostly it is closed
  // once more. `leftNote` is the profile that stays open.
  static void expectNothingOpen(const FinishedRun& run, bool databasesStay,
                                const std::string& leftNote) {
    EXPECT_FALSE(run.calls.empty()) << "NotesTerm was not called";
    int left = 0;
    for (const test::OpenThing& thing : run.open) {
      const bool isLeft = thing.state == "open" && thing.kind == "note" && !leftNote.empty() &&
                          thing.label == leftNote;
      const bool refused = thing.state == "refused" && (thing.kind != "database" || databasesStay);
      left += isLeft ? 1 : 0;
      EXPECT_TRUE(refused || isLeft || (thing.state == "open" && staysOnPurpose(thing)))
          << thing.state << ' ' << thing.kind << ' ' << thing.label;
    }
    EXPECT_EQ(left, leftNote.empty() ? 0 : 1) << "the profile is closed";
  }

  void expectOneFailure(std::size_t number) {
    const Call& call = calls_[number];
    SCOPED_TRACE(testing::Message() << "call " << number << ", " << call.operation << '('
                                    << call.subject << ") in section " << call.section->name);
    const Expectation expected = test::expectationOf(call);
    const FinishedRun run = runWith(std::to_string(number), expected.outcome);
    if (expected.outcome == Outcome::notStarted) return;
    if (expected.outcome != Outcome::crash) {
      ASSERT_GT(run.calls.size(), number);
      EXPECT_EQ(run.calls[number].operation, call.operation);
      EXPECT_EQ(run.calls[number].subject, call.subject);
      expectNothingOpen(run, expected.outcome == Outcome::hidden, test::profileLeftOpen(call));
    }
    const Difference difference = differenceOf(run);
    SCOPED_TRACE(shown(difference));
    expectWithin(difference, {regionOf(call)});
    EXPECT_LE(difference.lost.size(), expected.lost);
    if (expected.outcome == Outcome::shown) {
      EXPECT_GE(count(difference.gained, expected.line), 1U) << expected.line;
      EXPECT_LE(difference.gained.size(), 1 + expected.changed);
    } else {
      EXPECT_LE(difference.gained.size(), expected.lost);
      EXPECT_EQ(std::count_if(difference.gained.begin(), difference.gained.end(), tellsFailure), 0);
    }
  }

  void expectRepeatedFailures(const std::string& operation) {
    SCOPED_TRACE("all calls of " + operation);
    std::vector<std::string> known = test::linesOfRepeatedFailures(operation);
    std::map<std::string, std::string> needed;  // by the entry behind which it is to stand
    std::vector<Region> regions = regionsOfRepeatedFailures(operation);
    Outcome outcome = Outcome::shown;
    for (const Call& call : calls_) {
      if (call.operation != operation) continue;
      const Expectation expected = test::expectationOf(call);
      known.push_back(expected.line);
      needed.emplace(call.section->after, expected.line);
      regions.push_back(regionOf(call));
      if (expected.outcome == Outcome::notStarted || expected.outcome == Outcome::crash)
        outcome = expected.outcome;
    }
    const FinishedRun run = runWith(operation, outcome);
    if (outcome == Outcome::notStarted) return;
    if (outcome != Outcome::crash) expectNothingOpen(run, operation == "NSFDbClose", "");
    const Difference difference = differenceOf(run);
    SCOPED_TRACE(shown(difference));
    expectWithin(difference, regions);
    for (const Change& change : difference.gained) {
      EXPECT_TRUE(!tellsFailure(change) ||
                  std::find(known.begin(), known.end(), change.line) != known.end())
          << change.line;
    }
    // Where the directory fails there is nothing to import.
    if (run.report.find("IMPORTING:") == std::string::npos) needed.erase("* LOADING");
    for (const auto& [after, line] : needed) {
      EXPECT_TRUE(line.empty() || count(difference.gained, line) > 0) << line;
    }
  }

  // Nothing is lost or gained where the report cannot be written.
  Difference differenceOf(const FinishedRun& run) const {
    if (run.console.find("Could not open file: \\Quellbright-") != std::string::npos) return {};
    return test::difference(lines_, test::reportLines(run.report));
  }

  Region regionOf(const Call& call) const { return test::linesOf(*call.section, lines_); }

  // Without any data directory the file of the access test lies elsewhere too.
  std::vector<Region> regionsOfRepeatedFailures(const std::string& operation) const {
    if (operation != "OSGetDataDirectory") return {};
    return {test::linesOf({"access", "* QUELLBRIGHT", "* SENDERFILTER"}, lines_)};
  }

  static void expectWithin(const Difference& difference, const std::vector<Region>& regions) {
    const auto isWithin = [&](std::size_t at, std::size_t behind) {
      return std::any_of(regions.begin(), regions.end(), [&](const Region& region) {
        return region.first <= at && at < region.second + behind;
      });
    };
    for (const auto& [at, line] : difference.lost) EXPECT_TRUE(isWithin(at, 0)) << line;
    for (const auto& [at, line] : difference.gained) EXPECT_TRUE(isWithin(at, 1)) << line;
  }

  test::World world_;
  FinishedRun clean_;
  std::vector<std::string> lines_;
  std::vector<Call> calls_;

  struct Figures {
    std::size_t calls, runs, survived, crashed, unstarted;
  };
  static inline Figures figures_{};
};

// In parts, so that several run at once.
constexpr std::size_t parts = 4;
class EveryCall : public FaultSweep, public testing::WithParamInterface<std::size_t> {};

TEST_P(EveryCall, FailsOnce) {
  for (std::size_t number = GetParam() * STRIDE; number < calls_.size(); number += parts * STRIDE) {
    if (!cannotFail(calls_[number].operation)) expectOneFailure(number);
  }
}

INSTANTIATE_TEST_SUITE_P(Part, EveryCall, testing::Range(std::size_t{0}, parts));

class EveryOperation : public FaultSweep {};

TEST_F(EveryOperation, FailsForGood) {
  std::set<std::string> operations;
  for (const Call& call : calls_) operations.insert(call.operation);
  for (const std::string& operation : operations) {
    if (!cannotFail(operation)) expectRepeatedFailures(operation);
  }
}

}  // namespace
