// One line of a store as what it says, and back. STORE.md describes the format.
//
// The only file that knows the JSON library. It judges single lines; what a line that says
// nothing means for the store is the caller's to know.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "store/note.h"
#include "store/note_reader.h"

namespace store {

struct DatabaseInfo {
  std::string title;
  std::uint64_t replicaId = 0;
};

/// What the first line of a store says, or nothing if it is no such line.
std::optional<DatabaseInfo> readDatabaseLine(std::string_view line);

/// The note of any other line, or nothing if it is not one in full.
std::optional<Note> readNoteLine(std::string_view line, NoteReader& reader);

/// Whether a line that is no note may be the beginning of one: its text ends before it is a whole
/// JSON value, be it in the midst of a character.
bool isTorn(std::string_view line);

/// The line of a note, with its line feed.
std::string noteLine(const Note& note);

}  // namespace store
