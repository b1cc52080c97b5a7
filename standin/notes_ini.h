// The variables of a notes.ini.
//
// A line is Name=Value and ends with LF or CR LF. Everything behind the first "=" is the value,
// blanks included. Lines without a name before "=", such as the header "[Notes]", say nothing.
// Names compare without regard to the case of ASCII letters; of several lines with one name the
// first counts. The file is read once: what changes in it later has no effect.
#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <unordered_map>

namespace standin {

class NotesIni {
 public:
  /// Reads the file; throws settingsUnreadable.
  static NotesIni read(const std::string& path);

  explicit NotesIni(std::istream& lines);

  /// The value of a variable, or null if there is none.
  const std::string* find(std::string_view name) const;

  /// The value of a variable, empty if there is none: for the variables where both mean the same.
  std::string valueOrEmpty(std::string_view name) const;

 private:
  std::unordered_map<std::string, std::string> values_;  // by name in small letters
};

}  // namespace standin
