#include "notes/api.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/files.h"
#include "support/temporary_folder.h"

namespace {

class LoadNotesLibrary : public testing::Test {
 protected:
  void SetUp() override { notes::api = {}; }
  void TearDown() override { std::filesystem::current_path(before_); }

  const std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_F(LoadNotesLibrary, FillsEveryMemberFromTheCurrentDirectory) {
  ASSERT_TRUE(platform::changeDirectory(BINARY_FOLDER "/standin"));
  ASSERT_TRUE(notes::loadNotesLibrary("nnotes.dll"));
#define EXPECT_MEMBER(result, name, arguments)      \
  EXPECT_NE(notes::api.name, nullptr) << #name;     \
  EXPECT_EQ(notes::name, notes::api.name) << #name; \
  EXPECT_EQ(&notes::name, &notes::api.name) << #name;
  NOTES_OPERATIONS(EXPECT_MEMBER)
}

TEST_F(LoadNotesLibrary, RefusesALibraryThatLacksOneOperation) {
  ASSERT_TRUE(platform::changeDirectory(BINARY_FOLDER "/incomplete_library"));
  EXPECT_FALSE(notes::loadNotesLibrary("incomplete.dll"));
  EXPECT_EQ(notes::api.NotesTerm, nullptr) << "a library that does not load leaves no trace";
}

TEST_F(LoadNotesLibrary, RefusesWhatIsNoLibrary) {
  const test::TemporaryFolder folder;
  ASSERT_TRUE(platform::changeDirectory(folder.text()));
  EXPECT_FALSE(notes::loadNotesLibrary("other.dll"));
  test::writeFile(folder.path() / "other.dll", "not a library");
  EXPECT_FALSE(notes::loadNotesLibrary("other.dll"));
  std::filesystem::current_path(before_);
}

}  // namespace
