// The import of the server's directories into the recipient profiles of the add-on.
//
// It goes in steps: the first reads all directories into a list, each further step takes a batch of
// entries off its front. Nothing stops it: an entry that fails leaves a message and the list, a
// directory that fails leaves a line. A simulated import searches for the profiles as a real one
// does and describes each entry instead of writing its profile.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "base/error.h"
#include "directory/address_books.h"
#include "directory/directory_entry.h"
#include "directory/recipient_profiles.h"
#include "notes/abi.h"
#include "notes/nsf_note.h"

namespace directory::NAB {

/// What the last step did.
struct ImportResult {
  std::int32_t processed = 0;  // entries taken up, the failed ones as well
  std::int32_t created = 0;
  std::int32_t updated = 0;
  std::int32_t failed = 0;  // not ready and without a message, which no entry is
  std::vector<std::u16string> messages;

  std::u16string print(unsigned indent) const;
};

class NabImport {
 public:
  class NabImportCreateError : public base::Error {
   public:
    using Error::Error;
  };
  class NabImportUpdateError : public base::Error {
   public:
    using Error::Error;
  };
  class NabImportUpdateOrCreateError : public base::Error {
   public:
    using Error::Error;
  };
  class NabImportAddItemError : public base::Error {
   public:
    using Error::Error;
  };

  /// `batchSize` entries at most are taken up by one step. With `useNamesOnly` the one directory is
  /// "names.nsf".
  NabImport(std::int32_t batchSize, std::u16string server, bool useNamesOnly, bool simulate);

  /// Reads the directories if no entry is left, or else imports a batch. True if the step left no
  /// lines. Raises AddressBookError if "names.nsf" cannot be parsed, and what
  /// DirectoryEntry::prepare raises beside its own error.
  bool step();

  /// Whether no entry is left.
  bool done() const { return entries_.empty(); }

  const ImportResult& result() const { return result_; }

  /// Adds the address books, the lines and the result of the last step to `out`, each line behind
  /// `indent` tabs.
  void print(std::u16string& out, unsigned indent) const;

 private:
  void loadDirectory();
  void importBatch();
  void importEntry(const DirectoryEntry& entry);

  // In nab_import_writers.cpp.
  void createProfile(const DirectoryEntry& entry);
  void updateProfile(const DirectoryEntry& entry, NOTEID id);
  static void addItems(const DirectoryEntry& entry, notes::NsfNote& note);

  bool simulate_;
  std::deque<DirectoryEntry> entries_;
  std::u16string serverName_;
  std::int32_t batchSize_;
  ImportResult result_;
  std::vector<std::u16string> stepLines_;
  DefaultRecipientProfile defaultProfile_;
  bool useNamesOnly_;
  AddressBooks addressBooks_;
};

}  // namespace directory::NAB
