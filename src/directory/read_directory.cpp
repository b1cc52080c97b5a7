#include "directory/read_directory.h"

#include <array>
#include <optional>
#include <utility>

#include "notes/formula_search.h"
#include "notes/note_handles.h"
#include "notes/nsf_db_connection.h"
#include "notes/nsf_note.h"

namespace directory {
namespace {

using notes::NoteHandle;
using notes::NsfDbConnection;
using notes::NsfNote;

constexpr std::array types = {"Person", "Database"};

// An entry whose note does not close is none.
void addEntry(const NsfDbConnection& connection, NOTEID id, std::deque<DirectoryEntry>& entries,
              std::vector<std::u16string>& messages) {
  try {
    std::optional<DirectoryEntry> entry;
    {
      const NoteHandle handle(connection, id);
      entry.emplace(NsfNote(handle.handle()));
    }
    entries.push_back(*std::move(entry));
  } catch (const DirectoryEntry::DirectoryEntryError& error) {
    messages.push_back(u"DirectoryEntryError: " + error.message());
  } catch (const NoteHandle::NoteHandleError& error) {
    messages.push_back(u"Notehandle Error: " + error.message());
  } catch (const NsfNote::NsfNoteError& error) {
    messages.push_back(u"NsfNote error: " + error.message());
  }
}

}  // namespace

void ReadDirectory::readDirectory(std::deque<DirectoryEntry>& entries, const AddressBook& book,
                                  std::int32_t typeIndex, std::vector<std::u16string>& messages) {
  const std::string type = types.at(static_cast<std::size_t>(typeIndex));
  try {
    NsfDbConnection connection(book.narrowPath());
    notes::searchNotes<ReadDirectoryError>(
        connection, "SELECT Type=\"" + type + "\"", notes::AfterSearch::keep,
        u"Could not complete search",
        [&](NOTEID id) { addEntry(connection, id, entries, messages); });
    connection.close();
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw ReadDirectoryError(u"Could not read directory: " + error.message());
  }
}

}  // namespace directory
