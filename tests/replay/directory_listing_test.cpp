#include "replay/directory_listing.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/temporary_folder.h"

namespace {

using names = std::vector<std::string>;

TEST(DirectoryListing, MaskAppliesToFoldersAndToWhatLiesBelow) {
  const test::TemporaryFolder folder;
  for (const char* name : {"logs.d", "logs.d/logs.deep", "other", ".logs"}) {
    std::filesystem::create_directory(folder.path() / name);
  }
  for (const char* name : {"logs.txt", "LOGS.2", "b.txt", "logs.d/logs.in", "other/logs.hidden",
                           "logs.d/logs.deep/logs.end"}) {
    test::writeFile(folder.path() / name, "");
  }
  const struct {
    const char* mask;
    bool directories, files, recursive;
    names expected;
  } rows[] = {
      {"logs*", false, true, false, {"LOGS.2", "logs.txt"}},
      {"logs*", true, false, false, {"logs.d"}},
      {"logs*",
       true,
       true,
       true,
       {"LOGS.2", "logs.d", "logs.deep", "logs.end", "logs.in", "logs.txt"}},
      {"logs*", false, true, true, {"LOGS.2", "logs.end", "logs.in", "logs.txt"}},
      {"?.t*t", true, true, true, {"b.txt"}},
      {"*.*", true, false, false, {"logs.d", "other"}},
      {"none*", true, true, true, {}},
  };
  for (const auto& row : rows) {
    names found = replay::list_directory(folder.text() + "/", row.mask, row.directories, row.files,
                                         row.recursive);
    // The order within a folder is the system's.
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, row.expected) << row.mask;
  }
  EXPECT_EQ(replay::list_directory(folder.text() + "/nowhere/", "*", true, true, true), names{});
}

}  // namespace
