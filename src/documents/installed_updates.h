// What was installed of the add-on, where and when: one note for each update.
#pragma once

#include <string>
#include <vector>

#include "base/error.h"
#include "notes/abi.h"

namespace documents {

/// One update as it was read.
struct InstalledUpdate {
  std::u16string server;
  std::u16string item;
  std::u16string version;
  std::u16string date;  ///< In the library's own form of a time.
};

class InstalledUpdates {
 public:
  class InstalledUpdatesError : public base::Error {
   public:
    using Error::Error;
  };
  class InstalledUpdateLoadError : public base::Error {
   public:
    using Error::Error;
  };

  /// Adds all updates in the order of the search. One bad note ends it, so that a list is whole or
  /// is not shown. Raises InstalledUpdatesError.
  void load();

  /// Adds one update. Raises InstalledUpdateLoadError.
  void loadUpdate(NOTEID id);

  /// The records, the server's line with `depth` tabs and those below it with one more.
  std::u16string print(int depth) const;

 private:
  std::vector<InstalledUpdate> updates_;
};

}  // namespace documents
