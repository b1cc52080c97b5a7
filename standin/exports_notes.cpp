// Notes and profile notes.
#include <utility>

#include "standin/caller_text.h"
#include "standin/exports.h"
#include "standin/guard.h"
#include "standin/session.h"

using namespace standin;

namespace {

store::ProfileName profileName(const char* profile, WORD profileLength, const char* user,
                               WORD userLength) {
  if (profileLength == 0) throw Failure(Status::noProfileName);
  requireAll(profile);
  if (userLength != 0) requireAll(user);
  return {textFrom(profile, profileLength), textFrom(user, userLength)};
}

}  // namespace

STATUS NOTES_CALL NSFNoteCreate(DBHANDLE db, NOTEHANDLE* note) {
  return guard([&] {
    requireAll(note);
    session().databases.at(db);
    *note = session().notes.add({db, {}});
  });
}

STATUS NOTES_CALL NSFNoteOpen(DBHANDLE db, NOTEID id, WORD, NOTEHANDLE* note) {
  return guard([&] {
    requireAll(note);
    const SharedNote found = session().databases.at(db)->notes().find(id);
    if (found == nullptr) throw Failure(Status::noSuchNote);
    *note = session().notes.add({db, *found});
  });
}

STATUS NOTES_CALL NSFNoteUpdate(NOTEHANDLE note, WORD) {
  return guard([&] {
    OpenNote& open = session().openNote(note);
    if (open.note.profile.has_value()) throw Failure(Status::noteIsProfile);
    session().databases.at(open.database)->write(open.note);
  });
}

STATUS NOTES_CALL NSFNoteClose(NOTEHANDLE note) {
  return guard([&] { session().notes.close(note); });
}

STATUS NOTES_CALL NSFProfileOpen(DBHANDLE db, const char* profile, WORD profile_length,
                                 const char* user, WORD user_length, BOOL, NOTEHANDLE* note) {
  return guard([&] {
    requireAll(note);
    store::ProfileName name = profileName(profile, profile_length, user, user_length);
    const SharedNote found = session().databases.at(db)->notes().find(name);
    store::Note opened;
    if (found == nullptr)
      opened.profile = std::move(name);
    else
      opened = *found;
    *note = session().notes.add({db, std::move(opened)});
  });
}

STATUS NOTES_CALL NSFProfileUpdate(NOTEHANDLE note, const char* profile, WORD profile_length,
                                   const char* user, WORD user_length) {
  return guard([&] {
    OpenNote& open = session().openNote(note);
    if (!open.note.profile.has_value()) throw Failure(Status::noteIsNoProfile);
    store::Note written = open.note;
    written.profile = profileName(profile, profile_length, user, user_length);
    session().databases.at(open.database)->write(written);
    open.note = std::move(written);
  });
}
