#include "replay/directory_listing.h"

#include <gtest/gtest.h>

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
  const struct {
    const char* mask;
    bool directories, files, recursive;
    const char* expected;
  } rows[] = {
      {"logs*", false, true, false, " LOGS.2 logs.a logs.b logs.txt logs.x"},
      {"logs*", true, false, false, " logs.d"},
      {"logs.d*", true, true, true, " logs.d logs.deep"},
      {"log?.*", false, true, true, " LOGS.2 logs.a logs.b logs.end logs.in logs.txt logs.x"},
      {"?.t*t", true, true, true, " b.txt"},
      {"*GS*E?D", false, true, false, ""},
      {"*s.x", false, true, false, " logs.x"},
      {"*.*", true, false, false, " logs.d other"},
      {"none*", true, true, true, ""},
  };
  for (const auto& [mask, directories, files, recursive, expected] : rows) {
    std::string found;
    for (const std::string& name :
         replay::list_directory(folder.text() + "/", mask, directories, files, recursive)) {
      found += ' ' + name;
    }
    EXPECT_EQ(found, expected) << mask;
  }
  EXPECT_TRUE(replay::list_directory(folder.text() + "/nowhere/", "*", true, true, true).empty());
}

}  // namespace
