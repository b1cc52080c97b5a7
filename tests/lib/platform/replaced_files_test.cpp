#include "platform/replaced_files.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temporary_folder.h"

namespace {

using platform::FileOutcome;
using platform::ReplacementLock;

TEST(ReplacementLock, IsOneHoldersAtATimeAndOutlivesNoneOfThem) {
  const test::TemporaryFolder folder;
  const std::string name = folder.text() + "/map";
  test::writeFile(name + ".lock", "");  // as one leaves it that dies
  ReplacementLock later(name);
  {
    ReplacementLock lock(name);
    EXPECT_EQ(lock.tryTake(), FileOutcome::done);
    EXPECT_EQ(later.tryTake(), FileOutcome::busy);
  }
  EXPECT_EQ(later.tryTake(), FileOutcome::done);
  later.release();
  EXPECT_FALSE(std::filesystem::exists(later.file()));
  test::writeFile(later.file(), "of somebody else");
  EXPECT_EQ(later.tryTake(), FileOutcome::done);
  later.release();
  EXPECT_TRUE(std::filesystem::exists(later.file()));
}

}  // namespace
