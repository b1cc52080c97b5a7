#include "documents/customer_profile.h"

#include "notes/api.h"
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
constexpr int sectionDepth = 5;

NOTEHANDLE openCustomerNote(const NsfDbConnection& connection) {
  NOTEHANDLE note = 0;
  const STATUS status = notes::openProfile(connection.handle(), profileName, std::nullopt, note);
  if (status != 0) {
    throw CustomerProfile::CustomerProfileError(u"Could not open Customer profile: " +
                                                errorText(status));
  }
  return note;
}

void closeCustomerNote(NOTEHANDLE note) {
  const STATUS status = notes::NSFNoteClose(note);
  if (status == 0) return;
  throw CustomerProfile::CustomerProfileError(u"Could not close profile note: " +
                                              errorText(status));
}

}  // namespace

void CustomerProfile::load() {
  try {
    readFields();
  } catch (const NsfNote::NsfNoteError& error) {
    throw CustomerProfileError(u"Could not read note-item: " + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw CustomerProfileError(u"Could not open database connection: " + error.message());
  }
}

void CustomerProfile::readFields() {
  NsfDbConnection connection(notes::configurationDatabase);
  const NOTEHANDLE handle = openCustomerNote(connection);
  const NsfNote note(handle);
  for (ProfileField* const field : {&organization_, &contact_, &email_, &language_, &dbReplicaId_,
                                    &productPath_, &productVersion_}) {
    field->value = note.getTextOrEmpty(field->item);
  }
  closeCustomerNote(handle);
  connection.close();
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
  try {
    writeFields();
  } catch (const DominoApiToolsError& error) {
    throw CustomerProfileError(u"Could not set dbReplicaId on the customer profile: " +
                               error.message());
  } catch (const NsfNote::DominoApiError& error) {
    throw CustomerProfileError(u"Could not add text item to note: " + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw CustomerProfileError(u"Could not open database connection: " + error.message());
  }
}

void CustomerProfile::writeFields() {
  NsfDbConnection connection(notes::configurationDatabase);
  const NOTEHANDLE handle = openCustomerNote(connection);
  NsfNote note(handle);
  ProfileField* const fields[] = {&organization_,   &contact_,     &email_,
                                  &productVersion_, &productPath_, &language_};
  for (const ProfileField* field : fields) {
    if (field->changed) note.setText(field->item, field->value);
  }
  // The first update of an empty profile ties it to the server's directory.
  if (dbReplicaId_.value.empty()) {
    const std::u16string replicaId = notes::DominoApiTools::directoryReplicaId();
    if (!replicaId.empty()) {
      note.setText(dbReplicaId_.item, replicaId);
      dbReplicaId_.value = replicaId;
    }
  }
  const STATUS status = notes::updateProfile(handle, profileName, std::nullopt);
  if (status != 0) {
    throw CustomerProfileError(u"Could not update configuration-profile: " + errorText(status));
  }
  for (ProfileField* field : fields) field->changed = false;
  closeCustomerNote(handle);
  connection.close();
}

std::u16string customerProfileText() {
  try {
    CustomerProfile profile;
    profile.load();
    return profile.print(sectionDepth);
  } catch (const CustomerProfile::CustomerProfileError& error) {
    return u"Could not load Customer profile: " + error.message();
  }
}

}  // namespace documents
