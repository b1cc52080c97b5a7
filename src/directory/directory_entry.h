// One mail user or mail-in database of an address book.
//
// An entry begins as a copy of a few items of its directory document. It is completed from its mail
// file only when the import takes it up, which opens that file on its server.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/error.h"
#include "notes/nsf_db_connection.h"
#include "notes/nsf_note.h"

namespace directory {

class DirectoryEntry {
 public:
  class DirectoryEntryError : public base::Error {
   public:
    using Error::Error;
  };

  /// Copies the items of a directory document. Raises DirectoryEntryError.
  explicit DirectoryEntry(const notes::NsfNote& note);

  /// Opens the mail file for its replica id and title. A path without the ending "nsf" or "ntf"
  /// gets ".nsf" first; one of less than three characters raises std::out_of_range. Raises
  /// DirectoryEntryError, which leaves the entry not ready, with the message as its status.
  void prepare();

  /// All fields with their labels, each on a line that begins with `indent` tabs, behind a title.
  std::u16string print(unsigned indent) const;

  bool readyForImport() const { return readyForImport_; }
  const std::u16string& type() const { return type_; }
  const std::u16string& mailServer() const { return mailServer_; }
  const std::u16string& filePath() const { return filePath_; }
  const std::u16string& fullName() const { return fullName_; }
  const std::u16string& replicaId() const { return late().replicaId; }
  const std::u16string& name() const { return late().name; }

 private:
  void fail(const DirectoryEntryError& error);
  void readPerson(const notes::NsfNote& note);
  void readDatabase(const notes::NsfNote& note);
  void readMailFile(const notes::NsfNote& note);
  void addExtension();
  std::string networkPath() const;
  void readMailDatabase(const notes::OpenDatabase& open);

  // What is empty until the import takes the entry up. A directory may have hundreds of thousands
  // of entries, which wait without it.
  struct Late {
    std::u16string replicaId;
    std::u16string name;       // the title of the mail file
    std::u16string spareText;  // the add-on's entries have it and leave it empty
    std::u16string status;
  };
  const Late& late() const;
  Late& late();

  std::u16string mailServer_;
  std::u16string filePath_;
  std::u16string fullName_;  // all names of a person, run together
  std::u16string type_;
  std::unique_ptr<Late> late_;  // null as long as all of it is empty
  bool readyForImport_ = true;
};

}  // namespace directory
