#include <gtest/gtest.h>
#include <unistd.h>

#include "base/report_log.h"
#include "support/temporary_folder.h"

namespace {

// A pipe takes bytes and has no position.
TEST(LostPosition, EndsTheWritingAndTheLineIsNotWritten) {
  const test::TemporaryFolder folder;
  base::ReportLog log(folder.wide(), u"R-", u".log", u"N", u"%H", base::ordinaryLevel, false);
  int ends[2] = {};
  ASSERT_EQ(::pipe(ends), 0);
  const int next = ::dup(ends[0]);
  ::close(next);
  ASSERT_TRUE(log.open());
  EXPECT_EQ(log.openedFileName(), log.fileName());
  ASSERT_EQ(::dup2(ends[1], next), next) << "the log's file has the lowest number that is free";
  log.write(u"lost");
  ::close(ends[1]);
  log.close();
  char byte = 0;
  EXPECT_EQ(::read(ends[0], &byte, 1), 0);
  ::close(ends[0]);
}

}  // namespace
