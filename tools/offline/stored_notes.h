// The notes of a store, one after the other.
//
// A store may have hundreds of megabytes, so a visitor keeps what it needs and nothing more is in
// memory than one note. The store is one that an import has just made: no note stands in it twice.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace offline {

struct StoredNote {
  std::string profile;                                 // empty for a document
  std::string user;                                    // of a profile
  std::unordered_map<std::string, std::string> texts;  // by name in small letters

  /// The text of an item; empty if there is none or the item is no text. `name` has small letters.
  const std::string& text(const std::string& name) const;
};

/// Throws std::filesystem::filesystem_error, and what the JSON library throws for a line that is no
/// note.
void visitNotes(const std::filesystem::path& store,
                const std::function<void(const StoredNote&)>& visit);

/// The line that describes a database in its store, with its line feed.
std::string databaseLine(const std::string& title, const std::string& replicaId);

}  // namespace offline
