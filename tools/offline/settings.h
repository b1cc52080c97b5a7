// The notes.ini of the server that is laid out: the customer's with some variables replaced, or a
// new one.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "offline/exported_stores.h"
#include "store/letters.h"
#include "store/notes_ini.h"

namespace offline {

/// A variable and its value.
struct Setting {
  std::string name;
  std::string value;
};

class Settings {
 public:
  /// Those of a new file.
  Settings() : Settings(std::string("[Notes]\n")) {}

  /// Throws Failed, which names the file, where the library does not read it.
  static Settings read(const std::filesystem::path& file);

  /// The value without the blanks around it; empty if there is none.
  std::string value(std::string_view name) const;

  /// The text of the file with the values of `replaced`, each in the place of the one that counts,
  /// or at the end. Further lines of the same name are left out.
  std::string textWith(const std::vector<Setting>& replaced) const;

 private:
  explicit Settings(std::string text) : variables_(text), text_(store::asUtf8(std::move(text))) {}

  store::NotesIni variables_;
  std::string text_;  // as the exports have their letters
};

/// The list of address books: those entries of `names` whose book is among `books`, in their order,
/// then the other books.
std::string listOfBooks(std::string_view names, const std::vector<ExportedStore>& books);

}  // namespace offline
