#include "documents/server_profile.h"

#include "base/text.h"
#include "notes/api.h"
#include "notes/domino_api_tools.h"
#include "notes/note_handles.h"
#include "notes/nsf_db_connection.h"
#include "notes/nsf_note.h"

namespace documents {
namespace {

using notes::NsfDbConnection;
using notes::NsfNote;

constexpr const char* profileName = "qbserverprofile";
constexpr int sectionDepth = 5;

NOTEHANDLE openServerNote(const NsfDbConnection& connection, const std::string& server) {
  NOTEHANDLE note = 0;
  const STATUS status = notes::openProfile(connection.handle(), profileName, server, note);
  if (status != 0) {
    throw ServerProfileDocument::ServerProfileDocumentError(
        u"Could not open server profile document.");
  }
  return note;
}

void closeServerNote(NOTEHANDLE note) {
  if (notes::NSFNoteClose(note) == 0) return;
  throw ServerProfileDocument::ServerProfileDocumentError(
      u"Could not close server profile document.");
}

}  // namespace

void ServerProfileDocument::load() {
  try {
    readFields();
  } catch (const NsfNote::NsfNoteError& error) {
    throw ServerProfileDocumentError(u"Could not read note-item: " + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw ServerProfileDocumentError(u"Could not open database connection: " + error.message());
  }
}

void ServerProfileDocument::readFields() {
  NsfDbConnection connection(notes::configurationDatabase);
  if (serverName_.value.empty()) currentServerName(serverName_.value);
  const NOTEHANDLE handle = openServerNote(connection, base::toStrictUtf8(serverName_.value));
  const NsfNote note(handle);
  for (ProfileField* const field :
       {&serverName_, &dominoVersion_, &scanningEngineVersion_, &vrxVersion_}) {
    if (note.hasValue(field->item)) field->value = note.getText(field->item);
  }
  closeServerNote(handle);
  connection.close();
}

std::u16string ServerProfileDocument::print(int depth) const {
  std::u16string text = u"SERVERPROFILE:";
  appendField(text, depth, u"Server name", serverName_);
  appendField(text, depth, u"Domino version", dominoVersion_);
  appendField(text, depth, u"Core version", scanningEngineVersion_);
  appendField(text, depth, u"VRX version", vrxVersion_);
  return text;
}

void ServerProfileDocument::update() {
  try {
    writeFields();
  } catch (const NsfNote::DominoApiError& error) {
    throw ServerProfileDocumentError(u"Could not add text item to note: " + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw ServerProfileDocumentError(u"Could not open database connection: " + error.message());
  }
}

void ServerProfileDocument::writeFields() {
  NsfDbConnection connection(notes::configurationDatabase);
  const std::string server = base::toStrictUtf8(serverName_.value);
  const NOTEHANDLE handle = openServerNote(connection, server);
  NsfNote note(handle);
  ProfileField* const fields[] = {&serverName_, &dominoVersion_, &scanningEngineVersion_,
                                  &vrxVersion_};
  for (const ProfileField* field : fields) {
    if (field->changed) note.setText(field->item, field->value);
  }
  if (notes::updateProfile(handle, profileName, server) != 0) {
    throw ServerProfileDocumentError(u"Could not update server profile document.");
  }
  for (ProfileField* field : fields) field->changed = false;
  closeServerNote(handle);
  connection.close();
}

void currentServerName(std::u16string& name) {
  notes::DominoApiTools::readEnvironmentWide("ServerName", name);
}

std::u16string serverProfileText() {
  try {
    ServerProfileDocument profile;
    profile.load();
    return profile.print(sectionDepth);
  } catch (const ServerProfileDocument::ServerProfileDocumentError& error) {
    return u"Could not load Server profile: " + error.message();
  }
}

}  // namespace documents
