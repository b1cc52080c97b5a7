// For whom the add-on is installed: the organisation, its contact, the language, the product's
// place.
//
// A profile note of the configuration database, with no user. A failure between opening and closing
// the note leaves it open until the process ends: the note's handle is held bare.
#pragma once

#include <string>

#include "base/error.h"
#include "documents/profile_note.h"

namespace documents {

class CustomerProfile {
 public:
  class CustomerProfileError : public base::Error {
   public:
    using Error::Error;
  };

  /// Fills the fields from the note; an absent or empty item is an empty field. Raises
  /// CustomerProfileError, with the fields that were read so far.
  void load();

  /// The fields with their labels, each on a line that begins with `depth` tabs.
  std::u16string print(int depth) const;

  /// Writes the fields that a setter has changed, but never the replica id of one: a profile whose
  /// own is empty gets that of the server's directory. Raises CustomerProfileError.
  void update();

  void setOrganization(const std::u16string& value) { organization_.set(value); }
  void setContact(const std::u16string& value) { contact_.set(value); }
  void setEmail(const std::u16string& value) { email_.set(value); }
  void setLanguage(const std::u16string& value) { language_.set(value); }
  void setDbReplicaId(const std::u16string& value) { dbReplicaId_.value = value; }
  void setProductPath(const std::u16string& value) { productPath_.set(value); }
  void setProductVersion(const std::u16string& value) { productVersion_.set(value); }

 private:
  void setReplicaIdOnce(notes::NsfNote& note);

  ProfileField organization_{"customer_organization"};
  ProfileField contact_{"customer_contact"};
  ProfileField email_{"customer_email"};
  ProfileField language_{"customer_language"};
  ProfileField dbReplicaId_{"db_replica_id"};
  ProfileField productPath_{"product_path"};
  ProfileField productVersion_{"product_version"};
};

/// The section of the report: the customer profile, or why it could not be loaded.
std::u16string customerProfileText();

}  // namespace documents
