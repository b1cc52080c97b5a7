// The server of the sweep, and runs of the built program on it: every kind of document, and of most
// kinds one that is all right and one that is not.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace test {

/// A Notes call of a run, as library/failing_notes.cpp records it.
struct RecordedCall {
  std::size_t reportSize;  ///< In bytes, when the call was made.
  bool succeeded;
  std::string operation;
  std::string subject;  ///< Its path, profile, formula or item.
};

/// Something that was open when the run ended the library's use.
struct OpenThing {
  std::string state;  ///< "open", "refused" or "foreign", as library/ledger.h tells.
  std::string kind;
  std::string label;
};

struct FinishedRun {
  int status;
  std::string console;
  std::string report;  ///< As bytes.
  std::vector<RecordedCall> calls;
  std::vector<OpenThing> open;
};

class World {
 public:
  World();

  /// A run on the server as it was at first. `plan` is the number of the call that fails, or the
  /// name of the operation all of whose calls fail; without it none does.
  FinishedRun run(const std::string& plan = {}) const;

  /// Whether the databases are what they were, but for lines at the end of the configuration.
  bool isUnchanged() const;

 private:
  void layOut() const;
  void readRecord(FinishedRun& run) const;

  TemporaryFolder folder_;
};

}  // namespace test
