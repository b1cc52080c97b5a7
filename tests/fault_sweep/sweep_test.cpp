// Every Notes call of a full run fails once, and every operation once for good. What that does to
// the run stands in outcomes.txt, which scripts/renew writes and a person reads.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <thread>

#include "fault_sweep/outcomes.h"

namespace {

using test::Failure;
using test::Lines;
using test::NotesCall;
using test::RecordedRun;
using test::World;

const std::string recordedFile = SOURCE_FOLDER "/tests/fault_sweep/outcomes.txt";

const Lines preface = {
    "# What each failing Notes call does to the report of the world every_kind, whose lines the",
    "# numbers count: \"-\" lost, \"+\" gained. What is left open at the end is told where it is "
    "not",
    "# as in a run without failure. scripts/renew writes this file."};

// Whether the library has no other way to answer than to do what it is asked.
bool cannotFail(const std::string& operation) {
  static const std::set<std::string> withoutResult = {"NotesTerm", "OSGetExecutableDirectory",
                                                      "OSCurrentTIMEDATE", "OSGetIntlSettings",
                                                      "NSFDbInfoParse"};
  return withoutResult.contains(operation);
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
  void SetUp() override {
    // A finished run exits with 1, as a program of the sanitizers does that found something.
    ::setenv("ASAN_OPTIONS", "exitcode=99", 1);
    ::setenv("UBSAN_OPTIONS", "exitcode=99", 1);
    const World world("every_kind", "failing_notes/nnotes.dll");
    clean_ = runWith(world, "");
    ASSERT_EQ(clean_.shown, world.expected());
    ASSERT_EQ(clean_.calls.front().operation, "NotesInitExtended");
    ASSERT_EQ(clean_.calls.back().operation, "NotesTerm");
    plan();
  }

  // Every call that can fail, each behind the other, and then every operation.
  void plan() {
    std::set<std::string> operations;
    for (std::size_t number = 0; number < clean_.calls.size(); ++number) {
      const NotesCall& call = clean_.calls[number];
      if (cannotFail(call.operation)) continue;
      operations.insert(call.operation);
      if (number % STRIDE != 0) continue;
      const std::string before = clean_.report.substr(0, call.reportSize);
      const auto lines = std::count(before.begin(), before.end(), '\n');
      failures_.push_back({static_cast<std::size_t>(lines), call.name(), {}});
      plans_.push_back({std::to_string(number), call.subject});
    }
    for (const std::string& operation : operations) {
      failures_.push_back({0, operation, {}});
      plans_.push_back({operation, ""});
    }
  }

  // Several worlds at once.
  void runAll() {
    std::vector<std::thread> workers;
    const std::size_t count = std::max(2U, std::thread::hardware_concurrency());
    for (std::size_t first = 0; first < count; ++first) {
      workers.emplace_back([this, first, count] {
        const World world("every_kind", "failing_notes/nnotes.dll");
        for (std::size_t i = first; i < plans_.size(); i += count) {
          const auto& [plan, subject] = plans_[i];
          const RecordedRun run = runWith(world, plan);
          failures_[i].outcome = test::outcomeOf(clean_, run, subject);
          addFaults(run, failures_[i]);
        }
      });
    }
    for (std::thread& worker : workers) worker.join();
  }

  // What no outcome may be: a line that stood before the failure is another one, or a thing is
  // closed that was not open.
  void addFaults(const RecordedRun& run, Failure& failure) const {
    const Lines& before = clean_.shown.report;
    for (std::size_t line = 0; line < failure.linesBefore; ++line) {
      if (line >= run.shown.report.size() || run.shown.report[line] != before[line])
        failure.outcome.push_back("FAULT in line " + std::to_string(line + 1));
    }
    for (const std::string& thing : run.open) {
      if (thing.starts_with("foreign")) failure.outcome.push_back("FAULT: closed " + thing);
    }
  }

  Lines text() const {
    const auto operations = std::find_if(plans_.begin(), plans_.end(), [](const auto& plan) {
      return std::isalpha(static_cast<unsigned char>(plan.first.front())) != 0;
    });
    const auto calls = failures_.begin() + (operations - plans_.begin());
    Lines result = preface;
    result.insert(result.end(), {"", "Without failure"});
    for (const std::string& thing : clean_.open) result.push_back("  left: " + thing);
    const Lines single = test::outcomesText(clean_.shown.report, {failures_.begin(), calls});
    result.insert(result.end(), single.begin(), single.end());
    result.insert(result.end(), {"", "Every call of an operation fails"});
    for (auto failure = calls; failure != failures_.end(); ++failure) {
      const Lines each = test::outcomesText({}, {*failure});
      result.insert(result.end(), each.begin() + 2, each.end());
    }
    return result;
  }

  RecordedRun clean_;
  std::vector<std::pair<std::string, std::string>> plans_;  // with the subject of the call
  std::vector<Failure> failures_;                           // in the same order
};

TEST_F(FaultSweep, EachFailingCallHasItsRecordedOutcome) {
  runAll();
  for (const auto& failure : failures_)
    EXPECT_EQ(test::joined(failure.outcome).find("FAULT"), std::string::npos) << failure.name;
  // A part of the calls cannot be compared as a whole.
  if (STRIDE == 1 && test::isRenewing()) test::writeFile(recordedFile, test::joined(text()));
  const std::string recorded = test::contentOf(recordedFile);
  if (STRIDE == 1) {
    EXPECT_EQ(test::joined(text()), recorded);
  }
  for (const auto& [lines, name, outcome] : failures_) {
    std::string block;
    for (const std::string& line : outcome) block += "      " + line + '\n';
    EXPECT_NE(recorded.find(block), std::string::npos) << name << '\n' << block;
  }
}

}  // namespace
