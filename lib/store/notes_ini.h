// The variables of a notes.ini.
//
// A line is Name=Value and ends with LF, CR LF or CR. Everything behind the first "=" is the value,
// blanks included; a byte order mark of UTF-8 before the first line does no harm. Lines without a
// name before "=", such as the header "[Notes]", say nothing. Names compare without regard to the
// case of ASCII letters; of several lines with one name the first counts. A file that is not UTF-8
// is as a whole taken for windows-1252; values are UTF-8. The file is read once: what changes in it
// later has no effect.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace store {

class NotesIni {
 public:
  /// Reads the file. Throws settingsUnreadable, settingsNoFile, settingsLinkLoop,
  /// settingsPathTooLong and settingsWide.
  static NotesIni read(const std::string& path);

  /// Throws settingsWide.
  explicit NotesIni(std::string_view content);

  /// The value of a variable, or null if there is none.
  const std::string* find(std::string_view name) const;

  /// The value of a variable, empty if there is none: for the variables where both mean the same.
  std::string valueOrEmpty(std::string_view name) const;

 private:
  std::unordered_map<std::string, std::string> values_;  // by name in small letters
};

/// The whole number that a value says, blanks around it or a sign before it or none; nothing for
/// any other text, and for a number that is not between these two.
std::optional<int> numberFrom(std::string_view value, int least, int most);

/// The zone that a value of Timezone says: hours west of GMT, -23 to 23.
std::optional<std::chrono::hours> zoneFrom(std::string_view value);

/// The entries of a value of Names, without the blanks around them; the empty ones are left out.
std::vector<std::string_view> booksFrom(std::string_view value);

/// The file of an address book: ".nsf" is added unless the book has it in letters of either case.
std::string fileOfBook(std::string_view book);

}  // namespace store
