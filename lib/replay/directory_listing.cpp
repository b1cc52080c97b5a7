#include "replay/directory_listing.h"

#include "platform/files.h"

namespace replay {

std::vector<std::string> list_directory(const std::string& base, const std::string& mask,
                                        bool directories, bool files, bool recursive) {
  std::vector<std::string> names;
  for (const auto& [name, is_folder] : platform::listFolder(base + mask)) {
    if (!is_folder) {
      if (files) names.push_back(name);
      continue;
    }
    if (name.starts_with('.')) continue;
    if (directories) names.push_back(name);
    if (recursive) {
      const auto below = list_directory(base + name + "\\", mask, directories, files, recursive);
      names.insert(names.end(), below.begin(), below.end());
    }
  }
  return names;
}

}  // namespace replay
