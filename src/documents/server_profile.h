// What runs on one Domino server: its name, and the versions of Domino, engine and add-on.
//
// A profile note of the configuration database with the server's name as its user. A failure
// between opening and closing the note leaves it open until the process ends: the note's handle is
// held bare.
#pragma once

#include <string>

#include "base/error.h"
#include "documents/profile_note.h"

namespace documents {

class ServerProfileDocument {
 public:
  class ServerProfileDocumentError : public base::Error {
   public:
    using Error::Error;
  };

  /// Fills the fields from the note of the server that was set, or else of this one. An absent or
  /// empty item leaves its field as it is, so that the name stays that of notes.ini where the note
  /// holds none. Raises ServerProfileDocumentError.
  void load();

  /// The fields with their labels, each on a line that begins with `depth` tabs.
  std::u16string print(int depth) const;

  /// Writes the fields that a setter has changed. Raises ServerProfileDocumentError.
  void update();

  void setServerName(const std::u16string& value) { serverName_.set(value); }
  void setDominoVersion(const std::u16string& value) { dominoVersion_.set(value); }
  void setScanningEngineVersion(const std::u16string& value) { scanningEngineVersion_.set(value); }
  void setVrxVersion(const std::u16string& value) { vrxVersion_.set(value); }

 private:
  ProfileField serverName_{"server_name"};
  ProfileField dominoVersion_{"domino_version"};
  ProfileField scanningEngineVersion_{"scanning_engine_version"};
  ProfileField vrxVersion_{"vrx_version"};
};

/// The notes.ini variable ServerName; a server without it gets an empty name.
void currentServerName(std::u16string& name);

/// The section of the report: the server profile, or why it could not be loaded.
std::u16string serverProfileText();

}  // namespace documents
