#include "documents/customer_profile.h"

#include "notes/domino_api_tools.h"
#include "notes/note_handles.h"
#include "notes/nsf_db_connection.h"
#include "notes/nsf_note.h"

namespace documents {
namespace {

using notes::NsfDbConnection;
using notes::NsfNote;
using notes::DominoApiTools::DominoApiToolsError;
using notes::DominoApiTools::errorText;

constexpr const char* profileName = "qbcustomerprofile";

void require(STATUS status, const char16_t* failure) {
  if (status != 0) throw CustomerProfile::CustomerProfileError(failure + errorText(status));
}

}  // namespace

void CustomerProfile::load() {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    notes::OpenNote profile;
    require(profile.openProfile(connection, profileName), u"Could not open Customer profile: ");
    const NsfNote note(profile.handle());
    for (ProfileField* const field : {&organization_, &contact_, &email_, &language_, &dbReplicaId_,
                                      &productPath_, &productVersion_}) {
      field->value = note.getTextOrEmpty(field->item);
    }
    require(profile.close(), u"Could not close profile note: ");
    connection.close();
  } catch (const NsfNote::NsfNoteError& error) {
    throw CustomerProfileError(u"Could not read note-item: " + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw CustomerProfileError(u"Could not open database connection: " + error.message());
  }
}

std::u16string CustomerProfile::print(int depth) const {
  std::u16string text = u"CUSTOMERPROFILE:";
  appendField(text, depth, u"Organization", organization_);
  appendField(text, depth, u"Contact", contact_);
  appendField(text, depth, u"Email", email_);
  appendField(text, depth, u"Replica Id", dbReplicaId_);
  appendField(text, depth, u"Product Path", productPath_);
  appendField(text, depth, u"Language", language_);
  return text;
}

void CustomerProfile::update() {
  const auto fields = {&organization_,   &contact_,     &email_,
                       &productVersion_, &productPath_, &language_};
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    notes::OpenNote profile;
    require(profile.openProfile(connection, profileName), u"Could not open Customer profile: ");
    NsfNote note(profile.handle());
    setChanged(note, fields);
    setReplicaIdOnce(note);
    require(profile.updateProfile(profileName), u"Could not update configuration-profile: ");
    forgetChanges(fields);
    require(profile.close(), u"Could not close profile note: ");
    connection.close();
  } catch (const DominoApiToolsError& error) {
    throw CustomerProfileError(u"Could not set dbReplicaId on the customer profile: " +
                               error.message());
  } catch (const NsfNote::DominoApiError& error) {
    throw CustomerProfileError(u"Could not add text item to note: " + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw CustomerProfileError(u"Could not open database connection: " + error.message());
  }
}

// The first update of an empty profile ties it to the server's directory.
void CustomerProfile::setReplicaIdOnce(NsfNote& note) {
  if (!dbReplicaId_.value.empty()) return;
  const std::u16string replicaId = notes::DominoApiTools::directoryReplicaId();
  if (replicaId.empty()) return;
  note.setText(dbReplicaId_.item, replicaId);
  dbReplicaId_.value = replicaId;
}

std::u16string customerProfileText() {
  try {
    CustomerProfile profile;
    profile.load();
    return profile.print(profileDepth);
  } catch (const CustomerProfile::CustomerProfileError& error) {
    return u"Could not load Customer profile: " + error.message();
  }
}

}  // namespace documents
