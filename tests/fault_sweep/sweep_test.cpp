// Every Notes call of a full run fails once. What that does to the run stands in outcomes.txt,
// which scripts/renew writes and a person reads.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <thread>

#include "fault_sweep/outcomes.h"
#include "support/folders.h"

namespace {

using test::Failure;
using test::Lines;
using test::NotesCall;
using test::RecordedRun;
using test::World;

const std::string recordedFile = test::inRepository("tests/fault_sweep/outcomes.txt");

const Lines preface = {
    "# What each failing Notes call does to the report of the world every_kind, whose lines the",
    "# numbers count: - lost, => replaced by, + gained, # which of the calls of one name at one",
    "# place. What is open at the end is told where it is not as in a run without failure.",
    "# scripts/renew writes this file.",
    "",
    "Without failure"};

// Every which call is made to fail: 1 unless the environment's SWEEP_STRIDE says otherwise, as it
// does where a run takes many times as long.
const std::size_t stride = [] {
  const char* const text = std::getenv("SWEEP_STRIDE");
  return text == nullptr ? 1 : std::stoul(text);
}();

// What is done once more after a failure, so that only the second one tells.
constexpr const char* triedTwice[] = {"NAMEGetAddressBooks", "NSFDbClose"};

// Whether the library has no other way to answer than to do what it is asked.
bool cannotFail(const std::string& operation) {
  static const std::set<std::string> withoutResult = {"NotesTerm", "OSGetExecutableDirectory",
                                                      "OSCurrentTIMEDATE", "OSGetIntlSettings",
                                                      "NSFDbInfoParse"};
  return withoutResult.contains(operation);
}

// The world with the library whose calls can be made to fail.
World failingWorld(const std::string& name) {
  return World(name, test::inBuild("failing_notes/nnotes.dll"));
}

// A run on the world in which the call fails whose number, or the calls whose operation, `plan`
// names.
RecordedRun runWith(const World& world, const std::string& plan) {
  std::filesystem::remove(world.root() + "/record");
  test::writeFile(world.root() + "/plan", plan);
  RecordedRun run{world.run(), world.reportBytes(), {}, {}, world.restore()};
  test::takeRecord(test::contentOf(world.root() + "/record"), run);
  return run;
}

class FaultSweep : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    // A finished run exits with 1, as a program of the sanitizers does that found something.
    ::setenv("ASAN_OPTIONS", "exitcode=99", 1);
    ::setenv("UBSAN_OPTIONS", "exitcode=99", 1);
    ::setenv("STANDIN", test::builtStandIn().c_str(), 1);
  }

  void SetUp() override {
    const World world = failingWorld("every_kind");
    clean_ = runWith(world, "");
    ASSERT_EQ(clean_.shown, world.expected());
    ASSERT_EQ(clean_.calls.front().operation, "NotesInitExtended");
    ASSERT_EQ(clean_.calls.back().operation, "NotesTerm");
    plan();
  }

  void plan() {
    for (std::size_t number = 0; number < clean_.calls.size(); number += stride) {
      const NotesCall& call = clean_.calls[number];
      const std::string before = clean_.report.substr(0, call.reportSize);
      const auto lines = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
      // What looks for leaks needs /proc, which the program's own root lacks.
      if (stride != 1 && call.operation == "OSGetDataDirectory") continue;
      if (!cannotFail(call.operation))
        failures_.push_back({std::to_string(number), lines, call.name(), call.subject, {}});
    }
    for (const char* operation : triedTwice)
      failures_.push_back({operation, 0, std::string("Every ") + operation, "", {}});
  }

  // Several worlds at once.
  void runAll() {
    std::vector<std::thread> workers;
    const std::size_t count = std::max(2U, std::thread::hardware_concurrency());
    for (std::size_t first = 0; first < count; ++first) {
      workers.emplace_back([this, first, count] {
        const World world = failingWorld("every_kind");
        for (std::size_t i = first; i < failures_.size(); i += count) {
          const RecordedRun run = runWith(world, failures_[i].plan);
          failures_[i].outcome = test::outcomeOf(clean_, run, failures_[i].subject);
          addFaults(run, failures_[i]);
        }
      });
    }
    for (std::thread& worker : workers) worker.join();
  }

  // What no outcome may be: a line that stood before the failure is another one.
  void addFaults(const RecordedRun& run, Failure& failure) const {
    const Lines& before = clean_.shown.report;
    for (std::size_t line = 0; line < failure.linesBefore; ++line) {
      if (line >= run.shown.report.size() || run.shown.report[line] != before[line])
        failure.outcome.push_back("FAULT in line " + std::to_string(line + 1));
    }
  }

  Lines text() const {
    Lines result = preface;
    for (const std::string& thing : clean_.open) result.push_back("  left: " + thing);
    const Lines outcomes = test::outcomesText(clean_.shown.report, failures_);
    result.insert(result.end(), outcomes.begin(), outcomes.end());
    return result;
  }

  RecordedRun clean_;
  std::vector<Failure> failures_;
};

TEST_F(FaultSweep, WhatTheLibraryChangesInTheArgumentsCountsNoMore) {
  const World world = failingWorld("sample_on_console");
  EXPECT_EQ(world.run(), world.expected());
}

TEST_F(FaultSweep, EachFailingCallHasItsRecordedOutcome) {
  runAll();
  for (const auto& failure : failures_)
    EXPECT_EQ(test::joined(failure.outcome).find("FAULT"), std::string::npos) << failure.name;
  if (stride == 1 && test::isRenewing()) test::writeFile(recordedFile, test::joined(text()));
  const std::string recorded = test::contentOf(recordedFile);
  if (stride == 1) {
    EXPECT_EQ(test::joined(text()), recorded);
    return;
  }
  // A part of the calls cannot be compared as a whole.
  for (const Failure& failure : failures_) {
    std::string block;
    for (const std::string& line : failure.outcome) block += "      " + line + '\n';
    EXPECT_NE(recorded.find(block), std::string::npos) << failure.name << '\n' << block;
  }
}

}  // namespace
