// One line of a store as what it says, and back. STORE.md describes the format.
//
// It judges single lines; what a line that says nothing means for the store is the caller's to
// know.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "store/note.h"

namespace store {

/// The longest line that describes a database, in bytes.
inline constexpr std::size_t longestDatabaseLine = 65536;

struct DatabaseInfo {
  std::string title;
  std::uint64_t replicaId = 0;
};

/// The replica id that sixteen hexadecimal digits of either case stand for; nothing for all else.
std::optional<std::uint64_t> replicaIdFrom(std::string_view digits);

/// What the first line of a store says, or nothing if it is no such line.
std::optional<DatabaseInfo> readDatabaseLine(std::string_view line);

/// The note of any other line, or nothing if it is not one in full.
std::optional<Note> readNoteLine(std::string_view line);

/// Whether a line that is no note may be the beginning of one: its text ends before it is a whole
/// JSON value, be it in the midst of a character.
bool isTorn(std::string_view line);

/// The lines, with their line feeds. The names of items are UTF-8, and numbers finite.
std::string databaseLine(const DatabaseInfo& database);
std::string noteLine(const Note& note);

}  // namespace store
