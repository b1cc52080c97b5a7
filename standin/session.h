// What the library holds between NotesInitExtended and NotesTerm.
//
// There is one session or none. It owns the settings and everything that a caller has a handle of,
// so that its end frees whatever a caller left open. The library serves one thread; nothing locks.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "standin/database.h"
#include "standin/formula.h"
#include "standin/handle_table.h"
#include "store/note.h"
#include "store/notes_ini.h"

namespace standin {

/// A note that a caller works on: a copy of its own, of which others know nothing until it is
/// written.
struct OpenNote {
  DBHANDLE database;
  store::Note note;
};

struct Session {
  /// Throws noDataDirectory, dataDirectoryTooLong, programDirectoryTooLong, wrongTimezone and
  /// wrongLockWait.
  explicit Session(store::NotesIni read);

  const store::NotesIni settings;
  const std::string dataDirectory;     // without closing separator
  const std::string programDirectory;  // with closing separator
  const std::chrono::hours zone;       // hours west of GMT

  DatabaseCache cache;
  HandleNumbers numbers;
  HandleTable<std::string, Status::unknownBlock> blocks{numbers};
  HandleTable<std::shared_ptr<Database>, Status::unknownDatabase> databases{numbers};
  HandleTable<OpenNote, Status::unknownNote> notes{numbers};
  HandleTable<Formula, Status::unknownFormula> formulas{numbers};

  /// The note of a handle. Throws unknownNote and databaseOfNoteClosed.
  OpenNote& openNote(NOTEHANDLE handle);
};

/// Begins the session with the notes.ini that an argument "=<path>" names, or else with that of the
/// current directory. Throws what Session and NotesIni throw, and alreadyInitialised.
void beginSession(int argumentCount, const char* const* arguments);

/// Drops the session and all it holds, if there is one.
void endSession() noexcept;

/// Throws notInitialised if there is none.
Session& session();

}  // namespace standin
