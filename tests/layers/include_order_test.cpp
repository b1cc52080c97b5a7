// What each folder may include from: no arrow points up, and none from one program to another but
// for that from the offline report to the importer. An include without a folder is one of its own.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
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

// Calls `visit` with the path and the lines of each file below a folder.
void forEachLine(const std::string& folder,
                 const std::function<void(const std::string&, const std::string&)>& visit) {
  const std::filesystem::path root = test::inRepository("");
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
    const std::string path = entry.path().lexically_relative(root).generic_string();
    std::ifstream file(entry.path());
    for (std::string line; entry.is_regular_file() && std::getline(file, line);) visit(path, line);
  }
}

TEST(IncludeOrder, EachFolderIncludesFromThoseItMay) {
  const std::regex include("^\\s*#\\s*include \"([^\"]+)\"");
  for (const std::string name : {"lib", "src", "standin", "tools"}) {
    int count = 0;
    forEachLine(name, [&](const std::string& path, const std::string& line) {
      std::smatch match;
      if (!std::regex_search(line, match, include)) return;
      EXPECT_TRUE(isAllowed(path, match[1])) << path << " includes " << match[1];
      ++count;
    });
    EXPECT_GT(count, 10) << "the sources were not found";
  }
}

// What is installed stands by itself.
TEST(IncludeOrder, PublicHeadersOfTheLibraryIncludeNoOthers) {
  const std::regex header("lib/replay/(internet/)?[a-z0-9_]+\\.h");
  const std::regex other("^\\s*#\\s*include \"(?!replay/(internet/)?[a-z0-9_]+\\.h\").*");
  int count = 0;
  forEachLine("lib/replay", [&](const std::string& path, const std::string& line) {
    if (!std::regex_match(path, header)) return;
    EXPECT_FALSE(std::regex_match(line, other)) << path << ": " << line;
    ++count;
  });
  EXPECT_GT(count, 10) << "the headers were not found";
}

// The run starts and ends the library, and the active configuration reads a note by its handle.
TEST(IncludeOrder, OnlyTheNotesFolderSpeaksToTheNotesLibrary) {
  const std::regex spoken("notes/api\\.h|\\b(DB|NOTE|FORMULA)?HANDLE\\b");
  int count = 0;
  forEachLine("src", [&](const std::string& path, const std::string& line) {
    const bool isExempt = path == "src/driver/run.cpp" || path.starts_with("src/notes/") ||
                          line.find("readNote(NOTEHANDLE") != std::string::npos;
    EXPECT_TRUE(isExempt || !std::regex_search(line, spoken)) << path << ": " << line;
    count += std::regex_search(line, spoken) ? 1 : 0;
  });
  EXPECT_GT(count, 10) << "the sources were not found";
}

}  // namespace
