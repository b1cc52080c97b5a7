// A database: its file, and what the library knows of it.
//
// The library holds a database in memory and follows its file: at each look it compares the state
// of the file with that of the last look, and reads the file anew if it is another. A look that
// fails leaves what was known.
//
// Writing appends one whole line under the lock of the file, behind what others have appended, and
// succeeds once it is on the disk. So a process that is killed leaves at most one line without an
// end, the last: it counts if it is a note, and if it may be the beginning of one the next writer
// cuts it off, once it is kept in a file beside. Any other is what a person wrote, and damaged.
// STORE.md describes the format.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "standin/note_index.h"
#include "standin/status.h"
#include "store/file.h"
#include "store/line.h"

namespace standin {

class Database {
 public:
  Database(std::string path, std::chrono::milliseconds lockWait)
      : path_(std::move(path)), lockWait_(lockWait) {}

  /// Takes in what has changed in the file. Throws databaseMissing, databaseIsNoFile,
  /// databaseLinkLoop, databasePathTooLong, databaseUnreadable, databaseLocked, foreignFile
  /// and lineDamaged.
  void refresh();

  const store::DatabaseInfo& info() const { return info_; }
  const NoteIndex& notes() const { return notes_; }

  /// When the file last changed, at the last look.
  store::Moment changed() const;

  /// Writes a note. One without an id gets the next, or that of the profile note of its name; any
  /// other must still be in the database, or else noSuchNote is thrown. Throws noIdsLeft,
  /// databaseUnwritable, tornNotKept and what refresh throws. The note is unchanged after a
  /// failure.
  void write(store::Note& note);

 private:
  void lock(store::File& file, store::Access access);
  void look(const store::File& file);
  void read(const store::File& file, std::uint64_t size);
  void keepTorn(const store::File& file) const;
  std::uint32_t idFor(const store::Note& note) const;

  std::string path_;
  std::chrono::milliseconds lockWait_;  // none any more, once it was in vain
  std::optional<store::FileState> state_;
  store::DatabaseInfo info_;
  NoteIndex notes_;
  std::uint64_t kept_ = 0;  // bytes of the file that count; what is behind them is torn
  bool lacksFeed_ = false;  // the last line that counts
};

/// The databases that the session has tried to open so far, each of them once. They stay when their
/// handles are closed, so that the next open finds them loaded, and what is wrong with them known.
class DatabaseCache {
 public:
  /// `lockWait` is how long a database waits for the lock of its file.
  explicit DatabaseCache(std::chrono::milliseconds lockWait) : lockWait_(lockWait) {}

  /// The database of a path, refreshed. Throws what refresh throws.
  std::shared_ptr<Database> open(const std::string& path);

 private:
  std::chrono::milliseconds lockWait_;
  std::unordered_map<std::string, std::shared_ptr<Database>> databases_;
};

}  // namespace standin
