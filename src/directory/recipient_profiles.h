// The recipient profiles: for each mail user, whether the add-on filters the user's mail.
#pragma once

#include <cstdint>
#include <string>

#include "base/error.h"
#include "notes/abi.h"
#include "notes/nsf_note.h"

namespace directory {

class UserCountError : public base::Error {
 public:
  using Error::Error;
};

/// Counts the profiles of users whose mail is filtered. Raises UserCountError.
void countFilteredUsers(std::uint32_t& count);

class GetUserByReplicaId {
 public:
  class GetUserByReplicaIdError : public base::Error {
   public:
    using Error::Error;
  };

  /// The profile of the user whose mail file has this replica id; 0 if there is none, and of
  /// several the one that the library delivers last. Raises GetUserByReplicaIdError.
  static NOTEID find(const std::string& replicaId);
};

/// What a new profile begins with.
class DefaultRecipientProfile {
 public:
  class DefaultRecipientProfileError : public base::Error {
   public:
    using Error::Error;
  };

  /// Reads the profile note "qbdefaultprofile"; an item that is absent gives an empty setting.
  /// Raises DefaultRecipientProfileError.
  void load();

  /// Sets the defaults on a note. Raises DefaultRecipientProfileError and NsfNote::DominoApiError.
  void copyTo(notes::NsfNote& note) const;

 private:
  std::u16string filterSetting_ = u"0";
};

}  // namespace directory
