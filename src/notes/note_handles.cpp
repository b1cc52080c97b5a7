#include "notes/note_handles.h"

#include <exception>

#include "notes/api.h"
#include "notes/domino_api_tools.h"

namespace notes {
namespace {

using DominoApiTools::errorText;

constexpr BOOL copyProfile = 1;

WORD lengthOf(const std::string& text) { return static_cast<WORD>(text.size()); }

// A user name as the library takes it: no user is no text and no length.
struct User {
  const char* name;
  WORD length;
};

User asUser(const std::optional<std::string>& user) {
  return user ? User{user->c_str(), lengthOf(*user)} : User{nullptr, 0};
}

// Closes a note in a destructor, whose object was built with `failuresAtConstruction` failures on
// their way out.
template <typename CloseError>
void closeNote(NOTEHANDLE note, int failuresAtConstruction, const char16_t* prefix) {
  const STATUS status = NSFNoteClose(note);
  if (status == 0 || std::uncaught_exceptions() > failuresAtConstruction) return;
  throw CloseError(prefix + errorText(status));
}

}  // namespace

NoteHandle::NoteHandle(const NsfDbConnection& connection, NOTEID id)
    : failuresAtConstruction_(std::uncaught_exceptions()) {
  const STATUS status = NSFNoteOpen(connection.handle(), id, 0, &hNote_);
  if (status != 0) throw NoteHandleError(u"Could not open note: " + errorText(status));
}

NoteHandle::NoteHandle(NOTEHANDLE open)
    : hNote_(open), failuresAtConstruction_(std::uncaught_exceptions()) {}

NoteHandle::~NoteHandle() noexcept(false) {
  closeNote<NoteHandleError>(hNote_, failuresAtConstruction_, u"Could not close note: ");
}

void NoteHandle::update() {
  const STATUS status = NSFNoteUpdate(hNote_, 0);
  if (status != 0) throw NoteHandleError(u"Coule not update note" + errorText(status));
}

ProfileNoteHandle::ProfileNoteHandle(const NsfDbConnection& connection, const std::string& profile,
                                     const std::optional<std::string>& user)
    : failuresAtConstruction_(std::uncaught_exceptions()) {
  const STATUS status = openProfile(connection.handle(), profile, user, hNote_);
  if (status != 0) throw ProfileNoteHandleError(u"Could not open profile: " + errorText(status));
}

ProfileNoteHandle::~ProfileNoteHandle() noexcept(false) {
  closeNote<ProfileNoteHandleError>(hNote_, failuresAtConstruction_, u"Could not close profile: ");
}

STATUS openProfile(DBHANDLE db, const std::string& profile, const std::optional<std::string>& user,
                   NOTEHANDLE& note) {
  const auto [name, length] = asUser(user);
  return NSFProfileOpen(db, profile.c_str(), lengthOf(profile), name, length, copyProfile, &note);
}

STATUS updateProfile(NOTEHANDLE note, const std::string& profile,
                     const std::optional<std::string>& user) {
  const auto [name, length] = asUser(user);
  return NSFProfileUpdate(note, profile.c_str(), lengthOf(profile), name, length);
}

}  // namespace notes
