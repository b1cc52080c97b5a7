// Open notes. OpenNote stays open until it is closed or taken over: what a failure leaves open
// stays with the library. NoteHandle owns a note that has an id or was just made, ProfileNoteHandle
// a profile note.
//
// These two close the note in their destructor, on the normal way out and on the way out of a
// failure. A failed close is raised, except while another failure is on its way out. A note that is
// not updated is dropped.
#pragma once

#include <optional>
#include <string>

#include "base/error.h"
#include "notes/abi.h"
#include "notes/failure_watch.h"
#include "notes/nsf_db_connection.h"

namespace notes {

/// All functions give the library's status. Without `user` a profile note is that of no user.
class OpenNote {
 public:
  STATUS create(const NsfDbConnection& connection);
  STATUS open(const NsfDbConnection& connection, NOTEID id);
  STATUS openProfile(const NsfDbConnection& connection, const std::string& profile,
                     const std::optional<std::string>& user = std::nullopt);

  STATUS update() const;
  STATUS updateProfile(const std::string& profile,
                       const std::optional<std::string>& user = std::nullopt) const;
  STATUS close() const;

  NOTEHANDLE handle() const { return hNote_; }

 private:
  NOTEHANDLE hNote_ = 0;
};

class NoteHandle {
 public:
  class NoteHandleError : public base::Error {
   public:
    using Error::Error;
  };

  /// Opens a note by its id. Raises NoteHandleError, or DbConnectionError for a closed connection.
  NoteHandle(const NsfDbConnection& connection, NOTEID id);

  /// Takes over a note that is open already.
  explicit NoteHandle(const OpenNote& open) : note_(open) {}

  NoteHandle(const NoteHandle&) = delete;
  NoteHandle& operator=(const NoteHandle&) = delete;
  ~NoteHandle() noexcept(false);

  NOTEHANDLE handle() const { return note_.handle(); }

  /// The status of the last call of the library.
  STATUS lastStatus() const { return lastStatus_; }

  /// Writes the note to its database. Raises NoteHandleError.
  void update();

 private:
  OpenNote note_;
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

  NOTEHANDLE handle() const { return note_.handle(); }

  /// The status of the last call of the library.
  STATUS lastStatus() const { return lastStatus_; }

 private:
  OpenNote note_;
  STATUS lastStatus_ = 0;
  FailureWatch failures_;
};

}  // namespace notes
