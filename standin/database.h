// A database: its file, and what the library knows of it.
//
// The library holds a database in memory and follows its file: at each look it compares the state
// of the file with that of the last look. The same state costs nothing more; a file that has grown
// is read from where the last look ended; any other change makes the library read it anew. A look
// that fails leaves what was known. Somebody may edit a file in place so that it grows: bytes kept
// from before the end of the last look tell that from an append.
//
// Writing appends one whole line under the lock of the file, behind what others have appended, and
// succeeds once it is on the disk. So a process that is killed leaves at most one line without an
// end, the last: it counts if it is a note, and otherwise the next writer cuts it off. STORE.md
// describes the format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "note_index.h"
#include "store_file.h"
#include "store_line.h"

namespace standin {

class Database {
 public:
  explicit Database(std::string path) : path_(std::move(path)) {}

  /// Takes in what has changed in the file. Throws databaseMissing, databaseIsNoFile,
  /// databaseUnreadable, foreignFile and lineDamaged.
  void refresh();

  const DatabaseInfo& info() const { return info_; }
  const NoteIndex& notes() const { return notes_; }

  /// When the file last changed, at the last look.
  Moment changed() const;

  /// Writes a note. One without an id gets the next, or that of the profile note of its name; any
  /// other must still be in the database, or else noSuchNote is thrown. Throws noIdsLeft,
  /// databaseUnwritable and what refresh throws. The note is unchanged after a failure.
  void write(Note& note);

 private:
  // How far the file is read.
  struct Look {
    FileState state;
    std::uint64_t end = 0;         // of the last line that has its line feed
    std::size_t lines = 0;         // up to there
    std::string before;            // the last bytes up to there
    bool endsWithoutFeed = false;  // what follows there is a line in full, and counts
  };

  void look(const StoreFile& file);
  bool lookBehind(const StoreFile& file, const FileState& state);
  void lookAnew(const StoreFile& file, const FileState& state);
  NOTEID idFor(const Note& note) const;
  static std::vector<Note> readNotes(std::string_view text, Look& look);

  std::string path_;
  DatabaseInfo info_;
  NoteIndex notes_;
  Look look_;
};

/// The databases that the session has opened so far, each of them once. They stay when their
/// handles are closed, so that the next open finds them loaded.
class DatabaseCache {
 public:
  /// The database of a path, refreshed. Throws what refresh throws.
  std::shared_ptr<Database> open(const std::string& path);

 private:
  std::unordered_map<std::string, std::shared_ptr<Database>> databases_;
};

}  // namespace standin
