// What each folder may include from: no arrow points up, and none from one program to another but
// for that from the offline report to the importer. An include without a folder is one of its own.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>

#include "support/folders.h"

namespace {

struct Folder {
  std::string path;
  std::vector<std::string> mayInclude;  // folders by their last names, or a header
};

const std::vector<Folder> folders = {
    {"lib/platform", {}},
    {"lib/replay", {"platform"}},
    {"lib/store", {"platform"}},
    {"src/base", {"replay", "platform"}},
    {"src/notes", {"base", "replay", "platform"}},
    {"src/configuration", {"notes", "base", "replay", "platform"}},
    {"src/documents", {"configuration", "notes", "base", "replay", "platform"}},
    {"src/directory", {"documents", "configuration", "notes", "base", "replay", "platform"}},
    {"src/driver",
     {"directory", "documents", "configuration", "notes", "base", "replay", "platform"}},
    {"standin", {"notes/abi.h", "store", "platform"}},
    {"tools/import", {"store", "platform"}},
    {"tools/offline", {"import", "store", "platform"}},
    {"tools/report", {"platform"}},
};

bool isAllowed(const std::string& path, const std::string& included) {
  const auto folder = std::ranges::find_if(
      folders, [&path](const Folder& one) { return path.starts_with(one.path + '/'); });
  if (folder == folders.end()) return false;
  const std::string from = included.substr(0, included.find('/'));
  const auto isOneOf = [&folder](const std::string& name) {
    return std::ranges::find(folder->mayInclude, name) != folder->mayInclude.end();
  };
  return from == included || from == folder->path.substr(folder->path.rfind('/') + 1) ||
         isOneOf(from) || isOneOf(included);
}

TEST(IncludeOrder, EachFolderIncludesFromThoseItMay) {
  const std::regex include("^\\s*#\\s*include \"([^\"]+)\"");
  const std::filesystem::path root = test::inRepository("");
  for (const std::string name : {"lib", "src", "standin", "tools"}) {
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / name)) {
      const std::string path = entry.path().lexically_relative(root).generic_string();
      std::ifstream file(entry.path());
      std::smatch match;
      for (std::string line; entry.is_regular_file() && std::getline(file, line);) {
        if (!std::regex_search(line, match, include)) continue;
        EXPECT_TRUE(isAllowed(path, match[1])) << path << " includes " << match[1];
        ++count;
      }
    }
    EXPECT_GT(count, 10) << "the sources were not found";
  }
}

}  // namespace
