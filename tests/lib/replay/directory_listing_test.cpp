#include "replay/directory_listing.h"

#include <gtest/gtest.h>

#include "support/rows.h"
#include "support/temporary_folder.h"

namespace {

TEST(DirectoryListing, MaskAppliesToFoldersAndToWhatLiesBelowInTheOrderOfNames) {
  const test::TemporaryFolder folder;
  for (const char* name : {"logs.d", "logs.d/logs.deep", "other", ".logs"}) {
    std::filesystem::create_directory(folder.path() / name);
  }
  for (const char* name : {"logs.txt", "LOGS.2", "b.txt", "logs.d/logs.in", "other/logs.hidden",
                           "logs.d/logs.deep/logs.end", "logs.b", "logs.x", "logs.a"}) {
    test::writeFile(folder.path() / name, "");
  }
  for (const auto& [where, fields] : test::rowsOf("lib/replay/directory_listing.txt", 3)) {
    const bool all = fields[1].starts_with("all");
    std::string found;
    for (const std::string& name : replay::list_directory(
             folder.text() + "/", fields[0], all || fields[1].starts_with("folders"),
             all || fields[1].starts_with("files"), fields[1].ends_with("below"))) {
      found += (found.empty() ? "" : " ") + name;
    }
    EXPECT_EQ(found, fields[2]) << where;
  }
  EXPECT_TRUE(replay::list_directory(folder.text() + "/nowhere/", "*", true, true, true).empty());
}

}  // namespace
