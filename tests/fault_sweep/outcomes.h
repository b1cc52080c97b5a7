// What failing Notes calls do to a run, as a text that a person can read and review.
#pragma once

#include <string>
#include <vector>

#include "support/world.h"

namespace test {

/// A Notes call of a run.
struct NotesCall {
  std::string operation;
  std::string subject;     ///< Its path, profile, formula or item; that of what it closes.
  std::size_t reportSize;  ///< In bytes, when the call was made.
  bool isMadeToFail;

  std::string name() const { return operation + (subject.empty() ? "" : ' ' + subject); }
};

struct RecordedRun {
  Shown shown;
  std::string report;  ///< As bytes.
  std::vector<NotesCall> calls;
  Lines open;  ///< What was open at the end, as "open database QBConf.nsf", in order.
  bool databasesUnchanged;
};

/// Takes the calls of a record, as library/failing_notes.cpp writes it, and what they leave open of
/// databases, notes, memory (compiled formulas and blocks) and locks: "refused" what did not close,
/// "foreign" what was closed and not open.
void takeRecord(const std::string& record, RecordedRun& run);

/// What differs from the clean run, line by line: lines of the report lost (by their numbers there)
/// and gained, the same of the console, what is closed or left open in the end unlike there, the
/// exit status. `subject` is masked where it stands quoted in what is new.
Lines outcomeOf(const RecordedRun& clean, const RecordedRun& run, const std::string& subject);

/// What is to fail, with the number of complete lines that the report had before, and its outcome.
struct Failure {
  std::string plan;  ///< For library/failing_notes.cpp.
  std::size_t linesBefore;
  std::string name;
  std::string subject;
  Lines outcome;
};

/// The text: calls at the same place of the report with the same outcome stand together. A call
/// that is made several times at one place with different outcomes is told by its numbers there.
Lines outcomesText(const Lines& report, const std::vector<Failure>& failures);

}  // namespace test
