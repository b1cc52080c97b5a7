// The path of one address book, with its parts as the Notes library tells them.
#pragma once

#include <string>

#include "base/error.h"

namespace directory {

/// The address book that every server has.
inline constexpr const char16_t* namesNsf = u"names.nsf";

class AddressBook {
 public:
  class AddressBookError : public base::Error {
   public:
    using Error::Error;
  };

  /// Parses `path`. Raises AddressBookError.
  explicit AddressBook(std::u16string path);

  /// The path and its parts in one line.
  std::u16string describe() const;

  /// The path as a database connection takes it.
  const std::string& narrowPath() const { return narrowPath_; }

 private:
  std::u16string completePath_;
  std::u16string filePart_;
  std::u16string serverPart_;
  std::u16string portPart_;
  std::string narrowPath_;
};

}  // namespace directory
