#include "notes/note_handles.h"

#include "notes/api.h"
#include "notes/domino_api_tools.h"
#include "notes/library_text.h"

namespace notes {
namespace {

using DominoApiTools::errorText;

constexpr BOOL copyProfile = 1;

// A user name as the library takes it: no user is no text and no length.
struct User {
  const char* name;
  WORD length;
};

User asUser(const std::optional<std::string>& user) {
  return user ? User{user->c_str(), lengthOf(*user)} : User{nullptr, 0};
}

}  // namespace

STATUS OpenNote::create(const NsfDbConnection& connection) {
  return NSFNoteCreate(connection.handle(), &hNote_);
}

STATUS OpenNote::open(const NsfDbConnection& connection, NOTEID id) {
  return NSFNoteOpen(connection.handle(), id, 0, &hNote_);
}

STATUS OpenNote::openProfile(const NsfDbConnection& connection, const std::string& profile,
                             const std::optional<std::string>& user) {
  const auto [name, length] = asUser(user);
  return NSFProfileOpen(connection.handle(), profile.c_str(), lengthOf(profile), name, length,
                        copyProfile, &hNote_);
}

STATUS OpenNote::update() const { return NSFNoteUpdate(hNote_, 0); }

STATUS OpenNote::updateProfile(const std::string& profile,
                               const std::optional<std::string>& user) const {
  const auto [name, length] = asUser(user);
  return NSFProfileUpdate(hNote_, profile.c_str(), lengthOf(profile), name, length);
}

STATUS OpenNote::close() const { return NSFNoteClose(hNote_); }

NoteHandle::NoteHandle(const NsfDbConnection& connection, NOTEID id)
    : lastStatus_(note_.open(connection, id)) {
  if (lastStatus_ != 0) throw NoteHandleError(u"Could not open note: " + errorText(lastStatus_));
}

NoteHandle::~NoteHandle() noexcept(false) {
  lastStatus_ = note_.close();
  if (lastStatus_ == 0 || failures_.isUnwinding()) return;
  throw NoteHandleError(u"Could not close note: " + errorText(lastStatus_));
}

void NoteHandle::update() {
  lastStatus_ = note_.update();
  if (lastStatus_ != 0) throw NoteHandleError(u"Coule not update note" + errorText(lastStatus_));
}

ProfileNoteHandle::ProfileNoteHandle(const NsfDbConnection& connection, const std::string& profile,
                                     const std::optional<std::string>& user)
    : lastStatus_(note_.openProfile(connection, profile, user)) {
  if (lastStatus_ == 0) return;
  throw ProfileNoteHandleError(u"Could not open profile: " + errorText(lastStatus_));
}

ProfileNoteHandle::~ProfileNoteHandle() noexcept(false) {
  lastStatus_ = note_.close();
  if (lastStatus_ == 0 || failures_.isUnwinding()) return;
  throw ProfileNoteHandleError(u"Could not close profile: " + errorText(lastStatus_));
}

}  // namespace notes
