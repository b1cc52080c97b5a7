// Display texts in the administrator's language.
//
// The profile note "qblanguage" of the configuration database holds a text list for each section,
// with entries of the form key=text. What it lacks is shown by the caller's own text.
#pragma once

#include <string>

#include "base/error.h"

namespace configuration {

class QuellbrightTranslation {
 public:
  class QuellbrightTranslationError : public base::Error {
   public:
    using Error::Error;
  };

  /// The text of `key` in `section`, or `fallback` where there is none. Of two entries with one key
  /// the first counts. Raises QuellbrightTranslationError, and NsfNoteError as it is where a
  /// section is a single text that is gone when it is read.
  static std::u16string translate(const std::string& section, const std::u16string& key,
                                  const std::u16string& fallback);
};

}  // namespace configuration
