// What the library holds between NotesInitExtended and NotesTerm.
//
// There is one session or none. It owns the settings and everything that a caller has a handle of,
// so that its end frees whatever a caller left open. The library serves one thread; nothing locks.
#pragma once

#include <chrono>
#include <string>

#include "memory_blocks.h"
#include "notes_ini.h"

namespace standin {

struct Session {
  /// Throws noDataDirectory or wrongTimezone.
  explicit Session(NotesIni read);

  const NotesIni settings;
  const std::string dataDirectory;     // without closing separator
  const std::string programDirectory;  // with closing separator
  const std::chrono::hours zone;       // hours west of GMT
  MemoryBlocks blocks;
};

/// Begins the session with the notes.ini that an argument "=<path>" names, or else with that of the
/// current directory. Throws what Session and NotesIni throw, and alreadyInitialised.
void beginSession(int argumentCount, const char* const* arguments);

/// Drops the session and all it holds, if there is one.
void endSession() noexcept;

/// Throws notInitialised if there is none.
Session& session();

}  // namespace standin
