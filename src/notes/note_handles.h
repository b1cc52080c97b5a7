// The owners of an open note: NoteHandle of one that has an id or was just made, ProfileNoteHandle
// of a profile note.
//
// Both close the note in their destructor, on the normal way out and on the way out of a failure. A
// failed close is raised, except while another failure is on its way out. A note that is not
// updated is dropped.
#pragma once

#include <optional>
#include <string>

#include "base/error.h"
#include "notes/abi.h"
#include "notes/failure_watch.h"
#include "notes/nsf_db_connection.h"

namespace notes {

class NoteHandle {
 public:
  class NoteHandleError : public base::Error {
   public:
    using Error::Error;
  };

  /// Opens a note by its id. Raises NoteHandleError, or DbConnectionError for a closed connection.
  NoteHandle(const NsfDbConnection& connection, NOTEID id);

  /// Takes over a note that is open already.
  explicit NoteHandle(NOTEHANDLE open) : hNote_(open) {}

  NoteHandle(const NoteHandle&) = delete;
  NoteHandle& operator=(const NoteHandle&) = delete;
  ~NoteHandle() noexcept(false);

  NOTEHANDLE handle() const { return hNote_; }

  /// The status of the last call of the library.
  STATUS lastStatus() const { return lastStatus_; }

  /// Writes the note to its database. Raises NoteHandleError.
  void update();

 private:
  NOTEHANDLE hNote_ = 0;
  STATUS lastStatus_ = 0;
  FailureWatch failures_;
};

class ProfileNoteHandle {
 public:
  class ProfileNoteHandleError : public base::Error {
   public:
    using Error::Error;
  };

  /// Opens a profile note, which the library makes if need be; without `user` the one of no user.
  /// Raises ProfileNoteHandleError, or DbConnectionError for a closed connection.
  ProfileNoteHandle(const NsfDbConnection& connection, const std::string& profile,
                    const std::optional<std::string>& user = std::nullopt);

  ProfileNoteHandle(const ProfileNoteHandle&) = delete;
  ProfileNoteHandle& operator=(const ProfileNoteHandle&) = delete;
  ~ProfileNoteHandle() noexcept(false);

  NOTEHANDLE handle() const { return hNote_; }

  /// The status of the last call of the library.
  STATUS lastStatus() const { return lastStatus_; }

 private:
  NOTEHANDLE hNote_ = 0;
  STATUS lastStatus_ = 0;
  FailureWatch failures_;
};

/// Opens a profile note without owning it, and writes one. Each gives the library's status.
STATUS openProfile(DBHANDLE db, const std::string& profile, const std::optional<std::string>& user,
                   NOTEHANDLE& note);
STATUS updateProfile(NOTEHANDLE note, const std::string& profile,
                     const std::optional<std::string>& user);

}  // namespace notes
