#include "documents/server_profile.h"

#include "base/text.h"
#include "notes/domino_api_tools.h"
#include "notes/note_handles.h"
#include "notes/nsf_db_connection.h"
#include "notes/nsf_note.h"

namespace documents {
namespace {

using notes::NsfDbConnection;
using notes::NsfNote;

constexpr const char* profileName = "qbserverprofile";

void require(STATUS status, const char16_t* failure) {
  if (status != 0) throw ServerProfileDocument::ServerProfileDocumentError(failure);
}

}  // namespace

void ServerProfileDocument::load() {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    if (serverName_.value.empty()) currentServerName(serverName_.value);
    notes::OpenNote profile;
    require(profile.openProfile(connection, profileName, base::toUtf8(serverName_.value)),
            u"Could not open server profile document.");
    const NsfNote note(profile.handle());
    for (ProfileField* const field :
         {&serverName_, &dominoVersion_, &scanningEngineVersion_, &vrxVersion_}) {
      if (note.hasValue(field->item)) field->value = note.getText(field->item);
    }
    require(profile.close(), u"Could not close server profile document.");
    connection.close();
  } catch (const NsfNote::NsfNoteError& error) {
    throw ServerProfileDocumentError(u"Could not read note-item: " + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw ServerProfileDocumentError(u"Could not open database connection: " + error.message());
  }
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
  const auto fields = {&serverName_, &dominoVersion_, &scanningEngineVersion_, &vrxVersion_};
  const std::string server = base::toUtf8(serverName_.value);
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    notes::OpenNote profile;
    require(profile.openProfile(connection, profileName, server),
            u"Could not open server profile document.");
    NsfNote note(profile.handle());
    setChanged(note, fields);
    require(profile.updateProfile(profileName, server),
            u"Could not update server profile document.");
    forgetChanges(fields);
    require(profile.close(), u"Could not close server profile document.");
    connection.close();
  } catch (const NsfNote::DominoApiError& error) {
    throw ServerProfileDocumentError(u"Could not add text item to note: " + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw ServerProfileDocumentError(u"Could not open database connection: " + error.message());
  }
}

void currentServerName(std::u16string& name) {
  notes::DominoApiTools::readEnvironmentWide("ServerName", name);
}

std::u16string serverProfileText() {
  try {
    ServerProfileDocument profile;
    profile.load();
    return profile.print(profileDepth);
  } catch (const ServerProfileDocument::ServerProfileDocumentError& error) {
    return u"Could not load Server profile: " + error.message();
  }
}

}  // namespace documents
