#include "offline/book_names.h"

#include <algorithm>
#include <optional>

#include "import/import.h"
#include "offline/messages.h"
#include "offline/program_texts.h"
#include "store/letters.h"
#include "store/notes_ini.h"

namespace offline {
namespace {

// Behind "!!" stands the file on a server: "CN=mail01/O=Acme!!names.nsf".
std::string_view lastPart(std::string_view path) {
  constexpr std::string_view mark = "!!";
  if (const std::size_t at = path.rfind(mark); at != std::string_view::npos)
    path.remove_prefix(at + mark.size());
  if (const std::size_t at = path.find_last_of("/\\"); at != std::string_view::npos)
    path.remove_prefix(at + 1);
  return path;
}

// The ending of an export is none of the database.
std::string nameOfFile(const std::filesystem::path& file) {
  const std::string ending = store::lowered(file.extension().string());
  return (ending == ".xml" || ending == ".dxl" ? file.stem() : file.filename()).string();
}

// Blanks at either end would not come through the list in notes.ini.
std::string storeName(const std::filesystem::path& exported) {
  const std::optional<std::string> path = dxl::pathOfExport(exported.string());
  const std::string name(
      store::trimmed(path.has_value() ? std::string(lastPart(*path)) : nameOfFile(exported)));
  constexpr std::size_t longest = 255;
  const auto refuse = [&](const std::string& why) {
    throw Failed(exported.string() + ": the address book would be named \"" +
                 name.substr(0, longest) + "\", " + why);
  };
  if (name.empty() || name == "." || name == "..") refuse("which is no name of a file");
  if (name.find(',') != std::string::npos) refuse("and a comma separates names in notes.ini");
  if (hasControl(name)) refuse("which holds a control character");
  std::string store = store::fileOfBook(name);
  if (store.size() > longest) refuse("which is longer than the system takes");
  if (store::equalNames(store, configurationStore))
    refuse("which is the name of the configuration");
  return store;
}

}  // namespace

std::vector<AddressBook> nameBooks(const std::vector<std::filesystem::path>& exports) {
  std::vector<AddressBook> books;
  for (const std::filesystem::path& exported : exports) {
    AddressBook book{exported, storeName(exported)};
    const auto alike = std::ranges::find_if(books, [&book](const AddressBook& other) {
      return store::equalNames(book.store, other.store);
    });
    if (alike != books.end()) {
      throw Failed(alike->exported.string() + " and " + exported.string() +
                   " are both the address book " + book.store);
    }
    books.push_back(std::move(book));
  }
  return books;
}

}  // namespace offline
