#include "offline/exported_stores.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>

#include "import/import.h"
#include "offline/files.h"
#include "offline/messages.h"
#include "offline/program_texts.h"
#include "store/letters.h"
#include "store/notes_ini.h"

namespace offline {
namespace {

namespace fs = std::filesystem;

constexpr const char* configurationStore = "QBConf.nsf";

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
std::string nameOf(const fs::path& exported) {
  const std::optional<std::string> path = dxl::pathOfExport(exported.string());
  return std::string(
      store::trimmed(path.has_value() ? std::string(lastPart(*path)) : nameOfFile(exported)));
}

bool isOfConfiguration(const std::string& name) {
  return store::equalNames(store::fileOfBook(name), configurationStore);
}

std::string bookNamed(const std::string& name, const fs::path& exported) {
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
  return store;
}

bool haveSameBytes(const fs::path& one, const fs::path& other) {
  if (fs::file_size(one) != fs::file_size(other)) return false;
  std::ifstream ofOne = openToRead(one);
  std::ifstream ofOther = openToRead(other);
  return std::equal(std::istreambuf_iterator<char>(ofOne), {},
                    std::istreambuf_iterator<char>(ofOther));
}

void requireDifferent(const std::vector<fs::path>& exports) {
  for (std::size_t i = 0; i < exports.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (fs::equivalent(exports[i], exports[j]) || haveSameBytes(exports[i], exports[j]))
        throw Failed(exports[j].string() + " and " + exports[i].string() + " are the same file");
    }
  }
}

}  // namespace

std::vector<ExportedStore> storesOf(const std::vector<fs::path>& exports) {
  std::vector<std::string> names(exports.size());
  std::ranges::transform(exports, names.begin(), nameOf);
  requireDifferent(exports);
  const bool isConfigurationNamed = std::ranges::any_of(names, isOfConfiguration);
  std::vector<ExportedStore> stores = {{configurationStore, {}}};
  for (std::size_t i = 0; i < exports.size(); ++i) {
    const bool isConfiguration = isConfigurationNamed ? isOfConfiguration(names[i]) : i == 0;
    const std::string name = isConfiguration ? configurationStore : bookNamed(names[i], exports[i]);
    auto store = std::ranges::find_if(stores, [&name](const ExportedStore& other) {
      return store::equalNames(other.name, name);
    });
    if (store == stores.end()) store = stores.insert(store, {name, {}});
    store->exports.push_back(exports[i]);
  }
  return stores;
}

}  // namespace offline
