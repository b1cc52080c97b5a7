#include "directory/recipient_profiles.h"

#include "base/text.h"
#include "notes/domino_api_tools.h"
#include "notes/formula_search.h"
#include "notes/note_handles.h"
#include "notes/nsf_db_connection.h"

namespace directory {
namespace {

using notes::NsfDbConnection;
using notes::NsfNote;
using notes::ProfileNoteHandle;
using notes::DominoApiTools::errorText;

constexpr const char* filterSettingItem = "FilterSetting";

std::uint32_t countMatches(DBHANDLE db) {
  notes::OwnedFormula formula;
  STATUS status = notes::compileFormula(
      R"(SELECT @LowerCase(Form) = "qbprofile" & FilterSetting="1")", formula.handle());
  if (status != 0) throw UserCountError(u"Could not compile searchFormula: " + errorText(status));
  std::uint32_t count = 0;
  status = notes::searchNotes(db, formula.handle(), nullptr, [&count](NOTEID) {
    ++count;
    return 0;
  });
  if (status != 0) throw UserCountError(u"Could not complete search" + errorText(status));
  return count;
}

NOTEID lastMatch(DBHANDLE db, const std::string& replicaId) {
  // The compiled formula is not freed: it stays with the library until the end of its use.
  FORMULAHANDLE formula = 0;
  STATUS status = notes::compileFormula(
      base::joined({R"(SELECT @LowerCase(Form) = "qbprofile" & REPLICAID=")", replicaId, "\""}),
      formula);
  if (status != 0) {
    throw GetUserByReplicaId::GetUserByReplicaIdError(u"Could not compile searchFormula: " +
                                                      errorText(status));
  }
  NOTEID last = 0;
  status = notes::searchNotes(db, formula, nullptr, [&last](NOTEID id) {
    last = id;
    return 0;
  });
  if (status != 0) {
    throw GetUserByReplicaId::GetUserByReplicaIdError(u"Search failed" + errorText(status));
  }
  return last;
}

}  // namespace

void countFilteredUsers(std::uint32_t& count) {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    count = countMatches(connection.handle());
    connection.close();
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw UserCountError(u"Could not open database connection" + error.message());
  }
}

NOTEID GetUserByReplicaId::find(const std::string& replicaId) {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    const NOTEID id = lastMatch(connection.handle(), replicaId);
    connection.close();
    return id;
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
