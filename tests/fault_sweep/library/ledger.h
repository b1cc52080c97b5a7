// What a run has open of the Notes library: databases, notes, memory (compiled formulas and blocks)
// and locks, each with a label that tells which.
#pragma once

#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "notes/abi.h"

namespace test {

class Ledger {
 public:
  /// The kind of thing that an operation opens or closes; empty for all others.
  static std::string openedKind(const std::string& operation) {
    return find({{"NSFDbOpen", "database"},
                 {"NSFDbOpenExtended", "database"},
                 {"NSFNoteOpen", "note"},
                 {"NSFNoteCreate", "note"},
                 {"NSFProfileOpen", "note"},
                 {"NSFFormulaCompile", "memory"},
                 {"NAMEGetAddressBooks", "memory"},
                 {"OSLockObject", "lock"}},
                operation);
  }
  static std::string closedKind(const std::string& operation) {
    return find({{"NSFDbClose", "database"},
                 {"NSFNoteClose", "note"},
                 {"OSMemFree", "memory"},
                 {"OSUnlockObject", "lock"}},
                operation);
  }

  void open(const std::string& kind, DWORD handle, const std::string& label) {
    things_[{kind, handle}] = {label, false};
  }

  /// A call that closes a thing, and whether it did. To close none is no fault.
  void close(const std::string& kind, DWORD handle, bool closed) {
    const auto thing = things_.find({kind, handle});
    if (thing == things_.end()) {
      if (handle != 0) foreign_.push_back(kind);
    } else if (closed) {
      things_.erase(thing);
    } else {
      thing->second.refused = true;
    }
  }

  std::string labelOf(const std::string& kind, DWORD handle) const {
    const auto thing = things_.find({kind, handle});
    return thing == things_.end() ? "" : thing->second.label;
  }

  /// A line for each thing that is open: "refused" if a call to close it failed, "open" otherwise;
  /// and a line "foreign" for each call to close what was not open.
  void write(std::ostream& out) const {
    for (const auto& [key, thing] : things_) {
      out << (thing.refused ? "refused" : "open") << '\t' << key.first << '\t' << thing.label
          << '\n';
    }
    for (const std::string& kind : foreign_) out << "foreign\t" << kind << "\t\n";
  }

 private:
  struct Thing {
    std::string label;
    bool refused;
  };

  static std::string find(const std::map<std::string, std::string>& kinds,
                          const std::string& operation) {
    const auto kind = kinds.find(operation);
    return kind == kinds.end() ? "" : kind->second;
  }

  std::map<std::pair<std::string, DWORD>, Thing> things_;
  std::vector<std::string> foreign_;
};

}  // namespace test
