#include "directory/recipient_profiles.h"

#include "base/text.h"
#include "notes/formula_search.h"
#include "notes/note_handles.h"
#include "notes/nsf_db_connection.h"

namespace directory {
namespace {

using notes::NsfDbConnection;
using notes::NsfNote;
using notes::ProfileNoteHandle;

constexpr const char* filterSettingItem = "FilterSetting";

}  // namespace

void countFilteredUsers(std::uint32_t& count) {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    std::uint32_t matches = 0;
    notes::searchNotes<UserCountError>(
        connection, R"(SELECT @LowerCase(Form) = "qbprofile" & FilterSetting="1")",
        notes::AfterSearch::free, u"Could not complete search", [&matches](NOTEID) { ++matches; });
    count = matches;
    connection.close();
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw UserCountError(u"Could not open database connection" + error.message());
  }
}

NOTEID GetUserByReplicaId::find(const std::string& replicaId) {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    NOTEID last = 0;
    notes::searchNotes<GetUserByReplicaIdError>(
        connection,
        base::joined({R"(SELECT @LowerCase(Form) = "qbprofile" & REPLICAID=")", replicaId, "\""}),
        notes::AfterSearch::keep, u"Search failed", [&last](NOTEID id) { last = id; });
    connection.close();
    return last;
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw GetUserByReplicaIdError(std::u16string(u"Could not connect to database ") +
                                  notes::configurationDatabaseWide + u": " + error.message());
  } catch (const GetUserByReplicaIdError& error) {
    throw GetUserByReplicaIdError(u"Could not complete search: " + error.message());
  }
}

void DefaultRecipientProfile::load() {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    {
      const ProfileNoteHandle profile(connection, "qbdefaultprofile");
      filterSetting_ = NsfNote(profile.handle()).getTextOrEmpty(filterSettingItem);
    }
    connection.close();
  } catch (const NsfNote::NsfNoteError& error) {
    throw DefaultRecipientProfileError(u"Could not load Default Profile: " + error.message());
  } catch (const ProfileNoteHandle::ProfileNoteHandleError& error) {
    throw DefaultRecipientProfileError(u"Could not open or close Default Profile: " +
                                       error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw DefaultRecipientProfileError(u"Could not load Default Profile " + error.message());
  }
}

void DefaultRecipientProfile::copyTo(NsfNote& note) const {
  try {
    note.setText(filterSettingItem, filterSetting_);
  } catch (const NsfNote::NsfNoteError& error) {
    throw DefaultRecipientProfileError(u"Could not copy default profile: " + error.message());
  }
}

}  // namespace directory
