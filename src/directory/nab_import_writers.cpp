// How the import writes a recipient profile.
#include "directory/nab_import.h"
#include "notes/domino_api_tools.h"
#include "notes/note_handles.h"
#include "notes/nsf_db_connection.h"

namespace directory::NAB {

using notes::NoteHandle;
using notes::NsfDbConnection;
using notes::NsfNote;
using notes::DominoApiTools::DominoApiError;
using notes::DominoApiTools::errorText;

void NabImport::createProfile(const DirectoryEntry& entry) {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    notes::OpenNote created;
    const STATUS status = created.create(connection);
    if (status != 0) throw DominoApiError(u"Could not create note: " + errorText(status));
    {
      NoteHandle handle(created);
      NsfNote note(handle.handle());
      defaultProfile_.copyTo(note);
      addItems(entry, note);
      ++result_.created;
      handle.update();
    }
    connection.close();
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw NabImportCreateError(u"DBConnection error: " + error.message());
  } catch (const NoteHandle::NoteHandleError& error) {
    throw NabImportCreateError(u"NoteHandle error: " + error.message());
  } catch (const DominoApiError& error) {
    throw NabImportCreateError(error.message());
  } catch (const NsfNote::DominoApiError& error) {
    throw NabImportCreateError(error.message());
  } catch (const DefaultRecipientProfile::DefaultRecipientProfileError& error) {
    throw NabImportCreateError(u"Could not copy settings from Default Recipient Profile: " +
                               error.message());
  } catch (const NabImportAddItemError& error) {
    throw NabImportCreateError(error.message());
  }
}

// Whether the user's mail is filtered stays as it was set.
void NabImport::updateProfile(const DirectoryEntry& entry, NOTEID id) {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    {
      NoteHandle handle(connection, id);
      NsfNote note(handle.handle());
      addItems(entry, note);
      ++result_.updated;
      handle.update();
    }
    connection.close();
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw NabImportUpdateError(u"DBConnection error: " + error.message());
  } catch (const NoteHandle::NoteHandleError& error) {
    throw NabImportUpdateError(u"NoteHandle error: " + error.message());
  } catch (const NabImportAddItemError& error) {
    throw NabImportUpdateError(error.message());
  }
}

void NabImport::addItems(const DirectoryEntry& entry, NsfNote& note) {
  try {
    note.setText("FULLNAME", entry.fullName());
    note.setTextNarrow("Form", "qbProfile");
    note.setText("Type", entry.type());
    note.setText("REPLICAID", entry.replicaId());
    note.setText("NAME", entry.name());
    note.setText("Server", entry.mailServer());
    note.setText("FilePath", entry.filePath());
    note.setText("Subject", entry.name());
  } catch (const NsfNote::DominoApiError& error) {
    throw NabImportAddItemError(u"Could not add item to note: " + error.message());
  }
}

}  // namespace directory::NAB
