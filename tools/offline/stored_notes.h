// The notes of a store, one after the other.
//
// A store may have hundreds of megabytes, so a visitor keeps what it needs and nothing more is in
// memory than one note. The store is one that an import has just made: no note stands in it twice.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "store/note.h"

namespace offline {

/// Throws std::filesystem::filesystem_error, and Failed for a line that is no note.
void visitNotes(const std::filesystem::path& store,
                const std::function<void(const store::Note&)>& visit);

/// The text of an item; empty if there is none or the item is no text.
const std::string& textOf(const store::Note& note, std::string_view item);

}  // namespace offline
